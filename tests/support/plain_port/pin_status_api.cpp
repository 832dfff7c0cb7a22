#include "tests/support/plain_port/api.h"
#include "tests/support/plain_port/pin_api.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

constexpr int32_t kMtk = 3;
constexpr int32_t kTsp = 4;
constexpr int32_t kSpreadtrum = 5;

bool askAttempts(World &world, uint32_t cpinResult, int32_t &pin, int32_t &puk)
{
    switch (world.globals.platform) {
    case kSpreadtrum:
        return xxSet(world, 0, &pin) == kSuccess && xxSet(world, 2, &puk) == kSuccess;
    case kMtk: {
        world.log(kApiFile, "KR_getPINStatus-g_currentPlatform == PF_MTK");
        int32_t counts[4] = {};
        if (epincRead(world, counts) != kSuccess) return false;
        pin = counts[0];
        puk = counts[2];
        return true;
    }
    case kTsp:
        world.log(kApiFile, "KR_getPINStatus-g_currentPlatform == PF_TSP");
        zrapRead(world, isUSimTsp(world), &pin, &puk);
        return cpinResult == kSuccess;
    default:
        world.log(kApiFile, "KR_getPINStatus-zpinpukTest");
        return zpinpukTest(world, &pin, &puk) == kSuccess;
    }
}

} // namespace

int32_t isUSimTsp(World &world)
{
    if (world.globals.cardTypeKnown != 0) return world.globals.cardType;
    int32_t mode = 0;
    if (cardmodeExec(world, &mode) != kSuccess) return 1;
    world.globals.cardType = mode == 1 ? 2 : 1;
    return world.globals.cardType;
}

int32_t translatePinStateFromSettingToMts(World & /*world*/, int32_t state, uint32_t result, int32_t lockStatus)
{
    switch (result) {
    case 26:
        return 6;
    case 27:
        return 7;
    case 28:
        return 3;
    case 0:
        break;
    default:
        return 0;
    }
    switch (state) {
    case 0:
        return lockStatus != 0 ? 1 : 2;
    case 1:
        return 4;
    case 2:
        return 5;
    case 6:
        return 10;
    default:
        return 0;
    }
}

uint32_t getPinStatusInside(World &world, int32_t *pStatus, int32_t *pVerifyRetriesLeft, int32_t *pUnblockRetriesLeft)
{
    world.log(kApiFile, "KR_getPINStatus-before cpinRead");
    int32_t state = 0;
    int32_t lockStatus = 0;
    const uint32_t cpinResult = cpinRead(world, &state);
    if (cpinResult == kFalse) {
        world.log(kApiFile, "KR_getPINStatus-return UNI_ERROR_COMM_FAILURE-UNI_ERROR_COMM_FAILURE 11111");
        return 32;
    }
    if (cpinResult == kSuccess && state == 0) {
        world.log(kApiFile, "KR_getPINStatus-before clck");
        if (clckSet(world, "SC", 2, nullptr, 7, &lockStatus) != kSuccess) {
            world.log(kApiFile, "KR_getPINStatus-return UNI_ERROR_COMM_FAILURE-UNI_ERROR_COMM_FAILURE 22222");
            return 32;
        }
    }
    const int32_t translated = translatePinStateFromSettingToMts(world, state, cpinResult, lockStatus);
    int32_t pin = 0;
    int32_t puk = 0;
    if (translated == 10) {
        world.log(kApiFile, "KR_getPINStatus-KORA_MTS_SIM_ICERA_LOCKNET");
    } else if (translated == 6 || translated == 3) {
        world.log(kApiFile, "KR_getPINStatus-|| KORA_MTS_SIM_NOT_INSERTED");
    } else if (!askAttempts(world, cpinResult, pin, puk)) {
        world.log(kApiFile, "KR_getPINStatus-return UNI_ERROR_COMM_FAILURE 33333");
        return 32;
    }
    *pVerifyRetriesLeft = pin;
    *pUnblockRetriesLeft = puk;
    *pStatus = translated;
    world.log(kApiFile, "KR_getPINStatus-out-*pStatus:%d", *pStatus);
    world.log(kApiFile, "KR_getPINStatus-out-*pVerifyRetriesLeft:%d", *pVerifyRetriesLeft);
    world.log(kApiFile, "KR_getPINStatus-out-*pUnblockRetriesLeft:%d", *pUnblockRetriesLeft);
    world.log(kApiFile, "KR_getPINStatus-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_getPINStatus(World &world, int32_t /*id*/, int32_t *pStatus, int32_t *pVerifyRetriesLeft,
                         int32_t *pUnblockRetriesLeft)
{
    world.log(kApiFile, "KR_getPINStatus-in");
    world.log(kApiFile, "KR_getPINStatus-in-pStatus:%d", address(pStatus));
    world.log(kApiFile, "KR_getPINStatus-in-pVerifyRetriesLeft:%d", address(pVerifyRetriesLeft));
    world.log(kApiFile, "KR_getPINStatus-in-pUnblockRetriesLeft:%d", address(pUnblockRetriesLeft));
    if (pStatus == nullptr || pVerifyRetriesLeft == nullptr || pUnblockRetriesLeft == nullptr) {
        world.log(kApiFile, "KR_getPINStatus-return UNI_ERROR_INVALID_PARAMETER");
        return 13;
    }
    return getPinStatusInside(world, pStatus, pVerifyRetriesLeft, pUnblockRetriesLeft);
}

} // namespace plain

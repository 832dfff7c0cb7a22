#include "tests/support/plain_port/api.h"
#include "tests/support/plain_port/pin_api.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

constexpr int32_t kMtk = 3;
constexpr int32_t kSpreadtrum = 5;

uint32_t told(World &world, bool isDone, const char *name)
{
    world.log(kApiFile, "%s-return %s", name, isDone ? "UNI_ERROR_SUCCESS" : "UNI_ERROR_FALSE");
    return isDone ? kSuccess : kFalse;
}

/** KR_setFacilityLock() on "PN" with a status that is a local of its caller. */
uint32_t lockNetwork(World &world, int32_t mode, const char *password, int32_t class_, int32_t *status)
{
    world.log(kApiFile, "KR_setFacilityLock-in");
    world.log(kApiFile, "KR_setFacilityLock-in-strFac:%s", "PN");
    world.log(kApiFile, "KR_setFacilityLock-in-iMode:%d", mode);
    world.log(kApiFile, "KR_setFacilityLock-in-strPasswd:%s", password);
    world.log(kApiFile, "KR_setFacilityLock-in-iClass:%d", class_);
    world.log(kApiFile, "KR_setFacilityLock-in-iStatus:%s", kHiddenAddress);
    return setFacilityLockInside(world, "PN", mode, password, class_, status);
}

/** KR_getPINStatus() with three locals of its caller. */
uint32_t readPinStatus(World &world, int32_t *status)
{
    int32_t counts[2] = {};
    world.log(kApiFile, "KR_getPINStatus-in");
    world.log(kApiFile, "KR_getPINStatus-in-pStatus:%s", kHiddenAddress);
    world.log(kApiFile, "KR_getPINStatus-in-pVerifyRetriesLeft:%s", kHiddenAddress);
    world.log(kApiFile, "KR_getPINStatus-in-pUnblockRetriesLeft:%s", kHiddenAddress);
    return getPinStatusInside(world, status, &counts[0], &counts[1]);
}

void logKey(World &world, const int32_t *pState, const int32_t *pLefttimes, const int32_t *pUnlockLefttimes)
{
    world.log(kApiFile, "KR_getControlKeyStatus-out-*pState:%d", *pState);
    world.log(kApiFile, "KR_getControlKeyStatus-out-*pLefttimes:%d", *pLefttimes);
    world.log(kApiFile, "KR_getControlKeyStatus-out-*pUnlockLefttimes:%d", *pUnlockLefttimes);
}

} // namespace

uint32_t KR_getLockStatus(World &world, int32_t *pstatus, int32_t *pitems)
{
    world.log(kApiFile, "KR_getLockStatus-in");
    if (zsecRead(world, pstatus, pitems) != kSuccess) return told(world, false, "KR_getLockStatus");
    world.log(kApiFile, "KR_getLockStatus-out-*pstatus:%d", *pstatus);
    world.log(kApiFile, "KR_getLockStatus-out-*pitems:%d", *pitems);
    return told(world, true, "KR_getLockStatus");
}

uint32_t KR_setLockCode(World &world, const char *strcode)
{
    world.log(kApiFile, "KR_setLockCode-in");
    world.log(kApiFile, "KR_setLockCode-in-strcode%s", strcode);
    if (znckSet(world, strcode) != kSuccess) {
        world.log(kApiFile, "KR_setLockCode-return UNI_ERROR_FALSE-znckSet failed");
        return kFalse;
    }
    return told(world, true, "KR_setLockCode");
}

uint32_t KR_getLockLefttimes(World &world, int32_t *pLefttimes)
{
    world.log(kApiFile, "KR_getLockLefttimes-in");
    uint32_t result = kFalse;
    if (world.globals.platform == kSpreadtrum) {
        world.log(kApiFile, "KR_getLockLefttimes-in-g_currentPlatform == PF_SPEADTRUM");
        result = spsimlockinfoExec(world, pLefttimes);
    } else if (world.globals.platform == kMtk) {
        world.log(kApiFile, "KR_getLockLefttimes-in-g_currentPlatform == PF_MTK");
        result = esmlckRead(world, 0, pLefttimes, nullptr, nullptr);
    } else {
        result = znckRead(world, pLefttimes);
    }
    if (result != kSuccess) return told(world, false, "KR_getLockLefttimes");
    world.log(kApiFile, "KR_getLockLefttimes-out-pLefttimes:%d", *pLefttimes);
    return told(world, true, "KR_getLockLefttimes");
}

uint32_t KR_getHardLockStatus(World &world, int32_t *pHardAuth, int32_t *pImsiAuth)
{
    world.log(kApiFile, "KR_getHardLockStatus-in");
    if (zlcokRead(world, pHardAuth, pImsiAuth) != kSuccess) return told(world, false, "KR_getHardLockStatus");
    world.log(kApiFile, "KR_getHardLockStatus-out-*pHardAuth:%d", *pHardAuth);
    world.log(kApiFile, "KR_getHardLockStatus-out-*pImsiAuth:%d", *pImsiAuth);
    return told(world, true, "KR_getHardLockStatus");
}

uint32_t KR_setControlKeyLock(World &world, int32_t controlKeyID, int32_t opID, const char *strcode)
{
    world.log(kApiFile, "KR_setControlKeyLock-in");
    world.log(kApiFile, "KR_setControlKeyLock-in-controlKeyID:%d", controlKeyID);
    world.log(kApiFile, "KR_setControlKeyLock-in-opID:%d", opID);
    world.log(kApiFile, "KR_setControlKeyLock-in-strcode:%s", strcode);
    uint32_t result = kFalse;
    int32_t status = 0;
    if (world.globals.platform == kMtk)
        result = esmlckSet(world, controlKeyID, opID, strcode);
    else if (world.globals.platform == kSpreadtrum)
        result = lockNetwork(world, 0, strcode, 7, &status);
    else
        result = KR_setLockCode(world, strcode);
    return told(world, result == kSuccess, "KR_setControlKeyLock");
}

int32_t translateLockStatusToMode(World & /*world*/, int32_t status, int32_t items)
{
    if (status == 2 && items == 1) return 2;
    if (status == 2 && items == 0) return 1;
    if (status == 2 && items == 2) return 3;
    if (status == 2 && items == 3) return 4;
    if (status == 2) return 0;
    if (status == 0 && items == 0) return 5;
    if (status == 0) return 0;
    if (status == 1) return 0;
    if (status == 3) return 1;
    return 0;
}

uint32_t getNetLockMode_Qualcomm(World &world, int32_t *mode)
{
    int32_t status = 0;
    int32_t items = 0;
    if (KR_getLockStatus(world, &status, &items) != kSuccess) return kFalse;
    *mode = translateLockStatusToMode(world, status, items);
    return kSuccess;
}

uint32_t getNetLockMode_Icera(World &world, int32_t *mode)
{
    *mode = 1;
    int32_t status = 0;
    if (lockNetwork(world, 2, "", 0, &status) != kSuccess || status != 1) return kSuccess;
    int32_t pinStatus = 0;
    if (readPinStatus(world, &pinStatus) != kSuccess) return kSuccess;
    if (pinStatus == 10) *mode = 2;
    return kSuccess;
}

uint32_t KR_getControlKeyStatus(World &world, int32_t controlKeyID, int32_t *pState, int32_t *pLefttimes,
                                int32_t *pUnlockLefttimes)
{
    world.log(kApiFile, "KR_getControlKeyStatus-in");
    if (world.globals.platform == kMtk) {
        world.log(kApiFile, "KR_getControlKeyStatus-in-g_currentPlatform == PF_MTK");
        if (esmlckRead(world, controlKeyID, pLefttimes, pUnlockLefttimes, pState) != kSuccess)
            return told(world, false, "KR_getControlKeyStatus");
        logKey(world, pState, pLefttimes, pUnlockLefttimes);
        return told(world, true, "KR_getControlKeyStatus");
    }
    int32_t mode = 1;
    if (world.globals.platform == kSpreadtrum) {
        world.log(kApiFile, "KR_getControlKeyStatus-in-g_currentPlatform == PF_SPEADTRUM");
        getNetLockMode_Icera(world, &mode);
    } else {
        getNetLockMode_Qualcomm(world, &mode);
    }
    KR_getLockLefttimes(world, pLefttimes);
    *pUnlockLefttimes = 0; // never NULL here: the lines log it
    *pState = mode == 1 ? 2 : mode == 2 || mode == 3 || mode == 4 ? 1 : 0;
    logKey(world, pState, pLefttimes, pUnlockLefttimes);
    return told(world, true, "KR_getControlKeyStatus");
}

} // namespace plain

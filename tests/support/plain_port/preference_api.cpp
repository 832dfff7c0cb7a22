#include "tests/support/plain_port/api.h"
#include "tests/support/plain_port/exchange.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

constexpr int32_t kQualcomm = 1;
constexpr int32_t kMtk = 3;
constexpr int32_t kTsp = 4;
constexpr int32_t kSpreadtrum = 5;

uint32_t setBySysconfig(World &world, int32_t mode)
{
    SysconfigPara values{};
    translatePrefmodeToSysconfig(world, mode, &values);
    return sysconfigSet(world, values.nMode, values.nAcqorder, values.nRoam, values.nSrvdomain);
}

uint32_t setByErat(World &world, int32_t mode)
{
    CopsPara current{};
    if (copsRead(world, &current) == kSuccess && current.nMode == 1) copsSet(world, CopsPara{});
    int32_t rat = 0;
    int32_t pref = 0;
    translatePrefmodeToErat(world, mode, &rat, &pref);
    return eratSet(world, rat, pref);
}

uint32_t told(World &world, uint32_t result, const char *failure, const char *success)
{
    world.log(kApi, "%s", result != kSuccess ? failure : success);
    return result != kSuccess ? kFalse : kSuccess;
}

bool selectOperator(World &world, int32_t nMode, const char *code, int32_t technology)
{
    CopsPara selected{nMode, 2, {}, technology};
    if (std::strlen(code) >= sizeof selected.cOper) return false;
    keep(selected.cOper, code);
    if (world.globals.platform == kMtk) {
        const int32_t rat = technology == 0 ? 0 : technology == 2 ? 1 : 2;
        if (eratSet(world, rat, 0) != kSuccess) return false;
    }
    return copsSet(world, selected) == kSuccess;
}

} // namespace

uint32_t setPrefMode(World &world, int32_t mode, int32_t supportBandSet)
{
    switch (world.globals.platform) {
    case kSpreadtrum:
        return setBySysconfig(world, mode) != kSuccess ? kFalse : kSuccess;
    case kMtk:
        return setByErat(world, mode);
    case kTsp: {
        cgattSet(world, 0);
        const uint32_t result = setBySysconfig(world, mode);
        setAutoSearchCheckNetwork(world);
        cgattSet(world, 1);
        return result != kSuccess ? kFalse : kSuccess;
    }
    default:
        break;
    }
    if (world.globals.platform == kQualcomm && supportBandSet == 1) zprefbandSet(world, 0);
    int32_t p[3] = {};
    translatePrefmodeToZsnt(world, mode, &p[0], &p[1], &p[2]);
    return zsntSet(world, p[0], p[1], p[2]);
}

uint32_t getPrefMode(World &world, int32_t *mode, int32_t flag)
{
    switch (world.globals.platform) {
    case kTsp:
    case kSpreadtrum: {
        SysconfigPara values{};
        if (sysconfigRead(world, &values) != kSuccess) return kFalse;
        return translateSysconfigToPrefmode(world, mode, values.nMode, values.nAcqorder);
    }
    case kMtk: {
        int32_t e[4] = {};
        if (eratRead(world, &e[0], &e[1], &e[2], &e[3]) != kSuccess) return kFalse;
        return translateEratToPrefmode(world, mode, e[2], e[3], flag);
    }
    default: {
        int32_t p[3] = {};
        if (zsntRead(world, &p[0], &p[1], &p[2]) != kSuccess) return kFalse;
        return translateZsntToPrefmode(world, mode, p[0], p[1], p[2], flag);
    }
    }
}

uint32_t setAutoSearchCheckNetwork(World &world)
{
    if (copsSet(world, CopsPara{}) != kSuccess) return kFalse;
    int32_t values[5] = {};
    for (int poll = 0; poll < 10; ++poll) {
        if (values[0] == 1 || values[0] == 2) break;
        sysinfoExec(world, &values[0], &values[1], &values[2], &values[3], &values[4], 0, 0);
    }
    return kSuccess;
}

uint32_t KR_setNetworkPreferMode(World &world, int32_t technologyPref, int32_t supportBandSet)
{
    world.log(kApi, "KR_setNetworkPreferMode-in");
    world.log(kApi, "KR_setNetworkPreferMode-in-technologyPref:%d", technologyPref);
    world.log(kApi, "KR_setNetworkPreferMode-in-supportBandSet:%d", supportBandSet);
    if (technologyPref == 5) {
        world.log(kApi, "KR_setNetworkPreferMode-return UNI_ERROR_INVALID_PARAMETER");
        return 13;
    }
    return told(world, setPrefMode(world, technologyPref, supportBandSet),
                "KR_setNetworkPreferMode-return UNI_ERROR_FALSE-setPrefMode failed",
                "KR_setNetworkPreferMode-return UNI_ERROR_SUCCESS");
}

uint32_t KR_getNetworkPreferMode(World &world, int32_t *pTechnologyPref)
{
    world.log(kApi, "KR_getNetworkPreferMode-in");
    int32_t value = 0;
    if (getPrefMode(world, &value, 0) != kSuccess) {
        world.log(kApi, "KR_setNetworkPreferMode-return UNI_ERROR_FALSE-getPrefMode failed");
        return kFalse;
    }
    *pTechnologyPref = value;
    world.log(kApi, "KR_getNetworkPreferMode-out-*pTechnologyPref:%d", *pTechnologyPref);
    world.log(kApi, "KR_getNetworkPreferMode-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_setNetworkRegistrationMode(World &world, int32_t mode, const char *pCode, int32_t Status, int32_t dwAct,
                                       int32_t supportBandSet)
{
    world.log(kApi, "KR_setNetworkRegistrationMode-in");
    world.log(kApi, "KR_setNetworkRegistrationMode-in-mode:%d", mode);
    world.log(kApi, "KR_setNetworkRegistrationMode-in-pCode:%s", orNull(pCode));
    world.log(kApi, "KR_setNetworkRegistrationMode-in-Status:%d", Status);
    world.log(kApi, "KR_setNetworkRegistrationMode-in-dwAct:%d", dwAct);
    world.log(kApi, "KR_setNetworkRegistrationMode-in-supportBandSet:%d", supportBandSet);
    if (mode == 0)
        return told(world, setPrefMode(world, 0, supportBandSet),
                    "KR_setNetworkRegistrationMode-return UNI_ERROR_FALSE-setPrefMode failed",
                    "KR_setNetworkRegistrationMode-return UNI_ERROR_SUCCESS");
    if (mode == 3 || mode == 4) return 30;
    const int32_t nMode = mode == 1 || mode == 2 ? mode : 0;
    if (pCode == nullptr || pCode[0] == '\0') {
        world.log(kApi, "KR_setNetworkRegistrationMode-return UNI_ERROR_INVALID_PARAMETER");
        return 13;
    }
    return told(world, selectOperator(world, nMode, pCode, dwAct) ? kSuccess : kFalse,
                "KR_setNetworkRegistrationMode-return UNI_ERROR_FALSE",
                "KR_setNetworkRegistrationMode-return UNI_ERROR_SUCCESS");
}

uint32_t KR_setLteNetworkPreference(World &world, int32_t technologyPref)
{
    world.log(kApi, "KR_setLteNetworkPreference-in");
    world.log(kApi, "KR_setLteNetworkPreference-in-technologyPref:%d", technologyPref);
    Exchange exchange(world);
    if (!exchange.send(format("AT+ZEACT=%d", technologyPref))) {
        world.log(kApi, "KR_setLteNetworkPreference-return UNI_ERROR_FALSE-send at failed");
        return kFalse;
    }
    const bool isDone = exchange.parse() && exchange.isOk();
    return told(world, isDone ? kSuccess : kFalse, "KR_setLteNetworkPreference-return UNI_ERROR_FALSE",
                "KR_setLteNetworkPreference-return UNI_ERROR_SUCCESS");
}

uint32_t SetbandByBand(World &world, const char *str)
{
    if (str == nullptr || str[0] == '\0') {
        world.log(kApi, "SetbandByBand-return UNI_ERROR_INVALID_PARAMETER");
        return 13;
    }
    Exchange exchange(world);
    if (!exchange.send(str)) {
        world.log(kApi, "SetbandByBand-return UNI_ERROR_FALSE-send at failed");
        return kFalse;
    }
    const bool isDone = exchange.parse() && exchange.isOk();
    return told(world, isDone ? kSuccess : kFalse, "SetbandByBand-return UNI_ERROR_FALSE",
                "SetbandByBand-return UNI_ERROR_SUCCESS");
}

uint32_t KR_getPlmnInfo(World &world, AtParasList *destination)
{
    return copsSet5(world, &destination);
}

} // namespace plain

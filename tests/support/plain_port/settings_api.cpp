#include "tests/support/plain_port/api.h"
#include "tests/support/plain_port/exchange.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

constexpr int32_t kMtk = 3;
constexpr int32_t kTsp = 4;
constexpr int32_t kSpreadtrum = 5;

uint32_t told(World &world, uint32_t result, const char *failure, const char *success)
{
    world.log(kApiFile, "%s", result != kSuccess ? failure : success);
    return result != kSuccess ? kFalse : kSuccess;
}

} // namespace

uint32_t KR_setPower(World &world, int32_t powerMode)
{
    world.log(kApiFile, "KR_setPower-in");
    world.log(kApiFile, "KR_setPower-in-powerMode:%d", powerMode);
    return told(world, cfunSet(world, powerMode), "KR_setPower-return UNI_ERROR_FALSE",
                "KR_setPower-return UNI_ERROR_SUCCESS");
}

uint32_t KR_getPower(World &world, int32_t *pPowerMode)
{
    world.log(kApiFile, "KR_getPower-in");
    if (cfunRead(world, pPowerMode) != kSuccess) {
        world.log(kApiFile, "KR_getPower-return UNI_ERROR_FALSE-cfunRead failed");
        return kFalse;
    }
    if (*pPowerMode == 1 && world.globals.platform == kTsp) {
        cregSet(world, 2);
        cgregSet(world, 2);
        ceregSet(world, 2);
    }
    world.log(kApiFile, "KR_getPower-out-*pPowerMode:%d", *pPowerMode);
    world.log(kApiFile, "KR_getPower-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_getOperationMode(World &world, int32_t *pOperMode)
{
    world.log(kApiFile, "KR_getOperationMode-in");
    if (zoprtRead(world, pOperMode) != kSuccess) {
        world.log(kApiFile, "KR_getOperationMode-return UNI_ERROR_FALSE");
        return kFalse;
    }
    world.log(kApiFile, "KR_getOperationMode-out-pOperMode:%d", *pOperMode);
    world.log(kApiFile, "KR_getOperationMode-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_setOperationMode(World &world, int32_t operMode)
{
    world.log(kApiFile, "KR_setOperationMode-in");
    world.log(kApiFile, "KR_setOperationMode-in-operMode:%d", operMode);
    return told(world, zoprtSet(world, operMode), "KR_setOperationMode-return UNI_ERROR_FALSE-zoprtSet failed",
                "KR_setOperationMode-return UNI_ERROR_SUCCESS");
}

uint32_t getSlelectMode(World &world, int32_t *selectionMode)
{
    if (world.globals.platform == kSpreadtrum || world.globals.platform == kMtk) {
        CopsPara current{};
        if (copsRead(world, &current) != kSuccess) return kFalse;
        *selectionMode = current.nMode == 1 ? 5 : 0;
        return kSuccess;
    }
    int32_t p[3] = {};
    if (zsntRead(world, &p[0], &p[1], &p[2]) != kSuccess) return kFalse;
    *selectionMode = p[1] == 1 ? 5 : 0;
    return kSuccess;
}

uint32_t KR_getNetworkSelectionMode(World &world, int32_t *pSelectionMode)
{
    world.log(kApiFile, "KR_getNetworkSelectionMode-in");
    if (getSlelectMode(world, pSelectionMode) != kSuccess) {
        world.log(kApiFile, "KR_getNetworkSelectionMode-return UNI_ERROR_FALSE-getSlelectMode failed");
        return kFalse;
    }
    world.log(kApiFile, "KR_getNetworkSelectionMode-out-*pSelectionMode:%d", *pSelectionMode);
    world.log(kApiFile, "KR_getNetworkSelectionMode-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_setZSET(World &world, const char *iState, int32_t iMode, char *oState, int32_t *oMode)
{
    world.log(kApiFile, "KR_setZSET-in");
    world.log(kApiFile, "KR_setZSET-in-iState:%s", iState);
    world.log(kApiFile, "KR_setZSET-in-iMode:%d", iMode);
    if (zsetSet(world, iState, iMode, oState, oMode) != kSuccess) {
        world.log(kApiFile, "KR_setZSET-return UNI_ERROR_FALSE");
        return kFalse;
    }
    world.log(kApiFile, "KR_setZSET-out-oState:%s", oState);
    world.log(kApiFile, "KR_setZSET-out-oMode:%d", *oMode);
    world.log(kApiFile, "KR_setZSET-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_setFOTACTR(World &world, int32_t iType, int32_t *oType, int32_t *oResult)
{
    world.log(kApiFile, "KR_setFOTACTR-in");
    world.log(kApiFile, "KR_setFOTACTR-in-iType:%d", iType);
    if (FOTACTRSet(world, iType, oType, oResult) != kSuccess) {
        world.log(kApiFile, "KR_setFOTACTR-return UNI_ERROR_FALSE");
        return kFalse;
    }
    world.log(kApiFile, "KR_setFOTACTR-out-oType:%d", *oType);
    world.log(kApiFile, "KR_setFOTACTR-out-oResult:%d", *oResult);
    world.log(kApiFile, "KR_setFOTACTR-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_Sendusb0IPtoMarvell(World &world, const char *address)
{
    return told(world, AtRamdumpHostIp(world, address), "KR_Sendusb0IPtoMarvell failed !",
                "KR_Sendusb0IPtoMarvell OK !");
}

uint32_t KR_SendNetgateIPtoMarvell(World &world, const char *address)
{
    return told(world, AtNetstaticIp(world, address), "KR_SendNetgateIPtoMarvell failed !",
                "KR_SendNetgateIPtoMarvell OK !");
}

} // namespace plain

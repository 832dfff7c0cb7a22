// Radio power, operation mode, selection mode, and settings of single chipsets.

#include <mainControl/api.h>
#include <mainControl/at_values.h>
#include <mainControl/wrappers.h>

#include "lib_public/support/platform_traits.h"
#include "mainControl/file_log.h"

using namespace mainControl;

namespace {

/** Switches the registration reports of a modem on again that forgets them while its radio is off. */
void rearmReports()
{
    cregSet(AT_REPORTS_LOCATION);
    cgregSet(AT_REPORTS_LOCATION);
    ceregSet(AT_REPORTS_LOCATION);
}

uint32_t handOver(const char *function, uint32_t code)
{
    using Log = ModuleLog<kFileModule>;
    if (code != UNI_ERROR_SUCCESS) {
        Log::line("%s failed !", function);
        return UNI_ERROR_FALSE;
    }
    Log::line("%s OK !", function);
    return UNI_ERROR_SUCCESS;
}

} // namespace

uint32_t KR_setPower(int32_t powerMode)
{
    constexpr FileLog<"KR_setPower"> log;
    log.in();
    log.in<"powerMode">(powerMode);
    return log.outcome(cfunSet(powerMode));
}

uint32_t KR_getPower(int32_t *pPowerMode)
{
    constexpr FileLog<"KR_getPower"> log;
    log.in();
    if (cfunRead(pPowerMode) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE, "cfunRead failed">();
    if (*pPowerMode == AT_CFUN_FULL && traits().forgetsReportsWithoutRadio) rearmReports();
    log.out<"*pPowerMode">(*pPowerMode);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_getOperationMode(int32_t *pOperMode)
{
    constexpr FileLog<"KR_getOperationMode"> log;
    log.in();
    if (zoprtRead(pOperMode) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE>();
    log.out<"pOperMode">(*pOperMode);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_setOperationMode(int32_t operMode)
{
    constexpr FileLog<"KR_setOperationMode"> log;
    log.in();
    log.in<"operMode">(operMode);
    return log.outcome<"zoprtSet failed">(zoprtSet(operMode));
}

uint32_t getSlelectMode(int32_t *selectionMode)
{
    bool isManual = false;
    if (traits().tellsSelectionByOperator) {
        CopsPara operator_{};
        if (copsRead(&operator_) != UNI_ERROR_SUCCESS) return UNI_ERROR_FALSE;
        isManual = operator_.nMode == AT_COPS_MANUAL;
    } else {
        int32_t values[3] = {};
        if (zsntRead(&values[0], &values[1], &values[2]) != UNI_ERROR_SUCCESS) return UNI_ERROR_FALSE;
        isManual = values[1] == 1;
    }
    *selectionMode = isManual ? SELECTION_MODE_MANUAL : SELECTION_MODE_AUTOMATIC;
    return UNI_ERROR_SUCCESS;
}

uint32_t KR_getNetworkSelectionMode(int32_t *pSelectionMode)
{
    constexpr FileLog<"KR_getNetworkSelectionMode"> log;
    log.in();
    if (getSlelectMode(pSelectionMode) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE, "getSlelectMode failed">();
    log.out<"*pSelectionMode">(*pSelectionMode);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_setZSET(const char *iState, int32_t iMode, char *oState, int32_t *oMode)
{
    constexpr FileLog<"KR_setZSET"> log;
    log.in();
    log.in<"iState">(iState);
    log.in<"iMode">(iMode);
    if (zsetSet(iState, iMode, oState, oMode) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE>();
    log.out<"oState">(oState);
    log.out<"oMode">(*oMode);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_setFOTACTR(int32_t iType, int32_t *oType, int32_t *oResult)
{
    constexpr FileLog<"KR_setFOTACTR"> log;
    log.in();
    log.in<"iType">(iType);
    if (FOTACTRSet(iType, oType, oResult) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE>();
    log.out<"oType">(*oType);
    log.out<"oResult">(*oResult);
    return log.ret<UNI_ERROR_SUCCESS>();
}

// The interface on the USB side is the host that gets ramdumps, and the network gate has the static address.

uint32_t KR_Sendusb0IPtoMarvell(const char *address)
{
    return handOver("KR_Sendusb0IPtoMarvell", AtRamdumpHostIp(address));
}

uint32_t KR_SendNetgateIPtoMarvell(const char *address)
{
    return handOver("KR_SendNetgateIPtoMarvell", AtNetstaticIp(address));
}

// Signal strength, the serving cell, transmit power and system information.

#include <mainControl/api.h>
#include <mainControl/wrappers.h>

#include "lib_public/AtCodec/private_wrappers.h"
#include "lib_public/support/log.h"
#include "lib_public/support/platform_traits.h"

using namespace mainControl;

namespace {

/** The log of the two functions that write their name as a value of the line. */
using NamedLog = ModuleLog<"lib_mainControl">;

uint32_t failedNamed(const char *function, Ending ending)
{
    if (ending == Ending::NotSent)
        NamedLog::line("%s-return UNI_ERROR_FALSE-send at failed", function);
    else
        NamedLog::line("%s-return UNI_ERROR_FALSE", function);
    return UNI_ERROR_FALSE;
}

} // namespace

uint32_t KR_get4GSignalStrength(int32_t *rxlev, int32_t *ber, int32_t *rscp, int32_t *ecno, int32_t *rsrq,
                                int32_t *rsrp)
{
    static constexpr const char *kFunction = "KR_get4GSignalStrength";
    NamedLog::line("%s-in", kFunction);
    const auto logText = [](const char *text) { NamedLog::line("%s-out OK-*pSignalStrength:%s", kFunction, text); };
    const Ending ending = cesqExec(rxlev, ber, rscp, ecno, rsrq, rsrp, logText);
    if (ending != Ending::Ok) return failedNamed(kFunction, ending);
    return UNI_ERROR_SUCCESS;
}

uint32_t KR_getSignalStrength(int32_t *pSignalStrength)
{
    constexpr const char *kFunction = "KR_getSignalStrength";
    NamedLog::line("%s-in", kFunction);
    const Ending ending = csqExec(pSignalStrength);
    if (ending != Ending::Ok) return failedNamed(kFunction, ending);
    NamedLog::line("%s-out OK-*pSignalStrength:%d", kFunction, *pSignalStrength);
    return UNI_ERROR_SUCCESS;
}

uint32_t KR_getZRSSIInfo(ZrssiPara *pZrssiPara)
{
    constexpr ApiLog<"KR_getZRSSIInfo"> log;
    log.in();
    const uint32_t code = traits().hasLteSignal ? zrssiLteRead(pZrssiPara) : zrssiExec(pZrssiPara);
    if (code != UNI_ERROR_SUCCESS) return UNI_ERROR_FALSE; // the one failure of the API that is not logged
    log.out<"pZrssiPara->ecValue">(pZrssiPara->ecValue);
    log.out<"pZrssiPara->networkType">(pZrssiPara->networkType);
    log.out<"pZrssiPara->Rscp">(pZrssiPara->Rscp);
    log.out<"pZrssiPara->rsrp">(pZrssiPara->rsrp);
    log.out<"pZrssiPara->rsrq">(pZrssiPara->rsrq);
    log.out<"pZrssiPara->Rssi">(pZrssiPara->Rssi);
    log.out<"pZrssiPara->sinr">(pZrssiPara->sinr);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_getCellInfo(CellInfo *pCellInfo)
{
    constexpr ApiLog<"KR_getCellInfo"> log;
    log.in();
    if (const Ending ending = zcellinfoRead(pCellInfo); ending != Ending::Ok) return log.outcome(ending);
    log.out<"pCellInfo->eci_lac">(pCellInfo->eci_lac);
    log.out<"pCellInfo->pci">(pCellInfo->pci);
    log.out<"pCellInfo->band">(pCellInfo->band);
    log.out<"pCellInfo->dlEarfcn">(pCellInfo->dlEarfcn);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_getTxPowerInfo(ZairInfo *pZairInfo)
{
    constexpr ApiLog<"KR_getTxPowerInfo"> log;
    log.in();
    if (const Ending ending = zairinfoRead(pZairInfo); ending != Ending::Ok) return log.outcome(ending);
    log.out<"pZairInfo->nettype">(pZairInfo->nettype);
    log.out<"pZairInfo->txpow">(pZairInfo->txpow);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_getSysinfo(int32_t *nSrvstatus, int32_t *nSrvdomain, int32_t *nRoamstatus, int32_t *nSysmode,
                       int32_t *nSimstate, int32_t nReserve, int32_t nSysSubmode)
{
    constexpr ApiLog<"KR_getSysinfo"> log;
    log.in();
    const uint32_t code = sysinfoExec(nSrvstatus, nSrvdomain, nRoamstatus, nSysmode, nSimstate, nReserve, nSysSubmode);
    if (code != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE, "sysinfoExec failed">();
    log.out<"*nSrvstatus">(*nSrvstatus);
    log.out<"*nSrvdomain">(*nSrvdomain);
    log.out<"*nRoamstatus">(*nRoamstatus);
    log.out<"*nSysmode">(*nSysmode);
    log.out<"*nSimstate">(*nSimstate);
    log.out<"nReserve">(nReserve);
    log.out<"nSysSubmode">(nSysSubmode);
    return UNI_ERROR_SUCCESS; // without an exit line
}

uint32_t KR_getZltelcInfo(int32_t *nAction, int32_t *nUarfcn, int32_t *nCellParald)
{
    constexpr ApiLog<"KR_getZltelcInfo"> log;
    log.in();
    // The line names another wrapper than the one that failed; hosts match on it.
    if (zltelcRead(nAction, nUarfcn, nCellParald) != UNI_ERROR_SUCCESS)
        return log.ret<UNI_ERROR_FALSE, "sysconfigRead failed">();
    log.out<"*nAction">(*nAction);
    log.out<"*nUarfcn">(*nUarfcn);
    log.out<"*nCellParald">(*nCellParald);
    log.line("KR_getZltelcInfo--return UNI_ERROR_SUCCESS"); // with both dashes
    return UNI_ERROR_SUCCESS;
}

#include "tests/support/plain_port/api.h"
#include "tests/support/plain_port/exchange.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

/** @return whether the reply is there to be read; if not, the failure is logged */
bool ask(Exchange &exchange, const char *name, const char *command, int32_t timeoutMs = kDefault)
{
    exchange.world.log(kApi, "%s-in", name);
    if (!exchange.send(command, timeoutMs)) {
        exchange.world.log(kApi, "%s-return UNI_ERROR_FALSE-send at failed", name);
        return false;
    }
    if (!exchange.parse() || !exchange.isOk()) {
        exchange.world.log(kApi, "%s-return UNI_ERROR_FALSE", name);
        return false;
    }
    return true;
}

} // namespace

uint32_t KR_get4GSignalStrength(World &world, int32_t *rxlev, int32_t *ber, int32_t *rscp, int32_t *ecno, int32_t *rsrq,
                                int32_t *rsrp)
{
    Exchange exchange(world);
    if (!ask(exchange, "KR_get4GSignalStrength", "AT+CESQ", 10000)) return kFalse;
    scan(exchange.paras(), "%d,%d,%d,%d,%d,%d", rxlev, ber, rscp, ecno, rsrq, rsrp);
    world.log(kApi, "%s-out OK-*pSignalStrength:%s", "KR_get4GSignalStrength", exchange.record.Paras);
    return kSuccess;
}

uint32_t KR_getSignalStrength(World &world, int32_t *pSignalStrength)
{
    Exchange exchange(world);
    if (!ask(exchange, "KR_getSignalStrength", "AT+CSQ")) return kFalse;
    scan(exchange.paras(), "%d,", pSignalStrength);
    world.log(kApi, "%s-out OK-*pSignalStrength:%d", "KR_getSignalStrength", *pSignalStrength);
    return kSuccess;
}

uint32_t KR_getZRSSIInfo(World &world, ZrssiPara *pZrssiPara)
{
    world.log(kApi, "KR_getZRSSIInfo-in");
    const uint32_t result =
        world.globals.platform == 1 ? zrssiLteRead(world, pZrssiPara) : zrssiExec(world, pZrssiPara);
    if (result == kFalse) return kFalse;
    world.log(kApi, "KR_getZRSSIInfo-out-pZrssiPara->ecValue:%d", pZrssiPara->ecValue);
    world.log(kApi, "KR_getZRSSIInfo-out-pZrssiPara->networkType:%d", pZrssiPara->networkType);
    world.log(kApi, "KR_getZRSSIInfo-out-pZrssiPara->Rscp:%d", pZrssiPara->Rscp);
    world.log(kApi, "KR_getZRSSIInfo-out-pZrssiPara->rsrp:%d", pZrssiPara->rsrp);
    world.log(kApi, "KR_getZRSSIInfo-out-pZrssiPara->rsrq:%d", pZrssiPara->rsrq);
    world.log(kApi, "KR_getZRSSIInfo-out-pZrssiPara->Rssi:%d", pZrssiPara->Rssi);
    world.log(kApi, "KR_getZRSSIInfo-out-pZrssiPara->sinr:%d", pZrssiPara->sinr);
    world.log(kApi, "KR_getZRSSIInfo-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_getCellInfo(World &world, CellInfo *pCellInfo)
{
    Exchange exchange(world);
    if (!ask(exchange, "KR_getCellInfo", "AT+ZCELLINFO?")) return kFalse;
    const std::string line = exchange.rewritten();
    pCellInfo->dlEarfcn = 0;
    Token band(line);
    const int count = scan(line, "%d %d %s %d", &pCellInfo->eci_lac, &pCellInfo->pci, static_cast<char *>(band),
                           &pCellInfo->dlEarfcn);
    if (count >= 3) keep(pCellInfo->band, band);
    restoreIn(pCellInfo->band);
    world.log(kApi, "KR_getCellInfo-out-pCellInfo->eci_lac:%d", pCellInfo->eci_lac);
    world.log(kApi, "KR_getCellInfo-out-pCellInfo->pci:%d", pCellInfo->pci);
    world.log(kApi, "KR_getCellInfo-out-pCellInfo->band:%s", pCellInfo->band);
    world.log(kApi, "KR_getCellInfo-out-pCellInfo->dlEarfcn:%d", pCellInfo->dlEarfcn);
    world.log(kApi, "KR_getCellInfo-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_getTxPowerInfo(World &world, ZairInfo *pZairInfo)
{
    Exchange exchange(world);
    if (!ask(exchange, "KR_getTxPowerInfo", "AT*ZAIRINFO?")) return kFalse;
    scan(exchange.paras(), "%d,%f", &pZairInfo->nettype, &pZairInfo->txpow);
    world.log(kApi, "KR_getTxPowerInfo-out-pZairInfo->nettype:%d", pZairInfo->nettype);
    world.log(kApi, "KR_getTxPowerInfo-out-pZairInfo->txpow:%f", static_cast<double>(pZairInfo->txpow));
    world.log(kApi, "KR_getTxPowerInfo-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_getSysinfo(World &world, int32_t *nSrvstatus, int32_t *nSrvdomain, int32_t *nRoamstatus, int32_t *nSysmode,
                       int32_t *nSimstate, int32_t nReserve, int32_t nSysSubmode)
{
    world.log(kApi, "KR_getSysinfo-in");
    const uint32_t result =
        sysinfoExec(world, nSrvstatus, nSrvdomain, nRoamstatus, nSysmode, nSimstate, nReserve, nSysSubmode);
    if (result != kSuccess) {
        world.log(kApi, "KR_getSysinfo-return UNI_ERROR_FALSE-sysinfoExec failed");
        return result;
    }
    world.log(kApi, "KR_getSysinfo-out-*nSrvstatus:%d", *nSrvstatus);
    world.log(kApi, "KR_getSysinfo-out-*nSrvdomain:%d", *nSrvdomain);
    world.log(kApi, "KR_getSysinfo-out-*nRoamstatus:%d", *nRoamstatus);
    world.log(kApi, "KR_getSysinfo-out-*nSysmode:%d", *nSysmode);
    world.log(kApi, "KR_getSysinfo-out-*nSimstate:%d", *nSimstate);
    world.log(kApi, "KR_getSysinfo-out-nReserve:%d", nReserve);
    world.log(kApi, "KR_getSysinfo-out-nSysSubmode:%d", nSysSubmode);
    return kSuccess;
}

uint32_t KR_getZltelcInfo(World &world, int32_t *nAction, int32_t *nUarfcn, int32_t *nCellParald)
{
    world.log(kApi, "KR_getZltelcInfo-in");
    const uint32_t result = zltelcRead(world, nAction, nUarfcn, nCellParald);
    if (result != kSuccess) {
        world.log(kApi, "KR_getZltelcInfo-return UNI_ERROR_FALSE-sysconfigRead failed");
        return result;
    }
    world.log(kApi, "KR_getZltelcInfo-out-*nAction:%d", *nAction);
    world.log(kApi, "KR_getZltelcInfo-out-*nUarfcn:%d", *nUarfcn);
    world.log(kApi, "KR_getZltelcInfo-out-*nCellParald:%d", *nCellParald);
    world.log(kApi, "KR_getZltelcInfo--return UNI_ERROR_SUCCESS");
    return kSuccess;
}

} // namespace plain

#include <mainControl/wrappers.h>

#include "lib_public/AtCodec/private_wrappers.h"
#include "lib_public/AtCodec/wrapper_support.h"

using namespace mainControl;

namespace {

constexpr int32_t kExtendedSignalTimeoutMs = 10000;

/** The forms of an AT+ZRSSI? reply, by the number of its values. */
enum NetworkType : int32_t { kOneValue = 0, kTwoValues = 1, kFourValues = 2 };

} // namespace

uint32_t sysinfoExec(int32_t *nSrvstatus, int32_t *nSrvdomain, int32_t *nRoamstatus, int32_t *nSysmode,
                     int32_t *nSimstate, int32_t /*nReserve*/, int32_t /*nSysSubmode*/)
{
    AtExchange at;
    if (!at.ok("AT^SYSINFO")) return UNI_ERROR_FALSE;
    if (traits().keepsNameOfSysinfo) {
        ATCodec_PreProc_Res_ParaLine(at.paras());
        at.read("^SYSINFO:%d %d %d %d %d", nSrvstatus, nSrvdomain, nRoamstatus, nSysmode, nSimstate);
    } else {
        at.readLine("%d %d %d %d %d", nSrvstatus, nSrvdomain, nRoamstatus, nSysmode, nSimstate);
    }
    return UNI_ERROR_SUCCESS;
}

uint32_t zrssiExec(ZrssiPara *values)
{
    AtExchange at;
    if (!at.ok("AT+ZRSSI")) return UNI_ERROR_FALSE;
    at.readLine("%d %d %d", &values->Rssi, &values->ecValue, &values->Rscp);
    return UNI_ERROR_SUCCESS;
}

uint32_t zrssiLteRead(ZrssiPara *values)
{
    AtExchange at;
    if (!at.ok("AT+ZRSSI?")) return UNI_ERROR_FALSE;
    switch (getZrssiResParasCount(at.paras())) {
    case 1:
        values->networkType = kOneValue;
        at.read("%d", &values->Rssi);
        break;
    case 2:
        values->networkType = kTwoValues;
        at.read("%d, %d", &values->Rscp, &values->ecValue);
        break;
    default:
        values->networkType = kFourValues;
        at.read("%d, %d, %d, %d", &values->rsrp, &values->rsrq, &values->Rssi, &values->sinr);
        break;
    }
    return UNI_ERROR_SUCCESS;
}

int32_t getZrssiResParasCount(const char *text)
{
    int32_t count = 1;
    for (; text != nullptr && *text != '\0'; ++text) {
        if (*text == ',') ++count;
    }
    return count;
}

uint32_t zltelcRead(int32_t *nAction, int32_t *nUarfcn, int32_t *nCellParald)
{
    AtExchange at;
    if (!at.ok("AT+ZLTELC?")) return UNI_ERROR_FALSE;
    at.read("%d,%d,%d", nAction, nUarfcn, nCellParald);
    return UNI_ERROR_SUCCESS;
}

Ending mainControl::cesqExec(int32_t *rxlev, int32_t *ber, int32_t *rscp, int32_t *ecno, int32_t *rsrq, int32_t *rsrp,
                             TextHeard heard)
{
    AtExchange at;
    const Ending ending = at.end(at.send(kExtendedSignalTimeoutMs, "AT+CESQ"));
    if (ending != Ending::Ok) return ending;
    at.read("%d,%d,%d,%d,%d,%d", rxlev, ber, rscp, ecno, rsrq, rsrp);
    heard(at.paras());
    return Ending::Ok;
}

Ending mainControl::csqExec(int32_t *rssi)
{
    AtExchange at;
    const Ending ending = at.end(at.send(kDefaultTimeoutMs, "AT+CSQ"));
    if (ending == Ending::Ok) at.read("%d,", rssi);
    return ending;
}

Ending mainControl::zcellinfoRead(CellInfo *info)
{
    AtExchange at;
    const Ending ending = at.end(at.send(kDefaultTimeoutMs, "AT+ZCELLINFO?"));
    if (ending != Ending::Ok) return ending;
    info->dlEarfcn = 0;
    at.readLine("%d %d %s %d", &info->eci_lac, &info->pci, into(info->band), &info->dlEarfcn);
    return Ending::Ok;
}

Ending mainControl::zairinfoRead(ZairInfo *info)
{
    AtExchange at;
    const Ending ending = at.end(at.send(kDefaultTimeoutMs, "AT*ZAIRINFO?"));
    if (ending == Ending::Ok) at.read("%d,%f", &info->nettype, &info->txpow);
    return ending;
}

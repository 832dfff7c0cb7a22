#include <mainControl/wrappers.h>

#include "../wrapper_support.h"

using namespace mainControl;

namespace {

/// The forms of an AT+ZRSSI? reply, by the number of its values.
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

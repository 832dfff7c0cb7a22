#include <algorithm>

#include "tests/support/plain_port/exchange.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {

uint32_t zsntSet(World &world, int32_t p1, int32_t p2, int32_t p3)
{
    Exchange exchange(world);
    if (!exchange.send(format("AT+ZSNT=%d,%d,%d", p1, p2, p3), 10000)) {
        world.log(kNetwork, "zsntSet ClientSendCmd return\n");
        return kFalse;
    }
    if (!exchange.parse() || !exchange.isOk()) {
        world.log(kNetwork, "zsntSet UNI_ERROR_FALSE return\n");
        return kFalse;
    }
    return kSuccess;
}

uint32_t zsntRead(World &world, int32_t *p1, int32_t *p2, int32_t *p3)
{
    Exchange exchange(world);
    if (!exchange.succeeds("AT+ZSNT?")) return kFalse;
    scan(exchange.paras(), "%d,%d,%d", p1, p2, p3);
    return kSuccess;
}

uint32_t sysconfigRead(World &world, SysconfigPara *values)
{
    Exchange exchange(world);
    if (!exchange.succeeds("AT^SYSCONFIG?")) return kFalse;
    scan(exchange.rewritten(), "%d %d %d %d", &values->nMode, &values->nAcqorder, &values->nRoam, &values->nSrvdomain);
    return kSuccess;
}

uint32_t sysconfigSet(World &world, int32_t nMode, int32_t nAcqorder, int32_t nRoam, int32_t nSrvdomain)
{
    const std::string command = format("AT^SYSCONFIG=%d,%d,%d,%d", nMode, nAcqorder, nRoam, nSrvdomain);
    return Exchange(world).succeeds(command) ? kSuccess : kFalse;
}

uint32_t eratRead(World &world, int32_t *e1, int32_t *e2, int32_t *e3, int32_t *e4)
{
    Exchange exchange(world);
    if (!exchange.succeeds("AT+ERAT?")) return kFalse;
    scan(exchange.paras(), "%d,%d,%d,%d", e1, e2, e3, e4);
    return kSuccess;
}

uint32_t eratSet(World &world, int32_t rat, int32_t preferredRat)
{
    return Exchange(world).succeeds(format("AT+ERAT=%d,%d", rat, preferredRat)) ? kSuccess : kFalse;
}

uint32_t zprefbandSet(World &world, int32_t band)
{
    return Exchange(world).succeeds(format("AT+ZPREFBAND=\"%d\"", band)) ? kSuccess : kFalse;
}

// Signal and status.

uint32_t sysinfoExec(World &world, int32_t *nSrvstatus, int32_t *nSrvdomain, int32_t *nRoamstatus, int32_t *nSysmode,
                     int32_t *nSimstate, int32_t /*nReserve*/, int32_t /*nSysSubmode*/)
{
    Exchange exchange(world);
    if (!exchange.succeeds("AT^SYSINFO")) return kFalse;
    const std::string line = exchange.rewritten();
    if (world.globals.platform == 4)
        scan(line, "%d %d %d %d %d", nSrvstatus, nSrvdomain, nRoamstatus, nSysmode, nSimstate);
    else
        scan(line, "^SYSINFO:%d %d %d %d %d", nSrvstatus, nSrvdomain, nRoamstatus, nSysmode, nSimstate);
    return kSuccess;
}

uint32_t zrssiExec(World &world, ZrssiPara *values)
{
    Exchange exchange(world);
    if (!exchange.succeeds("AT+ZRSSI")) return kFalse;
    scan(exchange.rewritten(), "%d %d %d", &values->Rssi, &values->ecValue, &values->Rscp);
    return kSuccess;
}

int32_t getZrssiResParasCount(World & /*world*/, const char *text)
{
    const std::string whole = text;
    return static_cast<int32_t>(std::count(whole.begin(), whole.end(), ',')) + 1;
}

uint32_t zrssiLteRead(World &world, ZrssiPara *values)
{
    Exchange exchange(world);
    if (!exchange.succeeds("AT+ZRSSI?")) return kFalse;
    const std::string paras = exchange.paras();
    switch (getZrssiResParasCount(world, paras.c_str())) {
    case 1:
        values->networkType = 0;
        scan(paras, "%d", &values->Rssi);
        break;
    case 2:
        values->networkType = 1;
        scan(paras, "%d, %d", &values->Rscp, &values->ecValue);
        break;
    default:
        values->networkType = 2;
        scan(paras, "%d, %d, %d, %d", &values->rsrp, &values->rsrq, &values->Rssi, &values->sinr);
        break;
    }
    return kSuccess;
}

uint32_t zltelcRead(World &world, int32_t *nAction, int32_t *nUarfcn, int32_t *nCellParald)
{
    Exchange exchange(world);
    if (!exchange.succeeds("AT+ZLTELC?")) return kFalse;
    scan(exchange.paras(), "%d,%d,%d", nAction, nUarfcn, nCellParald);
    return kSuccess;
}

} // namespace plain

#include "tests/support/plain_port/exchange.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

uint32_t copyParas(World &world, const char *command, char *output)
{
    Exchange exchange(world);
    if (!exchange.succeeds(command)) return kFalse;
    std::strcpy(output, exchange.record.Paras);
    return kSuccess;
}

uint32_t sendOnly(World &world, const std::string &command)
{
    return Exchange(world).succeeds(command) ? kSuccess : kFalse;
}

} // namespace

uint32_t atStart(World &world)
{
    return sendOnly(world, "AT");
}

uint32_t ateExec(World &world, int32_t mode)
{
    return sendOnly(world, format("ATE%d", mode));
}

uint32_t cmeeSet(World &world, int32_t mode)
{
    return sendOnly(world, format("AT+CMEE=%d", mode));
}

uint32_t cgsnExec(World &world, char *serial)
{
    return copyParas(world, "AT+CGSN", serial);
}

uint32_t zmsnRead(World &world, char *serial)
{
    return copyParas(world, "AT+ZMSN?", serial);
}

// Device settings.

uint32_t zoprtRead(World &world, int32_t *mode)
{
    Exchange exchange(world);
    if (!exchange.succeeds("AT+ZOPRT?")) return kFalse;
    scan(exchange.paras(), "%d, %*d", mode);
    return kSuccess;
}

uint32_t zoprtSet(World &world, int32_t mode)
{
    return sendOnly(world, format("AT+ZOPRT=%d", mode));
}

uint32_t zsetSet(World &world, const char *name, int32_t value, char *outState, int32_t *outMode)
{
    Exchange exchange(world);
    if (!exchange.succeeds(format("AT+ZSET=\"%s\",%d", name, value))) return kFalse;
    scan(exchange.rewritten(), "%s %d", outState, outMode);
    restoreIn(outState);
    return kSuccess;
}

uint32_t FOTACTRSet(World &world, int32_t type, int32_t *outType, int32_t *outResult)
{
    Exchange exchange(world);
    if (!exchange.succeeds(format("AT+FOTACTR=%d", type))) return kFalse;
    scan(exchange.rewritten(), "%d %d", outType, outResult);
    return kSuccess;
}

uint32_t AtNetstaticIp(World &world, const char *address)
{
    return sendOnly(world, format("AT*prop=net.static_ip,1,%s", address));
}

uint32_t AtRamdumpHostIp(World &world, const char *address)
{
    return sendOnly(world, format("AT*prop=ramdump.host_ip,1,%s", address));
}

} // namespace plain

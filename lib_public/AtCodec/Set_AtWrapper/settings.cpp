#include <mainControl/wrappers.h>

#include "lib_public/AtCodec/wrapper_support.h"

using namespace mainControl;

uint32_t zoprtRead(int32_t *mode)
{
    AtExchange at;
    if (!at.ok("AT+ZOPRT?")) return UNI_ERROR_FALSE;
    at.read("%d", mode);
    return UNI_ERROR_SUCCESS;
}

uint32_t zoprtSet(int32_t mode)
{
    AtExchange at;
    return toCode(at.okFormatted("AT+ZOPRT=%d", mode));
}

uint32_t zsetSet(const char *name, int32_t value, char *outState, int32_t *outMode)
{
    AtExchange at;
    if (!at.okFormatted("AT+ZSET=\"%s\",%d", name, value)) return UNI_ERROR_FALSE;
    at.readLine("%s %d", intoWhole(outState), outMode);
    return UNI_ERROR_SUCCESS;
}

uint32_t FOTACTRSet(int32_t type, int32_t *outType, int32_t *outResult)
{
    AtExchange at;
    if (!at.okFormatted("AT+FOTACTR=%d", type)) return UNI_ERROR_FALSE;
    at.readLine("%d %d", outType, outResult);
    return UNI_ERROR_SUCCESS;
}

uint32_t AtNetstaticIp(const char *address)
{
    AtExchange at;
    return toCode(at.okFormatted("AT*prop=net.static_ip,1,%s", address));
}

uint32_t AtRamdumpHostIp(const char *address)
{
    AtExchange at;
    return toCode(at.okFormatted("AT*prop=ramdump.host_ip,1,%s", address));
}

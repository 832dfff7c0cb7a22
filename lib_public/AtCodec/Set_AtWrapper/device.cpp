#include <mainControl/wrappers.h>

#include "lib_public/AtCodec/AtExchange.h"

using namespace mainControl;

uint32_t atStart(void)
{
    AtExchange at;
    return toCode(at.ok("AT"));
}

uint32_t ateExec(int32_t mode)
{
    AtExchange at;
    return toCode(at.okFormatted("ATE%d", mode));
}

uint32_t cmeeSet(int32_t mode)
{
    AtExchange at;
    return toCode(at.okFormatted("AT+CMEE=%d", mode));
}

uint32_t cgsnExec(char *serial)
{
    AtExchange at;
    if (!at.ok("AT+CGSN")) return UNI_ERROR_FALSE;
    at.copyParas(serial);
    return UNI_ERROR_SUCCESS;
}

uint32_t zmsnRead(char *serial)
{
    AtExchange at;
    if (!at.ok("AT+ZMSN?")) return UNI_ERROR_FALSE;
    at.copyParas(serial);
    return UNI_ERROR_SUCCESS;
}

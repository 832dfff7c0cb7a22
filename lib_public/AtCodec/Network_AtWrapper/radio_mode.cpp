#include <mainControl/wrappers.h>

#include "lib_public/AtCodec/private_wrappers.h"
#include "lib_public/AtCodec/wrapper_support.h"

using namespace mainControl;

namespace {

constexpr int32_t kServiceModeTimeoutMs = 10000;

} // namespace

uint32_t zsntSet(int32_t p1, int32_t p2, int32_t p3)
{
    AtExchange at;
    if (!at.sendFormatted(kServiceModeTimeoutMs, "AT+ZSNT=%d,%d,%d", p1, p2, p3)) {
        NetworkLog::line("zsntSet ClientSendCmd return\n");
        return UNI_ERROR_FALSE;
    }
    if (!at.parseOk()) {
        NetworkLog::line("zsntSet UNI_ERROR_FALSE return\n");
        return UNI_ERROR_FALSE;
    }
    return UNI_ERROR_SUCCESS;
}

uint32_t zsntRead(int32_t *p1, int32_t *p2, int32_t *p3)
{
    AtExchange at;
    if (!at.ok("AT+ZSNT?")) return UNI_ERROR_FALSE;
    at.read("%d,%d,%d", p1, p2, p3);
    return UNI_ERROR_SUCCESS;
}

uint32_t sysconfigRead(SysconfigPara *values)
{
    AtExchange at;
    if (!at.ok("AT^SYSCONFIG?")) return UNI_ERROR_FALSE;
    at.readLine("%d %d %d %d", &values->nMode, &values->nAcqorder, &values->nRoam, &values->nSrvdomain);
    return UNI_ERROR_SUCCESS;
}

uint32_t sysconfigSet(int32_t nMode, int32_t nAcqorder, int32_t nRoam, int32_t nSrvdomain)
{
    AtExchange at;
    return toCode(at.okFormatted("AT^SYSCONFIG=%d,%d,%d,%d", nMode, nAcqorder, nRoam, nSrvdomain));
}

uint32_t eratRead(int32_t *e1, int32_t *e2, int32_t *e3, int32_t *e4)
{
    AtExchange at;
    if (!at.ok("AT+ERAT?")) return UNI_ERROR_FALSE;
    at.read("%d,%d,%d,%d", e1, e2, e3, e4);
    return UNI_ERROR_SUCCESS;
}

uint32_t eratSet(int32_t rat, int32_t preferredRat)
{
    AtExchange at;
    return toCode(at.okFormatted("AT+ERAT=%d,%d", rat, preferredRat));
}

uint32_t zprefbandSet(int32_t band)
{
    AtExchange at;
    return toCode(at.okFormatted("AT+ZPREFBAND=\"%d\"", band));
}

Ending mainControl::zeactSet(int32_t preference)
{
    AtExchange at;
    return at.end(at.sendFormatted(kDefaultTimeoutMs, "AT+ZEACT=%d", preference));
}

Ending mainControl::hostCommand(const char *command)
{
    AtExchange at;
    return at.end(at.send(kDefaultTimeoutMs, command));
}

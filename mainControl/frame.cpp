// The platform in force, and the functions that only open the dialogue with the modem.

#include <mainControl/api.h>
#include <mainControl/wrappers.h>

#include "lib_public/support/log.h"

using namespace mainControl;

int32_t g_currentPlatform = 0;

uint32_t KR_setCurrentPlatform(int32_t platform)
{
    ApiLog<"KR_setCurrentPlatform">::in<"currentPlatform">(platform);
    g_currentPlatform = platform;
    return UNI_ERROR_SUCCESS;
}

uint32_t KR_startAT(void)
{
    constexpr ApiLog<"KR_startAT"> log;
    log.in();
    return log.outcome(atStart());
}

uint32_t KR_echo(int32_t mode)
{
    constexpr ApiLog<"KR_echo"> log;
    log.in();
    log.in<"mode">(mode);
    return log.outcome(ateExec(mode));
}

uint32_t KR_setCmee(int32_t mode)
{
    constexpr ApiLog<"KR_setCmee"> log;
    log.in();
    log.in<"mode">(mode);
    return log.outcome(cmeeSet(mode));
}

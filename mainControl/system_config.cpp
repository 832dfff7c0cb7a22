// Chipset settings as they are, without the translation of preference modes.

#include <mainControl/api.h>
#include <mainControl/wrappers.h>

#include "lib_public/support/log.h"

using namespace mainControl;

uint32_t KR_setZgaat(int32_t nState)
{
    constexpr ApiLog<"KR_setZgaat"> log;
    log.in();
    log.in<"nState">(nState);
    return log.outcome(zgaatSet(nState));
}

uint32_t KR_getSysconfig(int32_t *nMode, int32_t *nAcqorder, int32_t *nRoam, int32_t *nSrvdomain)
{
    constexpr ApiLog<"KR_getSysconfig"> log;
    log.in();
    SysconfigPara values{};
    if (sysconfigRead(&values) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE, "sysconfigRead failed">();
    *nMode = values.nMode;
    *nAcqorder = values.nAcqorder;
    *nRoam = values.nRoam;
    *nSrvdomain = values.nSrvdomain;
    log.out<"*nMode">(*nMode);
    log.out<"*nAcqorder">(*nAcqorder);
    log.out<"*nRoam">(*nRoam);
    log.out<"*nSrvdomain">(*nSrvdomain);
    return UNI_ERROR_SUCCESS; // without an exit line
}

uint32_t KR_setSysconfig(int32_t nMode, int32_t nAcqorder, int32_t nRoam, int32_t nSrvdomain)
{
    constexpr ApiLog<"KR_setSysconfig"> log;
    log.in();
    log.in<"nMode">(nMode);
    log.in<"nAcqorder">(nAcqorder);
    log.in<"nRoam">(nRoam);
    log.in<"nSrvdomain">(nSrvdomain);
    return log.outcome(sysconfigSet(nMode, nAcqorder, nRoam, nSrvdomain));
}

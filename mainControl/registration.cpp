// Registration state and its report modes.

#include <mainControl/api.h>
#include <mainControl/at_values.h>
#include <mainControl/wrappers.h>

#include "lib_public/support/log.h"

using namespace mainControl;

uint32_t KR_setCregMode(int32_t cregType)
{
    constexpr ApiLog<"KR_setCregMode"> log;
    log.in();
    log.in<"cregType">(cregType);
    return log.outcome<"cregSet failed">(cregSet(cregType));
}

uint32_t KR_getCregMode(CregPara *cregPara)
{
    constexpr ApiLog<"KR_getCregMode"> log;
    log.in();
    if (cregSet(AT_REPORTS_LOCATION) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE, "cregSet(2) failed">();
    // A failed read leaves the reports on.
    if (cregRead(cregPara) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE, "cregRead failed">();
    if (cregSet(AT_REPORTS_OFF) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE, "cregSet(0) failed">();
    log.out<"cregPara->cellid">(cregPara->cellid);
    log.out<"cregPara->lac">(cregPara->lac);
    log.out<"cregPara->mode">(cregPara->mode);
    log.out<"cregPara->status">(cregPara->status);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_setDomainAttachMode(int32_t mode)
{
    constexpr ApiLog<"KR_setDomainAttachMode"> log;
    log.in();
    log.in<"mode">(mode);
    return log.outcome<"cgattSet failed">(cgattSet(mode));
}

uint32_t KR_getEPSRegisterState(int32_t *pCount, int32_t *pStat, char *cLac, char *cCi, int32_t *pAct)
{
    constexpr ApiLog<"KR_getEPSRegisterState"> log;
    log.in();
    if (ceregRead(pCount, pStat, cLac, cCi, pAct) != UNI_ERROR_SUCCESS)
        return log.ret<UNI_ERROR_FALSE, "ceregRead failed">();
    log.out<"*pCount">(*pCount);
    log.out<"*pStat">(*pStat);
    log.out<"cLac">(cLac);
    log.out<"cCi">(cCi);
    log.out<"*pAct">(*pAct);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_setEPSRegisterState(int32_t mode)
{
    constexpr ApiLog<"KR_setEPSRegisterState"> log;
    log.in();
    return log.outcome<"ceregSet failed">(ceregSet(mode));
}

// The packet functions keep the texts of the EPS ones, and the setter exits under the getter's name: hosts match on that.

uint32_t KR_getGPRSRegisterState(int32_t *pMode, int32_t *pStat)
{
    constexpr ApiLog<"KR_getGPRSRegisterState"> log;
    log.in();
    if (cgregRead(pMode, pStat) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE, "ceregRead failed">();
    log.out<"*pMode">(*pMode);
    log.out<"*pStat">(*pStat);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_setGPRSRegisterState(int32_t mode)
{
    ApiLog<"KR_setGPRSRegisterState">::in();
    return ApiLog<"KR_getGPRSRegisterState">::outcome<"ceregSet failed">(cgregSet(mode));
}

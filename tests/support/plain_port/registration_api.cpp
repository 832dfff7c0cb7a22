#include "tests/support/plain_port/api.h"
#include "tests/support/plain_port/exchange.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

uint32_t told(World &world, uint32_t result, const char *failure, const char *success)
{
    world.log(kApi, "%s", result != kSuccess ? failure : success);
    return result != kSuccess ? kFalse : kSuccess;
}

} // namespace

uint32_t KR_setCregMode(World &world, int32_t cregType)
{
    world.log(kApi, "KR_setCregMode-in");
    world.log(kApi, "KR_setCregMode-in-cregType:%d", cregType);
    return told(world, cregSet(world, cregType), "KR_setCregMode-return UNI_ERROR_FALSE-cregSet failed",
                "KR_setCregMode-return UNI_ERROR_SUCCESS");
}

uint32_t KR_getCregMode(World &world, CregPara *cregPara)
{
    world.log(kApi, "KR_getCregMode-in");
    if (cregSet(world, 2) != kSuccess) {
        world.log(kApi, "KR_getCregMode-return UNI_ERROR_FALSE-cregSet(2) failed");
        return kFalse;
    }
    if (cregRead(world, cregPara) != kSuccess) {
        world.log(kApi, "KR_getCregMode-return UNI_ERROR_FALSE-cregRead failed");
        return kFalse;
    }
    if (cregSet(world, 0) != kSuccess) {
        world.log(kApi, "KR_getCregMode-return UNI_ERROR_FALSE-cregSet(0) failed");
        return kFalse;
    }
    world.log(kApi, "KR_getCregMode-out-cregPara->cellid:%s", cregPara->cellid);
    world.log(kApi, "KR_getCregMode-out-cregPara->lac:%s", cregPara->lac);
    world.log(kApi, "KR_getCregMode-out-cregPara->mode:%d", cregPara->mode);
    world.log(kApi, "KR_getCregMode-out-cregPara->status:%d", cregPara->status);
    world.log(kApi, "KR_getCregMode-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_setDomainAttachMode(World &world, int32_t mode)
{
    world.log(kApi, "KR_setDomainAttachMode-in");
    world.log(kApi, "KR_setDomainAttachMode-in-mode:%d", mode);
    return told(world, cgattSet(world, mode), "KR_setDomainAttachMode-return UNI_ERROR_FALSE-cgattSet failed",
                "KR_setDomainAttachMode-return UNI_ERROR_SUCCESS");
}

uint32_t KR_getEPSRegisterState(World &world, int32_t *pCount, int32_t *pStat, char *cLac, char *cCi, int32_t *pAct)
{
    world.log(kApi, "KR_getEPSRegisterState-in");
    if (ceregRead(world, pCount, pStat, cLac, cCi, pAct) != kSuccess) {
        world.log(kApi, "KR_getEPSRegisterState-return UNI_ERROR_FALSE-ceregRead failed");
        return kFalse;
    }
    world.log(kApi, "KR_getEPSRegisterState-out-*pCount:%d", *pCount);
    world.log(kApi, "KR_getEPSRegisterState-out-*pStat:%d", *pStat);
    world.log(kApi, "KR_getEPSRegisterState-out-cLac:%s", cLac);
    world.log(kApi, "KR_getEPSRegisterState-out-cCi:%s", cCi);
    world.log(kApi, "KR_getEPSRegisterState-out-*pAct:%d", *pAct);
    world.log(kApi, "KR_getEPSRegisterState-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_setEPSRegisterState(World &world, int32_t mode)
{
    world.log(kApi, "KR_setEPSRegisterState-in");
    return told(world, ceregSet(world, mode), "KR_setEPSRegisterState-return UNI_ERROR_FALSE-ceregSet failed",
                "KR_setEPSRegisterState-return UNI_ERROR_SUCCESS");
}

uint32_t KR_getGPRSRegisterState(World &world, int32_t *pMode, int32_t *pStat)
{
    world.log(kApi, "KR_getGPRSRegisterState-in");
    if (cgregRead(world, pMode, pStat) != kSuccess) {
        world.log(kApi, "KR_getGPRSRegisterState-return UNI_ERROR_FALSE-ceregRead failed");
        return kFalse;
    }
    world.log(kApi, "KR_getGPRSRegisterState-out-*pMode:%d", *pMode);
    world.log(kApi, "KR_getGPRSRegisterState-out-*pStat:%d", *pStat);
    world.log(kApi, "KR_getGPRSRegisterState-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_setGPRSRegisterState(World &world, int32_t mode)
{
    world.log(kApi, "KR_setGPRSRegisterState-in");
    return told(world, cgregSet(world, mode), "KR_getGPRSRegisterState-return UNI_ERROR_FALSE-ceregSet failed",
                "KR_getGPRSRegisterState-return UNI_ERROR_SUCCESS");
}

// Service provider name.

uint32_t KR_getSPNInfo(World &world, CrsmCmd tCrsmcmd, CrsmRes *pCrsmres)
{
    world.log(kApi, "KR_getSPNInfo-in");
    world.log(kApi, "KR_getSPNInfo-in-tCrsmcmd.command:%d", tCrsmcmd.command);
    world.log(kApi, "KR_getSPNInfo-in-tCrsmcmd.data:%s", tCrsmcmd.data);
    world.log(kApi, "KR_getSPNInfo-in-tCrsmcmd.fileid:%d", tCrsmcmd.fileid);
    world.log(kApi, "KR_getSPNInfo-in-tCrsmcmd.p1:%d", tCrsmcmd.p1);
    world.log(kApi, "KR_getSPNInfo-in-tCrsmcmd.p2:%d", tCrsmcmd.p2);
    world.log(kApi, "KR_getSPNInfo-in-tCrsmcmd.p3:%d", tCrsmcmd.p3);
    if (crsmSet(world, tCrsmcmd, pCrsmres) != kSuccess) {
        world.log(kApi, "KR_getSPNInfo-return UNI_ERROR_FALSE");
        return kFalse;
    }
    world.log(kApi, "KR_getSPNInfo-out-pCrsmres->response:%s", pCrsmres->response);
    world.log(kApi, "KR_getSPNInfo-out-pCrsmres->sw1:%d", pCrsmres->sw1);
    world.log(kApi, "KR_getSPNInfo-out-pCrsmres->sw2:%d", pCrsmres->sw2);
    world.log(kApi, "KR_getSPNInfo-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_parseSPNName(World &world, const char *pSrcSpnInfo, char *pDest)
{
    world.log(kApi, "KR_parseSPNName-in");
    world.log(kApi, "KR_parseSPNName-in-pSrcSpnInfo:%s", pSrcSpnInfo);
    const bool isDecoded = world.decode(pSrcSpnInfo, pDest, 0) == 1;
    return told(world, isDecoded ? kSuccess : kFalse, "KR_parseSPNName-return UNI_ERROR_FALSE",
                "KR_parseSPNName-return UNI_ERROR_SUCCESS");
}

uint32_t KR_spnFriendOperlistInvert(World &world, const char *pSrcSpnFriendOperlist, char *pDestFriendOperlist)
{
    world.log(kApi, "KR_spnFriendOperlistInvert-in");
    world.log(kApi, "KR_spnFriendOperlistInvert-in-pSrcSpnFriendOperlist:%s", pSrcSpnFriendOperlist);
    const auto length = static_cast<int32_t>(std::strlen(pSrcSpnFriendOperlist));
    if (world.invert(pSrcSpnFriendOperlist, pDestFriendOperlist, length) == -1) {
        world.log(kApi, "KR_spnFriendOperlistInvert-return UNI_ERROR_FALSE");
        return kFalse;
    }
    world.log(kApi, "KR_spnFriendOperlistInvert-in-pDestFriendOperlist:%s", pDestFriendOperlist);
    world.log(kApi, "KR_spnFriendOperlistInvert-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

} // namespace plain

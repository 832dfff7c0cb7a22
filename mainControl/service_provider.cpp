// The service provider name of the SIM, and its list of friendly operators.

#include <mainControl/api.h>
#include <mainControl/host.h>
#include <mainControl/wrappers.h>

#include "lib_public/support/log.h"
#include "lib_public/support/record_text.h"

using namespace mainControl;

uint32_t KR_getSPNInfo(CrsmCmd tCrsmcmd, CrsmRes *pCrsmres)
{
    constexpr ApiLog<"KR_getSPNInfo"> log;
    char data[sizeof tCrsmcmd.data + 1]; // the record's own array may be full
    copyFitting(data, tCrsmcmd.data, strnlen(tCrsmcmd.data, sizeof tCrsmcmd.data));
    log.in();
    log.in<"tCrsmcmd.command">(tCrsmcmd.command);
    log.in<"tCrsmcmd.data">(data);
    log.in<"tCrsmcmd.fileid">(tCrsmcmd.fileid);
    log.in<"tCrsmcmd.p1">(tCrsmcmd.p1);
    log.in<"tCrsmcmd.p2">(tCrsmcmd.p2);
    log.in<"tCrsmcmd.p3">(tCrsmcmd.p3);
    if (crsmSet(tCrsmcmd, pCrsmres) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE>();
    log.out<"pCrsmres->response">(pCrsmres->response);
    log.out<"pCrsmres->sw1">(pCrsmres->sw1);
    log.out<"pCrsmres->sw2">(pCrsmres->sw2);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_parseSPNName(const char *pSrcSpnInfo, char *pDest)
{
    constexpr ApiLog<"KR_parseSPNName"> log;
    constexpr int kDecoded = 1; // and nothing else
    log.in();
    log.in<"pSrcSpnInfo">(pSrcSpnInfo);
    if (CODE_Usc2orGsm7ToAscDecode(pSrcSpnInfo, pDest, 0) != kDecoded) return log.ret<UNI_ERROR_FALSE>();
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_spnFriendOperlistInvert(const char *pSrcSpnFriendOperlist, char *pDestFriendOperlist)
{
    constexpr ApiLog<"KR_spnFriendOperlistInvert"> log;
    constexpr int kFailed = -1; // and nothing else
    log.in();
    log.in<"pSrcSpnFriendOperlist">(pSrcSpnFriendOperlist);
    const auto length = static_cast<int32_t>(std::strlen(pSrcSpnFriendOperlist));
    if (CODE_InvertNumbers(pSrcSpnFriendOperlist, pDestFriendOperlist, length) == kFailed)
        return log.ret<UNI_ERROR_FALSE>();
    log.in<"pDestFriendOperlist">(pDestFriendOperlist); // an output, under "-in-"
    return log.ret<UNI_ERROR_SUCCESS>();
}

// The default packet-data profile.

#include <mainControl/api.h>
#include <mainControl/wrappers.h>

#include "lib_public/support/log.h"
#include "lib_public/support/record_text.h"

using namespace mainControl;

namespace {

constexpr int32_t kDefaultBearerCid = 1;

/** The text of a PDP type code; empty for the codes without one. */
const char *pdpTypeOf(int32_t code)
{
    switch (code) {
    case PDP_TYPE_IP:
        return "IP";
    case PDP_TYPE_IPV6:
        return "IPV6";
    case PDP_TYPE_IPV4V6:
        return "IPV4V6";
    default:
        return "";
    }
}

} // namespace

uint32_t KR_setDefaultProfile(int32_t profileCid, int32_t pPDPType, const char *pIPAddress, const char *pPrimaryDNS,
                              const char *pSecondaryDNS, int32_t pAuthentication, const char *pName,
                              const char *pAPNName, const char *pDialNum, const char *pUsername, const char *pPassword)
{
    using Log = ModuleLog<"lib_mainControl">;
    constexpr const char *kFunction = "KR_setDefaultProfile";
    Log::line("%s: profileCid:%d", kFunction, profileCid);
    Log::line("%s: pPDPType:%d", kFunction, pPDPType);
    Log::line("%s: pIPAddress:%s", kFunction, pIPAddress);
    Log::line("%s: pPrimaryDNS:%s", kFunction, pPrimaryDNS);
    Log::line("%s: pSecondaryDNS:%s", kFunction, pSecondaryDNS);
    Log::line("%s: pAuthentication:%d", kFunction, pAuthentication);
    Log::line("%s: pName:%s", kFunction, pName);
    Log::line("%s: pAPNName:%s", kFunction, pAPNName);
    Log::line("%s: pDialNum:%s", kFunction, pDialNum);
    Log::line("%s: pUsername:%s", kFunction, pUsername);
    Log::line("%s: pPassword:%s", kFunction, pPassword);

    PdpContext context{};
    const bool fits = copyWhole(context.pdpType, pdpTypeOf(pPDPType)) && copyWhole(context.apn, pAPNName) &&
                      copyWhole(context.pdpAddress, pIPAddress);

    // The default bearer is context 1 whatever the profile's is, and the profile is defined whatever came of that.
    context.cid = kDefaultBearerCid;
    if (!fits || cgdfltSet(context) != UNI_ERROR_SUCCESS) Log::line("###T9LB LOG### %s-cgdflt Set failed\n", kFunction);
    context.cid = profileCid;
    if (!fits || cgdcontSet(context) != UNI_ERROR_SUCCESS) {
        Log::line("%s:-return UNI_ERROR_FALSE-cgdcontSet failed", kFunction);
        return UNI_ERROR_FALSE;
    }
    Log::line("%s:-return UNI_ERROR_SUCCESS", kFunction);
    return UNI_ERROR_SUCCESS;
}

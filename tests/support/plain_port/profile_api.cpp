#include "tests/support/plain_port/api.h"
#include "tests/support/plain_port/exchange.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

const char *const kName = "KR_setDefaultProfile";

const char *typeText(int32_t code)
{
    switch (code) {
    case 0:
        return "IP";
    case 2:
        return "IPV6";
    case 3:
        return "IPV4V6";
    default:
        return "";
    }
}

const char *orEmpty(const char *text)
{
    return text != nullptr ? text : "";
}

} // namespace

uint32_t KR_setDefaultProfile(World &world, int32_t profileCid, int32_t pPDPType, const char *pIPAddress,
                              const char *pPrimaryDNS, const char *pSecondaryDNS, int32_t pAuthentication,
                              const char *pName, const char *pAPNName, const char *pDialNum, const char *pUsername,
                              const char *pPassword)
{
    PdpContext context{};
    world.log(kApi, "%s: profileCid:%d", kName, profileCid);
    world.log(kApi, "%s: pPDPType:%d", kName, pPDPType);
    world.log(kApi, "%s: pIPAddress:%s", kName, orNull(pIPAddress));
    world.log(kApi, "%s: pPrimaryDNS:%s", kName, orNull(pPrimaryDNS));
    world.log(kApi, "%s: pSecondaryDNS:%s", kName, orNull(pSecondaryDNS));
    world.log(kApi, "%s: pAuthentication:%d", kName, pAuthentication);
    world.log(kApi, "%s: pName:%s", kName, orNull(pName));
    world.log(kApi, "%s: pAPNName:%s", kName, orNull(pAPNName));
    world.log(kApi, "%s: pDialNum:%s", kName, orNull(pDialNum));
    world.log(kApi, "%s: pUsername:%s", kName, orNull(pUsername));
    world.log(kApi, "%s: pPassword:%s", kName, orNull(pPassword));
    const bool isTooLong = std::strlen(orEmpty(pAPNName)) >= sizeof context.apn ||
                           std::strlen(orEmpty(pIPAddress)) >= sizeof context.pdpAddress;
    keep(context.pdpType, typeText(pPDPType));
    keep(context.apn, orEmpty(pAPNName));
    keep(context.pdpAddress, orEmpty(pIPAddress));
    context.cid = 1;
    if (isTooLong || cgdfltSet(world, context) != kSuccess)
        world.log(kApi, "###T9LB LOG### %s-cgdflt Set failed\n", kName);
    context.cid = profileCid;
    if (isTooLong || cgdcontSet(world, context) != kSuccess) {
        world.log(kApi, "%s:-return UNI_ERROR_FALSE-cgdcontSet failed", kName);
        return kFalse;
    }
    world.log(kApi, "%s:-return UNI_ERROR_SUCCESS", kName);
    return kSuccess;
}

} // namespace plain

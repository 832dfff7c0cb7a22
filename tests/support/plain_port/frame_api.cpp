#include "tests/support/plain_port/api.h"
#include "tests/support/plain_port/exchange.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

uint32_t told(World &world, const char *name, uint32_t result)
{
    if (result != kSuccess) {
        world.log(kApi, "%s-return UNI_ERROR_FALSE", name);
        return kFalse;
    }
    world.log(kApi, "%s-return UNI_ERROR_SUCCESS", name);
    return kSuccess;
}

} // namespace

uint32_t KR_setCurrentPlatform(World &world, int32_t platform)
{
    world.log(kApi, "KR_setCurrentPlatform-in-currentPlatform:%d", platform);
    world.globals.platform = platform;
    return kSuccess;
}

uint32_t KR_startAT(World &world)
{
    world.log(kApi, "KR_startAT-in");
    return told(world, "KR_startAT", atStart(world));
}

uint32_t KR_echo(World &world, int32_t mode)
{
    world.log(kApi, "KR_echo-in");
    world.log(kApi, "KR_echo-in-mode:%d", mode);
    return told(world, "KR_echo", ateExec(world, mode));
}

uint32_t KR_setCmee(World &world, int32_t mode)
{
    world.log(kApi, "KR_setCmee-in");
    world.log(kApi, "KR_setCmee-in-mode:%d", mode);
    return told(world, "KR_setCmee", cmeeSet(world, mode));
}

// System configuration.

uint32_t KR_setZgaat(World &world, int32_t nState)
{
    world.log(kApi, "KR_setZgaat-in");
    world.log(kApi, "KR_setZgaat-in-nState:%d", nState);
    return told(world, "KR_setZgaat", zgaatSet(world, nState));
}

uint32_t KR_getSysconfig(World &world, int32_t *nMode, int32_t *nAcqorder, int32_t *nRoam, int32_t *nSrvdomain)
{
    world.log(kApi, "KR_getSysconfig-in");
    SysconfigPara values{};
    const uint32_t result = sysconfigRead(world, &values);
    if (result != kSuccess) {
        world.log(kApi, "KR_getSysconfig-return UNI_ERROR_FALSE-sysconfigRead failed");
        return result;
    }
    *nMode = values.nMode;
    *nAcqorder = values.nAcqorder;
    *nRoam = values.nRoam;
    *nSrvdomain = values.nSrvdomain;
    world.log(kApi, "KR_getSysconfig-out-*nMode:%d", *nMode);
    world.log(kApi, "KR_getSysconfig-out-*nAcqorder:%d", *nAcqorder);
    world.log(kApi, "KR_getSysconfig-out-*nRoam:%d", *nRoam);
    world.log(kApi, "KR_getSysconfig-out-*nSrvdomain:%d", *nSrvdomain);
    return kSuccess;
}

uint32_t KR_setSysconfig(World &world, int32_t nMode, int32_t nAcqorder, int32_t nRoam, int32_t nSrvdomain)
{
    world.log(kApi, "KR_setSysconfig-in");
    world.log(kApi, "KR_setSysconfig-in-nMode:%d", nMode);
    world.log(kApi, "KR_setSysconfig-in-nAcqorder:%d", nAcqorder);
    world.log(kApi, "KR_setSysconfig-in-nRoam:%d", nRoam);
    world.log(kApi, "KR_setSysconfig-in-nSrvdomain:%d", nSrvdomain);
    return told(world, "KR_setSysconfig", sysconfigSet(world, nMode, nAcqorder, nRoam, nSrvdomain));
}

} // namespace plain

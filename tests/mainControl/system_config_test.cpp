// Chipset settings that go through as they are, alike on every platform.

#include <gtest/gtest.h>

#include "tests/mainControl/api_dialogue.h"

namespace {

using namespace dialogue;
using scripted::framed;
using Values = std::vector<int32_t>;

constexpr Module api{scripted::kApiModule};
constexpr int32_t kMost = 2147483647;
constexpr int32_t kLeast = -2147483647 - 1;

Events entryOfSysconfig(int32_t nMode, int32_t nAcqorder, int32_t nRoam, int32_t nSrvdomain)
{
    return {api("KR_setSysconfig-in"), api("KR_setSysconfig-in-nMode:%d", nMode),
            api("KR_setSysconfig-in-nAcqorder:%d", nAcqorder), api("KR_setSysconfig-in-nRoam:%d", nRoam),
            api("KR_setSysconfig-in-nSrvdomain:%d", nSrvdomain)};
}

Setter zgaat(uint32_t (*call)(), int32_t nState, const char *command)
{
    return {"KR_setZgaat",
            call,
            {api("KR_setZgaat-in"), api("KR_setZgaat-in-nState:%d", nState)},
            command,
            5000,
            {api("KR_setZgaat-return UNI_ERROR_SUCCESS")},
            {api("KR_setZgaat-return UNI_ERROR_FALSE")}};
}

Setter sysconfig(uint32_t (*call)(), const Events &entry, const char *command)
{
    return {"KR_setSysconfig",
            call,
            entry,
            command,
            5000,
            {api("KR_setSysconfig-return UNI_ERROR_SUCCESS")},
            {api("KR_setSysconfig-return UNI_ERROR_FALSE")}};
}

const Setter kSetters[] = {
    zgaat([] { return KR_setZgaat(1); }, 1, "AT+ZGAAT=1"),
    zgaat([] { return KR_setZgaat(0); }, 0, "AT+ZGAAT=0"),
    zgaat([] { return KR_setZgaat(kMost); }, kMost, "AT+ZGAAT=2147483647"),
    zgaat([] { return KR_setZgaat(kLeast); }, kLeast, "AT+ZGAAT=-2147483648"),
    sysconfig([] { return KR_setSysconfig(2, 6, 1, 3); }, entryOfSysconfig(2, 6, 1, 3), "AT^SYSCONFIG=2,6,1,3"),
    sysconfig([] { return KR_setSysconfig(0, -1, kMost, kLeast); }, entryOfSysconfig(0, -1, kMost, kLeast),
              "AT^SYSCONFIG=0,-1,2147483647,-2147483648"),
    sysconfig([] { return KR_setSysconfig(kLeast, kLeast, kLeast, kLeast); },
              entryOfSysconfig(kLeast, kLeast, kLeast, kLeast),
              "AT^SYSCONFIG=-2147483648,-2147483648,-2147483648,-2147483648"),
};

TEST(SystemConfig, IsSetAsItIs)
{
    for (const Setter &setter : kSetters)
        expectSetter(setter);
}

const Reader kSysconfig = {
    "KR_getSysconfig",
    [](int32_t *const *out) { return KR_getSysconfig(out[0], out[1], out[2], out[3]); },
    4,
    {api("KR_getSysconfig-in")},
    "AT^SYSCONFIG?",
    5000,
    [](const std::string &, const Values &values) -> Events {
        return {api("KR_getSysconfig-out-*nMode:%d", values[0]), api("KR_getSysconfig-out-*nAcqorder:%d", values[1]),
                api("KR_getSysconfig-out-*nRoam:%d", values[2]), api("KR_getSysconfig-out-*nSrvdomain:%d", values[3])};
    },
    [](Failure) -> Events { return {api("KR_getSysconfig-return UNI_ERROR_FALSE-sysconfigRead failed")}; },
};

Reading reading(const std::string &name, const std::string &paras, Values values)
{
    return {framed({(name + paras).c_str()}), paras, std::move(values)};
}

TEST(SystemConfig, ComesAsZeroWhereTheReplyLacksIt)
{
    expectReadings(kSysconfig, {
                                   reading("^SYSCONFIG: ", "2,6,1,3", {2, 6, 1, 3}),
                                   reading("", "2,6,1,3", {2, 6, 1, 3}),
                                   reading("^SYSCONFIG: ", "-2, 6,\"1\",2147483647,9", {-2, 6, 1, kMost}),
                                   reading("^SYSCONFIG: ", "2,6", {2, 6, 0, 0}),
                                   reading("^SYSCONFIG: ", "2", {2, 0, 0, 0}),
                                   reading("^SYSCONFIG: ", "2,,1,3", {2, 0, 0, 0}),
                                   reading("^SYSCONFIG: ", "none", {0, 0, 0, 0}),
                                   reading("", "^SYSCONFIG:2,6,1,3", {0, 0, 0, 0}),
                                   {"\r\nOK\r\n", "", {0, 0, 0, 0}},
                                   reading("^SYSCONFIG: ", "2,6,1,3," + filled(1015), {2, 6, 1, 3}),
                                   reading("^SYSCONFIG: ", "2,6,1,3," + filled(1016), {2, 0, 0, 0}),
                               });
}

TEST(SystemConfig, IsUntouchedByAFailure)
{
    expectFailures(kSysconfig);
}

} // namespace

// The lock mode of a modem that asks for the network PIN, and the control key that follows it on Spreadtrum.

#include <gtest/gtest.h>

#include "tests/mainControl/pin_dialogue.h"

namespace {

using namespace dialogue;

constexpr Module api{scripted::kApiFileModule};
constexpr int32_t kNotLocked = 1;
constexpr int32_t kNetworkPin = 2;

/** A way to the lock mode. */
struct Route {
    std::string name;
    Events events;
    int32_t mode;
};

/** The query of the facility; where the status goes is the caller's secret. */
Events facilityEntry()
{
    return {api("KR_setFacilityLock-in"),
            api("KR_setFacilityLock-in-strFac:%s", std::string("PN")),
            api("KR_setFacilityLock-in-iMode:%d", 2),
            api("KR_setFacilityLock-in-strPasswd:%s", std::string()),
            api("KR_setFacilityLock-in-iClass:%d", 0),
            api.withLocal("KR_setFacilityLock-in-iStatus:%d")};
}
Events facility(const std::string &paras, int32_t status)
{
    return facilityEntry() + lockQuery("PN", paras) +
           Events{api("KR_setFacilityLock-out-iStatus:%d", status), api("KR_setFacilityLock-return UNI_ERROR_SUCCESS")};
}

/** The question for the SIM's state, up to what the modem answers. */
Events simEntry()
{
    return {api("KR_getPINStatus-in"),
            api.withLocal("KR_getPINStatus-in-pStatus:%d"),
            api.withLocal("KR_getPINStatus-in-pVerifyRetriesLeft:%d"),
            api.withLocal("KR_getPINStatus-in-pUnblockRetriesLeft:%d"),
            api("KR_getPINStatus-before cpinRead"),
            kSetWrapper("###T9LB LOG### CpinRead begin")};
}
Events simAnswer(const std::string &paras)
{
    return simEntry() + Events{ok("AT+CPIN?", 5000, "+CPIN: " + paras, paras),
                               kSetWrapper("###T9LB LOG### CpinRead tAtRes.Result == AT_RES_RESULT_OK"),
                               kSetWrapper("###T9LB LOG### CpinRead " + paras),
                               kSetWrapper("###T9LB LOG### CpinRead return UNI_ERROR_SUCCESS")};
}
Events simState(int32_t state, int32_t pin, int32_t puk)
{
    return {api("KR_getPINStatus-out-*pStatus:%d", state), api("KR_getPINStatus-out-*pVerifyRetriesLeft:%d", pin),
            api("KR_getPINStatus-out-*pUnblockRetriesLeft:%d", puk), api("KR_getPINStatus-return UNI_ERROR_SUCCESS")};
}

const Events kAsksForNetworkPin = simAnswer("PH-NET PIN") + Events{api("KR_getPINStatus-KORA_MTS_SIM_ICERA_LOCKNET")} +
                                  simState(KORA_MTS_SIM_ICERA_LOCKNET, 0, 0);

/** The ways that every platform has. */
std::vector<Route> routes()
{
    std::vector<Route> routes = {
        {"asks for the network PIN", facility("1", 1) + kAsksForNetworkPin, kNetworkPin},
        {"facility not active", facility("0", 0), kNotLocked},
        {"facility of another status", facility("2", 2), kNotLocked},
        {"facility of a negative status", facility("-1", -1), kNotLocked},
        {"facility without status", facility("", 0), kNotLocked},
    };
    for (const Failure failure : kFailures) {
        const std::string name = nameOf(failure);
        routes.push_back({"facility: " + name,
                          facilityEntry() + failingLockQuery("PN", failure) +
                              Events{api("KR_setFacilityLock-return UNI_ERROR_FALSE")},
                          kNotLocked});
        if (failure == Failure::CmeError) continue; // an answer of the SIM
        const char *const traced = failure == Failure::Send
                                       ? "###T9LB LOG### CpinRead ClientSendCmd return UNI_ERROR_FALSE"
                                       : "###T9LB LOG### CpinRead return last UNI_ERROR_FALSE";
        routes.push_back({"SIM: " + name,
                          facility("1", 1) + simEntry() +
                              Events{failing(failure, "AT+CPIN?", 5000), kSetWrapper(traced),
                                     api("KR_getPINStatus-return UNI_ERROR_COMM_FAILURE-UNI_ERROR_COMM_FAILURE 11111")},
                          kNotLocked});
    }
    return routes;
}

/** Further ways on Spreadtrum: a SIM that waits for its own secrets, or whose attempts cannot be read. */
std::vector<Route> routesOnSpreadtrum()
{
    std::vector<Route> all = routes();
    for (const Attempts &attempts : attemptsOn(PF_SPEADTRUM)) {
        const Events end = attempts.areRead ? simState(KORA_MTS_SIM_PIN_REQUIRED, attempts.pin, attempts.puk)
                                            : Events{api("KR_getPINStatus-return UNI_ERROR_COMM_FAILURE 33333")};
        all.push_back(
            {"SIM PIN, " + attempts.name, facility("1", 1) + simAnswer("SIM PIN") + attempts.events + end, kNotLocked});
    }
    all.push_back({"no SIM",
                   facility("1", 1) + simEntry() +
                       Events{cmeError("AT+CPIN?", 5000, "SIM not inserted"),
                              api("KR_getPINStatus-|| KORA_MTS_SIM_NOT_INSERTED")} +
                       simState(KORA_MTS_SIM_NOT_INSERTED, 0, 0),
                   kNotLocked});
    return all;
}

void expectMode(int32_t platform, const Route &route)
{
    SCOPED_TRACE(std::to_string(platform) + ": " + route.name);
    const GuardedRecord<int32_t> mode(kFill);
    EXPECT_EQ(play(platform, route.events, [&] { return getNetLockMode_Icera(mode); }), UNI_ERROR_SUCCESS);
    EXPECT_EQ(*mode.get(), route.mode);
}

TEST(NetworkPin, MakesTheModeAndNothingMakesItFail)
{
    for (const int32_t platform : kPlatforms) {
        for (const Route &route : routes())
            expectMode(platform, route);
    }
    for (const Route &route : routesOnSpreadtrum())
        expectMode(PF_SPEADTRUM, route);
}

void expectKeyStatus(const Route &route, const Events &attempts)
{
    for (const int32_t controlKeyID : {0, 1, -1}) {
        SCOPED_TRACE(route.name);
        const GuardedRecord<int32_t> state(kFill);
        const GuardedRecord<int32_t> left(kFill);
        const GuardedRecord<int32_t> unlockLeft(kFill);
        const int32_t expected = route.mode == kNetworkPin ? CONTROL_KEY_LOCKED : CONTROL_KEY_NOT_LOCKED;
        const Events events = Events{api("KR_getControlKeyStatus-in"),
                                     api("KR_getControlKeyStatus-in-g_currentPlatform == PF_SPEADTRUM")} +
                              route.events + attempts +
                              Events{api("KR_getControlKeyStatus-out-*pState:%d", expected),
                                     api("KR_getControlKeyStatus-out-*pLefttimes:%d", kKept),
                                     api("KR_getControlKeyStatus-out-*pUnlockLefttimes:%d", 0),
                                     api("KR_getControlKeyStatus-return UNI_ERROR_SUCCESS")};
        EXPECT_EQ(
            play(PF_SPEADTRUM, events, [&] { return KR_getControlKeyStatus(controlKeyID, state, left, unlockLeft); }),
            UNI_ERROR_SUCCESS);
        EXPECT_EQ(*state.get(), expected);
        EXPECT_EQ(*left.get(), kKept);
        EXPECT_EQ(*unlockLeft.get(), 0);
    }
}

TEST(NetworkPin, MakesTheControlKeyOnSpreadtrum)
{
    const Events entry = {api("KR_getLockLefttimes-in"),
                          api("KR_getLockLefttimes-in-g_currentPlatform == PF_SPEADTRUM")};
    for (const Route &route : routesOnSpreadtrum()) {
        expectKeyStatus(route, entry + Events{ok("AT+SPSIMLOCKINFO", 5000, "+SPSIMLOCKINFO: 1,2,3", "1,2,3"),
                                              api("KR_getLockLefttimes-out-pLefttimes:%d", kKept),
                                              api("KR_getLockLefttimes-return UNI_ERROR_SUCCESS")});
    }
    for (const Failure failure : kFailures) {
        expectKeyStatus(routes().front(), entry + Events{failing(failure, "AT+SPSIMLOCKINFO", 5000),
                                                         api("KR_getLockLefttimes-return UNI_ERROR_FALSE")});
    }
}

} // namespace

// The control key: one question and one code, put to each chipset in its own way.

#include <gtest/gtest.h>

#include "tests/mainControl/pin_dialogue.h"

namespace {

using namespace dialogue;

constexpr Module api{scripted::kApiFileModule};
constexpr int32_t kMost = 2147483647;
constexpr int32_t kLeast = -2147483647 - 1;
const std::vector<int32_t> kPlainPlatforms = {0, PF_QC_LTE, 2, PF_TSP, 7};

Events setterEntry(int32_t controlKeyID, int32_t opID, const std::string &code)
{
    return {api("KR_setControlKeyLock-in"), api("KR_setControlKeyLock-in-controlKeyID:%d", controlKeyID),
            api("KR_setControlKeyLock-in-opID:%d", opID), api("KR_setControlKeyLock-in-strcode:%s", code)};
}
const Event kSet = api("KR_setControlKeyLock-return UNI_ERROR_SUCCESS");
const Event kNotSet = api("KR_setControlKeyLock-return UNI_ERROR_FALSE");

/** The facility lock of the network as it logs its arguments; where the status goes is its caller's secret. */
Events networkLock(int32_t mode, const std::string &password, int32_t lockClass)
{
    return {api("KR_setFacilityLock-in"),
            api("KR_setFacilityLock-in-strFac:%s", std::string("PN")),
            api("KR_setFacilityLock-in-iMode:%d", mode),
            api("KR_setFacilityLock-in-strPasswd:%s", password),
            api("KR_setFacilityLock-in-iClass:%d", lockClass),
            api.withLocal("KR_setFacilityLock-in-iStatus:%d")};
}
Events networkLockDone(int32_t status)
{
    return {api("KR_setFacilityLock-out-iStatus:%d", status), api("KR_setFacilityLock-return UNI_ERROR_SUCCESS")};
}
const Event kNetworkLockFailed = api("KR_setFacilityLock-return UNI_ERROR_FALSE");

/** How a code is handed over, with success or without. */
Events codeOnMtk(const std::string &command, Failure const *failure)
{
    return {failure == nullptr ? ok(command, 10000) : failing(*failure, command, 10000)};
}
Events codeOnOthers(const std::string &code, Failure const *failure)
{
    const std::string command = "AT+ZNCK=\"" + code + "\"";
    return {api("KR_setLockCode-in"), api("KR_setLockCode-in-strcode%s", code),
            failure == nullptr ? ok(command, 10000) : failing(*failure, command, 10000),
            api(failure == nullptr ? "KR_setLockCode-return UNI_ERROR_SUCCESS"
                                   : "KR_setLockCode-return UNI_ERROR_FALSE-znckSet failed")};
}

const char *const kCodes[] = {"12345678", "", "12\"34", "%s"};
const std::pair<int32_t, int32_t> kKeys[] = {{0, 0}, {1, 2}, {-1, kMost}, {kLeast, -7}};

template <typename EventsOf>
void expectCodes(int32_t platform, EventsOf eventsOf)
{
    for (const char *code : kCodes) {
        for (const auto &[key, operation] : kKeys) {
            SCOPED_TRACE(std::to_string(platform) + ": " + code);
            const Events entry = setterEntry(key, operation, code);
            const int32_t keyId = key;
            const int32_t opId = operation;
            const auto call = [&] { return KR_setControlKeyLock(keyId, opId, code); };
            EXPECT_EQ(play(platform, entry + eventsOf(keyId, opId, code, nullptr) + Events{kSet}, call),
                      UNI_ERROR_SUCCESS);
            for (const Failure failure : kFailures) {
                SCOPED_TRACE(nameOf(failure));
                EXPECT_EQ(play(platform, entry + eventsOf(keyId, opId, code, &failure) + Events{kNotSet}, call),
                          UNI_ERROR_FALSE);
            }
        }
    }
}

TEST(ControlKeyLock, IsSetByCategoryOnMediaTek)
{
    expectCodes(PF_MTK, [](int32_t key, int32_t operation, const std::string &code, Failure const *failure) {
        return codeOnMtk("AT+ESMLCK=" + std::to_string(key) + "," + std::to_string(operation) + ",\"" + code + "\"",
                         failure);
    });
}

TEST(ControlKeyLock, IsSetByCodeAloneOnMostPlatforms)
{
    for (const int32_t platform : kPlainPlatforms) {
        expectCodes(platform, [](int32_t, int32_t, const std::string &code, Failure const *failure) {
            return codeOnOthers(code, failure);
        });
    }
}

TEST(ControlKeyLock, IsTheFacilityOfTheNetworkOnSpreadtrum)
{
    for (const char *code : kCodes) {
        for (const auto &[key, operation] : kKeys) {
            SCOPED_TRACE(code);
            const int32_t keyId = key;
            const int32_t opId = operation;
            const std::string command = R"(AT+CLCK="PN",0,")" + std::string(code) + "\"";
            const Events entry = setterEntry(keyId, opId, code) + networkLock(0, code, 7);
            const auto call = [&] { return KR_setControlKeyLock(keyId, opId, code); };
            EXPECT_EQ(play(PF_SPEADTRUM, entry + lockChange(command) + networkLockDone(0) + Events{kSet}, call),
                      UNI_ERROR_SUCCESS);
            for (const Step &step : failingLockChanges(command)) {
                SCOPED_TRACE(step.name);
                EXPECT_EQ(play(PF_SPEADTRUM, entry + step.events + Events{kNetworkLockFailed, kNotSet}, call),
                          UNI_ERROR_FALSE);
            }
        }
    }
}

struct LengthRow {
    int32_t platform;
    std::string restOfCommand;
    Events (*success)(const std::string &code);
    Events (*notSent)(const std::string &code);
};

const LengthRow kLengths[] = {
    {PF_MTK, "AT+ESMLCK=1,2,\"\"",
     [](const std::string &code) { return codeOnMtk("AT+ESMLCK=1,2,\"" + code + "\"", nullptr); },
     [](const std::string &) { return Events{}; }},
    {PF_QC_LTE, "AT+ZNCK=\"\"", [](const std::string &code) { return codeOnOthers(code, nullptr); },
     [](const std::string &code) -> Events {
         return {api("KR_setLockCode-in"), api("KR_setLockCode-in-strcode%s", code),
                 api("KR_setLockCode-return UNI_ERROR_FALSE-znckSet failed")};
     }},
    {PF_SPEADTRUM, R"(AT+CLCK="PN",0,"")",
     [](const std::string &code) {
         return networkLock(0, code, 7) + lockChange(R"(AT+CLCK="PN",0,")" + code + "\"") + networkLockDone(0);
     },
     [](const std::string &code) {
         return networkLock(0, code, 7) +
                Events{kSetWrapper("###T9LB LOG### clckSet 2 != mode return UNI_ERROR_FALSE"), kNetworkLockFailed};
     }},
};

TEST(ControlKeyLock, TakesACodeOfAnyLengthThatACommandHolds)
{
    for (const LengthRow &row : kLengths) {
        for (const size_t length : {100U, 254U, 255U, 512U, 513U, 1023U}) {
            SCOPED_TRACE(row.restOfCommand + std::to_string(length));
            const GuardedText code(argumentFor(row.restOfCommand, length));
            const Events events = setterEntry(1, 2, code.str()) + row.success(code.str()) + Events{kSet};
            EXPECT_EQ(play(row.platform, events, [&] { return KR_setControlKeyLock(1, 2, code); }), UNI_ERROR_SUCCESS);
        }
        for (const size_t length : {1024U, 3000U}) {
            SCOPED_TRACE(row.restOfCommand + std::to_string(length));
            const GuardedText code(argumentFor(row.restOfCommand, length));
            const Events events = setterEntry(1, 2, code.str()) + row.notSent(code.str()) + Events{kNotSet};
            EXPECT_EQ(play(row.platform, events, [&] { return KR_setControlKeyLock(1, 2, code); }), UNI_ERROR_FALSE);
        }
    }
}

/** State, attempts left and unlock attempts left, each with nothing behind it. */
class KeyStatus {
  public:
    uint32_t ask(int32_t platform, int32_t controlKeyID, const Events &events)
    {
        return play(platform, Events{api("KR_getControlKeyStatus-in")} + events,
                    [&] { return KR_getControlKeyStatus(controlKeyID, state_, left_, unlockLeft_); });
    }
    void expectState(int32_t platform, int32_t controlKeyID, const Events &events, int32_t state, int32_t left,
                     int32_t unlockLeft)
    {
        const Events exit = {api("KR_getControlKeyStatus-out-*pState:%d", state),
                             api("KR_getControlKeyStatus-out-*pLefttimes:%d", left),
                             api("KR_getControlKeyStatus-out-*pUnlockLefttimes:%d", unlockLeft),
                             api("KR_getControlKeyStatus-return UNI_ERROR_SUCCESS")};
        EXPECT_EQ(ask(platform, controlKeyID, events + exit), UNI_ERROR_SUCCESS);
        expectOutputs(state, left, unlockLeft);
    }
    void expectOutputs(int32_t state, int32_t left, int32_t unlockLeft) const
    {
        EXPECT_EQ(*state_.get(), state);
        EXPECT_EQ(*left_.get(), left);
        EXPECT_EQ(*unlockLeft_.get(), unlockLeft);
    }

  private:
    GuardedRecord<int32_t> state_{kFill}, left_{kFill}, unlockLeft_{kFill};
};

const Event kKeyOnMtk = api("KR_getControlKeyStatus-in-g_currentPlatform == PF_MTK");
const Event kKeyFailed = api("KR_getControlKeyStatus-return UNI_ERROR_FALSE");

struct GroupRow {
    int32_t controlKeyID;
    std::string paras;
    bool isFound;
    int32_t state, left, unlockLeft;
};

const GroupRow kGroups[] = {
    {0, "(0,2,5,10),(1,1,4,9)", true, 2, 5, 10},
    {1, "(0,2,5,10),(1,1,4,9)", true, 1, 4, 9},
    {1, "0,2,5,10;1,1,4,9", true, 1, 4, 9},
    {2, "(0,2,5,10),(1,1,4,9),(2,7,-3,8,6)", true, 7, -3, 8},
    {-1, "(0,2,5,10),(1,1,4,9)", true, 2, 5, 10},
    {kLeast, "(0,2,5,10),(1,1,4,9)", true, 2, 5, 10},
    {2, "(0,2,5,10),(1,1,4,9)", false, 0, 0, 0},
    {1, "(0,2,5,10)", false, 0, 0, 0},
    {kMost, "(0,2,5,10),(1,1,4,9)", false, 0, 0, 0},
    {1, "", false, 0, 0, 0},
    // The state and the unlock attempts that a group lacks are 0; the attempts left stay the caller's.
    {0, "", true, 0, kKept, 0},
    {0, "(0,2,5),(1,1,4,9)", true, 2, 5, 0},
    {0, "(0,2),(1,1,4,9)", true, 2, kKept, 0},
    {0, "(0),(1,1,4,9)", true, 0, kKept, 0},
    {1, "0,2,5,10;", true, 0, kKept, 0},
    {0, "none", true, 0, kKept, 0},
    // A line of 1024 characters cannot be rewritten: it keeps its commas.
    {0, "0,2,5,10," + filled(1014), true, 2, 5, 10},
    {0, "0,2,5,10," + filled(1015), true, 0, kKept, 0},
};

TEST(ControlKeyStatus, IsThatOfAGroupOnMediaTek)
{
    for (const GroupRow &row : kGroups) {
        SCOPED_TRACE(std::to_string(row.controlKeyID) + ": " + row.paras.substr(0, 60));
        const Event exchange =
            row.paras.empty() ? ok("AT+ESMLCK?", 5000) : ok("AT+ESMLCK?", 5000, "+ESMLCK: " + row.paras, row.paras);
        KeyStatus status;
        if (row.isFound) {
            status.expectState(PF_MTK, row.controlKeyID, {kKeyOnMtk, exchange}, row.state, row.left, row.unlockLeft);
        } else {
            EXPECT_EQ(status.ask(PF_MTK, row.controlKeyID, {kKeyOnMtk, exchange, kKeyFailed}), UNI_ERROR_FALSE);
            status.expectOutputs(kKept, kKept, kKept);
        }
    }
}

TEST(ControlKeyStatus, IsNotToldOnMediaTekAloneWhenTheModemDoesNotTell)
{
    for (const Failure failure : kFailures) {
        SCOPED_TRACE(nameOf(failure));
        KeyStatus status;
        EXPECT_EQ(status.ask(PF_MTK, 0, {kKeyOnMtk, failing(failure, "AT+ESMLCK?", 5000), kKeyFailed}),
                  UNI_ERROR_FALSE);
        status.expectOutputs(kKept, kKept, kKept);
    }
}

Events attempts(int32_t count)
{
    return {api("KR_getLockLefttimes-in"),
            ok("AT+ZNCK?", 5000, "+ZNCK: " + std::to_string(count), std::to_string(count)),
            api("KR_getLockLefttimes-out-pLefttimes:%d", count), api("KR_getLockLefttimes-return UNI_ERROR_SUCCESS")};
}
Events failingAttempts(Failure failure)
{
    return {api("KR_getLockLefttimes-in"), failing(failure, "AT+ZNCK?", 5000),
            api("KR_getLockLefttimes-return UNI_ERROR_FALSE")};
}
Events lockStatus(int32_t status, int32_t items)
{
    const std::string paras = std::to_string(status) + "," + std::to_string(items);
    return {api("KR_getLockStatus-in"), ok("AT+ZSEC?", 5000, "+ZSEC: " + paras, paras),
            api("KR_getLockStatus-out-*pstatus:%d", status), api("KR_getLockStatus-out-*pitems:%d", items),
            api("KR_getLockStatus-return UNI_ERROR_SUCCESS")};
}
Events failingLockStatus(Failure failure)
{
    return {api("KR_getLockStatus-in"), failing(failure, "AT+ZSEC?", 5000),
            api("KR_getLockStatus-return UNI_ERROR_FALSE")};
}

const struct {
    int32_t status, items, state;
} kStates[] = {
    {2, 1, CONTROL_KEY_LOCKED},  {2, 0, CONTROL_KEY_NOT_LOCKED}, {2, 2, CONTROL_KEY_LOCKED},
    {2, 3, CONTROL_KEY_LOCKED},  {2, 4, CONTROL_KEY_UNKNOWN},    {0, 0, CONTROL_KEY_UNKNOWN},
    {0, 1, CONTROL_KEY_UNKNOWN}, {1, 1, CONTROL_KEY_UNKNOWN},    {3, 9, CONTROL_KEY_NOT_LOCKED},
    {4, 0, CONTROL_KEY_UNKNOWN},
};

TEST(ControlKeyStatus, IsThatOfStatusAndItemsOnMostPlatforms)
{
    for (const int32_t platform : kPlainPlatforms) {
        for (const auto &row : kStates) {
            SCOPED_TRACE(std::to_string(row.status) + "," + std::to_string(row.items));
            KeyStatus().expectState(platform, 3, lockStatus(row.status, row.items) + attempts(5), row.state, 5, 0);
        }
    }
}

/** A step that fails counts as not locked, and its count is the caller's. */
TEST(ControlKeyStatus, AlwaysSucceedsOnMostPlatforms)
{
    for (const int32_t platform : kPlainPlatforms) {
        for (const Failure failure : kFailures) {
            SCOPED_TRACE(nameOf(failure));
            KeyStatus().expectState(platform, 0, failingLockStatus(failure) + attempts(5), CONTROL_KEY_NOT_LOCKED, 5,
                                    0);
            KeyStatus().expectState(platform, 0, lockStatus(2, 1) + failingAttempts(failure), CONTROL_KEY_LOCKED, kKept,
                                    0);
            KeyStatus().expectState(platform, 0, failingLockStatus(failure) + failingAttempts(failure),
                                    CONTROL_KEY_NOT_LOCKED, kKept, 0);
        }
    }
}

} // namespace

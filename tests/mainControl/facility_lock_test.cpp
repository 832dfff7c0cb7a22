// Facility locks of any kind, queried and changed.

#include <gtest/gtest.h>

#include "tests/mainControl/pin_dialogue.h"

namespace {

using namespace dialogue;

struct LockCall {
    const char *facility;
    int32_t mode;
    const char *password;
    int32_t lockClass;
};

Events entry(const LockCall &call, const int32_t *status)
{
    return {kApiFile("KR_setFacilityLock-in"),
            kApiFile("KR_setFacilityLock-in-strFac:%s", std::string(call.facility)),
            kApiFile("KR_setFacilityLock-in-iMode:%d", call.mode),
            kApiFile("KR_setFacilityLock-in-strPasswd:%s",
                     std::string(call.password == nullptr ? "(null)" : call.password)),
            kApiFile("KR_setFacilityLock-in-iClass:%d", call.lockClass),
            kApiFile("KR_setFacilityLock-in-iStatus:%d", status)};
}

void expectSuccess(int32_t platform, const LockCall &call, const Events &step, int32_t expectedStatus)
{
    const PinMemory memory;
    const GuardedRecord<int32_t> status(kFill);
    const Events events = entry(call, status) + step +
                          Events{kApiFile("KR_setFacilityLock-out-iStatus:%d", expectedStatus),
                                 kApiFile("KR_setFacilityLock-return UNI_ERROR_SUCCESS")};
    EXPECT_EQ(play(platform, events,
                   [&] { return KR_setFacilityLock(call.facility, call.mode, call.password, call.lockClass, status); }),
              UNI_ERROR_SUCCESS);
    EXPECT_EQ(*status.get(), expectedStatus);
    EXPECT_EQ(PinMemory::lastPin(), PinMemory::untouched());
}

void expectFailure(int32_t platform, const LockCall &call, const Events &step)
{
    const PinMemory memory;
    const GuardedRecord<int32_t> status(kFill);
    const Events events = entry(call, status) + step + Events{kApiFile("KR_setFacilityLock-return UNI_ERROR_FALSE")};
    EXPECT_EQ(play(platform, events,
                   [&] { return KR_setFacilityLock(call.facility, call.mode, call.password, call.lockClass, status); }),
              UNI_ERROR_FALSE);
    EXPECT_EQ(*status.get(), kKept);
    EXPECT_EQ(PinMemory::lastPin(), PinMemory::untouched());
}

const struct {
    const char *paras;
    int32_t status;
} kAnswers[] = {{"1", 1},     {"0", 0},    {"1,7", 1},       {"0, 7", 0},  {"-5", -5},
                {"255", 255}, {"", kKept}, {"\"1\"", kKept}, {"x", kKept}, {"1;0", 1}};

TEST(FacilityLock, IsQueriedWithoutPasswordAndClass)
{
    for (const int32_t platform : kPlatforms) {
        for (const char *facility : {"SC", "PN", "PS", "", "a longer name"}) {
            for (const LockCall &call :
                 {LockCall{facility, 2, nullptr, 0}, {facility, 2, "", 7}, {facility, 2, "1234", 1}}) {
                for (const auto &answer : kAnswers) {
                    SCOPED_TRACE(facility + std::string(": ") + answer.paras);
                    expectSuccess(platform, call, lockQuery(facility, answer.paras), answer.status);
                }
                for (const Failure failure : kFailures)
                    expectFailure(platform, call, failingLockQuery(facility, failure));
            }
        }
    }
}

struct ChangeRow {
    LockCall call;
    const char *command;
};

const ChangeRow kChanges[] = {
    {{"SC", 1, "1234", 7}, R"(AT+CLCK="SC",1,"1234")"},
    {{"SC", 0, "1234", 7}, R"(AT+CLCK="SC",0,"1234")"},
    {{"SC", 1, "1234", 1}, R"(AT+CLCK="SC",1,"1234",1)"},
    {{"PN", 0, "0123456789", 1}, R"(AT+CLCK="PN",0,"0123456789",1)"},
    {{"SC", 1, "1234", 0}, R"(AT+CLCK="SC",1,"1234")"},
    {{"SC", 1, "1234", 2}, R"(AT+CLCK="SC",1,"1234")"},
    {{"SC", 1, "1234", -1}, R"(AT+CLCK="SC",1,"1234")"},
    {{"SC", 1, "", 255}, R"(AT+CLCK="SC",1,"")"},
    {{"", 3, "12\"34", 1}, R"(AT+CLCK="",3,"12"34",1)"},
    {{"SC", -2, "1234", 7}, R"(AT+CLCK="SC",-2,"1234")"},
};

TEST(FacilityLock, IsChangedWithTheClassOnlyIfItIsOne)
{
    for (const int32_t platform : kPlatforms) {
        for (const ChangeRow &row : kChanges) {
            SCOPED_TRACE(row.command);
            expectSuccess(platform, row.call, lockChange(row.command), kKept);
        }
    }
}

/** Why a change fails shows in the log alone. */
TEST(FacilityLock, FoldsEveryReasonIntoOne)
{
    for (const int32_t platform : kPlatforms) {
        for (const ChangeRow &row : kChanges) {
            for (const Step &step : failingLockChanges(row.command)) {
                SCOPED_TRACE(row.command + step.name);
                expectFailure(platform, row.call, step.events);
            }
        }
    }
}

TEST(FacilityLock, IsChangedByACommandOfAnyLengthThatCanBeSent)
{
    for (const size_t length : {1U, 19U, 20U, 39U, 40U, 99U, 100U, 101U, 254U, 255U, 512U}) {
        const GuardedText password(filled(length));
        expectSuccess(PF_QC_LTE, {"SC", 1, password, 7}, lockChange(R"(AT+CLCK="SC",1,")" + password.str() + "\""),
                      kKept);
    }
    const Event tooLong = kSetWrapper("###T9LB LOG### clckSet 2 != mode return UNI_ERROR_FALSE");
    for (const int32_t lockClass : {1, 7}) {
        const std::string tail = lockClass == 1 ? "\",1" : "\"";
        const GuardedText fits(argumentFor(R"(AT+CLCK="SC",0,")" + tail, kLongestCommand));
        const GuardedText exceeds(argumentFor(R"(AT+CLCK="SC",0,")" + tail, kLongestCommand + 1));
        expectSuccess(PF_MTK, {"SC", 0, fits, lockClass}, lockChange(R"(AT+CLCK="SC",0,")" + fits.str() + tail), kKept);
        expectFailure(PF_MTK, {"SC", 0, exceeds, lockClass}, {tooLong});
    }
}

TEST(FacilityLock, IsQueriedByACommandOfAnyLengthThatCanBeSent)
{
    const GuardedText fits(argumentFor("AT+CLCK=\"\",2", kLongestCommand));
    const GuardedText exceeds(argumentFor("AT+CLCK=\"\",2", kLongestCommand + 1));
    expectSuccess(PF_TSP, {fits, 2, "", 0}, lockQuery(fits.str(), "1"), 1);
    expectFailure(PF_TSP, {exceeds, 2, "", 0},
                  {kSetWrapper("###T9LB LOG### clckSet 2 == mode begin"),
                   kSetWrapper("###T9LB LOG### clckSet ClientSendCmd return UNI_ERROR_FALSE")});
}

} // namespace

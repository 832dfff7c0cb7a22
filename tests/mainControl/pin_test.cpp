// The operations that change something about the SIM's PIN: their checks, their steps, and what they remember.

#include <gtest/gtest.h>

#include "tests/mainControl/pin_operations.h"

namespace {

using namespace dialogue;

class PinTest : public testing::TestWithParam<PinOperation> {};

TEST_P(PinTest, TellsTheAttemptsLeft)
{
    const PinOperation &operation = GetParam();
    for (const int32_t platform : kPlatforms) {
        for (const Attempts &attempts : attemptsOn(platform)) {
            SCOPED_TRACE(std::to_string(platform) + ": " + attempts.name);
            PinRun run;
            g_cardTypeKnown = attempts.cardTypeKnown;
            const Events events = operation.entry(run.call) + operation.step(operation.command(platform, run.call)) +
                                  attempts.events + operation.exit(platform, attempts);
            run.expect(operation, platform, events, attempts.areRead ? UNI_ERROR_SUCCESS : UNI_ERROR_FALSE,
                       operation.rememberedAfterSuccess(run.call), attempts.pin, attempts.puk);
        }
    }
}

TEST_P(PinTest, PassesOnWhyItsStepFails)
{
    const PinOperation &operation = GetParam();
    for (const int32_t platform : kPlatforms) {
        for (const Step &step : operation.failingSteps(operation.command(platform, PinCall{}))) {
            SCOPED_TRACE(std::to_string(platform) + ": " + step.name);
            PinRun run;
            run.expectFailure(operation, platform, step.events, step.code);
        }
    }
}

TEST_P(PinTest, NeedsItsTextsAndBothOutputs)
{
    const PinOperation &operation = GetParam();
    const auto expectRefusal = [&](const char *name, auto spoil) {
        for (const int32_t platform : kPlatforms) {
            SCOPED_TRACE(std::string(name) + " on platform " + std::to_string(platform));
            PinRun run;
            spoil(run.call);
            run.expect(operation, platform,
                       operation.entry(run.call) + Events{operation.says("-return UNI_ERROR_INVALID_PARAMETER")},
                       UNI_ERROR_INVALID_PARAMETER, PinMemory::untouched());
        }
    };
    expectRefusal("an empty text", [](PinCall &call) { call.first = ""; });
    expectRefusal("no text", [](PinCall &call) { call.first = nullptr; });
    expectRefusal("no PIN count", [](PinCall &call) { call.verify = nullptr; });
    expectRefusal("no PUK count", [](PinCall &call) { call.unblock = nullptr; });
    expectRefusal("nothing", [](PinCall &call) {
        call.first = call.second = nullptr;
        call.verify = call.unblock = nullptr;
    });
    if (!operation.hasSecond) return;
    expectRefusal("an empty new PIN", [](PinCall &call) { call.second = ""; });
    expectRefusal("no new PIN", [](PinCall &call) { call.second = nullptr; });
}

TEST_P(PinTest, LogsAnyIdAndLooksAtNone)
{
    for (const int32_t id : {0, 1, 2, -1, 2147483647, -2147483647 - 1}) {
        for (const int32_t platform : kPlatforms) {
            PinRun run;
            run.call.id = id;
            run.expectSuccess(GetParam(), platform, GetParam().step(GetParam().command(platform, run.call)));
        }
    }
}

/** A secret goes out as it is, whatever is in it. */
TEST_P(PinTest, EscapesNothing)
{
    for (const char *secret : {"12\"34", "12,34", " ", "%s%d", "\\", "a b"}) {
        SCOPED_TRACE(secret);
        for (const int32_t platform : kPlatforms) {
            PinRun run;
            run.call.first = run.call.second = secret;
            run.expectSuccess(GetParam(), platform, GetParam().step(GetParam().command(platform, run.call)));
        }
    }
}

TEST_P(PinTest, KeepsWhatASuccessHasToldWhenItFailsAfterwards)
{
    const PinOperation &operation = GetParam();
    const PinMemory memory;
    const GuardedRecord<int32_t> status(kFill);
    const GuardedRecord<int32_t> verify(kFill);
    const GuardedRecord<int32_t> unblock(kFill);
    const PinCall call = {1, 1, "1111", "2222", 7, status, verify, unblock};
    const std::string command = operation.command(PF_QC_LTE, call);
    const Attempts attempts = attemptsOn(PF_QC_LTE).front();
    const Events success =
        operation.entry(call) + operation.step(command) + attempts.events + operation.exit(PF_QC_LTE, attempts);
    EXPECT_EQ(play(PF_QC_LTE, success, [&] { return operation.call(call); }), UNI_ERROR_SUCCESS);
    const std::string remembered = PinMemory::lastPin();

    const Step wrong = operation.failingSteps(command).back();
    const Events failure = operation.entry(call) + wrong.events + Events{operation.says(operation.stepFailed)};
    EXPECT_EQ(play(PF_QC_LTE, failure, [&] { return operation.call(call); }), wrong.code);
    const bool clearsFirst = operation.name == std::string("KR_verifyPIN");
    EXPECT_EQ(PinMemory::lastPin(), clearsFirst ? PinMemory::cleared() : remembered);
    EXPECT_EQ(*verify.get(), attempts.pin);
    EXPECT_EQ(*unblock.get(), attempts.puk);
}

INSTANTIATE_TEST_SUITE_P(Every, PinTest, testing::ValuesIn(kPinOperations),
                         [](const auto &row) { return std::string(row.param.name); });

/** The PIN is taken before the remembered one is cleared, so a host may hand over what is remembered. */
TEST(VerifyPin, SendsARememberedPin)
{
    const PinMemory memory;
    const std::string pin = "1234567890123456789";
    std::memcpy(g_lastPin, pin.c_str(), pin.size() + 1);
    const GuardedRecord<int32_t> verify(kFill);
    const GuardedRecord<int32_t> unblock(kFill);
    const PinCall call = {1, 0, g_lastPin, "", 0, nullptr, verify, unblock};
    const PinOperation &operation = kPinOperations[1];
    const Attempts attempts = attemptsOn(PF_QC_LTE).front();
    const Events events = operation.entry(call) + cpinEntry(cpinCommand(PF_QC_LTE, pin)) + attempts.events +
                          operation.exit(PF_QC_LTE, attempts);
    EXPECT_EQ(play(PF_QC_LTE, events, [&] { return operation.call(call); }), UNI_ERROR_SUCCESS);
    EXPECT_EQ(PinMemory::lastPin(), PinMemory::cleared());
}

struct LockRow {
    int32_t enable, lockClass;
    const char *command;
};

const LockRow kLocks[] = {
    {1, 7, R"(AT+CLCK="SC",1,"1234")"},          {0, 7, R"(AT+CLCK="SC",0,"1234")"},
    {1, 1, R"(AT+CLCK="SC",1,"1234",1)"},        {0, 1, R"(AT+CLCK="SC",0,"1234",1)"},
    {1, 0, R"(AT+CLCK="SC",1,"1234")"},          {1, -1, R"(AT+CLCK="SC",1,"1234")"},
    {1, 2147483647, R"(AT+CLCK="SC",1,"1234")"}, {3, 7, R"(AT+CLCK="SC",3,"1234")"},
    {-1, 7, R"(AT+CLCK="SC",-1,"1234")"},
};

TEST(PinProtection, SendsTheClassOnlyIfItIsOne)
{
    for (const LockRow &row : kLocks) {
        for (const int32_t platform : kPlatforms) {
            SCOPED_TRACE(row.command);
            PinRun run;
            run.call.enable = row.enable;
            run.call.lockClass = row.lockClass;
            run.expectSuccess(kPinOperations[0], platform, lockChange(row.command));
        }
    }
}

TEST(PinProtection, WritesTheStatusOnlyAsAnswerToAQuery)
{
    const struct {
        const char *paras;
        int32_t status;
    } rows[] = {{"1", 1}, {"0", 0}, {"1, 7", 1}, {"-5,7", -5}, {"", kKept}, {"x", kKept}};
    const PinOperation &operation = kPinOperations[0];
    for (const auto &row : rows) {
        SCOPED_TRACE(row.paras);
        const PinMemory memory;
        const GuardedRecord<int32_t> status(kFill);
        const GuardedRecord<int32_t> verify(kFill);
        const GuardedRecord<int32_t> unblock(kFill);
        const PinCall call = {1, 2, "1234", "", 1, status, verify, unblock};
        const Attempts attempts = attemptsOn(PF_MTK).front();
        Events exit = operation.exit(PF_MTK, attempts);
        exit.front() = kApiFile("KR_setPINProtection-out-*iStatus:%d", row.status);
        const Events events = operation.entry(call) + lockQuery("SC", row.paras) + attempts.events + exit;
        EXPECT_EQ(play(PF_MTK, events, [&] { return operation.call(call); }), UNI_ERROR_SUCCESS);
        EXPECT_EQ(*status.get(), row.status);
        EXPECT_EQ(*verify.get(), attempts.pin);
        EXPECT_EQ(*unblock.get(), attempts.puk);
        EXPECT_EQ(PinMemory::lastPin(), PinMemory::with("1234", PinMemory::untouched()));
    }
}

TEST(PinProtection, FailsWithItsQuery)
{
    for (const Failure failure : kFailures) {
        PinRun run;
        run.call.enable = 2;
        run.expectFailure(kPinOperations[0], PF_TSP, failingLockQuery("SC", failure), UNI_ERROR_FALSE);
    }
}

} // namespace

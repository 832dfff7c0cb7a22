// Secrets of every length: what still fits is sent and remembered, what does not is not sent, and nothing is cut.

#include <gtest/gtest.h>

#include "tests/mainControl/pin_operations.h"

namespace {

using namespace dialogue;

constexpr size_t kLengths[] = {1, 4, 8, 18, 19, 20, 21, 38, 39, 40, 41, 254, 255, 512, 1024, 2000};
constexpr size_t kField = 20;
constexpr size_t kRecord = 2 * kField;

const PinOperation &operationNamed(const std::string &name)
{
    for (const PinOperation &operation : kPinOperations) {
        if (name == operation.name) return operation;
    }
    ADD_FAILURE() << name;
    return kPinOperations[0];
}

/** A secret whose characters differ from those of every other offset. */
std::string secret(size_t length, size_t offset)
{
    return filled(length + offset).substr(offset);
}

TEST(PinLength, OfAPinThatRunsOnIntoTheNewCodeIsVerifiedWhole)
{
    const PinOperation &operation = operationNamed("KR_verifyPIN");
    for (const int32_t platform : kPlatforms) {
        for (const size_t length : kLengths) {
            SCOPED_TRACE(std::to_string(platform) + ": " + std::to_string(length));
            const GuardedText pin(filled(length));
            PinRun run;
            run.call.first = pin;
            if (length < kRecord) {
                const std::string newCode = length > kField ? pin.str().substr(kField) : "";
                run.expectSuccess(operation, platform, cpinEntry(cpinCommand(platform, pin.str(), newCode)));
            } else {
                run.expectFailure(operation, platform, {}, UNI_ERROR_FALSE);
            }
        }
    }
}

void expectPair(const PinOperation &operation, int32_t platform, size_t first, size_t second)
{
    SCOPED_TRACE(std::to_string(platform) + ": " + std::to_string(first) + " and " + std::to_string(second));
    const GuardedText old(secret(first, 0));
    const GuardedText fresh(secret(second, 5));
    PinRun run;
    run.call.first = old;
    run.call.second = fresh;
    if (first < kField && second < kField) {
        run.expectSuccess(operation, platform, operation.step(operation.command(platform, run.call)));
    } else {
        run.expectFailure(operation, platform, {}, UNI_ERROR_FALSE);
    }
}

TEST(PinLength, OfAPairIsWhatTheFieldsHold)
{
    for (const char *name : {"KR_unblockPIN", "KR_changePIN"}) {
        for (const int32_t platform : kPlatforms) {
            for (const size_t first : kLengths) {
                for (const size_t second : kLengths)
                    expectPair(operationNamed(name), platform, first, second);
            }
        }
    }
}

TEST(PinLength, OfALockIsWhatACommandHolds)
{
    const PinOperation &operation = operationNamed("KR_setPINProtection");
    for (const int32_t platform : kPlatforms) {
        for (const size_t length : kLengths) {
            SCOPED_TRACE(length);
            const GuardedText pin(filled(length));
            PinRun run;
            run.call.first = pin;
            const std::string command = operation.command(platform, run.call);
            if (command.size() <= kLongestCommand) {
                run.expectSuccess(operation, platform, lockChange(command));
            } else {
                run.expectFailure(operation, platform,
                                  {kSetWrapper("###T9LB LOG### clckSet 2 != mode return UNI_ERROR_FALSE")},
                                  UNI_ERROR_FALSE);
            }
        }
    }
}

TEST(PinLength, OfTheLongestLockCommandIsExact)
{
    const PinOperation &operation = operationNamed("KR_setPINProtection");
    for (const int32_t lockClass : {7, 1}) {
        const std::string rest = lockClass == 1 ? R"(AT+CLCK="SC",1,"",1)" : R"(AT+CLCK="SC",1,"")";
        const GuardedText fits(argumentFor(rest, kLongestCommand));
        PinRun run;
        run.call.first = fits;
        run.call.lockClass = lockClass;
        run.expectSuccess(operation, PF_QC_LTE, lockChange(operation.command(PF_QC_LTE, run.call)));

        const GuardedText exceeds(argumentFor(rest, kLongestCommand + 1));
        PinRun longer;
        longer.call.first = exceeds;
        longer.call.lockClass = lockClass;
        longer.expectFailure(operation, PF_QC_LTE,
                             {kSetWrapper("###T9LB LOG### clckSet 2 != mode return UNI_ERROR_FALSE")}, UNI_ERROR_FALSE);
    }
}

/** A shorter PIN leaves nothing of a longer one. */
TEST(PinLength, OfAnEarlierPinDoesNotShow)
{
    for (const char *name : {"KR_setPINProtection", "KR_verifyPIN", "KR_changePIN"}) {
        const PinOperation &operation = operationNamed(name);
        PinRun run;
        const GuardedText earlier(filled(19));
        run.call.first = earlier;
        run.call.second = earlier;
        run.expectSuccess(operation, PF_MTK, operation.step(operation.command(PF_MTK, run.call)));
        run.call.first = run.call.second = "9";
        run.expectSuccess(operation, PF_MTK, operation.step(operation.command(PF_MTK, run.call)));
    }
}

} // namespace

#include "krctl/commands/pin_operation.h"

#include <cstring>
#include <utility>

#include <mainControl/api.h>

#include "krctl/commands/readings.h"
#include "krctl/output/output.h"
#include "krctl/session/call_failure.h"
#include "krctl/session/session.h"

namespace krctl {
namespace {

/** The library remembers the last PIN; this process has no use for it. */
struct ForgottenPin {
    ForgottenPin() = default;
    ForgottenPin(const ForgottenPin &) = delete;
    ForgottenPin &operator=(const ForgottenPin &) = delete;
    ~ForgottenPin() { explicit_bzero(g_lastPin, sizeof g_lastPin); }
};

Failure cannotNow(const PinOperation &operation, const Session &session, int32_t state)
{
    Failure failure{kRefused, "sim_state",
                    "The SIM's state is \"" + wordOf(kSimStates, state) + "\": it cannot " + operation.purpose +
                        " now.",
                    session.where(operation.function), "See \"krctl sim status\"."};
    if (isInTheWay(state, failure)) return failure;
    if (operation.needs == KORA_MTS_SIM_PIN_ENABLED && state == KORA_MTS_SIM_PIN_DISABLED)
        failure.next = "Switch the PIN lock on first, with \"krctl sim lock\".";
    if (state == KORA_MTS_SIM_NOT_INSERTED) failure.code = "no_sim", failure.next = "Insert a SIM.";
    return failure;
}

/** Whether the state that the operation would lead to is there already. */
bool isDoneAlready(const PinOperation &operation, int32_t state)
{
    if (operation.isDone == nullptr || state == operation.needs) return false;
    return isReady(state);
}

Section triesSection(const SimReading &before, const SimReading &after)
{
    Section section;
    const auto add = [&](const char *name, const char *key, std::optional<int64_t> first, std::optional<int64_t> last) {
        Field field = numberField(std::string(name) + " tries left", std::string(key) + "_tries_left", last);
        if (first && last && *first != *last) field.text = std::to_string(*last) + ", before " + std::to_string(*first);
        section.add(field).add(numberField("", std::string(key) + "_tries_left_before", first));
    };
    add("PIN", "pin", before.pinTries, after.pinTries);
    add("PUK", "puk", before.pukTries, after.pukTries);
    return section;
}

Failure wrongEntry(const PinOperation &operation, const Session &session, const SimReading &after)
{
    const std::optional<int64_t> tries = operation.countsPuk ? after.pukTries : after.pinTries;
    Failure failure{kLocked, "wrong_code", "The " + std::string(operation.first->name) + " is wrong.",
                    session.where(operation.function), "Check it and repeat the command."};
    if (tries) failure.what += " Tries left: " + std::to_string(*tries) + '.';
    if (after.state == KORA_MTS_SIM_PUK_REQUIRED && !operation.countsPuk) isInTheWay(*after.state, failure);
    return failure;
}

} // namespace

void guardTries(const Context &context, const char *name, std::optional<int64_t> tries)
{
    if (tries) context.output.remark("Tries left for the " + std::string(name) + ": " + std::to_string(*tries));
    if (context.arguments.has(kForce.name) || (tries && *tries > 1)) return;
    const std::string what = tries ? "Only " + std::to_string(*tries) + " tries are left for the " + name + '.'
                                   : "It is not known how many tries are left for the " + std::string(name) + '.';
    throw Failure{kLocked, tries ? "last_try" : "tries_unknown",
                  tries == 1 ? "Only one try is left for the " + std::string(name) + '.' : what,
                  "krctl, before anything was sent", "If you are sure of the " + std::string(name) + ", add --force."};
}

Report runPinOperation(Context &context, const PinOperation &operation)
{
    Session &session = context.session;
    const ForgottenPin forgotten;
    const SimReading before = readSim(session);
    if (before.state && isDoneAlready(operation, *before.state)) {
        Report report;
        report.sentence = operation.isDone;
        report.sections.push_back(triesSection(before, before));
        return report;
    }
    if (before.state && *before.state != operation.needs && *before.state != KORA_MTS_SIM_UNKNOWN)
        throw cannotNow(operation, session, *before.state);
    guardTries(context, operation.countsPuk ? "PUK" : "PIN", operation.countsPuk ? before.pukTries : before.pinTries);

    SecretInput input(context.arguments);
    Secret first;
    Secret newPin;
    input.read(*operation.first, first);
    if (operation.hasNewPin) input.readNew(kNewPin, newPin);

    int32_t pinTries = 0;
    int32_t pukTries = 0;
    const uint32_t result = operation.run(first.c_str(), newPin.c_str(), &pinTries, &pukTries);
    // The library also fails if only the tries left could not be read behind a change that was made.
    const bool isDone = result == UNI_ERROR_SUCCESS || session.finalResultOf(operation.command) == "OK";
    const bool isWrong =
        result == UNI_ERROR_SETTING_CPIN_INCORRECT_PASS || result == UNI_ERROR_SETTING_CPIN_PUKPASS_REQUIRED;
    if (!isDone && !isWrong) throw session.failureFor(operation.function, operation.purpose);

    const SimReading after = readSim(session);
    if (isDone) {
        Report report;
        report.sentence = operation.sentence;
        report.sections.push_back(triesSection(before, after));
        return report;
    }
    Failure failure = wrongEntry(operation, session, after);
    failure.known.sections.push_back(triesSection(before, after));
    throw Failure(std::move(failure));
}

} // namespace krctl

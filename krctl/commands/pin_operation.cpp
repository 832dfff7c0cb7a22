#include "krctl/commands/pin_operation.h"

#include <cstring>
#include <utility>

#include <mainControl/api.h>
#include <mainControl/at_values.h>

#include "krctl/commands/sim_reading.h"
#include "krctl/output/output.h"
#include "krctl/readings/reply.h"
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

/** Whether the SIM is in the state that an operation needs, as far as it told. */
bool isReadyFor(const PinOperation &operation, const SimReading &sim)
{
    if (sim.state != operation.needs) return false;
    return !operation.lock || sim.pinLock.value_or(*operation.lock) == *operation.lock;
}

/** Whether the state that the operation would lead to is there already. */
bool isDoneAlready(const PinOperation &operation, const SimReading &sim)
{
    return operation.isDone != nullptr && sim.state == SimState::Ready && !isReadyFor(operation, sim);
}

Failure cannotNow(const PinOperation &operation, const Session &session, const SimReading &sim)
{
    Failure failure{kRefused, "sim_state",
                    "The SIM's state is \"" + sim.word() + "\": it cannot " + operation.purpose + " now.",
                    session.where(operation.function), "See \"krctl sim status\"."};
    if (!sim.state) failure.next = "This state is not known; the modem's manual says what it asks for.";
    if (!sim.state || isInTheWay(*sim.state, failure)) return failure;
    const SimStateRow &row = rowOf(*sim.state);
    if (sim.state == SimState::Ready)
        failure.next = "Switch the PIN lock on first, with \"krctl sim lock\".";
    else
        failure.code = row.failure, failure.next = row.next;
    return failure;
}

/** Nothing is sent to a SIM that does not say what it asks for, unless whoever calls is sure. */
Failure notTold(const PinOperation &operation, Session &session)
{
    Failure failure = session.failureFor(operation.function, "tell the state of the SIM");
    if (failure.code == "refused")
        failure.next =
            std::string("If you are sure that the SIM asks for this ") + operation.first->name + ", add --force.";
    return failure;
}

Section triesSection(const SimReading &before, const SimReading &after)
{
    Section section;
    const auto add = [&](const char *name, const char *key, std::optional<int64_t> first, std::optional<int64_t> last) {
        Field field = numberField(std::string(name) + " tries left", std::string(key) + "_tries_left", last);
        if (first && last && *first != *last) field.text = std::to_string(*last) + ", before " + std::to_string(*first);
        section.add(field).add(numberField("", std::string(key) + "_tries_left_before", first));
    };
    add("PIN", "pin", before.tries.pin, after.tries.pin);
    add("PUK", "puk", before.tries.puk, after.tries.puk);
    return section;
}

std::optional<int64_t> triesOf(const PinOperation &operation, const SimReading &sim)
{
    return operation.countsPuk ? sim.tries.puk : sim.tries.pin;
}

/** Whether the modem says that what was entered is wrong: by its error, or because it cost a try. */
bool isWrong(const PinOperation &operation, const std::string &result, const SimReading &before,
             const SimReading &after)
{
    const auto first = triesOf(operation, before);
    const auto last = triesOf(operation, after);
    const bool isTryGone = first && last && *last < *first;
    const bool isBlockedNow =
        before.state && before.state != SimState::PukRequired && after.state == SimState::PukRequired;
    return isWrongCode(result) || isTryGone || isBlockedNow;
}

Failure wrongEntry(const PinOperation &operation, const Session &session, const SimReading &after)
{
    const std::optional<int64_t> tries = triesOf(operation, after);
    Failure failure{kLocked, "wrong_code", "The " + std::string(operation.first->name) + " is wrong.",
                    session.where(operation.function), "Check it and repeat the command."};
    if (tries) failure.what += " Tries left: " + std::to_string(*tries) + '.';
    if (after.state == SimState::PukRequired && !operation.countsPuk) isInTheWay(*after.state, failure);
    return failure;
}

/** What the modem refused for another reason; the state that was there before is no advice. */
Failure refusal(const PinOperation &operation, const Session &session, const std::string &result,
                const SimReading &after)
{
    Failure failure = failureOf(operation.purpose, session.where(operation.function), result);
    const bool isSameState = failure.code == rowOf(operation.needs).failure || failure.code == "refused";
    if (!isSameState) return failure;
    failure.next = "The modem does not say that the " + std::string(operation.first->name) +
                   " is wrong; see \"krctl sim status\".";
    if (after.state && after.state != operation.needs) isInTheWay(*after.state, failure);
    return failure;
}

Report reportOf(const std::string &sentence, const SimReading &before, const SimReading &after)
{
    Report report;
    report.sentence = sentence;
    report.sections.push_back(triesSection(before, after));
    return report;
}

/** The state before, if the operation can go on from there or is done already. Throws a Failure otherwise. */
SimReading readBefore(const Context &context, const PinOperation &operation)
{
    Session &session = context.session;
    SimReading before = readSim(session);
    session.throwIfGone();
    if (!before.isTold() && !context.arguments.has(kForce.name)) throw notTold(operation, session);
    const bool isFit = !before.isTold() || isReadyFor(operation, before) || isDoneAlready(operation, before);
    if (!isFit) throw cannotNow(operation, session, before);
    return before;
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
    const SimReading before = readBefore(context, operation);
    if (isDoneAlready(operation, before)) return reportOf(operation.isDone, before, before);
    guardTries(context, operation.countsPuk ? "PUK" : "PIN", triesOf(operation, before));

    SecretInput input(context.arguments);
    Secret first;
    Secret newPin;
    input.read(*operation.first, first);
    if (operation.hasNewPin) input.readNew(kNewPin, newPin);

    (void)KR_setCmee(AT_CMEE_TEXTS); // so that a refusal says why
    int32_t pinTries = 0;
    int32_t pukTries = 0;
    const Answer answer =
        session.call([&] { return operation.run(first.c_str(), newPin.c_str(), &pinTries, &pukTries); });
    const std::string result = finalResultOf(answer.replies.to(operation.command));
    // The library also fails if only the tries left could not be read behind a change that was made.
    const bool isDone = answer.isDone() || result == "OK";
    if (!isDone && result.empty()) throw session.failureFor(operation.function, operation.purpose);

    session.startOver();
    const SimReading after = readSim(session);
    if (isDone) return reportOf(operation.sentence, before, after);
    Failure failure = isWrong(operation, result, before, after) ? wrongEntry(operation, session, after)
                                                                : refusal(operation, session, result, after);
    failure.known.sections.push_back(triesSection(before, after));
    throw Failure(std::move(failure));
}

} // namespace krctl

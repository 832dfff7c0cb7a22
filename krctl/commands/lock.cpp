#include <array>
#include <utility>

#include <mainControl/api.h>

#include "host/family/family.h"
#include "krctl/commands/commands.h"
#include "krctl/commands/library_value.h"
#include "krctl/commands/pin_operation.h"
#include "krctl/commands/secret_input.h"
#include "krctl/readings/reply.h"
#include "krctl/readings/sim.h"
#include "krctl/session/session.h"

namespace krctl {
namespace {

constexpr Parameter kCategory{.name = "--category",
                              .help = "lock category, counted from 0 (family mtk); 0 unless given",
                              .kind = Parameter::Kind::Number,
                              .lowest = 0,
                              .highest = 9};
constexpr Parameter kOperation{.name = "--operation",
                               .help = "what to do (family mtk); 0, unlock, unless given",
                               .kind = Parameter::Kind::Number,
                               .lowest = 0,
                               .highest = 9};

struct LockReading {
    std::optional<int32_t> state; ///< ControlKeyState, or the modem's own number
    std::optional<int64_t> tries;
    std::optional<int64_t> unlockTries;
};

const host::family::Row &familyOf(const Session &session)
{
    return host::family::rowOfPlatform(session.platform());
}

/** Where the library counts a step that failed as not locked, what the modem refused to tell is unknown here. */
bool isStateTold(const Session &session, const Answer &answer)
{
    const std::string_view command = familyOf(session).lockStateCommand;
    return command.empty() || finalResultOf(answer.replies.to(command)) == "OK";
}

LockReading readLock(Session &session, int32_t category)
{
    int32_t state = CONTROL_KEY_UNKNOWN;
    int32_t tries = kUntold;
    int32_t unlockTries = kUntold;
    LockReading reading;
    const Answer answer =
        session.ask(ItemKind::Lock, [&] { return KR_getControlKeyStatus(category, &state, &tries, &unlockTries); });
    if (answer.isDone() && isStateTold(session, answer)) reading.state = state;
    const Ending ending = answer.isDone() ? Ending::Refused : answer.ending;
    session.note("network lock", ending, reading.state.has_value());
    if (!answer.isDone()) return reading;
    reading.tries = told(tries);
    if (familyOf(session).lockStateIsModemsOwnNumber) reading.unlockTries = told(unlockTries);
    return reading;
}

void addLock(Section &section, const Session &session, const LockReading &lock)
{
    const bool isOwnNumber = familyOf(session).lockStateIsModemsOwnNumber;
    section.addCode("Network lock", "state", lock.state, isOwnNumber ? "" : wordOf(kKeyStates, lock.state));
    section.add(numberField("Tries left", "tries_left", lock.tries));
    Field unlockTries = numberField("Unlocks left", "unlock_tries_left", lock.unlockTries);
    unlockTries.onlyIfKnown = true;
    section.add(unlockTries);
}

void addPair(Section &section, Session &session, uint32_t (*getter)(int32_t *, int32_t *), const char *item,
             const std::array<Field, 2> &fields)
{
    int32_t first = kUntold;
    int32_t second = kUntold;
    (void)session.has(ItemKind::Lock, item, [&] { return getter(&first, &second); });
    section.add(numberField(fields[0].label, fields[0].key, told(first)));
    section.add(numberField(fields[1].label, fields[1].key, told(second)));
}

Report status(Context &context)
{
    Session &session = context.session;
    Report report;
    Section &section = report.addSection("", "");
    const LockReading lock = readLock(session, context.arguments.number(kCategory.name));
    addLock(section, session, lock);

    int32_t tries = kUntold;
    (void)session.has(ItemKind::Lock, "tries left", [&] { return KR_getLockLefttimes(&tries); });
    addPair(section, session, KR_getLockStatus, "lock status (AT+ZSEC?)",
            {Field{.label = "Lock status", .key = "status_code"}, Field{.label = "Lock items", .key = "items_code"}});
    addPair(
        section, session, KR_getHardLockStatus, "hard lock (AT+ZLOCK?)",
        {Field{.label = "Hard lock", .key = "hard_lock_code"}, Field{.label = "IMSI lock", .key = "imsi_lock_code"}});
    if (!session.isAnythingTold())
        throw session.failureFor("KR_getControlKeyStatus", "tell the state of its network lock");
    session.finish(report);
    return report;
}

/** Whether the modem says that the code is wrong: by its error, or because it cost a try. */
bool isWrong(const Answer &answer, const LockReading &before, const LockReading &after)
{
    const bool isTryGone = before.tries && after.tries && *after.tries < *before.tries;
    return isTryGone || isWrongCode(finalResultOf(answer.replies.last()));
}

void callWrong(Failure &refusal, const LockReading &after)
{
    refusal.exitStatus = kLocked;
    refusal.code = "wrong_code";
    refusal.what = "The unlock code is wrong.";
    if (after.tries) refusal.what += " Tries left: " + std::to_string(*after.tries) + '.';
}

Report unlock(Context &context)
{
    Session &session = context.session;
    const int32_t category = context.arguments.number(kCategory.name);
    const LockReading before = readLock(session, category);
    const bool isOwnNumber = familyOf(session).lockStateIsModemsOwnNumber;
    if (!isOwnNumber && before.state == CONTROL_KEY_NOT_LOCKED && !context.arguments.has(kForce.name)) {
        Report report;
        report.sentence = "The modem has no network lock in force.";
        addLock(report.addSection("", ""), session, before);
        return report;
    }
    guardTries(context, kLockCode.name, before.tries);
    SecretInput input(context.arguments);
    Secret code;
    input.read(kLockCode, code);
    const Answer answer = session.call(
        [&] { return KR_setControlKeyLock(category, context.arguments.number(kOperation.name), code.c_str()); });
    Failure refusal;
    if (!answer.isDone()) refusal = session.failureFor("KR_setControlKeyLock", "accept the unlock code");

    const LockReading after = readLock(session, category);
    Report report;
    addLock(report.addSection("", ""), session, after);
    report.sections.back().add(numberField("", "tries_left_before", before.tries));
    if (answer.isDone()) {
        report.sentence = "The unlock code is right.";
        return report;
    }
    const bool isLocked = isOwnNumber || before.state != CONTROL_KEY_NOT_LOCKED;
    if (isWrong(answer, before, after)) callWrong(refusal, after);
    refusal.next = isLocked ? "Check the code; \"krctl lock status\" shows how many tries are left."
                            : "The modem has no network lock in force; see \"krctl lock status\".";
    refusal.known = std::move(report);
    throw Failure(std::move(refusal));
}

constexpr std::array kStatusParameters{kCategory};
constexpr std::array kUnlockParameters{kCategory, kOperation, kPinStdin, kPinFd, kForce};

constexpr std::array kCommands{
    Command{.path = "lock status",
            .help = "whether the modem is locked to a network, and the tries left",
            .examples = "krctl lock status",
            .parameters = kStatusParameters,
            .run = status},
    Command{.path = "lock unlock",
            .help = "enter the unlock code",
            .examples = "krctl lock unlock",
            .parameters = kUnlockParameters,
            .run = unlock},
};

} // namespace

std::span<const Command> lockCommands()
{
    return kCommands;
}

} // namespace krctl

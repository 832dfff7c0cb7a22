#include "host/at_server/dialogue.h"

#include <algorithm>
#include <utility>

#include "host/at/command_line.h"
#include "host/at_server/server_log.h"

using namespace std::chrono_literals;

namespace host::at_server {
namespace {

using protocol::Cause;

constexpr size_t kMaxWaiting = 256;
constexpr auto kTellInterval = 1s;

/** Operator scans take minutes, and any character breaks them off. A carriage return is that character: should the scan
 *  have ended by itself, it is an empty command line, which a modem ignores. */
bool canBeBrokenOff(std::string_view command)
{
    const auto commands = at::commandsOf(command);
    return commands.size() == 1 && at::isOperatorScan(commands[0]);
}

uint32_t msUntil(Time::Point end, Time::Point now)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - now).count();
    return static_cast<uint32_t>(std::max<int64_t>(left, 0));
}

} // namespace

Dialogue::Dialogue(Time &time, const DialogueSettings &settings, Calls calls)
    : time_(time), settings_(settings), calls_(std::move(calls)), collector_(*this), second_(settings.capitals),
      echo_(settings.echo), family_(settings.family.value_or(Family::Default)),
      timer_(time.alarm([this] { timeIsUp(); })), echoTimer_(time.alarm([this] { echoMissed(); })),
      insistTimer_(time.alarm([this] { resync_.insist(); })), agreementTimer_(time.alarm([this] { disagreed(); })),
      waitsTimer_(time.alarm([this] { tellWaits(); }))
{
}

void Dialogue::portOpened()
{
    hasAskedFamily_ = isFamilyKnown_ = settings_.family.has_value();
    isSilent_ = isConfused_ = false;
    echo_.portOpened();
    second_.portOpened();
    collector_.forgetLateReplies();
    beginResync({});
}

void Dialogue::portClosed(const std::string &why)
{
    phase_ = Phase::Down;
    whyDown_ = why;
    timer_->cancel();
    echoTimer_->cancel();
    insistTimer_->cancel();
    agreementTimer_->cancel();
    (void)second_.giveUp();
    collector_.expectNothing();
    collector_.endMiddle();
    failAll(Cause::PortDown, why);
}

void Dialogue::received(std::string_view bytes)
{
    if (phase_ == Phase::Resync) follow(resync_.heardBytes());
    collector_.feed(bytes);
}

void Dialogue::allReceived()
{
    if (const auto question = second_.takeQuestion()) put(*question, 0);
    const bool isIdle = phase_ == Phase::Idle || phase_ == Phase::Holding;
    if (isIdle && collector_.isInMiddle()) {
        hold();
        return;
    }
    if (isIdle) becomeIdle();
    startNext();
}

Ticket Dialogue::submit(Command command)
{
    if (phase_ == Phase::Down) {
        command.done({Cause::PortDown, whyDown_});
        return 0;
    }
    if (queue_.size() >= kMaxWaiting) {
        command.done({Cause::QueueFull, "too many commands wait for the modem"});
        return 0;
    }
    const Ticket ticket = queue_.push(std::move(command));
    if (phase_ == Phase::Holding) hold();
    startNext();
    tellWaits();
    return ticket;
}

void Dialogue::withdraw(Ticket ticket)
{
    if (ticket == 0 || queue_.remove(ticket)) return;
    if (unproved_ && unproved_->command.ticket == ticket) unproved_.reset();
    if (!onWire_ || onWire_->ticket != ticket) return;
    onWire_->ticket = 0;
    onWire_->command.done = nullptr;
    onWire_->isBrokenOff = canBeBrokenOff(onWire_->command.text);
    if (onWire_->isBrokenOff) calls_.send(kReturn, 0);
    endWithin(settings_.linger);
    tellWaits();
}

/** Shortens the time of the command on the wire. */
void Dialogue::endWithin(std::chrono::milliseconds time)
{
    const auto end = time_.now() + time;
    if (end >= onWire_->deadline) return;
    onWire_->deadline = end;
    timer_->start(time);
}

void Dialogue::failAll(Cause cause, const std::string &why)
{
    failRunning(cause, why);
    failUnproved(cause, why);
    failWaiting(why, cause);
}

void Dialogue::failRunning(Cause cause, const std::string &why)
{
    if (!onWire_) return;
    echoTimer_->cancel();
    fail(*std::exchange(onWire_, std::nullopt), cause, why);
}

void Dialogue::fail(const OnWire &command, Cause cause, const std::string &why)
{
    calls_.failed(command.command.text, why);
    if (command.command.done) command.command.done({cause, why});
}

void Dialogue::failWaiting(const std::string &why, Cause cause)
{
    while (!queue_.isEmpty())
        queue_.pop().command.done({cause, why});
}

std::optional<Dialogue::Running> Dialogue::running() const
{
    if (!onWire_) return std::nullopt;
    return Running{onWire_->command.text, msUntil(onWire_->deadline, time_.now())};
}

// One command at a time

void Dialogue::startNext()
{
    const auto canStart = [this] { return phase_ == Phase::Idle && (hasOwnCommand() || !queue_.isEmpty()); };
    if (!canStart()) return;
    calls_.receive(); // what came behind the last reply is not part of the next
    if (!canStart()) return;
    if (collector_.isInMiddle() && !hasHeldLongEnough()) {
        hold();
        return;
    }
    collector_.endMiddle();
    if (hasOwnCommand())
        runOwn();
    else
        runNext();
}

bool Dialogue::hasOwnCommand() const
{
    return echo_.isToBeSwitchedOn() || !hasAskedFamily_;
}

void Dialogue::runOwn()
{
    if (echo_.isToBeSwitchedOn())
        switchEchoOn();
    else
        askFamily();
}

/** The echo is the server's, and clients that switch it are told that they have. */
void Dialogue::runNext()
{
    while (!queue_.isEmpty()) {
        CommandQueue::Entry next = queue_.pop();
        if (!echo_.answersFor(next.command.text)) {
            run(std::move(next));
            return;
        }
        ++commands_;
        next.command.done({Cause::None, framed({{}, "OK"})});
    }
}

/** A command is not started in the middle of a line, which would then be taken for part of its reply. */
void Dialogue::hold()
{
    const auto now = time_.now();
    phase_ = Phase::Holding;
    if (queue_.isEmpty()) { // there is time
        holdsUntil_.reset();
        timer_->start(5 * settings_.quiet);
        return;
    }
    if (!holdsUntil_) holdsUntil_ = now + kNoiseLimit * settings_.quiet;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*holdsUntil_ - now);
    timer_->start(std::clamp(left, 0ms, settings_.quiet));
}

bool Dialogue::hasHeldLongEnough() const
{
    return holdsUntil_ && time_.now() >= *holdsUntil_;
}

void Dialogue::becomeIdle()
{
    phase_ = Phase::Idle;
    timer_->cancel();
}

void Dialogue::run(CommandQueue::Entry entry)
{
    const std::chrono::milliseconds timeout(entry.command.timeoutMs);
    phase_ = Phase::Running;
    holdsUntil_.reset();
    if (entry.ticket != 0) ++commands_;
    entry.command.text = second_.asSent(entry.command.text);
    onWire_ = {entry.ticket, std::move(entry.command), time_.now() + timeout};
    const bool isTrial = second_.isTrial(onWire_->command.text);
    timer_->start(isTrial ? std::min(settings_.answer, timeout / 2) : timeout);
    put(onWire_->command.text, onWire_->command.client);
    tellWaits();
}

/** Puts a command on the wire. */
void Dialogue::put(const std::string &text, uint32_t client)
{
    collector_.expectReply(text, echo_.isEvidence());
    calls_.send(text + std::string(kReturn), client);
}

// Time

void Dialogue::timeIsUp()
{
    switch (phase_) {
    case Phase::Resync:
        resyncTimeIsUp();
        break;
    case Phase::Running:
        runningTimedOut();
        break;
    case Phase::Holding:
        collector_.endMiddle();
        becomeIdle();
        startNext();
        break;
    case Phase::Idle:
    case Phase::Down:
        break;
    }
}

void Dialogue::runningTimedOut()
{
    // A reply that is there already is not late.
    calls_.receive();
    if (phase_ == Phase::Running && collector_.hasEarly()) echoMissed();
    if (phase_ != Phase::Running) {
        allReceived();
        return;
    }
    const Command &command = onWire_->command;
    if (command.done) {
        if (const auto raised = second_.raised(command.text)) {
            repeat(*raised);
            return;
        }
    }
    second_.timedOut(command.text);
    const bool isAwaited = command.done != nullptr;
    if (isAwaited && canBeBrokenOff(command.text)) calls_.send(kReturn, 0);
    beginResync({command.text, command.session});
    failRunning(Cause::TimedOut,
                isAwaited ? "the modem gave no final result in time" : "nobody waited for it any more");
}

/** In other letters, for what is left of its time. Both may be answered in the end. */
void Dialogue::repeat(const std::string &command)
{
    onWire_->isBrokenOff = true;
    timer_->start(std::chrono::milliseconds(msUntil(onWire_->deadline, time_.now())));
    put(command, 0);
}

void Dialogue::tellWaits()
{
    queue_.tellWaits(aheadMs(), time_.now());
    if (queue_.isEmpty())
        waitsTimer_->cancel();
    else
        waitsTimer_->start(kTellInterval);
}

uint64_t Dialogue::aheadMs() const
{
    if (const auto current = running()) return current->remainingMs;
    const auto now = time_.now();
    if (phase_ == Phase::Resync) return msUntil(agreesUntil_, now);
    return holdsUntil_ ? msUntil(*holdsUntil_, now) : 0;
}

} // namespace host::at_server

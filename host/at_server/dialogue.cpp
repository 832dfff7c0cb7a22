#include "dialogue.h"

#include "reply_shaping.h"
#include "server_log.h"

#include "host/at/command_line.h"

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace host::at_server {
namespace {

using protocol::Cause;

constexpr size_t kMaxWaiting = 256;
constexpr unsigned kTriesBeforeFailing = 3;
constexpr unsigned kMaxHolds = 20;
constexpr uint32_t kFamilyTimeoutMs = 3000;
constexpr auto kBreakOffLimit = 10s;
constexpr auto kTellInterval = 1s;

constexpr std::string_view kQuestion = "AT";
constexpr std::string_view kReturn = "\r";
constexpr std::string_view kEscape = "\x1B";
constexpr std::string_view kPrompt = "> ";

/** Operator scans take minutes, and any character breaks them off. A carriage return is that character: should the scan
 *  have ended by itself, it is an empty command line, which a modem ignores. */
bool canBeBrokenOff(std::string_view command)
{
    const auto commands = at::commandsOf(command);
    return commands.size() == 1 && at::isOperatorScan(commands[0]);
}

std::string_view firstLine(std::string_view reply)
{
    constexpr std::string_view kLineEnds = "\r\n";
    reply.remove_prefix(std::min(reply.find_first_not_of(kLineEnds), reply.size()));
    return reply.substr(0, reply.find_first_of(kLineEnds));
}

} // namespace

Dialogue::Dialogue(EventLoop &loop, const DialogueSettings &settings, Calls calls)
    : settings_(settings), calls_(std::move(calls)), collector_(*this),
      family_(settings.family.value_or(Family::Default)), timer_(loop, [this] { timeIsUp(); }),
      waitsTimer_(loop, [this] { tellWaits(); })
{
}

void Dialogue::portOpened()
{
    hasAskedFamily_ = isFamilyKnown_ = settings_.family.has_value();
    isSilent_ = false;
    beginResync({});
}

void Dialogue::portClosed(const std::string &why)
{
    phase_ = Phase::Down;
    whyDown_ = why;
    timer_.cancel();
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
    if (phase_ == Phase::Holding) timer_.start(settings_.quiet);
    startNext();
    tellWaits();
    return ticket;
}

void Dialogue::withdraw(Ticket ticket)
{
    if (ticket == 0 || queue_.remove(ticket) || !onWire_ || onWire_->ticket != ticket) return;
    onWire_->ticket = 0;
    onWire_->command.done = nullptr;
    if (canBeBrokenOff(onWire_->command.text)) breakOff();
}

void Dialogue::breakOff()
{
    onWire_->isBrokenOff = true;
    const auto soon = CommandQueue::Clock::now() + kBreakOffLimit;
    if (soon < onWire_->deadline) {
        onWire_->deadline = soon;
        timer_.start(kBreakOffLimit);
    }
    calls_.send(kReturn, 0);
    tellWaits();
}

void Dialogue::failAll(Cause cause, const std::string &why)
{
    failRunning(cause, why);
    failWaiting(cause, why);
}

void Dialogue::failRunning(Cause cause, const std::string &why)
{
    if (!onWire_) return;
    const OnWire failed = *std::exchange(onWire_, std::nullopt);
    calls_.failed(failed.command.text, why);
    if (failed.command.done) failed.command.done({cause, why});
}

void Dialogue::failWaiting(Cause cause, const std::string &why)
{
    while (!queue_.isEmpty())
        queue_.pop().command.done({cause, why});
}

std::optional<Dialogue::Running> Dialogue::running() const
{
    if (!onWire_) return std::nullopt;
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(onWire_->deadline - CommandQueue::Clock::now());
    return Running{onWire_->command.text, static_cast<uint32_t>(std::max<int64_t>(left.count(), 0))};
}

// One command at a time

void Dialogue::startNext()
{
    if (phase_ != Phase::Idle || queue_.isEmpty()) return;
    calls_.receive(); // what came behind the last reply is not part of the next
    if (phase_ != Phase::Idle || queue_.isEmpty()) return;
    if (collector_.isInMiddle())
        hold();
    else
        run(queue_.pop());
}

/** A command is not started in the middle of a line, which would then be taken for part of its reply. */
void Dialogue::hold()
{
    phase_ = Phase::Holding;
    if (++holds_ > kMaxHolds) return; // the timer runs on, however much comes
    timer_.start(queue_.isEmpty() ? 5 * settings_.quiet : settings_.quiet);
}

void Dialogue::becomeIdle()
{
    phase_ = Phase::Idle;
    holds_ = 0;
    timer_.cancel();
}

void Dialogue::run(CommandQueue::Entry entry)
{
    const std::chrono::milliseconds timeout(entry.command.timeoutMs);
    phase_ = Phase::Running;
    if (entry.ticket != 0) ++commands_;
    onWire_ = {entry.ticket, std::move(entry.command), CommandQueue::Clock::now() + timeout};
    collector_.expectReply(onWire_->command.text);
    timer_.start(timeout);
    calls_.send(onWire_->command.text + std::string(kReturn), onWire_->command.client);
    tellWaits();
}

void Dialogue::onReply(Reply &&reply)
{
    const bool isPrompt = reply.result == kPrompt;
    if (phase_ == Phase::Running)
        finish(std::move(reply));
    else if (phase_ == Phase::Resync)
        follow(resync_.heardResult(reply.result == "OK"));
    // Nobody can send the text that a prompt asks for, since it ends with a control character.
    if (isPrompt) calls_.send(kEscape, 0);
}

void Dialogue::finish(Reply &&reply)
{
    const OnWire finished = *std::exchange(onWire_, std::nullopt);
    const std::string &command = finished.command.text;
    const bool isPrompt = reply.result == kPrompt;
    Outcome outcome;
    if (!reply.isTooLong) outcome.text = asLibraryReads(reply, command, family_);
    if (reply.isTooLong || outcome.text.size() > protocol::kMaxText) {
        outcome = {Cause::ReplyTooLong,
                   "the reply has more than " + std::to_string(protocol::kMaxText) + " characters"};
        calls_.failed(command, outcome.text);
    }
    becomeIdle();
    lastCommand_ = command;
    if (isPrompt || finished.isBrokenOff) beginResync(command);
    if (finished.command.done) finished.command.done(outcome);
}

void Dialogue::onReport(const std::vector<std::string> &lines)
{
    const std::string framed = framedReport(lines);
    if (framed.size() > protocol::kMaxText) {
        log(LogLevel::Warning,
            {"a report of more than ", std::to_string(protocol::kMaxText), " characters is dropped"});
        return;
    }
    ++reports_;
    calls_.report(framed);
}

void Dialogue::onLine(std::string_view raw, LineIs what)
{
    const std::string_view command = onWire_ ? onWire_->command.text : lastCommand_;
    calls_.heard(raw, what, what == LineIs::Report ? std::string_view() : command);
    if (phase_ == Phase::Resync && what == LineIs::Discarded) follow(resync_.heardLine());
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
    if (phase_ != Phase::Running) {
        allReceived();
        return;
    }
    const std::string command = onWire_->command.text;
    if (canBeBrokenOff(command)) calls_.send(kReturn, 0);
    beginResync(command);
    failRunning(Cause::TimedOut, "the modem gave no final result in time");
}

void Dialogue::tellWaits()
{
    queue_.tellWaits(aheadMs(), CommandQueue::Clock::now());
    if (queue_.isEmpty())
        waitsTimer_.cancel();
    else
        waitsTimer_.start(kTellInterval);
}

uint64_t Dialogue::aheadMs() const
{
    if (const auto current = running()) return current->remainingMs;
    const auto round = settings_.answer + 2 * settings_.quiet;
    return phase_ == Phase::Resync ? static_cast<uint64_t>((kTriesBeforeFailing * round).count()) : 0;
}

// Agreement

void Dialogue::beginResync(const std::string &lateCommand)
{
    phase_ = Phase::Resync;
    lastCommand_ = lateCommand;
    collector_.expectLateReplies(kQuestion, lateCommand);
    follow(resync_.begin());
}

void Dialogue::follow(Resync::Next next)
{
    switch (next) {
    case Resync::Next::Stay:
        break;
    case Resync::Next::AwaitQuiet:
        timer_.start(settings_.quiet);
        break;
    case Resync::Next::Ask:
        timer_.start(settings_.answer);
        if (!calls_.isSending()) calls_.send(std::string(kQuestion) + std::string(kReturn), 0);
        break;
    case Resync::Next::Done:
        agreed();
        break;
    }
}

void Dialogue::resyncTimeIsUp()
{
    follow(resync_.timeIsUp());
    if (resync_.failedTries() < kTriesBeforeFailing) return;
    if (!std::exchange(isSilent_, true)) log(LogLevel::Warning, {"the modem does not answer; it is asked on and on"});
    failWaiting(Cause::TimedOut, "the modem does not answer");
}

void Dialogue::agreed()
{
    if (std::exchange(isSilent_, false)) log(LogLevel::Info, {"the modem answers again"});
    collector_.expectNothing();
    becomeIdle();
    if (!std::exchange(hasAskedFamily_, true))
        askFamily();
    else
        allReceived();
}

void Dialogue::askFamily()
{
    Command command;
    command.text = "AT+CGMI";
    command.timeoutMs = kFamilyTimeoutMs;
    command.done = [this](const Outcome &outcome) {
        family_ = family::familyOfManufacturer(outcome.text);
        isFamilyKnown_ = true;
        log(LogLevel::Info, {"manufacturer ", quoted(firstLine(outcome.text)), ": family ", nameOf(family_)});
    };
    run({0, std::move(command)});
}

} // namespace host::at_server

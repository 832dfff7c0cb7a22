// How the dialogue comes to agree with the modem again, and what it then asks.

#include <algorithm>
#include <utility>

#include "host/at_server/dialogue.h"
#include "host/at_server/server_log.h"

using namespace std::chrono_literals;

namespace host::at_server {
namespace {

constexpr unsigned kTriesBeforeFailing = 3;
constexpr uint32_t kOwnTimeoutMs = 3000;

constexpr std::string_view kQuestion = "AT";
constexpr std::string_view kDataEscape = "+++";

std::string_view firstLine(std::string_view reply)
{
    constexpr std::string_view kLineEnds = "\r\n";
    reply.remove_prefix(std::min(reply.find_first_not_of(kLineEnds), reply.size()));
    return reply.substr(0, reply.find_first_of(kLineEnds));
}

} // namespace

void Dialogue::beginResync(Late late)
{
    const auto unasked = second_.giveUp();
    phase_ = Phase::Resync;
    holdsUntil_.reset();
    last_ = std::move(late);
    if (last_.session != 0) queue_.charge(last_.session);
    collector_.expectLateReplies(kQuestion, last_.command);
    insistTimer_->start(kNoiseLimit * settings_.quiet);
    awaitAgreement(0ms);
    follow(resync_.begin());
    if (!unasked || !onWire_) return;
    // What was to be asked about is told as it came.
    const OnWire finished = *std::exchange(onWire_, std::nullopt);
    if (finished.command.done) finished.command.done(outcomeOf(finished.command.text, *unasked));
}

/** Agreement comes within a stated time, or those who wait for it are told that it does not.
 *  @param besides  what comes before it and takes time of its own */
void Dialogue::awaitAgreement(std::chrono::milliseconds besides)
{
    const auto round = settings_.answer + 2 * settings_.quiet;
    const auto limit = besides + kNoiseLimit * settings_.quiet + kTriesBeforeFailing * round;
    agreesUntil_ = time_.now() + limit;
    agreementTimer_->start(limit);
}

void Dialogue::disagreed()
{
    if (!std::exchange(isConfused_, true))
        log(LogLevel::Warning, {"the modem's answers do not agree with what it is asked; it is asked on and on"});
    const std::string why = "the modem's answers do not agree with what it is asked";
    failUnproved(protocol::Cause::TimedOut, why);
    failWaiting(why);
    awaitAgreement(0ms);
}

void Dialogue::follow(Resync::Next next)
{
    switch (next) {
    case Resync::Next::Stay:
        break;
    case Resync::Next::AwaitQuiet:
        timer_->start(settings_.quiet);
        break;
    case Resync::Next::Ask:
        timer_->start(settings_.answer);
        if (!calls_.isSending()) calls_.send(std::string(kQuestion) + std::string(kReturn), 0);
        break;
    case Resync::Next::HangUp:
        calls_.setTerminalReady(false);
        timer_->start(kEscapeGuard);
        break;
    case Resync::Next::Escape:
        calls_.setTerminalReady(true);
        if (!calls_.isSending()) calls_.send(kDataEscape, 0);
        timer_->start(kEscapeGuard);
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
    failUnproved(protocol::Cause::TimedOut, "the modem does not answer");
    failWaiting("the modem does not answer");
}

void Dialogue::agreed()
{
    const bool wasSilent = std::exchange(isSilent_, false);
    const bool wasConfused = std::exchange(isConfused_, false);
    if (wasSilent || wasConfused) log(LogLevel::Info, {"the modem answers again"});
    if (resync_.echoed() == Resync::Echoed::No && echo_.missed())
        log(LogLevel::Warning, {"the modem's echo comes and goes; it is relied on no longer"});
    insistTimer_->cancel();
    agreementTimer_->cancel();
    collector_.expectNothing();
    becomeIdle();
    settleUnproved();
    allReceived();
}

void Dialogue::ask(std::string_view question, std::function<void(const Outcome &)> done)
{
    Command command;
    command.text = question;
    command.timeoutMs = kOwnTimeoutMs;
    command.done = std::move(done);
    run({0, std::move(command)});
}

void Dialogue::askFamily()
{
    hasAskedFamily_ = true;
    ask("AT+CGMI", [this](const Outcome &outcome) {
        family_ = family::familyOfManufacturer(outcome.text);
        isFamilyKnown_ = true;
        log(LogLevel::Info, {"manufacturer ", quoted(firstLine(outcome.text)), ": family ", nameOf(family_)});
    });
}

} // namespace host::at_server

// What the dialogue makes of the replies and reports of the modem.

#include <utility>

#include "host/at_server/dialogue.h"
#include "host/at_server/server_log.h"
#include "host/at_server/translation/translation.h"

namespace host::at_server {
namespace {

using protocol::Cause;

constexpr std::string_view kEscape = "\x1B";

} // namespace

void Dialogue::onReply(Reply &&reply)
{
    const std::string result = reply.result;
    if (phase_ == Phase::Running)
        finish(std::move(reply));
    else if (phase_ == Phase::Resync)
        follow(resync_.heardResult(echoed(reply)));
    leave(result);
}

/** One command has one result: another one shows that the modem has answered twice, or late. */
void Dialogue::onStray(std::string_view result)
{
    leave(result);
    if (phase_ != Phase::Resync) beginResync({last_.command, 0});
}

/** Ends what some results begin: nobody can send the text that a prompt asks for, since a control character ends it, nor
 *  the data of a connection. */
void Dialogue::leave(std::string_view result)
{
    const bool isPrompt = result == kPrompt;
    if (!isPrompt && !isConnect(result)) return;
    if (phase_ != Phase::Resync) {
        beginResync(last_);
        if (!isPrompt) awaitAgreement(2 * kEscapeGuard);
    }
    if (isPrompt)
        calls_.send(kEscape, 0);
    else
        follow(resync_.leaveData());
}

/** A reply that has to be asked about keeps its command on the wire. */
void Dialogue::finish(Reply &&reply)
{
    const bool knewCapitalsOnly = second_.knowsCapitalsOnly();
    if (!onWire_->command.done) { // nobody wants to know more
        (void)second_.giveUp();
        finishWith(reply);
        return;
    }
    const auto settled = second_.settled(onWire_->command.text, std::move(reply));
    if (second_.knowsCapitalsOnly() && !knewCapitalsOnly)
        log(LogLevel::Info, {"the modem knows capitals only, and gets them"});
    if (settled) finishWith(*settled);
}

void Dialogue::finishWith(const Reply &reply)
{
    const OnWire finished = *std::exchange(onWire_, std::nullopt);
    echoTimer_->cancel();
    echo_.replied(finished.command.text, reply.isEchoed);
    const Outcome outcome = outcomeOf(finished.command.text, reply);
    becomeIdle();
    last_ = {finished.command.text, finished.command.session};
    if (finished.isBrokenOff) beginResync(last_);
    if (finished.command.done) finished.command.done(outcome);
}

Outcome Dialogue::outcomeOf(const std::string &command, const Reply &reply)
{
    Outcome outcome;
    if (!reply.isTooLong) outcome.text = asLibraryReads(reply, command, family_, second_.alphabet());
    if (reply.isTooLong || outcome.text.size() > protocol::kMaxText) {
        outcome = {Cause::ReplyTooLong,
                   "the reply has more than " + std::to_string(protocol::kMaxText) + " characters"};
        calls_.failed(command, outcome.text);
    }
    return outcome;
}

void Dialogue::onReport(const std::vector<std::string> &lines)
{
    const std::string framed = reportAsLibraryReads(lines);
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
    const std::string_view command = onWire_ ? onWire_->command.text : last_.command;
    calls_.heard(raw, what, what == LineIs::Report ? std::string_view() : command);
    if (phase_ == Phase::Resync && what == LineIs::Echo) settleUnproved();
    if (phase_ == Phase::Resync && what == LineIs::Discarded) follow(resync_.heardLine());
}

} // namespace host::at_server

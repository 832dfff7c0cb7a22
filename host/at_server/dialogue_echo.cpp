// What the dialogue makes of the modem's echo, and of answers that are none.

#include <utility>

#include "host/at_server/dialogue.h"
#include "host/at_server/server_log.h"

namespace host::at_server {
namespace {

using protocol::Cause;

constexpr const char *kNotRepeated = "the modem answered without repeating the command";

} // namespace

/** A modem that does not know the command does without. */
void Dialogue::switchEchoOn()
{
    echo_.switchedOn();
    ask(Echo::kSwitchOn, [](const Outcome &) {});
}

Resync::Echoed Dialogue::echoed(const Reply &reply) const
{
    if (!echo_.isEvidence()) return Resync::Echoed::Perhaps;
    return reply.isEchoed ? Resync::Echoed::Yes : Resync::Echoed::No;
}

/** The result of an earlier command, or of one that is no longer echoed. */
void Dialogue::onEarly(std::string_view result)
{
    if (result == kPrompt || isConnect(result)) {
        failMismatched("the modem asks for data that nobody has announced");
        leave(result);
    } else {
        echoTimer_->start(settings_.answer);
    }
}

/** Either the answer belongs to an earlier command, or the modem echoes no more: agreement shows which. */
void Dialogue::echoMissed()
{
    if (phase_ != Phase::Running || !collector_.awaitsEcho()) return;
    auto early = collector_.takeEarly();
    if (early && !second_.isAsking()) {
        unproved_ = {std::move(*onWire_), std::move(*early)};
        onWire_.reset();
        echoTimer_->cancel();
        beginResync({unproved_->command.command.text, 0});
    } else {
        failMismatched(kNotRepeated);
    }
}

/** An echo that comes after all says that the answer was another's. */
void Dialogue::settleUnproved()
{
    if (!unproved_) return;
    if (phase_ != Phase::Resync && resync_.echoed() == Resync::Echoed::No) {
        const Unproved proved = *std::exchange(unproved_, std::nullopt);
        const Command &command = proved.command.command;
        if (command.done) command.done(outcomeOf(command.text, proved.reply));
    } else {
        failUnproved(Cause::Mismatched, kNotRepeated);
    }
}

void Dialogue::onForeign()
{
    if (phase_ == Phase::Running) failMismatched("the modem sent a line that is no answer to this command");
}

void Dialogue::failMismatched(const std::string &why)
{
    beginResync({onWire_->command.text, 0});
    failRunning(Cause::Mismatched, why);
}

void Dialogue::failUnproved(Cause cause, const std::string &why)
{
    if (unproved_) fail(std::exchange(unproved_, std::nullopt)->command, cause, why);
}

} // namespace host::at_server

/** The dialogue with the modem: one command on the wire at a time, its reply or its time-out, and the way back to
 *  agreement when a reply may still come that nobody waits for. Knows neither ttys nor clients. */
#ifndef HOST_AT_SERVER_DIALOGUE_H
#define HOST_AT_SERVER_DIALOGUE_H

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/at_server/command_queue.h"
#include "host/at_server/echo.h"
#include "host/at_server/reply_collector.h"
#include "host/at_server/resync.h"
#include "host/at_server/second_question.h"
#include "host/event_loop/time.h"
#include "host/family/family.h"

namespace host::at_server {

using family::Family;

struct DialogueSettings {
    std::optional<Family> family; ///< nothing: the modem is asked
    std::chrono::milliseconds quiet{200};
    std::chrono::milliseconds answer{1000}; ///< what a bare "AT" may take
    std::chrono::milliseconds linger{2000}; ///< how long a command that nobody waits for may keep the wire
    bool echo = true;                       ///< it is switched on and taken as evidence
    Capitals capitals = Capitals::AsNeeded;
};

class Dialogue : private ReplyCollector::Listener {
  public:
    /** What it needs, and what it tells. */
    struct Calls {
        std::function<void(std::string_view bytes, uint32_t client)> send; ///< client 0: the server itself
        std::function<bool()> isSending;
        std::function<void()> receive; ///< reads what has come by now
        std::function<void(bool isReady)> setTerminalReady;
        std::function<void(const std::string &framed)> report;
        /** @param command  to whose reply or echo the line belongs, or may belong; empty for a report */
        std::function<void(std::string_view raw, LineIs what, std::string_view command)> heard;
        std::function<void(std::string_view command, std::string_view what)> failed;
    };

    struct Running {
        std::string_view command;
        uint32_t remainingMs;
    };

    Dialogue(Time &time, const DialogueSettings &settings, Calls calls);

    void portOpened();
    void portClosed(const std::string &why);
    void received(std::string_view bytes);
    void allReceived();

    /** What comes of it is told once, perhaps before this returns. */
    Ticket submit(Command command);
    /** Nothing more is told about the command; if it is on the wire, its reply is drained for a while, and a scan is
     *  broken off. */
    void withdraw(Ticket ticket);
    void failAll(protocol::Cause cause, const std::string &why);

    /** Nothing until a modem that is to be asked has answered. */
    std::optional<Family> family() const { return isFamilyKnown_ ? std::optional(family_) : std::nullopt; }
    std::optional<Running> running() const;
    /** Whether question and answer agree, so that commands can be sent. */
    bool isAgreed() const { return phase_ == Phase::Idle || phase_ == Phase::Holding || phase_ == Phase::Running; }
    /** Whether replies are told apart by the echo of their commands. */
    bool isEchoEvidence() const { return echo_.isEvidence(); }
    size_t waiting() const { return queue_.size(); }
    uint64_t commands() const { return commands_; }
    uint64_t reports() const { return reports_; }

    /** Hands on all that its future depends on, for those who compare states. */
    template <typename Visit>
    void state(Visit &&visit) const
    {
        visit(phase_, onWire_.has_value(), last_.command, last_.session, hasAskedFamily_, isSilent_, isConfused_,
              holdsUntil_.has_value());
        if (onWire_) visit(onWire_->command.text, onWire_->ticket != 0, onWire_->isBrokenOff);
        if (unproved_) visit(unproved_->command.command.text, unproved_->reply.lines, unproved_->reply.result);
        collector_.state(visit);
        queue_.state(visit);
        resync_.state(visit);
        echo_.state(visit);
        second_.state(visit);
    }

  private:
    static constexpr std::string_view kReturn = "\r";
    /** Times of quiet, for which a line that is never quiet may keep commands waiting. */
    static constexpr int kNoiseLimit = 10;
    /** Modems ask for a second without anything else around "+++". */
    static constexpr std::chrono::milliseconds kEscapeGuard{1100};

    enum class Phase {
        Down, ///< the port is not open
        Resync,
        Idle,
        Holding, ///< idle, but in the middle of a line
        Running,
    };
    /** A command of which something may still come, and the session that pays for that. */
    struct Late {
        std::string command;
        uint64_t session = 0;
    };
    struct OnWire {
        Ticket ticket{}; ///< 0 once withdrawn, and for the server's own command
        Command command;
        Time::Point deadline;
        bool isBrokenOff = false;
    };

    /** A command that was answered without its echo, and its reply if the modem echoes no more. */
    struct Unproved {
        OnWire command;
        Reply reply;
    };

    void onReply(Reply &&reply) override;
    void onReport(const std::vector<std::string> &lines) override;
    void onStray(std::string_view result) override;
    void onEarly(std::string_view result) override;
    void onForeign() override;
    void onLine(std::string_view raw, LineIs what) override;

    Resync::Echoed echoed(const Reply &reply) const;
    void startNext();
    bool hasOwnCommand() const;
    void runOwn();
    bool hasHeldLongEnough() const;
    void runNext();
    void run(CommandQueue::Entry entry);
    void put(const std::string &text, uint32_t client);
    void finish(Reply &&reply);
    void finishWith(const Reply &reply);
    Outcome outcomeOf(const std::string &command, const Reply &reply);
    void fail(const OnWire &command, protocol::Cause cause, const std::string &why);
    void failRunning(protocol::Cause cause, const std::string &why);
    void failUnproved(protocol::Cause cause, const std::string &why);
    void failMismatched(const std::string &why);
    void echoMissed();
    void settleUnproved();
    void failWaiting(const std::string &why, protocol::Cause cause = protocol::Cause::TimedOut);
    void endWithin(std::chrono::milliseconds time);

    void hold();
    void becomeIdle();
    void timeIsUp();
    void runningTimedOut();
    void repeat(const std::string &command);

    void beginResync(Late late);
    void leave(std::string_view result);
    void follow(Resync::Next next);
    void resyncTimeIsUp();
    void awaitAgreement(std::chrono::milliseconds besides);
    void disagreed();
    void agreed();
    void ask(std::string_view question, std::function<void(const Outcome &)> done);
    void askFamily();
    void switchEchoOn();

    void tellWaits();
    uint64_t aheadMs() const;

    const Time &time_;
    const DialogueSettings settings_;
    const Calls calls_;
    ReplyCollector collector_;
    CommandQueue queue_;
    Resync resync_;
    SecondQuestion second_;
    Phase phase_ = Phase::Down;
    std::string whyDown_ = "the port has not been opened yet";
    std::optional<OnWire> onWire_;
    std::optional<Unproved> unproved_;
    Late last_;
    Echo echo_;
    Family family_;
    bool hasAskedFamily_ = false;
    bool isFamilyKnown_ = false;
    bool isSilent_ = false;   ///< the modem has left several questions unanswered
    bool isConfused_ = false; ///< it has answered, but there was no agreement in time
    std::optional<Time::Point> holdsUntil_;
    Time::Point agreesUntil_; ///< or those who wait for it are told that there is no agreement
    uint64_t commands_ = 0;
    uint64_t reports_ = 0;
    const std::unique_ptr<Alarm> timer_; ///< of the phase
    const std::unique_ptr<Alarm> echoTimer_;
    const std::unique_ptr<Alarm> insistTimer_;
    const std::unique_ptr<Alarm> agreementTimer_;
    const std::unique_ptr<Alarm> waitsTimer_;
};

} // namespace host::at_server

#endif

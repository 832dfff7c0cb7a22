/** The way of commands that take a code. A user's go out one after the other, whatever number of clients asks, and behind
 *  one that was refused after a wait, which they are told. */
#ifndef HOST_AT_SERVER_CODE_GATE_H
#define HOST_AT_SERVER_CODE_GATE_H

#include <chrono>
#include <cstdint>
#include <functional>
#include <list>
#include <string_view>

#include <sys/types.h>

#include "host/at_server/code_tries.h"
#include "host/at_server/command_queue.h"

namespace host::at_server {

class CodeGate {
  public:
    using Clock = CodeTries::Clock;
    /** Tells a client that its command is not sent before so much time has passed, and why. */
    using TellHeld = std::function<void(uint32_t atMostMs, std::string_view why)>;

    struct Calls {
        std::function<Ticket(Command)> submit;
        std::function<void(Ticket)> withdraw;
        std::function<Clock::time_point()> now;
        std::function<void(std::chrono::milliseconds)> wakeIn; ///< asks for goOn(), once
        std::function<void(uid_t user, std::chrono::milliseconds wait)> refused;
    };

    CodeGate(std::chrono::milliseconds firstWait, Calls calls) : tries_(firstWait), calls_(std::move(calls)) {}

    Ticket submit(uid_t user, Command command, CodeTry code, TellHeld tellHeld);
    /** @return whether the ticket is one of this gate's */
    bool withdraw(Ticket ticket);
    void failAll(protocol::Cause cause, const std::string &why);
    void goOn();

    /** Commands that have not gone out. */
    size_t waiting() const;

  private:
    static constexpr Ticket kFirst = Ticket{1} << 63U; ///< far from those of the dialogue

    struct Entry {
        Ticket ticket{};
        uid_t user{};
        Command command;
        CodeTry code;
        TellHeld tellHeld;
        std::chrono::milliseconds timeout{};
        bool isOut = false;
        Ticket outside{};          ///< its ticket there
        Clock::time_point until{}; ///< when it is out: its end at the latest
    };
    using Entries = std::list<Entry>;

    Entries::iterator find(Ticket ticket);
    bool isFirstOfUser(Entries::const_iterator entry) const;
    Entries::iterator nextToGo(Clock::time_point now);
    void start(Entries::iterator entry);
    void hasToWait(Ticket ticket, uint32_t atMostMs);
    void ended(Ticket ticket, const Outcome &outcome);
    void count(const Entry &entry, CodeIs verdict);
    void tellUser(uid_t user);

    CodeTries tries_;
    const Calls calls_;
    Entries entries_; ///< in the order in which they came
    Ticket last_ = kFirst;
};

} // namespace host::at_server

#endif

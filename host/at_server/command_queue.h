/** Commands that wait for their turn, those of a session in their order; and what their clients hear about that. */
#ifndef HOST_AT_SERVER_COMMAND_QUEUE_H
#define HOST_AT_SERVER_COMMAND_QUEUE_H

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include <sys/types.h>

#include "host/at_server/turns.h"
#include "host/protocol/at_protocol.h"

namespace host::at_server {

/** What became of a command: a reply in standard framing, or a cause and its description. */
struct Outcome {
    protocol::Cause cause = protocol::Cause::None;
    std::string text;
};

struct Command {
    std::string text;     ///< without its carriage return
    uint32_t timeoutMs{}; ///< from its start on the wire
    std::function<void(const Outcome &)> done;
    std::function<void(uint32_t atMostMs)> waits; ///< the commands before it may take so long
    uint32_t client = 0;                          ///< process that asks, for the transcript
    uint64_t session = 0;                         ///< whose turn it takes; 0: the server itself
    uid_t user = 0;                               ///< of the session
    std::shared_ptr<const void> turn{};           ///< ends with the command, until when its user has the wire
};

/** Names a command from its submission on; never 0. */
using Ticket = uint64_t;

class CommandQueue {
  public:
    using Clock = std::chrono::steady_clock;

    struct Entry {
        Ticket ticket{};
        Command command;
        std::optional<Clock::time_point> toldAt{};
        uint64_t toldMs{};
    };

    Ticket push(Command command);
    /** @return the next; there must be one */
    Entry pop();
    /** @return whether it was there */
    bool remove(Ticket ticket);

    /** Puts the next turn of a session behind those of all others that wait when it is taken. */
    void charge(uint64_t session) { turns_.charge(session); }

    bool isEmpty() const { return size_ == 0; }
    size_t size() const { return size_; }

    /** Tells those clients that do not know yet, or know something that has ceased to hold; the same one at most once a
     *  second.
     *  @param aheadMs  what comes before the first command may still take so long */
    void tellWaits(uint64_t aheadMs, Clock::time_point now);

    /** Hands on all that its future depends on, but for what users have had of the wire, for those who compare states. */
    template <typename Visit>
    void state(Visit &&visit) const
    {
        turns_.state(visit);
        for (const auto &[session, entries] : waiting_)
            for (const Entry &entry : entries)
                visit(session, entry.command.text);
    }

  private:
    Turns turns_;
    std::map<uint64_t, std::deque<Entry>> waiting_; ///< by session, none of them empty
    size_t size_ = 0;
    Ticket lastTicket_ = 0;
};

} // namespace host::at_server

#endif

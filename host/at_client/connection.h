/** A connection to the AT server, packet by packet. All waiting ends at a deadline and when the call is interrupted. */
#ifndef HOST_AT_CLIENT_CONNECTION_H
#define HOST_AT_CLIENT_CONNECTION_H

#include <chrono>
#include <optional>
#include <string>

#include "host/protocol/at_protocol.h"

namespace host::at_client {

using Clock = std::chrono::steady_clock;

class Connection {
  public:
    /** How an operation went. Only Done leaves something that can be used. */
    enum class State {
        Done,
        TooLate,     ///< nothing by the deadline
        Interrupted, ///< Interruptible::isOver()
        Closed,      ///< the server went away, or was not there: errno says more
        Unreadable,  ///< a packet that is no message
    };

    Connection() = default;
    ~Connection() { close(); }
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    State open(const std::string &path, Clock::time_point deadline);
    void close();
    int fd() const { return fd_; }
    bool isOpen() const { return fd_ >= 0; }

    /** After Closed the message has surely not reached the server. */
    State send(const protocol::Message &message, Clock::time_point deadline);

    /** @param message  out; its text holds until the next call */
    State receive(protocol::Message &message, Clock::time_point deadline);
    /** Wipes what was received last: a modem may have repeated a PIN in it. */
    void wipe();

  private:
    State sendPacket(const protocol::Packet &packet, Clock::time_point deadline) const;
    State waitFor(short events, Clock::time_point deadline) const;

    int fd_ = -1;
    // Not on the stack, which may be a small thread's.
    std::optional<protocol::Packet> outgoing_;
    WipedBuffer<protocol::kMaxPacket + 1> incoming_; // one byte more shows what is too long
};

} // namespace host::at_client

#endif

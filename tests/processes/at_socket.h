/** The server's protocol spoken by hand: requests as a test wants them, whatever they are, and messages as they come. */
#ifndef TESTS_PROCESSES_AT_SOCKET_H
#define TESTS_PROCESSES_AT_SOCKET_H

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "host/protocol/at_protocol.h"

namespace processes {

/** A message that owns its text. */
struct Received {
    host::protocol::Type type{};
    host::protocol::Cause cause{};
    uint32_t id = 0;
    uint32_t value = 0;
    std::string text;
};

class AtSocket {
  public:
    /** Connects as soon as somebody listens, and takes the welcome. */
    explicit AtSocket(const std::string &path);
    ~AtSocket();
    AtSocket(const AtSocket &) = delete;
    AtSocket &operator=(const AtSocket &) = delete;

    /** What the server opened with. */
    const Received &opening() const { return opening_; }

    void send(const host::protocol::Message &message) const;
    void sendBytes(std::string_view packet) const;
    /** @return false if the server does not take it now */
    bool sendUnlessFull(const host::protocol::Message &message) const;

    /** The next message, within kPatience; nothing at the end of the connection. */
    std::optional<Received> receive();

    /** Sends a command.
     *  @return its id */
    uint32_t start(std::string_view command, uint32_t timeoutMs = 30000);
    /** Waits for the reply or failure of a command; other messages are kept for next(). */
    Received answerTo(uint32_t id);
    /** Both. */
    Received run(std::string_view command, uint32_t timeoutMs = 30000);

    /** Subscribes, and waits for the status that answers. */
    Received subscribe(uint32_t what);
    Received status();
    /** The next message of a type, out of those kept or still to come; others of them stay. */
    Received next(host::protocol::Type type);
    /** Messages that have been kept. */
    const std::deque<Received> &kept() const { return kept_; }

    void close();

  private:
    using Wanted = std::function<bool(const Received &)>;
    Received waitFor(const Wanted &isWanted);

    int fd_ = -1;
    uint32_t lastId_ = 0;
    Received opening_;
    std::deque<Received> kept_;
};

} // namespace processes

#endif

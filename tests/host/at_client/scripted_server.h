/** An AT server that does what a test says, on a thread of its own and over a real socket. */
#ifndef TESTS_HOST_AT_CLIENT_SCRIPTED_SERVER_H
#define TESTS_HOST_AT_CLIENT_SCRIPTED_SERVER_H

#include <functional>
#include <string>
#include <thread>

#include "host/protocol/at_protocol.h"

namespace scripted {

/** One client's connection, as the server sees it. */
class Peer {
  public:
    explicit Peer(int fd) : fd_(fd) {}
    ~Peer() { close(); }
    Peer(Peer &&other) noexcept : fd_(other.fd_) { other.fd_ = -1; }
    Peer(const Peer &) = delete;
    Peer &operator=(const Peer &) = delete;
    Peer &operator=(Peer &&) = delete;

    struct Request {
        host::protocol::Type type{};
        uint32_t id = 0;
        uint32_t value = 0;
        std::string text;
    };

    void send(const host::protocol::Message &message) const;
    void sendBytes(const std::string &packet) const;
    void welcome() const { send({.type = host::protocol::Type::Welcome, .value = 1, .text = "test"}); }
    /** The welcome, and the answer to the subscription that must follow.
     *  @return what the client wants to hear */
    uint32_t greet() const;
    void reply(const Request &to, std::string_view text) const
    {
        send({.type = host::protocol::Type::Reply, .id = to.id, .text = text});
    }
    void fail(const Request &to, host::protocol::Cause cause, std::string_view text = {}) const
    {
        send({.type = host::protocol::Type::Failure, .cause = cause, .id = to.id, .text = text});
    }
    void report(std::string_view text) const { send({.type = host::protocol::Type::Report, .text = text}); }

    /** The next request, which must be of a type. */
    Request expect(host::protocol::Type type) const;
    Request expectCommand(std::string_view text) const;
    /** Waits for a request without reading it. */
    void awaitRequest() const;
    /** The client closes its end, having said no more. */
    void expectEnd() const;
    void close();

  private:
    int fd_;
};

class Server {
  public:
    using Script = std::function<void(Server &)>;

    /** Listens before it returns; the script runs on its own thread. */
    Server(const std::string &path, Script script);
    /** Waits for the script's end. */
    ~Server();
    Server(const Server &) = delete;
    Server &operator=(const Server &) = delete;

    Peer accept() const;
    /** A client that has been greeted. */
    Peer greeted() const;
    void stopListening();

  private:
    int fd_;
    std::thread thread_;
};

} // namespace scripted

#endif

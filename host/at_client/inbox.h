/** What the server has said unasked, kept until the host takes it: in order, and bounded. Reports and events of the
 *  transcript have a budget each, so that a chatty transcript costs no report. */
#ifndef HOST_AT_CLIENT_INBOX_H
#define HOST_AT_CLIENT_INBOX_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>

#include "host/protocol/at_protocol.h"

namespace host::at_client {

/** A descriptor that can be read when the inbox holds something, or when its socket can be read. */
class Readiness {
  public:
    Readiness() = default;
    ~Readiness() { close(); }
    Readiness(const Readiness &) = delete;
    Readiness &operator=(const Readiness &) = delete;

    int fd() const { return epollFd_; }
    void watch(int socket);
    void forget(int socket) const;
    void show(bool isFilled) const;
    void close();

  private:
    int epollFd_ = -1;
    int filledFd_ = -1;
};

class Inbox {
  public:
    struct Entry {
        protocol::Type type;
        uint32_t value;
        std::string text;
    };

    static bool takes(protocol::Type type);
    /** Counts what finds no room. */
    void put(const protocol::Message &message);
    /** The inbox holds something. */
    Entry take();
    void clear();

    size_t size() const { return entries_.size(); }
    /** Whether there is nothing to deliver, neither entries nor a number of lost ones. */
    bool isEmpty() const { return entries_.empty() && lost_ == 0; }
    /** How many were dropped, by the server or here, since the last time this was asked. */
    uint32_t takeLost();
    bool hasLost() const { return lost_ != 0; }

  private:
    struct Budget {
        size_t entries = 0;
        size_t bytes = 0;
    };
    Budget &budgetOf(protocol::Type type) { return used_[type == protocol::Type::Trace ? 1 : 0]; }

    std::deque<Entry> entries_;
    std::array<Budget, 2> used_{};
    uint32_t lost_ = 0;
};

} // namespace host::at_client

#endif

#include "host/at_client/connection.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "host/at_client/interruption.h"

namespace host::at_client {
namespace {

constexpr auto kBacklogPause = std::chrono::milliseconds(10); // a full backlog cannot be polled for

int millisecondsUntil(Clock::time_point deadline)
{
    constexpr long kLongest = 3600000; // the caller looks again then
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return static_cast<int>(std::clamp<long>(left, 0, kLongest));
}

bool isForLater(int error)
{
    return error == EAGAIN || error == EWOULDBLOCK || error == EINTR;
}

} // namespace

Connection::State Connection::waitFor(short events, Clock::time_point deadline) const
{
    for (;;) {
        if (Interruptible::isOver()) return State::Interrupted;
        std::array<pollfd, 2> polled{{{Interruptible::fd(), POLLIN, 0}, {events != 0 ? fd_ : -1, events, 0}}};
        const int timeoutMs = millisecondsUntil(deadline);
        const int ready = poll(polled.data(), polled.size(), timeoutMs);
        if (ready < 0 && errno != EINTR) return State::Closed;
        if (ready < 0) continue;
        if (polled[0].revents != 0) Interruptible::clear(); // meant for this call or for one that is over
        if (Interruptible::isOver()) return State::Interrupted;
        if (polled[1].revents != 0) return State::Done;
        if (Clock::now() >= deadline) return State::TooLate;
    }
}

Connection::State Connection::open(const std::string &path, Clock::time_point deadline)
{
    close();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        errno = ENAMETOOLONG;
        return State::Closed;
    }
    std::copy(path.begin(), path.end(), address.sun_path);

    fd_ = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (fd_ < 0) return State::Closed;
    while (connect(fd_, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
        State state = State::Closed;
        if (isForLater(errno)) state = waitFor(0, std::min(deadline, Clock::now() + kBacklogPause));
        if (state == State::TooLate && Clock::now() < deadline) continue;
        const int error = errno;
        close();
        errno = error;
        return state;
    }
    return State::Done;
}

void Connection::close()
{
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
}

Connection::State Connection::send(const protocol::Message &message, Clock::time_point deadline)
{
    outgoing_.emplace(message);
    const State state = sendPacket(*outgoing_, deadline);
    outgoing_.reset();
    return state;
}

Connection::State Connection::sendPacket(const protocol::Packet &packet, Clock::time_point deadline) const
{
    for (;;) {
        if (::send(fd_, packet.data(), packet.size(), MSG_NOSIGNAL) >= 0) return State::Done;
        if (!isForLater(errno)) return State::Closed;
        const State state = waitFor(POLLOUT, deadline);
        if (state != State::Done) return state;
    }
}

Connection::State Connection::receive(protocol::Message &message, Clock::time_point deadline)
{
    for (;;) {
        const State state = waitFor(POLLIN, deadline);
        if (state != State::Done) return state;
        const ssize_t size = recv(fd_, incoming_.data(), incoming_.size(), 0);
        // A server that closed before it had read everything is told about first; its last words come behind that.
        if (size < 0 && (isForLater(errno) || errno == ECONNRESET)) continue;
        if (size <= 0) return State::Closed;
        const auto decoded = protocol::decode({incoming_.data(), static_cast<size_t>(size)});
        if (!decoded) return State::Unreadable;
        message = *decoded;
        return State::Done;
    }
}

void Connection::wipe()
{
    incoming_.wipe();
}

} // namespace host::at_client

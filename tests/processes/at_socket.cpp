#include "tests/processes/at_socket.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/processes/child_process.h"

namespace processes {
namespace {

using host::protocol::Message;
using host::protocol::Type;

int connected(const std::string &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    int fd = -1;
    const bool isConnected = eventually([&] {
        fd = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
        if (connect(fd, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0) return true;
        ::close(fd);
        return false;
    });
    EXPECT_TRUE(isConnected) << "nobody listens on " << path;
    return isConnected ? fd : -1;
}

} // namespace

AtSocket::AtSocket(const std::string &path) : fd_(connected(path))
{
    opening_ = receive().value_or(Received{});
}

AtSocket::~AtSocket()
{
    close();
}

void AtSocket::close()
{
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
}

void AtSocket::send(const Message &message) const
{
    const host::protocol::Packet packet(message);
    sendBytes({packet.data(), packet.size()});
}

void AtSocket::sendBytes(std::string_view packet) const
{
    // The server may have ended the connection, which a test sees when it receives.
    EXPECT_TRUE(::send(fd_, packet.data(), packet.size(), MSG_NOSIGNAL) >= 0 || errno == EPIPE || errno == ECONNRESET)
        << std::strerror(errno);
}

bool AtSocket::sendUnlessFull(const Message &message) const
{
    const host::protocol::Packet packet(message);
    return ::send(fd_, packet.data(), packet.size(), MSG_NOSIGNAL | MSG_DONTWAIT) >= 0;
}

std::optional<Received> AtSocket::receive()
{
    std::array<char, host::protocol::kMaxPacket> packet{};
    pollfd polled{fd_, POLLIN, 0};
    if (poll(&polled, 1, std::chrono::milliseconds(kPatience).count()) <= 0) {
        ADD_FAILURE() << "the server says nothing";
        return std::nullopt;
    }
    ssize_t size = recv(fd_, packet.data(), packet.size(), 0);
    if (size < 0 && errno == ECONNRESET) size = recv(fd_, packet.data(), packet.size(), 0);
    if (size <= 0) return std::nullopt;
    const auto message = host::protocol::decode({packet.data(), static_cast<size_t>(size)});
    if (!message) {
        ADD_FAILURE() << "a message that cannot be read";
        return std::nullopt;
    }
    return Received{message->type, message->cause, message->id, message->value, std::string(message->text)};
}

Received AtSocket::waitFor(const Wanted &isWanted)
{
    const auto place = std::find_if(kept_.begin(), kept_.end(), isWanted);
    if (place != kept_.end()) {
        Received found = *place;
        kept_.erase(place);
        return found;
    }
    while (auto message = receive()) {
        if (isWanted(*message)) return *message;
        kept_.push_back(*message);
    }
    ADD_FAILURE() << "the connection has ended";
    return {};
}

uint32_t AtSocket::start(std::string_view command, uint32_t timeoutMs)
{
    send({Type::Command, host::protocol::Cause::None, ++lastId_, timeoutMs, command});
    return lastId_;
}

Received AtSocket::answerTo(uint32_t id)
{
    return waitFor([&](const Received &message) {
        return message.id == id && (message.type == Type::Reply || message.type == Type::Failure);
    });
}

Received AtSocket::run(std::string_view command, uint32_t timeoutMs)
{
    return answerTo(start(command, timeoutMs));
}

Received AtSocket::subscribe(uint32_t what)
{
    send({Type::Subscribe, host::protocol::Cause::None, ++lastId_, what, {}});
    return next(Type::Status);
}

Received AtSocket::status()
{
    send({Type::GetStatus, host::protocol::Cause::None, ++lastId_, 0, {}});
    return next(Type::Status);
}

Received AtSocket::next(Type type)
{
    return waitFor([&](const Received &message) { return message.type == type; });
}

} // namespace processes

#include "tests/host/at_client/scripted_server.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/processes/child_process.h"

namespace scripted {
namespace {

using namespace host::protocol;

void limitWaiting(int fd)
{
    const timeval patience{processes::kPatience.count(), 0};
    setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    setsockopt(fd, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
}

} // namespace

void Peer::send(const Message &message) const
{
    const Packet packet(message);
    sendBytes({packet.data(), packet.size()});
}

void Peer::sendBytes(const std::string &packet) const
{
    ::send(fd_, packet.data(), packet.size(), MSG_NOSIGNAL); // the client may be gone, as some tests mean it to be
}

uint32_t Peer::greet() const
{
    welcome();
    const Request request = expect(Type::Subscribe);
    send({.type = Type::Status, .id = request.id, .value = request.value, .text = "{}"});
    return request.value;
}

Peer::Request Peer::expect(Type type) const
{
    std::vector<char> bytes(kMaxPacket + 1);
    const ssize_t size = recv(fd_, bytes.data(), bytes.size(), 0);
    const auto message = decode({bytes.data(), static_cast<size_t>(std::max<ssize_t>(size, 0))});
    if (!message) {
        ADD_FAILURE() << "no request, expected one of type " << static_cast<int>(type);
        return {};
    }
    EXPECT_EQ(message->type, type);
    return {message->type, message->id, message->value, std::string(message->text)};
}

Peer::Request Peer::expectCommand(std::string_view text) const
{
    Request request = expect(Type::Command);
    EXPECT_EQ(request.text, text);
    return request;
}

void Peer::awaitRequest() const
{
    char byte = 0;
    EXPECT_GT(recv(fd_, &byte, 1, MSG_PEEK), 0);
}

void Peer::expectEnd() const
{
    std::array<char, 16> bytes{};
    EXPECT_LE(recv(fd_, bytes.data(), bytes.size(), 0), 0) << "the client says more";
}

void Peer::close()
{
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
}

Server::Server(const std::string &path, Script script) : fd_(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0))
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    unlink(path.c_str());
    EXPECT_EQ(bind(fd_, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    EXPECT_EQ(listen(fd_, 4), 0);
    limitWaiting(fd_);
    thread_ = std::thread([this, play = std::move(script)] { play(*this); });
}

Server::~Server()
{
    thread_.join();
    stopListening();
}

Peer Server::accept() const
{
    const int fd = ::accept(fd_, nullptr, nullptr);
    EXPECT_GE(fd, 0) << "no client came";
    limitWaiting(fd);
    return Peer(fd);
}

Peer Server::greeted() const
{
    Peer peer = accept();
    peer.greet();
    return peer;
}

void Server::stopListening()
{
    if (fd_ >= 0) close(fd_);
    fd_ = -1;
}

} // namespace scripted

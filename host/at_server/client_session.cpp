#include "host/at_server/client_session.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include <sys/socket.h>
#include <unistd.h>

#include "host/at/text.h"
#include "host/at_server/wiped_memory.h"

namespace host::at_server {
namespace {

using protocol::Cause;
using protocol::Message;
using protocol::Packet;
using protocol::Type;

constexpr size_t kMaxUnsent = 64;                     // messages, beyond which nothing more is taken or told
constexpr size_t kMaxUnsentBytes = size_t{64} * 1024; // likewise
constexpr int kRequestsInARow = 16;
constexpr std::chrono::milliseconds kLeastTimeout{100};
constexpr uint32_t kAllThatCanBeHeard = protocol::kHearReports | protocol::kHearTrace;

bool isControl(char c)
{
    return static_cast<unsigned char>(c) < ' ' || c == '\x7F';
}

/** @return what is wrong with a command; empty if nothing is */
std::string_view fault(std::string_view command)
{
    if (command.empty()) return "the command is empty";
    if (!at::isSameWithoutCase(command.substr(0, 2), "AT"))
        return "the command does not begin with AT"; // and a modem may never answer it
    if (command.size() > protocol::kMaxCommand) return "the command has more than 1023 characters";
    if (std::any_of(command.begin(), command.end(), isControl)) return "the command has a control character";
    return {};
}

bool sendNow(int fd, std::string_view packet)
{
    return ::send(fd, packet.data(), packet.size(), MSG_DONTWAIT | MSG_NOSIGNAL) >= 0;
}

/** A socket that is closed with something unread in it gives its peer an error in place of what was sent last. */
void readAway(int fd)
{
    std::array<char, 64> ignored{};
    for (int i = 0; i < 1000 && recv(fd, ignored.data(), ignored.size(), MSG_DONTWAIT) > 0; ++i) {
    }
}

} // namespace

ClientSession::ClientSession(EventLoop &loop, int fd, const Client &client, Calls calls)
    : loop_(loop), fd_(fd), client_(client), calls_(std::move(calls)), readWatch_(loop, fd, [this] { readRequests(); })
{
}

ClientSession::~ClientSession()
{
    for (const auto &[id, ticket] : std::exchange(unanswered_, {}))
        calls_.withdraw(ticket);
    readWatch_.reset();
    writeWatch_.reset();
    readAway(fd_);
    close(fd_);
}

void ClientSession::refuse(int fd, std::string_view why)
{
    const Packet packet({Type::Failure, Cause::Refused, 0, 0, why});
    sendNow(fd, {packet.data(), packet.size()});
    readAway(fd);
    close(fd);
}

void ClientSession::welcome()
{
    send({Type::Welcome, Cause::None, 0, static_cast<uint32_t>(getpid()), MAINCONTROL_VERSION});
}

// Requests

void ClientSession::readRequests()
{
    const WipedStack wiped;
    WipedBuffer<protocol::kMaxPacket> packet;
    for (int i = 0; i < kRequestsInARow; ++i) {
        const ssize_t size = recv(fd_, packet.data(), packet.size(), MSG_DONTWAIT | MSG_TRUNC);
        if (size < 0 && (errno == EAGAIN || errno == EINTR)) return;
        if (size <= 0) {
            calls_.gone(*this);
            return;
        }
        lastHeardAt_ = Shares::Clock::now();
        const auto length = static_cast<size_t>(size);
        const auto request = length > packet.size() ? std::nullopt : protocol::decode({packet.data(), length});
        if (!request || !take(*request)) {
            endWith(Cause::Protocol, "a message that cannot be read");
            return;
        }
        if (isFull()) { // goes on when the client has read
            readWatch_.reset();
            return;
        }
    }
}

bool ClientSession::take(const Message &request)
{
    switch (request.type) {
    case Type::Command:
        return takeCommand(request);
    case Type::Cancel:
        takeCancel(request.id);
        return true;
    case Type::Subscribe:
        return takeSubscription(request);
    case Type::GetStatus:
        answerStatus(request);
        return true;
    default:
        return false;
    }
}

bool ClientSession::takeSubscription(const Message &request)
{
    if ((request.value & ~kAllThatCanBeHeard) != 0) return false;
    const bool wantsTrace = (request.value & protocol::kHearTrace) != 0;
    const std::string refusal = wantsTrace ? calls_.refusal(at::Right::Trace, {}) : std::string();
    if (!refusal.empty()) {
        fail(request.id, Cause::NotAllowed, refusal);
        return true;
    }
    hears_ = request.value;
    answerStatus(request);
    if (hears(protocol::kHearReports)) send(calls_.port());
    return true;
}

bool ClientSession::takeCommand(const Message &request)
{
    if (request.id == 0 || unanswered_.contains(request.id)) return false;
    const std::string_view wrong = fault(request.text);
    if (!wrong.empty())
        fail(request.id, Cause::BadCommand, wrong);
    else if (unanswered_.size() >= kMaxUnanswered)
        fail(request.id, Cause::QueueFull, "this client waits for too many");
    else if (const std::string refusal = calls_.refusal(at::rightsFor(request.text), request.text); !refusal.empty())
        fail(request.id, Cause::NotAllowed, refusal);
    else
        runCommand(request);
    return true;
}

void ClientSession::runCommand(const Message &request)
{
    const uint32_t id = request.id;
    unanswered_[id] = 0;
    Command command;
    command.text = request.text;
    const std::chrono::milliseconds wished(request.value);
    const auto timeout = std::clamp(wished, kLeastTimeout, client_.longestTimeout);
    command.timeoutMs = static_cast<uint32_t>(timeout.count());
    command.client = static_cast<uint32_t>(client_.pid);
    command.session = client_.session;
    command.user = client_.user;
    command.done = [this, id](const Outcome &outcome) { finished(id, outcome); };
    const auto tellWait = [this, id](uint32_t atMostMs, std::string_view why) {
        if (!isFull()) send({Type::Waiting, Cause::None, id, atMostMs, why});
    };
    command.waits = [tellWait](uint32_t atMostMs) { tellWait(atMostMs, {}); };
    const Ticket ticket = calls_.submit(std::move(command), tellWait);
    if (const auto place = unanswered_.find(id); place != unanswered_.end()) place->second = ticket;
}

void ClientSession::takeCancel(uint32_t id)
{
    const auto place = unanswered_.find(id);
    if (place == unanswered_.end()) return;
    const Ticket ticket = place->second;
    unanswered_.erase(place);
    calls_.withdraw(ticket);
    fail(id, Cause::Cancelled, "cancelled");
}

void ClientSession::answerStatus(const Message &request)
{
    const std::string status = calls_.status();
    send({Type::Status, Cause::None, request.id, request.value, status});
}

void ClientSession::fail(uint32_t id, Cause cause, std::string_view why)
{
    send({Type::Failure, cause, id, 0, why});
}

void ClientSession::finished(uint32_t id, const Outcome &outcome)
{
    unanswered_.erase(id);
    lastHeardAt_ = Shares::Clock::now();
    if (outcome.cause == Cause::None)
        send({Type::Reply, Cause::None, id, 0, outcome.text});
    else
        fail(id, outcome.cause, outcome.text);
}

void ClientSession::endWith(Cause cause, std::string_view why)
{
    fail(0, cause, why);
    calls_.gone(*this);
}

Shares::Client ClientSession::share() const
{
    Shares::Client share{client_.session, client_.user, unanswered_.size(), {}};
    if (unanswered_.empty() && hears_ == protocol::kHearNothing) share.idleSince = lastHeardAt_;
    return share;
}

void ClientSession::letGo()
{
    endWith(Cause::Refused, "this client has asked for nothing for a while, and another one wants its place");
}

// Messages

bool ClientSession::isFull() const
{
    return unsent_.size() >= kMaxUnsent || unsentBytes_ >= kMaxUnsentBytes;
}

void ClientSession::tell(const Message &message)
{
    if (isFull() || lost_ > 0)
        ++lost_; // one gap, which ends when it has been told
    else
        send(message);
}

void ClientSession::send(const Message &message)
{
    const Packet packet(message);
    unsent_.emplace_back(packet.data(), packet.size());
    unsentBytes_ += packet.size();
    if (!writeWatch_) writeMore();
}

void ClientSession::writeMore()
{
    while (!unsent_.empty() && sendNow(fd_, unsent_.front())) {
        unsentBytes_ -= unsent_.front().size();
        unsent_.pop_front();
        if (lost_ > 0 && unsent_.empty()) tellLost();
    }
    if (!unsent_.empty() && errno != EAGAIN && errno != EINTR && errno != ENOBUFS) {
        shutdown(fd_, SHUT_RDWR); // and the read watch hears the end
        unsent_.clear();
        unsentBytes_ = 0;
    }
    if (unsent_.empty())
        writeWatch_.reset();
    else if (!writeWatch_)
        writeWatch_ = WriteWatch(loop_, fd_, [this] { writeMore(); });
    if (!isFull() && !readWatch_) readWatch_ = ReadWatch(loop_, fd_, [this] { readRequests(); });
}

void ClientSession::tellLost()
{
    const Packet packet({Type::Lost, Cause::None, 0, std::exchange(lost_, 0), {}});
    unsent_.emplace_back(packet.data(), packet.size());
    unsentBytes_ += packet.size();
}

} // namespace host::at_server

#include "host/at_client/client.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "host/at_client/interruption.h"

namespace host::at_client {
namespace {

using protocol::Message;
using protocol::Type;
using std::chrono::milliseconds;

constexpr milliseconds kDefaultPatience{15000};

std::string socketPath()
{
    const char *path = std::getenv(protocol::kSocketVariable);
    return path != nullptr && *path != '\0' ? path : protocol::kDefaultSocket;
}

milliseconds patience()
{
    const char *text = std::getenv(CLIENT_PATIENCE_VARIABLE);
    const long stated = text != nullptr ? std::strtol(text, nullptr, 10) : 0;
    return stated > 0 ? milliseconds(stated) : kDefaultPatience;
}

struct CauseRow {
    int result;
    const char *text; ///< if the server says nothing more
};

/** In the order of Cause. */
constexpr std::array<CauseRow, 12> kCauses{{
    {CLIENT_PROTOCOL, "a failure without a cause"},
    {CLIENT_REFUSED, "the server refuses this user"},
    {CLIENT_BAD_COMMAND, "the command does not begin with AT, is empty or too long, or has a control character"},
    {CLIENT_PORT_DOWN, "the modem's port is not open"},
    {CLIENT_TIMED_OUT, "the modem gave no final result in time"},
    {CLIENT_REPLY_TOO_LONG, "the reply is too long"},
    {CLIENT_INTERRUPTED, "the command was cancelled"},
    {CLIENT_SERVER_BUSY, "too many commands wait"},
    {CLIENT_NO_SERVER, "the server is ending"},
    {CLIENT_PROTOCOL, "the server does not understand this client"},
    {CLIENT_NOT_ALLOWED, "the server does not allow this user to do that"},
    {CLIENT_MISMATCHED, "the modem's answer belongs to another command"},
}};

Outcome outcomeOf(const Message &failure)
{
    const auto cause = static_cast<size_t>(failure.cause);
    const CauseRow &row = kCauses.at(cause < kCauses.size() ? cause : 0);
    return {row.result, failure.text.empty() ? row.text : std::string(failure.text)};
}

} // namespace

Client::Client() : path_(socketPath()), patience_(patience()) {}

Outcome Client::drop(const Outcome &outcome)
{
    if (connection_.isOpen()) readiness_.forget(connection_.fd());
    connection_.close();
    return outcome;
}

/** What a connection in this state means for the call. Only an interruption leaves it usable. */
Outcome Client::broken(State state)
{
    switch (state) {
    case State::Done:
        break;
    case State::TooLate:
        return drop({CLIENT_NO_SERVER, path_ + ": the server does not answer"});
    case State::Interrupted:
        return {CLIENT_INTERRUPTED, "interrupted"};
    case State::Closed:
        return drop({CLIENT_NO_SERVER, path_ + ": the server went away"});
    case State::Unreadable:
        return drop({CLIENT_PROTOCOL, path_ + ": the server speaks another version"});
    }
    return {};
}

Outcome Client::connect()
{
    path_ = socketPath();
    heard_ = protocol::kHearNothing;
    const State state = connection_.open(path_, Clock::now() + patience_);
    if (state == State::Closed) {
        const bool isRefused = errno == EACCES || errno == EPERM;
        return {isRefused ? CLIENT_REFUSED : CLIENT_NO_SERVER, path_ + ": " + std::strerror(errno)};
    }
    if (state != State::Done) return broken(state);
    readiness_.watch(connection_.fd());
    const Outcome outcome = greet();
    return outcome.isFailure() ? drop(outcome) : subscribe();
}

Outcome Client::greet()
{
    Message message;
    const State state = connection_.receive(message, Clock::now() + patience_);
    if (state != State::Done) return broken(state);
    if (message.type == Type::Failure) return outcomeOf(message);
    if (message.type != Type::Welcome) return broken(State::Unreadable);
    return {};
}

Outcome Client::subscribe()
{
    if (heard_ == wanted_) return {};
    Message request{.type = Type::Subscribe, .value = wanted_, .text = {}};
    State state = post(request);
    Message answer;
    Outcome outcome = state == State::Done ? answerTo(request.id, milliseconds(0), answer) : broken(state);
    const bool wantsTrace = (wanted_ & protocol::kHearTrace) != 0;
    if (outcome.result == CLIENT_NOT_ALLOWED && wantsTrace) return subscribeToRest(outcome);
    if (outcome.isFailure()) return drop(outcome);
    heard_ = request.value;
    return {};
}

/** A trace that is not allowed is not asked for again, and the connection serves for all else. */
Outcome Client::subscribeToRest(const Outcome &refusal)
{
    wanted_ &= ~static_cast<uint32_t>(protocol::kHearTrace);
    const Outcome outcome = subscribe();
    return outcome.isFailure() ? outcome : refusal;
}

/** Takes in what has come, by which a connection that is gone shows itself. */
Outcome Client::refresh()
{
    if (!connection_.isOpen()) return {};
    const State state = takeIn(Clock::now());
    if (state == State::Interrupted) return broken(state);
    if (state != State::TooLate && state != State::Done) broken(state);
    return {};
}

Outcome Client::ensureConnected()
{
    patience_ = patience();
    Outcome outcome = refresh();
    if (outcome.isFailure()) return outcome;
    if (connection_.isOpen()) {
        outcome = subscribe();
        if (outcome.result != CLIENT_NO_SERVER) return outcome;
    }
    return connect();
}

/** @param deadline  for the first message; the others are taken as far as they are there
 *  @return Done if at least one message came */
Connection::State Client::takeIn(Clock::time_point deadline)
{
    for (int count = 0;; ++count) {
        Message message;
        const State state = connection_.receive(message, count == 0 ? deadline : Clock::now());
        if (state == State::TooLate && count > 0) return State::Done;
        if (state != State::Done) return state;
        if (!keep(message) && message.type == Type::Failure && message.id == 0) return State::Closed;
        if (count == CLIENT_MAX_REPORTS) return State::Done; // a flood must not keep the call from its work
    }
}

bool Client::keep(const Message &message)
{
    if (!Inbox::takes(message.type)) return false;
    inbox_.put(message);
    readiness_.show(true);
    return true;
}

Connection::State Client::post(Message &request)
{
    if (++lastId_ == 0) ++lastId_; // which stands for no request
    request.id = lastId_;
    return connection_.send(request, Clock::now() + patience_);
}

/** One request and its answer. What has reached the server is not sent again. */
Outcome Client::ask(Message request, milliseconds itself, Message &answer)
{
    Outcome outcome = ensureConnected();
    if (outcome.isFailure()) return outcome;
    State state = post(request);
    if (state == State::Closed) {
        broken(state);
        outcome = connect();
        if (outcome.isFailure()) return outcome;
        state = post(request);
    }
    return state == State::Done ? answerTo(request.id, itself, answer) : broken(state);
}

void Client::giveUp(uint32_t id)
{
    if (!connection_.isOpen()) return;
    const Message cancel{.type = Type::Cancel, .id = id, .text = {}};
    if (connection_.send(cancel, Clock::now()) != State::Done) drop({});
}

/** @param itself  how long the request may take once the server has begun with it */
Outcome Client::answerTo(uint32_t id, milliseconds itself, Message &answer)
{
    auto deadline = Clock::now() + itself + patience_;
    for (;;) {
        const State state = Clock::now() > deadline ? State::TooLate : connection_.receive(answer, deadline);
        if (state == State::Interrupted) giveUp(id);
        if (state != State::Done) return broken(state);
        if (keep(answer)) continue;
        if (answer.type == Type::Failure && answer.id == 0) return drop(outcomeOf(answer));
        if (answer.id != id) continue; // of a command that was given up
        if (answer.type == Type::Failure) return outcomeOf(answer);
        if (answer.type != Type::Waiting) return {};
        last = {CLIENT_OK, std::string(answer.text)};
        tell(observer_.waiting, answer.value);
        deadline = Clock::now() + milliseconds(answer.value) + itself + patience_;
    }
}

/** @param call  what the observer is told in the midst of a call, in which no other call is possible */
template <typename... Arguments>
void Client::tell(void (*call)(void *, Arguments...), std::type_identity_t<Arguments>... arguments)
{
    if (call == nullptr) return;
    isTelling_ = true;
    call(observer_.user, arguments...);
    isTelling_ = false;
}

Outcome Client::send(const char *command, int32_t timeoutMs, char *reply)
{
    const std::string_view text = command;
    if (text.size() > protocol::kMaxCommand) return {CLIENT_BAD_COMMAND, "the command is too long"};
    const auto itself = static_cast<uint32_t>(std::max(timeoutMs, 0));
    Message answer;
    Outcome outcome = ask({.type = Type::Command, .value = itself, .text = text}, milliseconds(itself), answer);
    if (outcome.isFailure()) return outcome;
    if (answer.type != Type::Reply) return broken(State::Unreadable);
    *std::copy(answer.text.begin(), answer.text.end(), reply) = '\0';
    connection_.wipe();
    tell(observer_.reply, command, reply);
    return {};
}

Outcome Client::status(char *json, size_t size)
{
    Message answer;
    Outcome outcome = ask({.type = Type::GetStatus, .text = {}}, milliseconds(0), answer);
    if (outcome.isFailure()) return outcome;
    if (answer.type != Type::Status) return broken(State::Unreadable);
    if (size != 0) json[answer.text.copy(json, size - 1)] = '\0';
    return {};
}

Outcome Client::hear(protocol::Hear what, bool isWanted)
{
    wanted_ = isWanted ? wanted_ | what : wanted_ & ~static_cast<uint32_t>(what);
    return ensureConnected();
}

/** Waits until the inbox holds something. As long as it does, no connection is needed. */
Outcome Client::await(Clock::time_point deadline)
{
    Outcome outcome = inbox_.isEmpty() ? ensureConnected() : refresh();
    bool isRenewed = false;
    while (inbox_.isEmpty() && !outcome.isFailure()) {
        const State state = takeIn(deadline);
        if (state == State::TooLate || state == State::Interrupted) break;
        if (state == State::Done && Clock::now() < deadline) continue;
        if (state == State::Done) break;
        outcome = broken(state);
        if (!std::exchange(isRenewed, true)) outcome = connect();
    }
    return outcome;
}

int Client::dispatch(int32_t timeoutMs, Outcome &outcome)
{
    isDispatching_ = true;
    outcome = await(timeoutMs < 0 ? Clock::time_point::max() : Clock::now() + milliseconds(timeoutMs));
    const int delivered = deliver();
    isDispatching_ = false;
    return delivered;
}

int Client::deliver()
{
    int delivered = 0;
    for (size_t left = inbox_.size(); left > 0 && inbox_.size() > 0 && !Interruptible::isOver(); --left) {
        deliver(inbox_.take());
        ++delivered;
    }
    if (inbox_.hasLost() && !Interruptible::isOver()) {
        const uint32_t lost = inbox_.takeLost();
        if (observer_.lost != nullptr) observer_.lost(observer_.user, lost);
        ++delivered;
    }
    if (inbox_.isEmpty()) readiness_.show(false);
    return delivered;
}

void Client::deliver(const Inbox::Entry &entry)
{
    const char *text = entry.text.c_str();
    if (entry.type == Type::Port && observer_.port != nullptr)
        observer_.port(observer_.user, static_cast<int>(entry.value != 0), text);
    if (entry.type == Type::Trace && observer_.trace != nullptr) observer_.trace(observer_.user, text);
    if (entry.type != Type::Report) return;
    if (observer_.report != nullptr) observer_.report(observer_.user, text);
    if (report_ == nullptr) return;
    std::memset(&reportRecord_, 0, sizeof reportRecord_);
    std::copy(entry.text.begin(), entry.text.end(), reportRecord_.aucDataBuf);
    report_(&reportRecord_);
}

void Client::close()
{
    drop({});
    inbox_.clear();
    readiness_.show(false);
}

int Client::fd()
{
    return connection_.isOpen() || !inbox_.isEmpty() ? readiness_.fd() : -1;
}

void Client::leaveToParent()
{
    readiness_.close(); // without a word to the set, which is the parent's as well
    connection_.close();
    inbox_.clear();
    Interruptible::renew();
}

} // namespace host::at_client

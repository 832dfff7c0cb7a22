#include "krctl/session/session.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include <mainControl/api.h>

#include "host/at_client/at_client.h"
#include "host/protocol/at_protocol.h"
#include "krctl/output/render.h"
#include "krctl/session/call_failure.h"
#include "krctl/session/interruption.h"
#include "krctl/values/names.h"

namespace krctl {
namespace {

constexpr int kMostSilences = 2; // items of a kind without an answer before the rest is not asked
constexpr int32_t kSettlingTimeoutMs = 5000;

std::string environment(const char *name)
{
    const char *value = std::getenv(name);
    return value == nullptr ? "" : value;
}

Session &sessionOf(void *user)
{
    return *static_cast<Session *>(user);
}

} // namespace

Session::Session(SessionOptions options) : options_(std::move(options))
{
    if (!options_.socket.empty()) setenv(host::protocol::kSocketVariable, options_.socket.c_str(), 1);
    socket_ = environment(host::protocol::kSocketVariable);
    if (socket_.empty()) socket_ = host::protocol::kDefaultSocket;
    observe();
}

Session::~Session()
{
    ClientSetObserver(nullptr);
    ClientClose();
}

void Session::observe()
{
    ClientObserver observer{};
    observer.user = this;
    observer.waiting = [](void *user, uint32_t atMostMs) {
        if (const auto &call = sessionOf(user).happenings.waiting) call(atMostMs, ClientLastError());
    };
    observer.report = [](void *user, const char *text) {
        if (const auto &call = sessionOf(user).happenings.report) call(text);
    };
    observer.port = [](void *user, int isOpen, const char *why) {
        if (const auto &call = sessionOf(user).happenings.port) call(isOpen != 0, why);
    };
    observer.lost = [](void *user, uint32_t count) {
        if (const auto &call = sessionOf(user).happenings.lost) call(count);
    };
    observer.trace = [](void *user, const char *event) {
        if (const auto &call = sessionOf(user).happenings.trace) call(event);
    };
    observer.reply = [](void *user, const char *command, const char *text) {
        sessionOf(user).heardReply(command, text);
    };
    ClientSetObserver(&observer);
}

void Session::heardReply(std::string_view command, std::string_view reply)
{
    heard_.add(command, reply);
    finalResult_ = krctl::finalResultOf(reply);
}

void Session::open()
{
    const std::string chosen = chosenPlatform(); // a wrong name is told before the server is looked for
    readServerStatus();
    const bool isPortOpen = jsonText(serverStatus_, "port") == "open";
    if (chosen.empty() && isPortOpen && !jsonText(serverStatus_, "family")) {
        // The server is about to ask the modem, before whatever its clients ask.
        AtClientRes response{};
        (void)ClientSendCmd("AT", &response, kSettlingTimeoutMs);
        readServerStatus();
    }
    choosePlatform(chosen);
    (void)KR_setCurrentPlatform(platform_);
}

void Session::readServerStatus()
{
    std::array<char, host::protocol::kMaxText + 1> status{};
    if (const int result = ClientStatus(status.data(), status.size()); result != CLIENT_OK)
        throw connectionFailure(result, "reach the AT server", "socket " + socket_);
    serverStatus_ = status.data();
}

std::string Session::chosenPlatform() const
{
    const bool isOption = !options_.platform.empty();
    std::string name = isOption ? options_.platform : environment(kPlatformVariable);
    if (!name.empty() && !codeOf(kPlatforms, name))
        throw usageFailure("There is no family \"" + name + "\".", isOption ? kPlatformOption : kPlatformVariable,
                           "Use one of " + listed(wordsOf(kPlatforms)) + '.');
    return name;
}

void Session::choosePlatform(const std::string &chosen)
{
    const std::string name = chosen.empty() ? jsonText(serverStatus_, "family").value_or("") : chosen;
    platform_ = codeOf(kPlatforms, name).value_or(0);
}

std::string Session::platformName() const
{
    return wordOf(kPlatforms, platform_);
}

std::string Session::where(const std::string &function) const
{
    return function + ", family " + platformName() + ", socket " + socket_;
}

void Session::throwIfInterrupted()
{
    if (pendingInterruption() != 0) throw interruptedFailure();
}

Failure Session::failureFor(const std::string &function, const std::string &purpose)
{
    if (pendingInterruption() != 0) return interruptedFailure();
    if (gone_) return *gone_;
    Failure failure = failureOf(purpose, where(function), finalResult_);
    if (ClientLastResult() != CLIENT_OK || failure.exitStatus != kRefused) return failure;
    if (const auto state = simState().state) isInTheWay(*state, failure);
    return failure;
}

void Session::require(uint32_t result, const std::string &function, const std::string &purpose)
{
    if (result != UNI_ERROR_SUCCESS) throw failureFor(function, purpose);
    throwIfInterrupted();
}

Ending Session::endingOf(uint32_t result) const
{
    if (result == UNI_ERROR_SUCCESS) return Ending::Done;
    const int client = ClientLastResult();
    if (client == CLIENT_TIMED_OUT) return Ending::Silent;
    if (client == CLIENT_REPLY_TOO_LONG) return Ending::Unreadable;
    if (client != CLIENT_OK) return Ending::Gone;
    if (finalResult_ == "OK") return Ending::Unreadable;
    const auto state = simStateOfError(finalResult_);
    return state && rowOf(*state).demand == SimDemand::Unlock ? Ending::WaitsForSim : Ending::Refused;
}

Answer Session::call(const std::function<uint32_t()> &function)
{
    heard_ = {};
    const uint32_t result = function();
    return {.ending = endingOf(result), .replies = std::exchange(heard_, {})};
}

Answer Session::run(const std::string &command, int32_t timeoutMs)
{
    return call([&]() -> uint32_t {
        AtClientRes reply{};
        const bool isAnswered = ClientSendCmd(command.c_str(), &reply, timeoutMs) == CLIENT_OK;
        return isAnswered && finalResult_ == "OK" ? UNI_ERROR_SUCCESS : UNI_ERROR_FALSE;
    });
}

Answer Session::askBy(ItemKind kind, const std::function<Answer()> &way)
{
    int &silences = silences_.at(static_cast<size_t>(kind));
    if (!gone_ && pendingInterruption() != 0) gone_ = interruptedFailure();
    if (gone_) return {.ending = Ending::Gone};
    if (silences >= kMostSilences) return {.ending = Ending::NotAsked};
    Answer answer = way();
    if (answer.ending == Ending::Silent) ++silences;
    if (answer.ending == Ending::Gone)
        gone_ = pendingInterruption() != 0 ? interruptedFailure()
                                           : connectionFailure(ClientLastResult(), "read everything", where("krctl"));
    return answer;
}

Answer Session::ask(ItemKind kind, const std::function<uint32_t()> &function)
{
    return askBy(kind, [&] { return call(function); });
}

Answer Session::send(ItemKind kind, const std::string &command)
{
    constexpr int32_t kTimeoutMs = 5000;
    return askBy(kind, [&] { return run(command, kTimeoutMs); });
}

bool Session::has(ItemKind kind, const std::string &item, const std::function<uint32_t()> &function)
{
    const Answer answer = ask(kind, function);
    return note(item, answer.ending, answer.isDone());
}

bool Session::note(const std::string &item, Ending ending, bool isTold)
{
    if (isTold)
        isAnythingTold_ = true;
    else
        missing_.add(item, ending);
    return isTold;
}

void Session::finish(Report &report) const
{
    for (std::string &sentence : missing_.sentences())
        report.notes.push_back(std::move(sentence));
    if (!gone_) return;
    Failure failure = *gone_;
    failure.known = std::move(report);
    throw Failure(std::move(failure));
}

void Session::throwIfGone() const
{
    if (gone_) throw Failure(*gone_);
}

void Session::startOver()
{
    missing_.clear();
    silences_ = {};
    isAnythingTold_ = false;
}

SimStateReading Session::simState()
{
    const Answer answer = send(ItemKind::Sim, "AT+CPIN?");
    return simStateOf(answer.replies.to("AT+CPIN?"));
}

} // namespace krctl

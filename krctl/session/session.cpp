#include "krctl/session/session.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include <mainControl/api.h>
#include <mainControl/wrappers/pin.h>

#include "host/at_client/at_client.h"
#include "host/protocol/at_protocol.h"
#include "krctl/output/render.h"
#include "krctl/session/call_failure.h"
#include "krctl/session/interruption.h"
#include "krctl/values/names.h"

namespace krctl {
namespace {

constexpr int kMostSilences = 2; // items without an answer before the modem is taken to be gone
constexpr int32_t kSettlingTimeoutMs = 5000;

std::string environment(const char *name)
{
    const char *value = std::getenv(name);
    return value == nullptr ? "" : value;
}

std::string lastLineOf(std::string_view reply)
{
    const size_t end = reply.find_last_not_of("\r\n");
    if (end == std::string_view::npos) return {};
    const std::string_view text = reply.substr(0, end + 1);
    const size_t lineBreak = text.find_last_of("\r\n");
    return std::string(lineBreak == std::string_view::npos ? text : text.substr(lineBreak + 1));
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
    finalResult_ = lastLineOf(reply);
    const size_t start = std::min(command.find_first_of("=?"), command.size() - 1) + 1;
    finalResults_[std::string(command.substr(0, start))] = finalResult_;
}

std::string Session::finalResultOf(const std::string &commandStart) const
{
    const auto found = finalResults_.find(commandStart);
    return found == finalResults_.end() ? "" : found->second;
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
    Failure failure = failureOf(purpose, where(function), finalResult_);
    if (ClientLastResult() != CLIENT_OK || failure.exitStatus != kRefused) return failure;
    if (const std::optional<int32_t> state = simState()) isInTheWay(*state, failure);
    return failure;
}

void Session::require(uint32_t result, const std::string &function, const std::string &purpose)
{
    if (result != UNI_ERROR_SUCCESS) throw failureFor(function, purpose);
    throwIfInterrupted();
}

bool Session::has(uint32_t result, const std::string &item)
{
    throwIfInterrupted();
    if (result == UNI_ERROR_SUCCESS) return true;
    const int client = ClientLastResult();
    const bool isSilent = client == CLIENT_TIMED_OUT && ++silences_ <= kMostSilences;
    const bool isAnswered = client == CLIENT_OK || client == CLIENT_REPLY_TOO_LONG;
    if (!isAnswered && !isSilent) throw connectionFailure(client, "read the " + item, where("krctl"));
    missing_.push_back(item);
    return false;
}

void Session::noteMissing(Report &report) const
{
    if (missing_.empty()) return;
    report.notes.push_back("Not told by this modem: " + listed(missing_) + '.');
}

std::optional<int32_t> Session::simState()
{
    int32_t state = 0;
    const uint32_t result = cpinRead(&state);
    if (result == UNI_ERROR_FALSE) return std::nullopt;
    const int32_t translated = translatePinStateFromSettingToMts(state, result, 0);
    return translated == KORA_MTS_SIM_UNKNOWN ? std::nullopt : std::optional(translated);
}

} // namespace krctl

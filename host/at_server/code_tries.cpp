#include "host/at_server/code_tries.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <vector>

#include "host/at/command_line.h"
#include "host/at/secrets.h"
#include "host/at/text.h"

namespace host::at_server {
namespace {

using protocol::Cause;

/** Errors of 3GPP TS 27.007 9.2 that come before anybody has looked at a code. */
struct Excuse {
    int number;
    std::string_view text; ///< in lower case
};
constexpr std::array kExcuses{
    Excuse{4, "operation not supported"},
    Excuse{10, "sim not inserted"},
    Excuse{13, "sim failure"},
    Excuse{14, "sim busy"},
    Excuse{15, "sim wrong"},
};

std::string lowered(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
    return lower;
}

bool isExcuse(std::string_view result)
{
    constexpr std::string_view kPrefix = "+cme error:";
    const std::string line = lowered(result);
    if (line == "not support") return true;
    if (!line.starts_with(kPrefix)) return false;
    const std::string_view error = at::withoutBlanksAround(std::string_view(line).substr(kPrefix.size()));
    int number = -1;
    const auto [end, fault] = std::from_chars(error.data(), error.data() + error.size(), number);
    const bool isNumber = fault == std::errc() && end == error.data() + error.size();
    return std::any_of(kExcuses.begin(), kExcuses.end(), [&](const Excuse &excuse) {
        return (isNumber && excuse.number == number) || error == excuse.text;
    });
}

std::vector<std::string_view> linesOf(std::string_view reply)
{
    std::vector<std::string_view> lines;
    for (size_t at = at::skip(reply, "\r\n", 0); at < reply.size(); at = at::skip(reply, "\r\n", at)) {
        const size_t end = std::min(reply.find_first_of("\r\n", at), reply.size());
        lines.push_back(reply.substr(at, end - at));
        at = end;
    }
    return lines;
}

/** Whether a card answers in its own language (ETSI TS 102 221 10.2, 3GPP TS 51.011 9.4) that a code is wrong, or that
 *  none can be tried any more: +CSIM: 4,"63C2". */
bool isRefusedByCard(std::string_view line)
{
    const auto answer = at::namedLine(line);
    if (!answer || (!at::isSameName(answer->name, "+CSIM") && !at::isSameName(answer->name, "+CGLA"))) return false;
    std::string status(answer->parameters);
    std::erase_if(status, [](unsigned char character) { return std::isxdigit(character) == 0; });
    status = lowered(status.substr(status.size() - std::min<size_t>(status.size(), 4)));
    constexpr std::array<std::string_view, 5> kRefusals{"6983", "6984", "9804", "9808", "9840"};
    return status.starts_with("63") || std::find(kRefusals.begin(), kRefusals.end(), status) != kRefusals.end();
}

/** What a command does, without its code: of a facility which one, and what becomes of it. */
std::string namedTry(const at::Command &command)
{
    std::string what = command.name;
    const size_t shown = command.name == "+CLCK" ? 2 : command.name == "+CPWD" ? 1 : 0;
    const auto parameters = at::fields(command.parameters);
    for (size_t i = 0; i < std::min(shown, parameters.size()); ++i)
        what.append(" ").append(parameters[i]);
    return what;
}

} // namespace

std::optional<CodeTry> codeTryIn(std::string_view commandLine)
{
    if (!at::changesSecrets(commandLine)) return std::nullopt;
    CodeTry code;
    for (const at::Command &command : at::commandsOf(commandLine)) {
        code.what += namedTry(command) + ';';
        const bool isHandedOn = command.name == "+CSIM" || command.name == "+CGLA" || command.name == "+CUSD";
        const bool isBasic = command.name.empty() || !at::isSign(command.name.front());
        if (isHandedOn || isBasic) code.isProvenByOk = false;
    }
    return code;
}

CodeIs judged(const CodeTry &code, const Outcome &outcome)
{
    if (outcome.cause == Cause::TimedOut || outcome.cause == Cause::ReplyTooLong) return CodeIs::Wrong;
    if (outcome.cause != Cause::None) return CodeIs::NotTold;
    const auto lines = linesOf(outcome.text);
    if (std::any_of(lines.begin(), lines.end(), isRefusedByCard)) return CodeIs::Wrong;
    const std::string_view result = lines.empty() ? std::string_view() : lines.back();
    if (result == "OK") return code.isProvenByOk ? CodeIs::Right : CodeIs::NotTold;
    return isExcuse(result) ? CodeIs::NotTold : CodeIs::Wrong;
}

void CodeTries::add(uid_t user, const std::string &what, CodeIs verdict, Clock::time_point now)
{
    if (verdict == CodeIs::Wrong) {
        Failed &failed = users_[user];
        failed.what.insert(what);
        failed.wait = failed.wait.count() == 0 ? firstWait_ : std::min(2 * failed.wait, kLongestWait);
        failed.until = now + failed.wait;
        return;
    }
    const auto place = users_.find(user);
    if (verdict != CodeIs::Right || place == users_.end()) return;
    place->second.what.erase(what);
    if (place->second.what.empty()) users_.erase(place);
}

std::chrono::milliseconds CodeTries::waitOf(uid_t user, Clock::time_point now) const
{
    const auto place = users_.find(user);
    if (place == users_.end()) return {};
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(place->second.until - now);
    return std::max(left, std::chrono::milliseconds(0));
}

} // namespace host::at_server

#include "host/at_server/reply.h"

#include <algorithm>
#include <array>

#include "host/at/command_line.h"
#include "host/at/reports.h"
#include "host/at/text.h"

namespace host::at_server {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::array<std::string_view, 2> kErrors{"+CME ERROR", "+CMS ERROR"};
constexpr std::array<std::string_view, 4> kCallResults{"BUSY", "NO ANSWER", "NO DIALTONE", "NO DIAL TONE"};
constexpr std::array<std::string_view, 4> kNotSupported{"COMMAND NOT SUPPORT", "COMMAND NOT SUPPORTED", "NOT SUPPORT",
                                                        "NOT SUPPORTED"};
constexpr std::string_view kModemError = "MODEM ERROR:";
constexpr std::string_view kTooMany = "TOO MANY PARAMETERS";
constexpr std::array<std::string_view, 6> kCallCommands{"D", "A", "O", "H", "+CHUP", "+CGDATA"};

/** "+CME ERROR" and what is behind its colon. */
std::string_view errorName(std::string_view line)
{
    for (const std::string_view name : kErrors)
        if (line.substr(0, name.size()) == name && line.substr(name.size(), 1) == ":") return name;
    return {};
}

bool isNotSupported(std::string_view line)
{
    return std::any_of(kNotSupported.begin(), kNotSupported.end(),
                       [&](std::string_view words) { return at::isSameWithoutCase(words, line); });
}

/** In words that the library does not have: "MODEM ERROR: 5", but not without a number. */
bool isRefusal(std::string_view line)
{
    if (at::isSameWithoutCase(line, kTooMany)) return true;
    if (!at::isSameWithoutCase(line.substr(0, kModemError.size()), kModemError)) return false;
    const std::string_view number = at::withoutBlanksAround(line.substr(kModemError.size()));
    return !number.empty() && std::all_of(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

bool makesCalls(std::string_view command)
{
    const auto commands = at::commandsOf(command);
    return std::any_of(commands.begin(), commands.end(), [](const at::Command &one) {
        return std::find(kCallCommands.begin(), kCallCommands.end(), one.name) != kCallCommands.end();
    });
}

ResultKind resultKind(std::string_view line, std::string_view command)
{
    line = at::withoutBlanksBehind(line);
    if (line == "OK") return ResultKind::Ok;
    if (line == "ERROR" || line == "not support" || !errorName(line).empty()) return ResultKind::Error;
    if (isNotSupported(line)) return ResultKind::NotSupported;
    if (isRefusal(line)) return ResultKind::Refusal;
    if (isConnect(line)) return ResultKind::Call;
    if (std::find(kCallResults.begin(), kCallResults.end(), line) != kCallResults.end()) return ResultKind::Call;
    return line == "NO CARRIER" && makesCalls(command) ? ResultKind::Call : ResultKind::None;
}

bool isConnect(std::string_view result)
{
    return result == "CONNECT" || result.substr(0, 8) == "CONNECT ";
}

std::string withBlank(std::string_view line)
{
    std::string_view name = errorName(line);
    if (name.empty()) {
        const auto named = at::namedLine(line);
        const at::Report *const report = named ? at::reportNamed(named->name) : nullptr;
        if (!named || (report != nullptr && report->hasBareColon)) return std::string(line);
        name = named->name;
    }
    const std::string_view rest = line.substr(line.find(':') + 1);
    const bool hasBlank = rest.empty() || rest.front() == ' ';
    return std::string(name).append(hasBlank ? ":" : ": ").append(rest);
}

std::string framed(const Reply &reply)
{
    std::string text;
    for (const std::string &line : reply.lines)
        text.append(text.empty() ? kLineEnd : "").append(line).append(kLineEnd);
    text.append(kLineEnd).append(reply.result);
    return reply.result == kPrompt ? text : text.append(kLineEnd);
}

std::string framedReport(const std::vector<std::string> &lines)
{
    std::string text(kLineEnd);
    for (const std::string &line : lines)
        text.append(line).append(kLineEnd);
    return text;
}

} // namespace host::at_server

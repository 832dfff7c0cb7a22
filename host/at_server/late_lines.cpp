#include "host/at_server/late_lines.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <functional>
#include <utility>

#include "host/at/answers.h"
#include "host/at/command_line.h"
#include "host/at/reports.h"
#include "host/at/text.h"
#include "host/at_server/reports.h"

namespace host::at_server {
namespace {

constexpr size_t kMaxMissed = 16;
constexpr size_t kMaxNames = 256;

size_t echoOf(std::string_view line)
{
    std::string text(at::withoutBlanksBehind(line));
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return std::hash<std::string>{}(text);
}

bool isKnownReport(std::string_view line)
{
    const auto named = at::namedLine(line);
    return named && at::reportNamed(named->name) != nullptr;
}

/** Whether a line can be told from a report, and answers a command. */
bool answers(std::string_view line, std::string_view command)
{
    if (command.empty()) return false;
    const auto commands = at::commandsOf(command);
    const auto named = at::namedLine(line);
    if (!named) return at::isIdentity(line) && at::canAnswerIdentity(line, commands);
    if (at::answeredUnder(named->name, commands) == nullptr) return false;
    const at::Report *const report = at::reportNamed(named->name);
    if (report == nullptr) return true;
    return report->kind == at::ReportKind::Registration && lineUse(line, command) == LineUse::Reply;
}

} // namespace

LateLines::Ended LateLines::ended(std::string_view command)
{
    if (command.empty()) return {};
    Ended ended{"AT", echoOf(command)};
    for (const at::Command &one : at::commandsOf(command)) {
        constexpr std::array<std::string_view, 5> kForms{"", "?", "=?", "=0", "/"}; // in the order of Form
        const bool isExtended = !one.name.empty() && at::isSign(one.name.front());
        ended.names.append(one.name).append(isExtended ? kForms.at(static_cast<size_t>(one.form)) : "").append(";");
    }
    return ended;
}

bool LateLines::Ended::mayHaveSent(std::string_view line) const
{
    return !names.empty() && (answers(line, names) || echoOf(line) == echo);
}

void LateLines::sent(std::string_view command)
{
    previous_ = std::exchange(last_, ended(command));
    for (const at::Command &one : at::commandsOf(command))
        if (asked_.size() < kMaxNames && !wasAsked(one.name)) asked_.push_back(one.name);
}

void LateLines::missed(std::string_view command)
{
    if (command.empty()) return;
    Ended late = ended(command);
    const bool isKnown =
        std::any_of(missed_.begin(), missed_.end(), [&](const Ended &known) { return known.echo == late.echo; });
    if (isKnown) return;
    missed_.push_back(std::move(late));
    if (missed_.size() > kMaxMissed) missed_.pop_front();
}

void LateLines::heardAlone(std::string_view line)
{
    const auto named = at::namedLine(line);
    const bool isLearned = named && at::reportNamed(named->name) == nullptr && reported_.size() < kMaxNames;
    if (isLearned) reported_.emplace(named->name);
}

/** Also when so many have been that not all are known. */
bool LateLines::wasAsked(std::string_view name) const
{
    return asked_.size() >= kMaxNames || std::any_of(asked_.begin(), asked_.end(), [&](const std::string &asked) {
               return at::isSameName(asked, name);
           });
}

bool LateLines::isLate(std::string_view line, std::string_view command) const
{
    if (command.empty() && isKnownReport(line)) return false; // of registration, to which some modems add the mode
    if (answers(line, command) || at::tellsTexts(at::commandsOf(command))) return false;
    const bool isOwnEcho = !command.empty() && echoOf(line) == echoOf(command);
    if (isOwnEcho) return false;
    if (last_.mayHaveSent(line) || previous_.mayHaveSent(line)) return true;
    return std::any_of(missed_.begin(), missed_.end(), [&](const Ended &late) { return late.mayHaveSent(line); });
}

bool LateLines::isReport(std::string_view line) const
{
    const auto named = at::namedLine(line);
    return named && reported_.contains(named->name) && !wasAsked(named->name);
}

} // namespace host::at_server

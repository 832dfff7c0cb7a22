#include "host/at_server/late_lines.h"

#include <algorithm>
#include <utility>

#include "host/at/answers.h"
#include "host/at/reports.h"
#include "host/at/text.h"
#include "host/at_server/reports.h"

namespace host::at_server {
namespace {

constexpr size_t kMaxMissed = 16;
constexpr size_t kMaxNames = 256;

/** Whether a line can be told from a report, and answers or repeats a command. */
bool answers(std::string_view line, std::string_view command)
{
    if (command.empty()) return false;
    if (at::isSameWithoutCase(line, command)) return true;
    const auto commands = at::commandsOf(command);
    const auto named = at::namedLine(line);
    if (!named) return at::isIdentity(line) && at::canAnswerIdentity(line, commands);
    if (at::answeredUnder(named->name, commands) == nullptr) return false;
    const at::Report *const report = at::reportNamed(named->name);
    if (report == nullptr) return true;
    return report->kind == at::ReportKind::Registration && lineUse(line, command) == LineUse::Reply;
}

} // namespace

void LateLines::sent(std::string_view command)
{
    previous_ = std::exchange(last_, command);
    for (const at::Command &one : at::commandsOf(command))
        if (asked_.size() < kMaxNames && !wasAsked(one.name)) asked_.push_back(one.name);
}

void LateLines::missed(std::string_view command)
{
    if (command.empty() || std::find(missed_.begin(), missed_.end(), command) != missed_.end()) return;
    missed_.emplace_back(command);
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
    if (answers(line, command) || at::tellsTexts(at::commandsOf(command))) return false;
    if (answers(line, last_) || answers(line, previous_)) return true;
    return std::any_of(missed_.begin(), missed_.end(), [&](const std::string &late) { return answers(line, late); });
}

bool LateLines::isReport(std::string_view line) const
{
    const auto named = at::namedLine(line);
    return named && reported_.contains(named->name) && !wasAsked(named->name);
}

} // namespace host::at_server

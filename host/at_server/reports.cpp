#include "host/at_server/reports.h"

#include <algorithm>
#include <cctype>

#include "host/at/command_line.h"
#include "host/at/reports.h"
#include "host/at/text.h"

namespace host::at_server {
namespace {

using at::Form;
using at::Report;
using at::ReportKind;

/** A command of the line that is answered under this name. */
const at::Command *asking(const std::vector<at::Command> &commands, std::string_view name)
{
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&](const at::Command &command) { return at::isSameName(command.name, name); });
    return found == commands.end() ? nullptr : &*found;
}

bool isSmallNumber(std::string_view field)
{
    return !field.empty() && field.size() <= 2 &&
           std::all_of(field.begin(), field.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/** A read command is answered by mode and state, two small numbers; behind the state of a report stands a code in quotes
 *  or of more digits, or nothing. A set command has no such line in its reply. */
LineUse registrationUse(const at::Command &command, std::string_view parameters)
{
    if (command.form == Form::Test) return LineUse::Reply;
    if (command.form == Form::Set) return LineUse::Report;
    const auto values = at::fields(parameters);
    if (values.size() >= 2 && isSmallNumber(values[0]) && isSmallNumber(values[1])) return LineUse::Reply;
    return LineUse::DoubtfulReport;
}

LineUse useOf(const Report &report, std::string_view parameters)
{
    if (report.kind != ReportKind::TextLine) return LineUse::Report;
    const auto values = at::fields(parameters);
    const bool endsInLength =
        values.size() <= 2 && !values.back().empty() &&
        std::all_of(values.back().begin(), values.back().end(), [](char c) { return c >= '0' && c <= '9'; });
    if (endsInLength) return LineUse::ReportWithPdu;
    return report.name == "+CDS" ? LineUse::Report
                                 : LineUse::ReportWithText; // a status report in text mode is one line
}

} // namespace

LineUse lineUse(std::string_view line, std::string_view command)
{
    if (at::isReportWord(at::withoutBlanksBehind(line))) return LineUse::Report;
    const auto named = at::namedLine(line);
    if (!named) return LineUse::Reply;

    const Report *const report = at::reportNamed(named->name);
    const auto commands = at::commandsOf(command);
    if (const at::Command *const asked = asking(commands, named->name)) {
        if (report == nullptr || report->kind != ReportKind::Registration) return LineUse::Reply;
        return registrationUse(*asked, named->parameters);
    }
    if (report != nullptr) return useOf(*report, named->parameters);
    const bool isReport = command.empty() || named->name.front() == '^';
    return isReport ? LineUse::Report : LineUse::Reply;
}

bool mayBreakInQuotes(std::string_view line)
{
    const auto named = at::namedLine(line);
    const Report *const report = named ? at::reportNamed(named->name) : nullptr;
    return report == nullptr || report->kind == ReportKind::Text;
}

bool isPdu(std::string_view line)
{
    line = at::withoutBlanksBehind(line);
    return !line.empty() && line.size() % 2 == 0 && std::all_of(line.begin(), line.end(), [](char c) {
        return std::isxdigit(static_cast<unsigned char>(c)) != 0;
    });
}

} // namespace host::at_server

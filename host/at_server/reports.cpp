#include "host/at_server/reports.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "host/at/answers.h"
#include "host/at/command_line.h"
#include "host/at/reports.h"
#include "host/at/text.h"
#include "host/at_server/translation/registration.h"

namespace host::at_server {
namespace {

using at::Form;
using at::Report;
using at::ReportKind;

/** Replies whose lines have names and numbers in their quotes, and never a line break. */
constexpr std::array<std::string_view, 10> kOnOneLine{"+COPS",  "+CSQ",  "+CESQ",    "+CFUN", "+CPIN",
                                                      "+CPINR", "+CLCK", "+CGDCONT", "+CNUM", "+CRSM"};

bool isNumber(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/** A read command is answered by mode and state. A set command has no such line in its reply. */
LineUse registrationUse(const at::Command &command, std::string_view parameters)
{
    if (command.form == Form::Test) return LineUse::Reply;
    if (command.form == Form::Set) return LineUse::Report;
    return hasModeAndState(parameters) ? LineUse::Reply : LineUse::DoubtfulReport;
}

LineUse useOf(const Report &report, std::string_view parameters)
{
    if (report.kind != ReportKind::TextLine) return LineUse::Report;
    const auto values = at::fields(parameters);
    const bool endsInLength = values.size() <= 2 && isNumber(values.back());
    if (endsInLength) return LineUse::ReportWithPdu;
    return report.name == "+CDS" ? LineUse::Report
                                 : LineUse::ReportWithText; // a status report in text mode is one line
}

} // namespace

LineUse lineUse(std::string_view line, std::string_view command)
{
    if (at::isReportWord(at::withoutBlanksBehind(line))) return LineUse::Report;
    const auto named = at::namedLine(line);
    const auto commands = at::commandsOf(command);
    if (!named) {
        const bool isForeign = !command.empty() && at::isIdentity(line) && !at::canAnswerIdentity(line, commands);
        return isForeign ? LineUse::Foreign : LineUse::Reply;
    }
    const Report *const report = at::reportNamed(named->name);
    if (const at::Command *const asked = at::answeredUnder(named->name, commands)) {
        if (report == nullptr || report->kind != ReportKind::Registration) return LineUse::Reply;
        return registrationUse(*asked, named->parameters);
    }
    if (report != nullptr) return useOf(*report, named->parameters);
    if (command.empty()) return LineUse::Report;
    return at::tellsTexts(commands) ? LineUse::Reply : LineUse::Foreign;
}

bool mayBreakInQuotes(std::string_view line)
{
    const auto named = at::namedLine(line);
    if (!named) return true;
    if (std::find(kOnOneLine.begin(), kOnOneLine.end(), named->name) != kOnOneLine.end()) return false;
    const Report *const report = at::reportNamed(named->name);
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

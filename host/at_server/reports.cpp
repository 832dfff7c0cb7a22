#include "reports.h"

#include "at_text.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace host::at_server {
namespace {

enum class Kind {
    Values,       ///< one line of numbers and codes
    Text,         ///< one line with a quoted text, which may have line breaks
    TextLine,     ///< a second line has the text of a message
    Registration, ///< as a report "stat,...", as a reply "n,stat,..."
};

struct Row {
    std::string_view name;
    Kind kind;
};

// What lib_mainControl knows, then further reports of 3GPP TS 27.007 and 27.005 and of common modems. Names with '^' are
// not listed: a modem of that kind answers with them only under the name of the command.
constexpr std::array kNamed{
    Row{"+TSTUD", Kind::Text},         Row{"+TSTC", Kind::Text},           Row{"+Zunsupport", Kind::Values},
    Row{"+ZMTime", Kind::Values},      Row{"+ZSMSR", Kind::Values},        Row{"+ZDIST", Kind::Text},
    Row{"+ZSTI", Kind::Text},          Row{"+ZPSTM", Kind::Text},          Row{"+STKPCI", Kind::Text},
    Row{"+ZGINP", Kind::Text},         Row{"+ZGINK", Kind::Text},          Row{"+ZCLAS", Kind::Text},
    Row{"+ZVMAIL", Kind::Values},      Row{"+CMTI", Kind::Values},         Row{"+CDSI", Kind::Values},
    Row{"+CDS", Kind::TextLine},       Row{"+CBM", Kind::TextLine},        Row{"+CUSD", Kind::Text},
    Row{"+CEREG", Kind::Registration}, Row{"+CGREG", Kind::Registration},  Row{"+ZDONR", Kind::Values},
    Row{"+ZPASR", Kind::Values},       Row{"+ZOPERTER", Kind::Values},     Row{"$ARME", Kind::Values},
    Row{"+ZMCON", Kind::Values},       Row{"+ZMCONV6", Kind::Values},      Row{"+CON_STATUS", Kind::Values},
    Row{"+ZCONSTAT", Kind::Values},    Row{"+ZGIPDNS", Kind::Values},      Row{"+ZPBIC", Kind::Values},
    Row{"+PSBEARER", Kind::Values},    Row{"+EUSIM", Kind::Values},        Row{"+ECSQ", Kind::Values},
    Row{"+ESMLA", Kind::Values},       Row{"+ECFU", Kind::Values},         Row{"+ESPEECH", Kind::Values},
    Row{"+ESCRI", Kind::Values},       Row{"+ESIMS", Kind::Values},        Row{"+ETESTSIM", Kind::Values},
    Row{"+ECIPH", Kind::Values},       Row{"+ECELLINFO", Kind::Values},    Row{"+ENWINFO", Kind::Values},
    Row{"+CGEV", Kind::Values},

    Row{"+CREG", Kind::Registration},  Row{"+C5GREG", Kind::Registration}, Row{"+CMT", Kind::TextLine},
    Row{"+CBMI", Kind::Values},        Row{"+CLIP", Kind::Values},         Row{"+CNAP", Kind::Values},
    Row{"+CDIP", Kind::Values},        Row{"+CCWA", Kind::Values},         Row{"+CCWV", Kind::Values},
    Row{"+CRING", Kind::Values},       Row{"+CSSI", Kind::Values},         Row{"+CSSU", Kind::Values},
    Row{"+CIEV", Kind::Values},        Row{"+CTZV", Kind::Values},         Row{"+CTZE", Kind::Values},
    Row{"+CTZEU", Kind::Values},       Row{"+CSCON", Kind::Values},        Row{"+CIREPH", Kind::Values},
    Row{"+CIREPI", Kind::Values},      Row{"+CNEMIU", Kind::Values},       Row{"+CPIN", Kind::Values},
    Row{"+UNREADSMS", Kind::Values},   Row{"+SIND", Kind::Values},         Row{"+ECIND", Kind::Values},
    Row{"+SPECC", Kind::Values},       Row{"*SPREADY", Kind::Values},
};

// Reports that are a line of their own.
constexpr std::array<std::string_view, 15> kWords{
    "+ZEND",   "RING",       "+RING",      "+STOPRING",         "+RINGBACK",
    "+ANSWER", "+HANGUP",    "NO CARRIER", "+VOICE NO CARRIER", "+VOICE CONNECT",
    "RDY",     "Call Ready", "SMS Ready",  "SMS DONE",          "PB DONE",
};

constexpr std::array<std::string_view, 3> kBareColons{"+ZMCON", "+ZMCONV6", "+CON_STATUS"};

const Row *find(std::string_view name)
{
    const auto *const row = std::find_if(kNamed.begin(), kNamed.end(), [&](const Row &r) { return r.name == name; });
    return row == kNamed.end() ? nullptr : row;
}

/** A part of the command that is answered under this name. */
const CommandPart *asking(const std::vector<CommandPart> &parts, std::string_view name)
{
    const auto part = std::find_if(parts.begin(), parts.end(), [&](const auto &p) { return isSameName(p.name, name); });
    return part == parts.end() ? nullptr : &*part;
}

bool isSmallNumber(std::string_view field)
{
    return !field.empty() && field.size() <= 2 &&
           std::all_of(field.begin(), field.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/** A read command is answered by mode and state, two small numbers; behind the state of a report stands a code in quotes
 *  or of more digits, or nothing. A set command has no such line in its reply. */
LineUse registrationUse(const CommandPart &command, std::string_view parameters)
{
    if (command.form == Form::Test) return LineUse::Reply;
    if (command.form == Form::Set) return LineUse::Report;
    const auto values = fields(parameters);
    if (values.size() >= 2 && isSmallNumber(values[0]) && isSmallNumber(values[1])) return LineUse::Reply;
    return LineUse::DoubtfulReport;
}

LineUse useOfRow(const Row &row, std::string_view parameters)
{
    if (row.kind != Kind::TextLine) return LineUse::Report;
    const auto values = fields(parameters);
    const bool endsInLength =
        values.size() <= 2 && !values.back().empty() &&
        std::all_of(values.back().begin(), values.back().end(), [](char c) { return c >= '0' && c <= '9'; });
    if (endsInLength) return LineUse::ReportWithPdu;
    return row.name == "+CDS" ? LineUse::Report : LineUse::ReportWithText; // a status report in text mode is one line
}

} // namespace

LineUse lineUse(std::string_view line, std::string_view command)
{
    const std::string_view word = withoutBlanksBehind(line);
    if (std::find(kWords.begin(), kWords.end(), word) != kWords.end()) return LineUse::Report;
    const auto named = namedLine(line);
    if (!named) return LineUse::Reply;

    const Row *const row = find(named->name);
    const auto parts = commandParts(command);
    if (const CommandPart *const part = asking(parts, named->name)) {
        if (row == nullptr || row->kind != Kind::Registration) return LineUse::Reply;
        return registrationUse(*part, named->parameters);
    }
    if (row != nullptr) return useOfRow(*row, named->parameters);
    const bool isReport = command.empty() || named->name.front() == '^';
    return isReport ? LineUse::Report : LineUse::Reply;
}

bool mayBreakInQuotes(std::string_view line)
{
    const auto named = namedLine(line);
    const Row *const row = named ? find(named->name) : nullptr;
    return row == nullptr || row->kind == Kind::Text;
}

bool hasBareColon(std::string_view name)
{
    return std::find(kBareColons.begin(), kBareColons.end(), name) != kBareColons.end();
}

bool isPdu(std::string_view line)
{
    line = withoutBlanksBehind(line);
    return !line.empty() && line.size() % 2 == 0 && std::all_of(line.begin(), line.end(), [](char c) {
        return std::isxdigit(static_cast<unsigned char>(c)) != 0;
    });
}

} // namespace host::at_server

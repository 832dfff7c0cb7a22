#include "host/at/answers.h"

#include <algorithm>
#include <array>

#include "host/at/text.h"

namespace host::at {
namespace {

/** Names under which modems answer the same question. */
struct Kin {
    std::string_view asked; ///< without its sign
    std::string_view answered;
};

constexpr std::array kKin{
    Kin{"CCID", "ICCID"},  Kin{"CCID", "QCCID"},  Kin{"ICCID", "CCID"},      Kin{"QCCID", "CCID"},
    Kin{"QCCID", "ICCID"}, Kin{"ZICCID", "CCID"}, Kin{"ZGETICCID", "ICCID"}, Kin{"ZICCID", "ICCID"},
    Kin{"GSN", "CGSN"},    Kin{"CGSN", "GSN"},    Kin{"CGSN", "IMEI"},       Kin{"GSN", "IMEI"},
    Kin{"GMI", "CGMI"},    Kin{"CGMI", "GMI"},    Kin{"GMM", "CGMM"},        Kin{"CGMM", "GMM"},
    Kin{"GMR", "CGMR"},    Kin{"CGMR", "GMR"},    Kin{"CIMI", "IMSI"},
};

/** Basic commands that tell texts, and commands that tell messages. What cannot be read may be anything. */
constexpr std::array<std::string_view, 8> kTellingTexts{"", "I", "&V", "+CMGL", "+CMGR", "+CLAC", "+GCAP", "+CMGRD"};

struct Length {
    std::string_view asked; ///< without its sign
    size_t least;
    size_t most;
};

/** As short as an identity can be; shorter numbers are values that stand without their name. */
constexpr size_t kShortestIdentity = 14;

constexpr std::array kLengths{
    Length{"CIMI", kShortestIdentity, 15},
    Length{"CGSN", kShortestIdentity, 17},
    Length{"GSN", kShortestIdentity, 17},
    Length{"CCID", 18, 22},
    Length{"ICCID", 18, 22},
    Length{"QCCID", 18, 22},
    Length{"ZGETICCID", 18, 22},
    Length{"ZICCID", 18, 22},
};

/** Commands of the standard that are answered under their name, or by their final result alone. */
constexpr std::array<std::string_view, 30> kNamedOnly{
    "CSQ",   "CREG", "CGREG", "CEREG", "C5GREG", "COPS",    "CPIN",    "CPINR",     "CFUN",   "CGATT",
    "CGACT", "CLCK", "CPWD",  "CPOL",  "CESQ",   "CGDCONT", "CMEE",    "CNUM",      "CSCS",   "CCLK",
    "CBC",   "CTZR", "CRSM",  "CIND",  "CMGF",   "CGAUTH",  "CGPADDR", "CGCONTRDP", "CGPIAF", "WS46",
};

std::string_view bareName(const Command &command)
{
    const std::string_view name = command.name;
    return name.substr(!name.empty() && isSign(name.front()) ? 1 : 0);
}

bool isAnsweredUnder(const Command &command, std::string_view name)
{
    if (isSameName(command.name, name)) return true;
    return !name.empty() && std::any_of(kKin.begin(), kKin.end(), [&](const Kin &kin) {
        return kin.asked == bareName(command) && isSameWithoutCase(kin.answered, name.substr(1));
    });
}

bool canAnswer(std::string_view identity, const Command &command)
{
    const std::string_view name = bareName(command);
    const auto *const known =
        std::find_if(kLengths.begin(), kLengths.end(), [&](const Length &row) { return row.asked == name; });
    if (known == kLengths.end()) return std::find(kNamedOnly.begin(), kNamedOnly.end(), name) == kNamedOnly.end();
    const bool isOfLength = identity.size() >= known->least && identity.size() <= known->most;
    return isOfLength || command.form == Form::Set;
}

} // namespace

const Command *answeredUnder(std::string_view name, const std::vector<Command> &commands)
{
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&](const Command &command) { return isAnsweredUnder(command, name); });
    return found == commands.end() ? nullptr : &*found;
}

bool tellsTexts(const std::vector<Command> &commands)
{
    return std::any_of(commands.begin(), commands.end(), [](const Command &command) {
        return std::find(kTellingTexts.begin(), kTellingTexts.end(), command.name) != kTellingTexts.end();
    });
}

bool isIdentity(std::string_view line)
{
    return line.size() >= kShortestIdentity &&
           std::all_of(line.begin(), line.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool canAnswerIdentity(std::string_view identity, const std::vector<Command> &commands)
{
    return std::any_of(commands.begin(), commands.end(),
                       [&](const Command &command) { return canAnswer(identity, command); });
}

} // namespace host::at

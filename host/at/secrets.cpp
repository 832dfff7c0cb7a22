#include "host/at/secrets.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include <mainControl/at_values.h>

#include "host/at/text.h"

namespace host::at {
namespace {

constexpr int kLast = std::numeric_limits<int>::max();

constexpr Range secretFrom(int first)
{
    return {Kind::Secret, first, kLast};
}

constexpr Range identityFrom(int first, int last = kLast)
{
    return {Kind::Identity, first, last};
}

/** Of words that also tell states, such as "SIM PIN". */
constexpr Range codesOf(Kind kind, int first = 1)
{
    return {kind, first, kLast, true};
}

constexpr CommandRule code(std::string_view name, int first = 1)
{
    return {name, secretFrom(first), codesOf(Kind::Secret)};
}

constexpr CommandRule messages(std::string_view name)
{
    return {name, {}, secretFrom(1), false, true};
}

constexpr CommandRule told(std::string_view name, Range range)
{
    return {name, {}, range};
}

// Of a secret all that follows is hidden, since a secret may hold a comma or a quote.
constexpr CommandRule kRules[] = {
    // PIN, PUK and lock codes
    code("CPIN"),
    code("CPIN2"),
    code("EPIN2"),
    code("CPUK"),
    code("ZVPIN"),
    code("PINNUM"),
    code("CPWD", 2),
    code("ZPSWD"),
    {"CLCK", secretFrom(3), codesOf(Kind::Secret), true},
    code("ZNCK"),
    code("ESMLCK", 3),
    code("CARDLOCK"),
    code("SIMLOCK"),
    code("XLOCK", 3),
    code("ILOCKNUM"),
    // the SIM's own language, in which a PIN is spoken as well
    {"CSIM", secretFrom(2), identityFrom(2)},
    {"CGLA", secretFrom(3), identityFrom(2)},
    // user names and passwords of packet data
    {"CGAUTH", secretFrom(3), secretFrom(3)},
    {"XGAUTH", secretFrom(3), secretFrom(3)},
    {"QCPDPP", secretFrom(3), secretFrom(3)},
    {"AUTHDATA", secretFrom(3), secretFrom(3)},
    {"QICSGP", secretFrom(4), secretFrom(3)},
    {"EGPAU", secretFrom(3), secretFrom(3)},
    {"IPDPCFG", secretFrom(3), secretFrom(3)},
    // who the subscriber and the device are
    {"CIMI", {}, identityFrom(1)},
    {"CGSN", {}, identityFrom(1)},
    {"GSN", {}, identityFrom(1)},
    {"CNUM", {}, identityFrom(1, 2)},
    {"CCID", {}, identityFrom(1)},
    {"ICCID", {}, identityFrom(1)},
    {"ZICCID", {}, identityFrom(1)},
    {"ZGETICCID", {}, identityFrom(1)},
    {"QCCID", {}, identityFrom(1)},
    {"MEID", {}, identityFrom(1)},
    {"ZMSN", identityFrom(1), identityFrom(1)},
    {"EGMR", identityFrom(3), identityFrom(1)},
    {"SPIMEI", identityFrom(1), identityFrom(1)},
    told("CRSM", identityFrom(3, 3)),
    // messages
    messages("CMGR"),
    messages("CMGL"),
    messages("CMT"),
    messages("CDS"),
    messages("CBM"),
    messages("HCMT"),
    messages("HCDS"),
    messages("HCMGR"),
    messages("HCMGL"),
    messages("CCMGR"),
    messages("CCMGL"),
    // dialogues with the network and the card
    told("CUSD", secretFrom(1)),
    told("TSTUD", secretFrom(1)),
    told("TSTC", secretFrom(1)),
    told("ZDIST", secretFrom(1)),
    told("ZSTI", secretFrom(1)),
    told("ZPSTM", secretFrom(1)),
    told("STKPCI", secretFrom(1)),
    told("ZGINP", secretFrom(1)),
    told("ZGINK", secretFrom(1)),
    told("ZCLAS", secretFrom(1)),
    // who calls and who is called
    told("CPBR", identityFrom(1)),
    told("CPBF", identityFrom(1)),
    told("SCPBR", identityFrom(1)),
    told("ZCPBR", identityFrom(1)),
    told("ZCPBQ", identityFrom(1)),
    told("CLCC", identityFrom(6)),
    told("CCFC", identityFrom(3)),
    told("CLIP", codesOf(Kind::Identity)),
    told("CNAP", codesOf(Kind::Identity)),
    told("CDIP", codesOf(Kind::Identity)),
    told("COLP", codesOf(Kind::Identity)),
    told("CCWA", codesOf(Kind::Identity)),
    told("CCWV", codesOf(Kind::Identity)),
    told("CSCA", codesOf(Kind::Identity)),
    told("CSVM", codesOf(Kind::Identity)),
    told("CSSU", codesOf(Kind::Identity)),
    told("ORIG", codesOf(Kind::Identity)),
    told("ZVMAIL", codesOf(Kind::Identity)),
};

// Service provider and network names, and lists of operators.
constexpr uint32_t kHarmlessFiles[] = {0x2F05,
                                       0x6F05,
                                       0x6F30,
                                       AT_SIM_FILE_PROVIDER_NAME,
                                       0x6F60,
                                       0x6F61,
                                       0x6F62,
                                       0x6F7B,
                                       0x6FC5,
                                       0x6FC6,
                                       AT_SIM_FILE_ADMINISTRATIVE,
                                       0x6FD9,
                                       0x6FDE,
                                       0x6FDF,
                                       AT_SIM_FILE_PROVIDER_DISPLAY};

/** "SC",2 and nothing behind it but another command. */
bool isQuery(std::string_view arguments)
{
    const size_t comma = arguments.find(',');
    if (comma == std::string_view::npos) return false;
    const size_t mode = skip(arguments, kBlanks, comma + 1);
    if (mode == arguments.size() || arguments[mode] != '0' + AT_CLCK_QUERY) return false;
    const size_t behind = skip(arguments, kBlanks, mode + 1);
    return behind == arguments.size() || arguments[behind] == ';';
}

constexpr std::string_view kCodeMarks = "*#";
constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kCodeCharacters = "*#0123456789+";
constexpr std::string_view kCodeCharactersAndBlanks = "*#0123456789+ \t";

/** Whether a stretch from a mark on is dialled: it ends in a mark, or it goes on with enough digits for a secret. */
bool isDialled(std::string_view stretch)
{
    constexpr ptrdiff_t kFewestDigits = 4;
    const size_t behindMarks = skip(stretch, kCodeMarks, 0);
    const auto isAmong = [](std::string_view set) {
        return [set](char character) { return set.find(character) != std::string_view::npos; };
    };
    const auto digits = std::count_if(stretch.begin(), stretch.end(), isAmong(kDigits));
    const bool isClosed = behindMarks < stretch.size() && isAmong(kCodeMarks)(stretch.back());
    return (isClosed && digits > 0) || (digits >= kFewestDigits && kDigits.find(stretch[behindMarks]) < kDigits.size());
}

/** "**04" and its like. */
bool isSecretService(std::string_view stretch)
{
    constexpr std::string_view kPlaces[] = {"*", "*", "0", "345"};
    size_t at = 0;
    for (const std::string_view allowed : kPlaces) {
        at = skip(stretch, kBlanks, at);
        if (at == stretch.size() || allowed.find(stretch[at]) == std::string_view::npos) return false;
        ++at;
    }
    return true;
}

} // namespace

const CommandRule *ruleNamed(std::string_view name)
{
    if (name.empty()) return nullptr;
    name.remove_prefix(1);
    const auto *const found =
        std::find_if(std::begin(kRules), std::end(kRules), [&](const CommandRule &rule) { return rule.name == name; });
    return found != std::end(kRules) ? found : nullptr;
}

const CommandRule *ruleFor(const Mention &mention)
{
    const CommandRule *const rule = ruleNamed(mention.name);
    return rule != nullptr ? rule : ruleNamed(mention.word);
}

bool changesSecrets(std::string_view commandLine)
{
    for (auto mention = findMention(commandLine, 0); mention; mention = findMention(commandLine, mention->end)) {
        const CommandRule *const rule = ruleFor(*mention);
        const std::string_view behind = commandLine.substr(mention->end);
        if (rule == nullptr || rule->whenSet.kind != Kind::Secret || behind.substr(0, 1) != "=") continue;
        const std::string_view arguments = behind.substr(1);
        if (isTest(arguments) || (rule->hasQuery && isQuery(arguments))) continue;
        return true;
    }
    for (auto code = findDialledCode(commandLine, 0); code; code = findDialledCode(commandLine, code->end))
        if (code->changesSecrets) return true;
    return false;
}

std::optional<DialledCode> findDialledCode(std::string_view text, size_t from)
{
    for (size_t at = text.find_first_of(kCodeMarks, from); at < text.size(); at = text.find_first_of(kCodeMarks, at)) {
        const size_t begin = at;
        at = skip(text, kCodeCharactersAndBlanks, at);
        const size_t end = text.find_last_of(kCodeCharacters, at - 1) + 1;
        for (size_t mark = begin; mark < end; mark = std::min(text.find_first_of(kCodeMarks, mark + 1), end))
            if (isSecretService(text.substr(mark, end - mark)))
                return DialledCode{mark, std::min(text.find_first_of("#\r\n", mark + 1), text.size()), true};
        if (isDialled(text.substr(begin, end - begin))) return DialledCode{begin, end, false};
    }
    return std::nullopt;
}

bool isHarmlessFile(uint32_t file)
{
    return std::find(std::begin(kHarmlessFiles), std::end(kHarmlessFiles), file) != std::end(kHarmlessFiles);
}

} // namespace host::at

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

// Of a secret all that follows is hidden, since a secret may hold a comma or a quote.
constexpr CommandRule kRules[] = {
    // PIN, PUK and lock codes
    {"CPIN", secretFrom(1), {}},
    {"CPIN2", secretFrom(1), {}},
    {"EPIN2", secretFrom(1), {}},
    {"CPUK", secretFrom(1), {}},
    {"CPWD", secretFrom(2), {}},
    {"CLCK", secretFrom(3), {}, true},
    {"ZNCK", secretFrom(1), {}},
    {"ESMLCK", secretFrom(3), {}},
    {"CARDLOCK", secretFrom(1), {}},
    {"SIMLOCK", secretFrom(1), {}},
    {"XLOCK", secretFrom(3), {}},
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
    {"CRSM", identityFrom(6), identityFrom(3, 3)},
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

/** @param name  with its sign */
const CommandRule *ruleNamed(std::string_view name)
{
    name.remove_prefix(1);
    const auto *const found =
        std::find_if(std::begin(kRules), std::end(kRules), [&](const CommandRule &rule) { return rule.name == name; });
    return found != std::end(kRules) ? found : nullptr;
}

} // namespace

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
    return findDialledCode(commandLine, 0).has_value();
}

std::optional<DialledCode> findDialledCode(std::string_view text, size_t from)
{
    constexpr std::string_view kStart = "**0";
    for (size_t at = text.find(kStart, from); at < text.size(); at = text.find(kStart, at)) {
        at += kStart.size();
        if (at == text.size() || std::string_view("345").find(text[at]) == std::string_view::npos) continue;
        return DialledCode{at, std::min(text.find_first_of("#\r\n", at), text.size())};
    }
    return std::nullopt;
}

bool isHarmlessFile(uint32_t file)
{
    return std::find(std::begin(kHarmlessFiles), std::end(kHarmlessFiles), file) != std::end(kHarmlessFiles);
}

} // namespace host::at

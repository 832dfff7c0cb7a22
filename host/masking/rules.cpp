#include "rules.h"

#include <algorithm>
#include <cctype>
#include <limits>

namespace host::masking {
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
    {"CLCK", secretFrom(3), {}},
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
constexpr uint32_t kHarmlessFiles[] = {0x2F05, 0x6F05, 0x6F30, 0x6F46, 0x6F60, 0x6F61, 0x6F62, 0x6F7B,
                                       0x6FAD, 0x6FC5, 0x6FC6, 0x6FCD, 0x6FD9, 0x6FDE, 0x6FDF};

struct NameRule {
    std::string_view name; ///< in small letters
    Kind kind;
};

constexpr NameRule kNames[] = {
    // arguments of the library's functions
    {"pvalue", Kind::Secret},
    {"ppukvalue", Kind::Secret},
    {"pnewvalue", Kind::Secret},
    {"poldvalue", Kind::Secret},
    {"strpasswd", Kind::Secret},
    {"strcode", Kind::Secret},
    {"ppassword", Kind::Secret},
    {"pusername", Kind::Identity},
    {"pimeistring", Kind::Identity},
    {"pserialnumber", Kind::Identity},
    // what others call them
    {"pin", Kind::Secret},
    {"pin2", Kind::Secret},
    {"newpin", Kind::Secret},
    {"oldpin", Kind::Secret},
    {"puk", Kind::Secret},
    {"puk2", Kind::Secret},
    {"password", Kind::Secret},
    {"passwd", Kind::Secret},
    {"lockcode", Kind::Secret},
    {"imsi", Kind::Identity},
    {"imei", Kind::Identity},
    {"iccid", Kind::Identity},
    {"msisdn", Kind::Identity},
};

template <int (*Convert)(int)>
bool isSame(std::string_view text, std::string_view converted)
{
    return std::equal(text.begin(), text.end(), converted.begin(), converted.end(),
                      [](unsigned char a, char b) { return static_cast<char>(Convert(a)) == b; });
}

} // namespace

const CommandRule *ruleFor(std::string_view name)
{
    const auto *const found = std::find_if(std::begin(kRules), std::end(kRules), [&](const CommandRule &rule) {
        return isSame<std::toupper>(name, rule.name);
    });
    return found != std::end(kRules) ? found : nullptr;
}

bool isHarmlessFile(uint32_t file)
{
    return std::find(std::begin(kHarmlessFiles), std::end(kHarmlessFiles), file) != std::end(kHarmlessFiles);
}

Kind kindOfName(std::string_view name)
{
    const auto *const found = std::find_if(std::begin(kNames), std::end(kNames),
                                           [&](const NameRule &rule) { return isSame<std::tolower>(name, rule.name); });
    return found != std::end(kNames) ? found->kind : Kind::Nothing;
}

} // namespace host::masking

#include "host/masking/log_names.h"

#include <algorithm>
#include <cctype>
#include <iterator>

#include "host/at/text.h"

namespace host::masking {
namespace {

struct NameRule {
    std::string_view name; ///< in any case
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
    {"pin1", Kind::Secret},
    {"newpin", Kind::Secret},
    {"oldpin", Kind::Secret},
    {"simpin", Kind::Secret},
    {"pincode", Kind::Secret},
    {"puk", Kind::Secret},
    {"puk1", Kind::Secret},
    {"puk2", Kind::Secret},
    {"pukcode", Kind::Secret},
    {"password", Kind::Secret},
    {"passwd", Kind::Secret},
    {"passphrase", Kind::Secret},
    {"passcode", Kind::Secret},
    {"pwd", Kind::Secret},
    {"secret", Kind::Secret},
    {"lockcode", Kind::Secret},
    {"unlockcode", Kind::Secret},
    {"nck", Kind::Secret},
    {"adm", Kind::Secret},
    {"chv", Kind::Secret},
    {"chv1", Kind::Secret},
    {"chv2", Kind::Secret},
    {"imsi", Kind::Identity},
    {"imei", Kind::Identity},
    {"iccid", Kind::Identity},
    {"msisdn", Kind::Identity},
};

/** "Pin" of newPin, "pin" of sim_pin */
std::string_view lastWordOf(std::string_view name)
{
    for (size_t at = name.size(); at > 1; --at) {
        const bool isCapital = std::isupper(static_cast<unsigned char>(name[at - 1])) != 0;
        const bool isBehindSmall = std::islower(static_cast<unsigned char>(name[at - 2])) != 0;
        if (name[at - 1] == '_') return name.substr(at);
        if (isCapital && isBehindSmall) return name.substr(at - 1);
    }
    return name;
}

} // namespace

Kind kindOfName(std::string_view name)
{
    const auto *const found = std::find_if(std::begin(kNames), std::end(kNames), [&](const NameRule &rule) {
        return at::isSameWithoutCase(name, rule.name) || at::isSameWithoutCase(lastWordOf(name), rule.name);
    });
    return found != std::end(kNames) ? found->kind : Kind::Nothing;
}

} // namespace host::masking

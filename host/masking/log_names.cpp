#include "host/masking/log_names.h"

#include <algorithm>
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

} // namespace

Kind kindOfName(std::string_view name)
{
    const auto *const found = std::find_if(std::begin(kNames), std::end(kNames), [&](const NameRule &rule) {
        return at::isSameWithoutCase(name, rule.name);
    });
    return found != std::end(kNames) ? found->kind : Kind::Nothing;
}

} // namespace host::masking

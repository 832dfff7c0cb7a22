#include "krctl/readings/identity.h"

#include <algorithm>
#include <array>

#include "host/at/text.h"
#include "krctl/readings/reply.h"

namespace krctl {
namespace {

/** What modems write in front of a value, with a colon behind it. */
constexpr std::array<std::string_view, 9> kLabels{"MANUFACTURER", "MODEL", "REVISION", "FIRMWARE", "SOFTWARE",
                                                  "HARDWARE",     "IMEI",  "IMSI",     "VERSION"};

/** A record that is played back has asterisks for the digits of an identity. */
constexpr std::string_view kDigitsOrMask = "0123456789*";

std::string_view withoutLabel(std::string_view line)
{
    const size_t colon = line.find(':');
    if (colon == std::string_view::npos) return line;
    const std::string label = inCapitals(host::at::withoutBlanksAround(line.substr(0, colon)));
    const bool isLabel = std::find(kLabels.begin(), kLabels.end(), label) != kLabels.end();
    return isLabel ? host::at::withoutBlanksAround(line.substr(colon + 1)) : line;
}

std::string valueOf(std::string_view line)
{
    return unquoted(withoutLabel(parametersOf(line)));
}

} // namespace

std::string identityOf(std::string_view reply)
{
    std::string text;
    for (const std::string &line : bodyOf(reply)) {
        const std::string value = valueOf(line);
        if (!value.empty()) text += (text.empty() ? "" : " ") + value;
    }
    return inCapitals(text) == "ERROR" ? "" : text;
}

std::string digitsOf(std::string_view reply, size_t fewest, size_t most)
{
    for (const std::string &line : bodyOf(reply)) {
        const std::string value = valueOf(line);
        std::string digits = value.substr(0, std::min(value.find_first_not_of(kDigitsOrMask), value.size()));
        const bool isAlone = digits.size() == value.size() || value[digits.size()] == ',';
        if (isAlone && digits.size() >= fewest && digits.size() <= most) return digits;
    }
    return {};
}

} // namespace krctl

#include "krctl/values/names.h"

#include <algorithm>
#include <array>

#include <mainControl/api/network_lock.h>
#include <mainControl/api/serving_network.h>
#include <mainControl/api/settings.h>
#include <mainControl/at_values.h>

#include "host/family/family.h"

namespace krctl {
namespace {

constexpr auto kPlatformNames = [] {
    using host::family::kChoices;
    std::array<Name, kChoices.size()> names{};
    std::transform(kChoices.begin(), kChoices.end(), names.begin(), [](const host::family::Row &row) {
        return Name{static_cast<int32_t>(row.family), row.word.data()};
    });
    return names;
}();

constexpr std::array kRegistrationNames{
    Name{AT_REGISTRATION_NONE, "not registered"},
    Name{AT_REGISTRATION_HOME, "registered, home"},
    Name{AT_REGISTRATION_SEARCHING, "searching"},
    Name{AT_REGISTRATION_DENIED, "denied"},
    Name{AT_REGISTRATION_UNKNOWN, "unknown"},
    Name{AT_REGISTRATION_ROAMING, "registered, roaming"},
    Name{6, "SMS only, home"},
    Name{7, "SMS only, roaming"},
    Name{8, "emergency services only"},
    Name{9, "registered, home, CSFB not preferred"},
    Name{10, "registered, roaming, CSFB not preferred"},
    Name{11, "restricted local services only"},
};

constexpr std::array kTechnologyNames{
    Name{AT_ACT_GSM, "GSM"},
    Name{AT_ACT_GSM_COMPACT, "GSM compact"},
    Name{AT_ACT_UTRAN, "UMTS"},
    Name{AT_ACT_GSM_EGPRS, "GSM EDGE"},
    Name{AT_ACT_UTRAN_HSDPA, "HSDPA"},
    Name{AT_ACT_UTRAN_HSUPA, "HSUPA"},
    Name{AT_ACT_UTRAN_HSPA, "HSPA"},
    Name{AT_ACT_E_UTRAN, "LTE"},
    Name{8, "EC-GSM-IoT"},
    Name{9, "NB-IoT"},
    Name{10, "LTE on 5G core"},
    Name{11, "5G NR"},
    Name{12, "5G NG-RAN"},
    Name{13, "LTE with 5G NR"},
};

constexpr std::array kEpsRejectNames{
    Name{2, "IMSI unknown"},
    Name{3, "SIM not allowed"},
    Name{5, "IMEI not accepted"},
    Name{6, "modem not allowed"},
    Name{7, "no LTE with this SIM"},
    Name{8, "no services with this SIM"},
    Name{9, "identity not known to the network"},
    Name{10, "detached by the network"},
    Name{11, "network not allowed"},
    Name{12, "tracking area not allowed"},
    Name{13, "roaming not allowed in this tracking area"},
    Name{14, "no LTE in this network"},
    Name{15, "no suitable cell in this tracking area"},
    Name{16, "exchange not reachable"},
    Name{17, "network failure"},
    Name{18, "no calls in this network"},
    Name{19, "session refused"},
    Name{22, "network congested"},
    Name{25, "closed group not allowed"},
    Name{35, "service not allowed"},
    Name{42, "severe network failure"},
};

constexpr std::array kOperatorStateNames{
    Name{AT_OPERATOR_UNKNOWN, "unknown"},
    Name{AT_OPERATOR_AVAILABLE, "available"},
    Name{AT_OPERATOR_CURRENT, "current"},
    Name{AT_OPERATOR_FORBIDDEN, "forbidden"},
};

constexpr std::array kRadioPowerNames{
    Name{AT_CFUN_MINIMUM, "minimum"},
    Name{AT_CFUN_FULL, "on"},
    Name{AT_CFUN_RADIO_OFF, "off"},
};

constexpr std::array kSelectionModeNames{
    Name{SELECTION_MODE_AUTOMATIC, "automatic"},
    Name{SELECTION_MODE_MANUAL, "manual"},
};

constexpr std::array kDomainNames{
    Name{DOMAIN_NO_SERVICE, "no service"},
    Name{DOMAIN_SERVED, "served"},
    Name{DOMAIN_NOT_SERVED, "not served"},
};

constexpr std::array kRoamingNames{
    Name{ROAMING_STATE_ROAMING, "roaming"},
    Name{ROAMING_STATE_HOME, "not roaming"},
};

constexpr std::array kKeyStateNames{
    Name{CONTROL_KEY_UNKNOWN, "unknown"},
    Name{CONTROL_KEY_LOCKED, "locked"},
    Name{CONTROL_KEY_NOT_LOCKED, "not locked"},
};

constexpr std::array kPreferenceNames{
    Name{0, "auto"},      Name{3, "gsm"},         Name{4, "wcdma"},      Name{9, "lte"},
    Name{1, "gsm-first"}, Name{2, "wcdma-first"}, Name{12, "lte-first"},
};

} // namespace

const std::span<const Name> kPlatforms = kPlatformNames;
const std::span<const Name> kRegistrations = kRegistrationNames;
const std::span<const Name> kTechnologies = kTechnologyNames;
const std::span<const Name> kOperatorStates = kOperatorStateNames;
const std::span<const Name> kEpsRejects = kEpsRejectNames;
const std::span<const Name> kRadioPowers = kRadioPowerNames;
const std::span<const Name> kSelectionModes = kSelectionModeNames;
const std::span<const Name> kDomains = kDomainNames;
const std::span<const Name> kRoaming = kRoamingNames;
const std::span<const Name> kKeyStates = kKeyStateNames;
const std::span<const Name> kPreferences = kPreferenceNames;

std::string wordOf(std::span<const Name> names, std::optional<int32_t> code)
{
    const auto found = std::find_if(names.begin(), names.end(), [&](const Name &name) { return name.code == code; });
    return found == names.end() ? "" : found->word;
}

std::vector<std::string> wordsOf(std::span<const Name> names)
{
    std::vector<std::string> words;
    for (const Name &name : names)
        words.emplace_back(name.word);
    return words;
}

std::optional<int32_t> codeOf(std::span<const Name> names, std::string_view word)
{
    const auto found = std::find_if(names.begin(), names.end(), [&](const Name &name) { return name.word == word; });
    return found == names.end() ? std::nullopt : std::optional(found->code);
}

bool hasPreference(int32_t platform, int32_t mode)
{
    const auto modes = host::family::rowOfPlatform(platform).preferences;
    return std::find(modes.begin(), modes.end(), mode) != modes.end();
}

} // namespace krctl

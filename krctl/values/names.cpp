#include "krctl/values/names.h"

#include <algorithm>
#include <array>

#include <mainControl/api/network_lock.h>
#include <mainControl/api/pin.h>

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
    Name{0, "not registered"}, Name{1, "registered, home"}, Name{2, "searching"},
    Name{3, "denied"},         Name{4, "unknown"},          Name{5, "registered, roaming"},
};

constexpr std::array kTechnologyNames{
    Name{0, "GSM"},   Name{1, "GSM compact"}, Name{2, "UMTS"}, Name{3, "GSM EDGE"},
    Name{4, "HSDPA"}, Name{5, "HSUPA"},       Name{6, "HSPA"}, Name{7, "LTE"},
};

constexpr std::array kOperatorStateNames{
    Name{0, "unknown"},
    Name{1, "available"},
    Name{2, "current"},
    Name{3, "forbidden"},
};

constexpr std::array kSimStateNames{
    Name{KORA_MTS_SIM_PIN_ENABLED, "ready, PIN lock on"},
    Name{KORA_MTS_SIM_PIN_DISABLED, "ready, PIN lock off"},
    Name{KORA_MTS_SIM_NOT_INSERTED, "no SIM"},
    Name{KORA_MTS_SIM_PIN_REQUIRED, "PIN required"},
    Name{KORA_MTS_SIM_PUK_REQUIRED, "PUK required"},
    Name{KORA_MTS_SIM_FAILURE, "SIM failure"},
    Name{KORA_MTS_SIM_BUSY, "SIM busy"},
    Name{KORA_MTS_SIM_ICERA_LOCKNET, "network lock code required"},
};

constexpr std::array kRadioPowerNames{Name{0, "minimum"}, Name{1, "on"}, Name{4, "off"}};

constexpr std::array kSelectionModeNames{Name{0, "automatic"}, Name{5, "manual"}};

constexpr std::array kDomainNames{Name{0, "no service"}, Name{1, "served"}, Name{2, "not served"}};

constexpr std::array kRoamingNames{Name{0, "roaming"}, Name{1, "not roaming"}};

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
const std::span<const Name> kSimStates = kSimStateNames;
const std::span<const Name> kRadioPowers = kRadioPowerNames;
const std::span<const Name> kSelectionModes = kSelectionModeNames;
const std::span<const Name> kDomains = kDomainNames;
const std::span<const Name> kRoaming = kRoamingNames;
const std::span<const Name> kKeyStates = kKeyStateNames;
const std::span<const Name> kPreferences = kPreferenceNames;

std::string wordOf(std::span<const Name> names, int32_t code)
{
    const auto found = std::find_if(names.begin(), names.end(), [&](const Name &name) { return name.code == code; });
    return found == names.end() ? "" : found->word;
}

std::optional<int32_t> codeOf(std::span<const Name> names, std::string_view word)
{
    const auto found = std::find_if(names.begin(), names.end(), [&](const Name &name) { return name.word == word; });
    return found == names.end() ? std::nullopt : std::optional(found->code);
}

bool isRegistered(int32_t registration)
{
    return registration == 1 || registration == 5;
}

bool hasPreference(int32_t platform, int32_t mode)
{
    const auto modes = host::family::rowOfPlatform(platform).preferences;
    return std::find(modes.begin(), modes.end(), mode) != modes.end();
}

} // namespace krctl

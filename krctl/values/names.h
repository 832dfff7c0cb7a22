/** Words for the codes of the modem and of the library. An empty word means that the code is not known. */
#ifndef KRCTL_VALUES_NAMES_H
#define KRCTL_VALUES_NAMES_H

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace krctl {

struct Name {
    int32_t code;
    const char *word;
};

/** @param code  nothing has no word */
std::string wordOf(std::span<const Name> names, std::optional<int32_t> code);
std::vector<std::string> wordsOf(std::span<const Name> names);
std::optional<int32_t> codeOf(std::span<const Name> names, std::string_view word);

/** What can be switched. */
inline constexpr std::array kOnOff{Name{1, "on"}, Name{0, "off"}};

/** Chipset platforms as the library counts them. */
extern const std::span<const Name> kPlatforms;

extern const std::span<const Name> kRegistrations;  ///< 3GPP TS 27.007 7.2 and 10.1.22: state of registration
extern const std::span<const Name> kTechnologies;   ///< 3GPP TS 27.007 7.3: access technology
extern const std::span<const Name> kOperatorStates; ///< 3GPP TS 27.007 7.3: operator of a scan
extern const std::span<const Name> kEpsRejects;     ///< 3GPP TS 24.301 9.9.3.9: why LTE registration was refused
extern const std::span<const Name> kRadioPowers;    ///< 3GPP TS 27.007 8.2: functionality level
extern const std::span<const Name> kSelectionModes; ///< operator selection: by KR_getNetworkSelectionMode()
extern const std::span<const Name> kDomains;        ///< service in a domain: by KR_getServingNetwork()
extern const std::span<const Name> kRoaming;        ///< by KR_getServingNetwork()
extern const std::span<const Name> kKeyStates;      ///< ControlKeyState
extern const std::span<const Name> kPreferences;    ///< preference modes that have the same meaning wherever they exist

/** Whether the family's command has a value of its own for a named preference mode. */
bool hasPreference(int32_t platform, int32_t mode);

} // namespace krctl

#endif

/** The families of modems that lib_mainControl tells apart, a row each: what the host, the simulator and krctl know of
 *  them. Code asks for what a row says, not for the family. */
#ifndef HOST_FAMILY_FAMILY_H
#define HOST_FAMILY_FAMILY_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include <mainControl/platform.h>

namespace host::family {

/** By the number of the library's platform; the default family is what it makes of any other number. */
enum class Family : int32_t {
    Default = 0,
    Qualcomm = PF_QC_LTE,
    Mtk = PF_MTK,
    Tsp = PF_TSP,
    Spreadtrum = PF_SPEADTRUM,
};

/** How a modem refuses a command that it does not know. */
enum class Refusal : uint8_t { Error, CmeError, NotSupport };

/** Preference modes of the library for which a family's command has a value of its own. */
namespace preferences {
inline constexpr int32_t kOfErat[] = {0, 2, 3, 4};
inline constexpr int32_t kOfSysconfig[] = {0, 1, 2, 3, 4, 9};
inline constexpr int32_t kOfZsnt[] = {0, 1, 2, 3, 4, 9, 12};
} // namespace preferences

struct Row {
    Family family;
    std::string_view word;                  ///< on command lines, in scenarios and reports
    std::string_view manufacturer;          ///< what a simulated modem answers to AT+CGMI
    std::array<std::string_view, 2> makers; ///< in small letters: either of them in a reply to AT+CGMI tells the family
    Refusal refusal;
    bool sysinfoHasBlank; ///< ^SYSINFO is told, and read by the library, with a blank behind its colon
    bool hasSerialNumber; ///< other than the IMEI
    /** Whether the state of the network lock is a number whose meaning only the modem knows, with the unlocks left. */
    bool lockStateIsModemsOwnNumber;
    /** Start of the command whose refusal the library takes for a network lock that is open; empty if it takes none so. */
    std::string_view lockStateCommand;
    std::span<const int32_t> preferences;
};

/** By number. */
inline constexpr std::array kRows{
    Row{.family = Family::Default,
        .word = "default",
        .manufacturer = "Generic",
        .makers = {},
        .refusal = Refusal::Error,
        .sysinfoHasBlank = false,
        .hasSerialNumber = true,
        .lockStateIsModemsOwnNumber = false,
        .lockStateCommand = "AT+ZSEC?",
        .preferences = preferences::kOfZsnt},
    Row{.family = Family::Qualcomm,
        .word = "qualcomm",
        .manufacturer = "Qualcomm",
        .makers = {"qualcomm"},
        .refusal = Refusal::Error,
        .sysinfoHasBlank = false,
        .hasSerialNumber = true,
        .lockStateIsModemsOwnNumber = false,
        .lockStateCommand = "AT+ZSEC?",
        .preferences = preferences::kOfZsnt},
    Row{.family = Family::Mtk,
        .word = "mtk",
        .manufacturer = "MediaTek",
        .makers = {"mediatek", "mtk"},
        .refusal = Refusal::CmeError,
        .sysinfoHasBlank = false,
        .hasSerialNumber = true,
        .lockStateIsModemsOwnNumber = true,
        .lockStateCommand = "",
        .preferences = preferences::kOfErat},
    Row{.family = Family::Tsp,
        .word = "tsp",
        .manufacturer = "TSP",
        .makers = {"tsp"},
        .refusal = Refusal::NotSupport,
        .sysinfoHasBlank = true,
        .hasSerialNumber = false,
        .lockStateIsModemsOwnNumber = false,
        .lockStateCommand = "AT+ZSEC?",
        .preferences = preferences::kOfSysconfig},
    Row{.family = Family::Spreadtrum,
        .word = "spreadtrum",
        .manufacturer = "Spreadtrum",
        .makers = {"spreadtrum", "unisoc"},
        .refusal = Refusal::CmeError,
        .sysinfoHasBlank = false,
        .hasSerialNumber = true,
        .lockStateIsModemsOwnNumber = false,
        .lockStateCommand = "AT+CLCK=",
        .preferences = preferences::kOfSysconfig},
};

/** The row of a platform's number; any number that has none is the default family. */
constexpr const Row &rowOfPlatform(int32_t platform)
{
    for (const Row &row : kRows)
        if (static_cast<int32_t>(row.family) == platform) return row;
    return kRows.front();
}

constexpr const Row &rowOf(Family family)
{
    return rowOfPlatform(static_cast<int32_t>(family));
}

constexpr std::string_view nameOf(Family family)
{
    return rowOf(family).word;
}

constexpr std::optional<Family> familyNamed(std::string_view word)
{
    for (const Row &row : kRows)
        if (row.word == word) return row.family;
    return std::nullopt;
}

/** @param reply  to AT+CGMI, or any text with the name of a manufacturer in it
 *  @return the default family if no maker is known by it */
Family familyOfManufacturer(std::string_view reply);

/** Rows in the order in which people are offered them: the default family last. */
inline constexpr auto kChoices = [] {
    auto rows = kRows;
    std::rotate(rows.begin(), rows.begin() + 1, rows.end());
    return rows;
}();

/** A text of the compiler's, ended as a C string. */
using Text = std::array<char, 160>;

/** A sentence with the words of all families: their choices between commas.
 *  @param last  between the last two: ", " or " or " */
consteval Text choicesText(std::string_view before, std::string_view last, std::string_view behind)
{
    Text text{};
    size_t length = 0;
    const auto append = [&](std::string_view part) {
        for (const char character : part)
            text.at(length++) = character;
    };
    append(before);
    for (size_t i = 0; i < kChoices.size(); ++i) {
        if (i > 0) append(i + 1 < kChoices.size() ? ", " : last);
        append(kChoices[i].word);
    }
    append(behind);
    text.at(length) = '\0';
    return text;
}

/** Has a case for each platform that the library knows: one without a family does not compile. */
constexpr bool hasRow(Platform platform)
{
    switch (platform) {
    case PF_QC_LTE:
    case PF_MTK:
    case PF_TSP:
    case PF_SPEADTRUM:
        return rowOfPlatform(platform).family != Family::Default;
    }
    return false;
}
static_assert(hasRow(PF_QC_LTE) && hasRow(PF_MTK) && hasRow(PF_TSP) && hasRow(PF_SPEADTRUM));
static_assert(kRows.front().family == Family::Default);

} // namespace host::family

#endif

/** The modem families that the library tells apart. */
#ifndef SIMULATOR_FAMILY_H
#define SIMULATOR_FAMILY_H

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace simulator {

enum class Family : uint8_t { Default, Qualcomm, Mtk, Tsp, Spreadtrum };

inline constexpr std::array kAllFamilies = {Family::Default, Family::Qualcomm, Family::Mtk, Family::Tsp,
                                            Family::Spreadtrum};

/** As on command lines and in scenarios: "qualcomm", "mtk", "tsp", "spreadtrum", "default". */
std::string_view nameOf(Family family);
std::optional<Family> familyOf(std::string_view name);

/** As in the answer to AT+CGMI, from which a host can tell the family. */
std::string_view manufacturerOf(Family family);

/** How a modem of the family refuses a command that it does not know. */
enum class Refusal : uint8_t { Error, CmeError, NotSupport };
Refusal refusalOf(Family family);

/** A set of families: a bit for each. */
using Families = uint8_t;
constexpr Families only(Family family)
{
    return static_cast<Families>(1U << static_cast<unsigned>(family));
}
constexpr bool contains(Families families, Family family)
{
    return (families & only(family)) != 0;
}

} // namespace simulator

#endif

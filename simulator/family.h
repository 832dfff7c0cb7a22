/** Sets of families, for commands that some of them know. */
#ifndef SIMULATOR_FAMILY_H
#define SIMULATOR_FAMILY_H

#include <cstdint>

#include "host/family/family.h"

namespace simulator {

using host::family::Family;
using host::family::Refusal;

/** A bit for each, by its number. */
using Families = uint32_t;
constexpr Families only(Family family)
{
    return Families{1} << static_cast<unsigned>(family);
}
constexpr bool contains(Families families, Family family)
{
    return (families & only(family)) != 0;
}

inline constexpr Families kEveryFamily = [] {
    Families all = 0;
    for (const host::family::Row &row : host::family::kRows)
        all |= only(row.family);
    return all;
}();

} // namespace simulator

#endif

#pragma once

#include <cstdint>

#include "../support/span.h"

namespace mainControl {

/// Where a reply begins, and the final result or report in it that comes first.
struct EndFlagHit {
    const char *start; ///< the first line break outside quotes; nullptr if there is none
    const char *flag;  ///< where the flag stands; the end of the text if there is none
    std::int32_t row;  ///< its row in the live table; -1 if there is none
};

/// The flag text of a row of the live table.
Span flagOf(std::int32_t row);

/// Rows of the live table, at most as many as it has room for.
std::int32_t endFlagRows();

/// Finds the flag at the earliest position outside quotes; at one position the earlier row wins.
EndFlagHit findEndFlag(Span text);

} // namespace mainControl

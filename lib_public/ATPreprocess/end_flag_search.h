#pragma once

#include <cstdint>

#include <mainControl/parser.h>

#include "../support/span.h"

namespace mainControl {

class ClosedLines;

/// Where a reply begins, and the final result or report in it that comes first.
struct EndFlagHit {
    const char *start; ///< the first line break outside quotes; nullptr if there is none
    const char *flag;  ///< where the flag stands; the end of the text if there is none
    std::int32_t row;  ///< its row in the live table; -1 if there is none
};

/// The flag text of a row of the live table.
inline Span flagOf(std::int32_t row)
{
    return spanOf(KoraWcdma_AtEndFlgTable[row].flag, sizeof KoraWcdma_AtEndFlgTable[row].flag);
}

/// Rows of the live table, at most as many as it has room for.
std::int32_t endFlagRows();

/// Finds the flag at the earliest position outside quotes; at one position the earlier row wins.
/// @param lines  takes the lines behind the start; the last ones may reach over the flag
EndFlagHit findEndFlag(Span text, ClosedLines &lines);

} // namespace mainControl

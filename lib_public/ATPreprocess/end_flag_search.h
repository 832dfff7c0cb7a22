#ifndef LIB_PUBLIC_ATPREPROCESS_END_FLAG_SEARCH_H
#define LIB_PUBLIC_ATPREPROCESS_END_FLAG_SEARCH_H

#include <cstdint>

#include "lib_public/support/fast_search.h"

namespace mainControl {

/** Where a reply begins, and the final result or report in it that comes first. */
struct EndFlagHit {
    const char *start; ///< the first line break outside quotes; nullptr if there is none
    const char *flag;  ///< where the flag stands; the end of the text if there is none
    int32_t row;       ///< its row in the live table; kNoRow if there is none
};

/** Finds the flag at the earliest position outside quotes; at one position the earlier row wins.
 *  @param lines  takes the lines behind the start; the last ones may reach over the flag */
EndFlagHit findEndFlag(Span text, NotedLines &lines);

} // namespace mainControl

#endif

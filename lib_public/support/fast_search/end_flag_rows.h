#ifndef LIB_PUBLIC_SUPPORT_FAST_SEARCH_END_FLAG_ROWS_H
#define LIB_PUBLIC_SUPPORT_FAST_SEARCH_END_FLAG_ROWS_H

#include <cstdint>

#include <mainControl/parser.h>

#include "lib_public/support/array_size.h"
#include "lib_public/support/fast_search/beginning.h"
#include "lib_public/support/span.h"

namespace mainControl {

constexpr int32_t kNoRow = -1;

/** Rows of the live table, at most as many as it has room for. */
inline int32_t endFlagRows()
{
    return inTable(KoraWcdma_AtEndFlgTableSize, KoraWcdma_AtEndFlgTable);
}

/** The flag text of a row of the live table. */
inline Span flagOf(int32_t row)
{
    return spanOf(KoraWcdma_AtEndFlgTable[row].flag, sizeof KoraWcdma_AtEndFlgTable[row].flag);
}

/** Whether a text begins with a row's flag. */
inline bool standsAt(int32_t row, Span text)
{
    const char *at = text.begin;
    for (const char &character : KoraWcdma_AtEndFlgTable[row].flag) {
        if (character == '\0') break;
        if (at == text.end || *at++ != character) return false;
    }
    return true;
}

/** The rows of the live table, as it now stands, for the line breaks of one text. At most line breaks none stands, and that
 *  is what is seen at once. */
class EndFlagRows {
  public:
    /** @param textEnd  to which characters may be looked at */
    explicit EndFlagRows(const char *textEnd);

    /** The earliest row whose flag stands at a line break, or kNoRow. */
    int32_t at(const char *lineBreak);
    /** Whether a place is a line break that goes on as another one did where no row can stand. */
    [[nodiscard]] bool passes(const char *place) const
    {
        return Span{place, end_}.size() >= kBeginning && beginningOf(place) == passed_;
    }

    /** The rows that need not stand at a line break, which only a host adds: the first, and the one behind another; kNoRow
     *  behind the last one. */
    [[nodiscard]] int32_t firstElsewhere() const { return firstElsewhere_; }
    [[nodiscard]] int32_t nextElsewhere(int32_t row) const;

  private:
    const char *end_;
    int32_t firstElsewhere_;
    uint64_t passed_ = 0; // a line break and what follows it, where no row can stand
};

} // namespace mainControl

#endif

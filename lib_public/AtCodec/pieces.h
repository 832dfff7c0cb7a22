#ifndef LIB_PUBLIC_ATCODEC_PIECES_H
#define LIB_PUBLIC_ATCODEC_PIECES_H

#include <cstdint>

#include "lib_public/support/fast_search.h"
#include "lib_public/support/span.h"

namespace mainControl {

/** A field or entry in front of a separator is shorter than this. */
constexpr size_t kFieldLimit = 1024;

/** The pieces of a text between separators outside quotes, as a list of 100 entries takes them: it ends at a piece that
 *  does not fit an entry, and of the last piece keeps what does. For whoever needs the pieces but no list. */
class Pieces {
  public:
    /** @param taken  entries of the list that are taken already */
    Pieces(Span text, Span separator, int32_t taken = 0)
        : rest_(text), separator_(separator), places_(searched(text, *separator.begin), *separator.begin), taken_(taken)
    {
    }

    /** @return false if there is no further piece */
    bool next(Span &piece);

    /** Pieces so far, those taken already included. */
    [[nodiscard]] int32_t taken() const { return taken_; }

  private:
    /** Where separators are looked for: most texts hold none, and that is seen at once. */
    static Span searched(Span text, char separator);
    const char *nextSeparator();

    Span rest_;
    Span separator_;
    OutsideQuotes places_; // where a separator may begin
    int32_t taken_;
    bool isTooLong_ = false;
};

/** The field with an index, counted from 1, as ATCodec_FindSubStrByIndex() finds it. */
struct Field {
    Span text;
    bool isLast; ///< no separator behind it; the last field stands for any index that no field has
};
/** @return false if that function copies nothing */
bool findField(Span text, int32_t indexFromOne, Span separator, Field &field);

/** Counts commas as ATCodec_PreProc_Res_ParaList_Entend() does. */
void countCommas(Span text, int32_t &count);

/** The pieces between ";", each as ATCodec_PreProc_Res_ParaLine() rewrites it. */
class Lines {
  public:
    explicit Lines(Span text) : pieces_(text, spanOfLiteral(";")) {}

    /** @return the next line, or nullptr */
    char *next();

    /** Lines so far. */
    [[nodiscard]] int32_t taken() const { return pieces_.taken(); }

  private:
    Pieces pieces_;
    char line_[kFieldLimit + 1];
};

} // namespace mainControl

#endif

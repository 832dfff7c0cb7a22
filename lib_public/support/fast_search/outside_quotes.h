#ifndef LIB_PUBLIC_SUPPORT_FAST_SEARCH_OUTSIDE_QUOTES_H
#define LIB_PUBLIC_SUPPORT_FAST_SEARCH_OUTSIDE_QUOTES_H

#include <bit>
#include <cstddef>
#include <cstdint>

#include "lib_public/support/span.h"

namespace mainControl {

/** The characters that a search looks at in one step. */
constexpr size_t kWindow = 64;

/** What stands outside quotes in a window of a text. */
struct WindowOutsideQuotes {
    uint64_t hits;   ///< one bit a character, the first character's the lowest
    uint64_t quoted; ///< all bits set if the text goes on inside quotes
};

/** Looks at a window for a character.
 *  @param length  characters of the window, 1 to 64
 *  @param quoted  all bits set if it begins inside quotes, else none */
WindowOutsideQuotes lookOutsideQuotes(const char *window, size_t length, char character, uint64_t quoted);

/** The places of a text where a character, other than the double quote, stands behind an even number of double
 *  quotes. */
class OutsideQuotes {
  public:
    OutsideQuotes(Span text, char character) : unread_(text.begin), end_(text.end), character_(character) {}

    /** @return the next place, or nullptr */
    [[gnu::always_inline]] const char *next()
    {
        while (hits_ == 0) {
            if (unread_ == end_) return nullptr;
            const size_t length = Span{unread_, end_}.atMost(kWindow).size();
            const WindowOutsideQuotes seen = lookOutsideQuotes(unread_, length, character_, quoted_);
            hits_ = seen.hits;
            quoted_ = seen.quoted;
            window_ = unread_;
            unread_ += length;
        }
        const char *const place = window_ + std::countr_zero(hits_);
        hits_ &= hits_ - 1;
        return place;
    }

  private:
    const char *window_ = nullptr;
    uint64_t hits_ = 0;
    const char *unread_;
    const char *end_;
    uint64_t quoted_ = 0;
    char character_;
};

/** Visits these places as long as the visits return true.
 *  @return whether all did */
template <typename Visit>
[[gnu::always_inline]] inline bool visitOutsideQuotes(Span text, char character, Visit visit)
{
    uint64_t quoted = 0;
    while (!text.empty()) {
        const Span window = text.atMost(kWindow);
        const WindowOutsideQuotes seen = lookOutsideQuotes(window.begin, window.size(), character, quoted);
        for (uint64_t hits = seen.hits; hits != 0; hits &= hits - 1) {
            if (!visit(window.begin + std::countr_zero(hits))) return false;
        }
        quoted = seen.quoted;
        text.begin = window.end;
    }
    return true;
}

/** Whether a line break stands at a place that is known to hold its first character. */
inline bool isLineBreak(const char *place, const char *end)
{
    return end - place > 1 && place[1] == '\n';
}

/** The first line break outside quotes, or nullptr. */
const char *findLineBreak(Span text);

/** The first occurrence of a needle behind an even number of double quotes, or nullptr. The first character of an
 *  occurrence that is passed over does not count as a quote. An empty needle is found at the start. */
const char *findOutsideQuotes(Span text, Span needle);

/** The same for a needle that is a literal. */
template <size_t Size>
const char *findOutsideQuotes(Span text, const char (&needle)[Size])
{
    return findOutsideQuotes(text, spanOfLiteral(needle));
}

} // namespace mainControl

#endif

#ifndef LIB_PUBLIC_SUPPORT_FAST_SEARCH_COPY_SHORT_H
#define LIB_PUBLIC_SUPPORT_FAST_SEARCH_COPY_SHORT_H

#include <cstddef>
#include <cstring>

#include "lib_public/support/span.h"

namespace mainControl {

template <size_t Size>
[[gnu::always_inline]] inline void copyBothEnds(char *to, const char *from, size_t size)
{
    std::memcpy(to, from, Size);
    std::memcpy(to + size - Size, from + size - Size, Size);
}

/** Copies a text that is most often short, without a call then.
 *  @return behind what was written */
[[gnu::always_inline]] inline char *copyShort(char *to, Span text)
{
    const size_t size = text.size();
    if (size < 4) {
        if (size >= 2)
            copyBothEnds<2>(to, text.begin, size);
        else if (size == 1)
            *to = *text.begin;
    } else if (size < 8) {
        copyBothEnds<4>(to, text.begin, size);
    } else if (size <= 16) {
        copyBothEnds<8>(to, text.begin, size);
    } else if (size <= 32) {
        copyBothEnds<16>(to, text.begin, size);
    } else {
        std::memcpy(to, text.begin, size);
    }
    return to + size;
}

} // namespace mainControl

#endif

#pragma once

#include <cstddef>
#include <cstring>

namespace mainControl {

template <std::size_t Size>
[[gnu::always_inline]] inline void copyBothEnds(char *to, const char *from, std::size_t size)
{
    std::memcpy(to, from, Size);
    std::memcpy(to + size - Size, from + size - Size, Size);
}

/// Copies a text that is most often short, without a call then.
[[gnu::always_inline]] inline void copyShort(char *to, const char *from, std::size_t size)
{
    if (size < 4) {
        if (size >= 2)
            copyBothEnds<2>(to, from, size);
        else if (size == 1)
            *to = *from;
    } else if (size < 8) {
        copyBothEnds<4>(to, from, size);
    } else if (size <= 16) {
        copyBothEnds<8>(to, from, size);
    } else if (size <= 32) {
        copyBothEnds<16>(to, from, size);
    } else {
        std::memcpy(to, from, size);
    }
}

} // namespace mainControl

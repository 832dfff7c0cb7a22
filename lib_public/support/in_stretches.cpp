#include "in_stretches.h"

#include <cstring>

namespace mainControl {
namespace {

/// The length of the next stretch, of which a compiler that sees its bound would make a string instruction itself.
std::size_t stretchOf(std::size_t size)
{
    constexpr std::size_t kMost = 2048;
    std::size_t stretch = size < kMost ? size : kMost;
    asm("" : "+r"(stretch));
    return stretch;
}

} // namespace

void clear(void *record, std::size_t size)
{
    auto *at = static_cast<char *>(record);
    while (size != 0) {
        const std::size_t stretch = stretchOf(size);
        std::memset(at, 0, stretch);
        at += stretch;
        size -= stretch;
    }
}

void copy(char *to, const char *from, std::size_t size)
{
    while (size != 0) {
        const std::size_t stretch = stretchOf(size);
        std::memcpy(to, from, stretch);
        to += stretch;
        from += stretch;
        size -= stretch;
    }
}

} // namespace mainControl

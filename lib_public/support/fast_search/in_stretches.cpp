#include "in_stretches.h"

#include <cstring>

namespace mainControl {
namespace {

constexpr std::size_t kStretch = 2048;

/// A length that the compiler does not see, or it would make a string instruction itself where there is a bound.
std::size_t unseen(std::size_t length)
{
    asm("" : "+r"(length));
    return length;
}

} // namespace

void clear(void *record, std::size_t size)
{
    auto *at = static_cast<char *>(record);
    for (; size > kStretch; size -= kStretch) {
        std::memset(at, 0, unseen(kStretch));
        at += kStretch;
    }
    std::memset(at, 0, unseen(size));
}

void copy(char *to, const char *from, std::size_t size)
{
    for (; size > kStretch; size -= kStretch) {
        std::memcpy(to, from, unseen(kStretch));
        to += kStretch;
        from += kStretch;
    }
    std::memcpy(to, from, unseen(size));
}

} // namespace mainControl

#include "lib_public/support/fast_search/in_stretches.h"

#include <cstring>

namespace mainControl {
namespace {

constexpr size_t kStretch = 2048;

/** A length that the compiler does not see, or it would make a string instruction itself where there is a bound. */
size_t unseen(size_t length)
{
    asm("" : "+r"(length));
    return length;
}

} // namespace

void clear(void *record, size_t size)
{
    auto *at = static_cast<char *>(record);
    for (; size > kStretch; size -= kStretch) {
        std::memset(at, 0, unseen(kStretch));
        at += kStretch;
    }
    std::memset(at, 0, unseen(size));
}

void copy(char *to, const char *from, size_t size)
{
    for (; size > kStretch; size -= kStretch) {
        std::memcpy(to, from, unseen(kStretch));
        to += kStretch;
        from += kStretch;
    }
    std::memcpy(to, from, unseen(size));
}

} // namespace mainControl

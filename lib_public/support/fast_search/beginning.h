#ifndef LIB_PUBLIC_SUPPORT_FAST_SEARCH_BEGINNING_H
#define LIB_PUBLIC_SUPPORT_FAST_SEARCH_BEGINNING_H

#include <cstdint>
#include <cstring>

#include "lib_public/support/span.h"

namespace mainControl {

/** Characters of a text that are compared at once. */
constexpr size_t kBeginning = sizeof(uint64_t);

/** The first characters of a text, of which there are enough, as one number. */
inline uint64_t beginningOf(const char *text)
{
    uint64_t characters = 0;
    std::memcpy(&characters, text, sizeof characters);
    return characters;
}

/** The same of a text that is too short, with zeros where characters are missing. */
[[gnu::noinline]] inline uint64_t beginningOfShort(Span text)
{
    uint64_t characters = 0;
    std::memcpy(&characters, text.begin, text.size());
    return characters;
}

/** All bits of those that belong to a text. */
[[gnu::noinline]] inline uint64_t beginningMask(Span text)
{
    uint64_t mask = 0;
    std::memset(&mask, 0xFF, text.atMost(sizeof mask).size());
    return mask;
}

} // namespace mainControl

#endif

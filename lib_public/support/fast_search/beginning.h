#pragma once

#include <cstdint>
#include <cstring>

#include "../span.h"

namespace mainControl {

/// Characters of a text that are compared at once.
constexpr std::size_t kBeginning = sizeof(std::uint64_t);

/// The first characters of a text, of which there are enough, as one number.
inline std::uint64_t beginningOf(const char *text)
{
    std::uint64_t characters = 0;
    std::memcpy(&characters, text, sizeof characters);
    return characters;
}

/// The same of a text that is too short, with zeros where characters are missing.
[[gnu::noinline]] inline std::uint64_t beginningOfShort(Span text)
{
    std::uint64_t characters = 0;
    std::memcpy(&characters, text.begin, text.size());
    return characters;
}

/// All bits of those that belong to a text.
[[gnu::noinline]] inline std::uint64_t beginningMask(Span text)
{
    std::uint64_t mask = 0;
    std::memset(&mask, 0xFF, text.atMost(sizeof mask).size());
    return mask;
}

} // namespace mainControl

#pragma once

#include <bit>
#include <cstddef>
#include <cstring>

#include "span.h"

namespace mainControl {

/// The first character at or behind `from` that is one of two, or `end`. Looks at a machine word at a time, because
/// every character of every reply passes through here.
inline const char *findEither(const char *from, const char *end, char one, char other)
{
    constexpr std::size_t kOnes = ~std::size_t{0} / 255;
    constexpr std::size_t kHighBits = kOnes * 128;
    const std::size_t allOne = kOnes * static_cast<unsigned char>(one);
    const std::size_t allOther = kOnes * static_cast<unsigned char>(other);
    for (std::size_t word; static_cast<std::size_t>(end - from) >= sizeof word; from += sizeof word) {
        std::memcpy(&word, from, sizeof word);
        const std::size_t a = word ^ allOne; // a byte of 0 is a hit
        const std::size_t b = word ^ allOther;
        const std::size_t hits = (((a - kOnes) & ~a) | ((b - kOnes) & ~b)) & kHighBits;
        if (hits == 0) continue;
        // The lowest hit is exact, and where the lowest byte comes first it is the first one.
        if constexpr (std::endian::native == std::endian::little) return from + std::countr_zero(hits) / 8;
        break;
    }
    while (from != end && *from != one && *from != other)
        ++from;
    return from;
}

/// The first occurrence of a needle behind an even number of double quotes, or nullptr. The first character of an
/// occurrence that is passed over does not count as a quote. An empty needle is found at the start.
inline const char *findOutsideQuotes(Span text, Span needle)
{
    if (needle.empty()) return text.begin;
    const char first = *needle.begin;
    bool quoted = false;
    for (const char *at = text.begin; (at = findEither(at, text.end, first, '"')) != text.end; ++at) {
        const bool hit = Span{at, text.end}.startsWith(needle);
        if (hit && !quoted) return at;
        if (!hit && *at == '"') quoted = !quoted;
    }
    return nullptr;
}

/// The same for a needle that is a literal.
template <std::size_t Size>
const char *findOutsideQuotes(Span text, const char (&needle)[Size])
{
    return findOutsideQuotes(text, spanOfLiteral(needle));
}

} // namespace mainControl

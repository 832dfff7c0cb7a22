#include "quoted_search.h"

namespace mainControl {
namespace {

/// For each bit whether an odd number of bits is set up to it, itself included.
std::uint64_t oddUpTo(std::uint64_t bits)
{
#pragma GCC unroll 6
    for (unsigned distance = 1; distance < kWindow; distance *= 2)
        bits ^= bits << distance;
    return bits;
}

const char *find(Span text, char character)
{
    return static_cast<const char *>(std::memchr(text.begin, character, text.size()));
}

/// The search by single characters: what a short text costs least, and what a needle needs that begins with a quote.
const char *findByCharacters(Span text, Span needle)
{
    const char first = *needle.begin;
    bool quoted = false;
    for (const char *at = text.begin; at != text.end; ++at) {
        if (*at == first && Span{at, text.end}.startsWith(needle)) {
            if (!quoted) return at;
        } else if (*at == '"') {
            quoted = !quoted;
        }
    }
    return nullptr;
}

} // namespace

WindowOutsideQuotes lookOutsideQuotes(const char *window, std::size_t length, char character, std::uint64_t quoted)
{
    const Sightings seen =
        length < Block::kSize ? lookAtShort<Block>(window, length, character) : look<Block>(window, length, character);
    if (seen.quotes == 0) return {seen.wanted & ~quoted, quoted};
    const std::uint64_t odd = oddUpTo(seen.quotes) ^ quoted;
    const bool endsQuoted = (odd >> (kWindow - 1)) != 0;
    return {seen.wanted & ~odd, endsQuoted ? ~std::uint64_t{0} : 0};
}

const char *findOutsideQuotes(Span text, Span needle)
{
    if (needle.empty()) return text.begin;
    // Mostly there is no such character, or no quote in front of the first one.
    const char *const first = find(text, *needle.begin);
    if (first == nullptr) return nullptr;
    if (Span{first, text.end}.startsWith(needle) && find({text.begin, first}, '"') == nullptr) return first;
    if (text.size() < Block::kSize || *needle.begin == '"') return findByCharacters(text, needle);
    OutsideQuotes places(text, *needle.begin);
    while (const char *const place = places.next()) {
        if (Span{place, text.end}.startsWith(needle)) return place;
    }
    return nullptr;
}

} // namespace mainControl

#include "lib_public/support/fast_search/outside_quotes.h"

#include "lib_public/support/fast_search/blocks.h"

namespace mainControl {
namespace {

WindowOutsideQuotes lookAtEach(Span window, char character, uint64_t quoted)
{
    uint64_t hits = 0;
    for (const char *at = window.begin;; ++at) {
        for (; at != window.end && *at != '"'; ++at) {
            if (*at == character) hits |= ~quoted & uint64_t{1} << (at - window.begin);
        }
        if (at == window.end) return {hits, quoted};
        quoted = ~quoted;
    }
}

#if MAINCONTROL_HAS_BLOCKS

/** Where a character and the double quote stand in a window. */
struct Sightings {
    uint64_t wanted = 0;
    uint64_t quotes = 0;

    void add(const char *window, size_t at, char character)
    {
        const Block block = Block::load(window + at);
        wanted |= block.equalTo(character) << at;
        quotes |= block.equalTo('"') << at;
    }
};

/** Looks at a window of a block or more, and at nothing behind it. */
Sightings lookAtBlocks(const char *window, size_t length, char character)
{
    Sightings seen;
    if (length == kWindow) {
#pragma GCC unroll 4
        for (size_t at = 0; at < kWindow; at += Block::kSize)
            seen.add(window, at, character);
        return seen;
    }
    for (size_t at = 0; at + Block::kSize < length; at += Block::kSize)
        seen.add(window, at, character);
    seen.add(window, length - Block::kSize, character); // partly once more
    return seen;
}

/** For each bit whether an odd number of bits is set up to it, itself included. */
uint64_t oddUpTo(uint64_t bits)
{
#pragma GCC unroll 6
    for (unsigned distance = 1; distance < kWindow; distance *= 2)
        bits ^= bits << distance;
    return bits;
}

#endif

/** The search for a needle that begins with a quote itself. */
const char *findQuote(Span text, Span needle)
{
    bool quoted = false;
    for (const char *at = text.begin; at != text.end; ++at) {
        if (*at != '"') continue;
        const bool isOccurrence = Span{at, text.end}.startsWith(needle);
        if (isOccurrence && !quoted) return at;
        if (!isOccurrence) quoted = !quoted;
    }
    return nullptr;
}

} // namespace

WindowOutsideQuotes lookOutsideQuotes(const char *window, size_t length, char character, uint64_t quoted)
{
#if MAINCONTROL_HAS_BLOCKS
    if (length >= Block::kSize) {
        const Sightings seen = lookAtBlocks(window, length, character);
        if (seen.quotes == 0) return {seen.wanted & ~quoted, quoted};
        const uint64_t odd = oddUpTo(seen.quotes) ^ quoted;
        const bool endsQuoted = (odd >> (kWindow - 1)) != 0;
        return {seen.wanted & ~odd, endsQuoted ? ~uint64_t{0} : 0};
    }
#endif
    return lookAtEach({window, window + length}, character, quoted);
}

const char *findLineBreak(Span text)
{
    if (text.startsWith(spanOfLiteral("\r\n"))) return text.begin; // as replies do
    const char *found = nullptr;
    visitOutsideQuotes(text, '\r', [&](const char *place) {
        if (isLineBreak(place, text.end)) found = place;
        return found == nullptr;
    });
    return found;
}

const char *findOutsideQuotes(Span text, Span needle)
{
    if (needle.empty()) return text.begin;
    if (*needle.begin == '"') return findQuote(text, needle);
    OutsideQuotes places(text, *needle.begin);
    while (const char *const place = places.next()) {
        if (Span{place, text.end}.startsWith(needle)) return place;
    }
    return nullptr;
}

} // namespace mainControl

#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#elif defined(__aarch64__) && defined(__AARCH64EL__)
#include <arm_neon.h>
#endif

/// Looking for characters many at a time, because every character of every reply passes through here. What is found is
/// told as bits, one a character, the first character's the lowest.
namespace mainControl {

/// Eight characters in a machine word.
struct PlainBlock {
    static constexpr std::size_t kSize = 8;

    std::uint64_t characters;

    static PlainBlock load(const char *text)
    {
        std::uint64_t characters = 0;
        std::memcpy(&characters, text, sizeof characters);
        if constexpr (std::endian::native == std::endian::big) characters = __builtin_bswap64(characters);
        return {characters};
    }

    [[nodiscard]] std::uint64_t equalTo(char wanted) const
    {
        constexpr std::uint64_t kOnes = ~std::uint64_t{0} / 255;
        constexpr std::uint64_t kLowBits = kOnes * 127;
        const std::uint64_t differences = characters ^ (kOnes * static_cast<unsigned char>(wanted));
        const std::uint64_t isDifferent =
            ((differences & kLowBits) + kLowBits) | differences; // in each byte's high bit
        constexpr std::uint64_t kGather =
            0x0102040810204080; // moves the lowest bits of all bytes into the highest byte
        return ((~isDifferent >> 7 & kOnes) * kGather) >> 56;
    }
};

#if defined(__SSE2__)
struct VectorBlock {
    static constexpr std::size_t kSize = 16;

    __m128i characters;

    static VectorBlock load(const char *text) { return {_mm_loadu_si128(reinterpret_cast<const __m128i *>(text))}; }

    [[nodiscard]] std::uint64_t equalTo(char wanted) const
    {
        return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(characters, _mm_set1_epi8(wanted))));
    }
};
using Block = VectorBlock;
#elif defined(__aarch64__) && defined(__AARCH64EL__)
struct VectorBlock {
    static constexpr std::size_t kSize = 16;

    uint8x16_t characters;

    static VectorBlock load(const char *text) { return {vld1q_u8(reinterpret_cast<const std::uint8_t *>(text))}; }

    [[nodiscard]] std::uint64_t equalTo(char wanted) const
    {
        constexpr std::uint8_t kWeights[] = {1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128};
        const uint8x16_t hits = vceqq_u8(characters, vdupq_n_u8(static_cast<std::uint8_t>(wanted)));
        const uint8x16_t weighed = vandq_u8(hits, vld1q_u8(kWeights));
        return vaddv_u8(vget_low_u8(weighed)) | static_cast<std::uint64_t>(vaddv_u8(vget_high_u8(weighed))) << 8;
    }
};
using Block = VectorBlock;
#else
using Block = PlainBlock;
#endif

/// The characters that a search looks at in one step.
constexpr std::size_t kWindow = 64;

/// Where a character and the double quote stand in a window.
struct Sightings {
    std::uint64_t wanted = 0;
    std::uint64_t quotes = 0;

    template <typename AnyBlock>
    void add(const char *from, std::size_t at, char character)
    {
        const AnyBlock block = AnyBlock::load(from);
        wanted |= block.equalTo(character) << at;
        quotes |= block.equalTo('"') << at;
    }
};

/// Looks at a text that is shorter than a block, and at nothing behind it.
template <typename AnyBlock>
[[gnu::noinline]] Sightings lookAtShort(const char *text, std::size_t length, char character)
{
    char padded[AnyBlock::kSize] = {};
    std::memcpy(padded, text, length);
    Sightings seen;
    seen.add<AnyBlock>(padded, 0, character);
    return seen;
}

/// Looks at a block up to a window, and at nothing behind it.
template <typename AnyBlock>
[[gnu::always_inline]] inline Sightings look(const char *text, std::size_t length, char character)
{
    constexpr std::size_t kSize = AnyBlock::kSize;
    Sightings seen;
    if (length == kWindow) {
#pragma GCC unroll 8
        for (std::size_t at = 0; at < kWindow; at += kSize)
            seen.add<AnyBlock>(text + at, at, character);
        return seen;
    }
    for (std::size_t at = 0; at + kSize < length; at += kSize)
        seen.add<AnyBlock>(text + at, at, character);
    seen.add<AnyBlock>(text + length - kSize, length - kSize, character); // partly once more
    return seen;
}

} // namespace mainControl

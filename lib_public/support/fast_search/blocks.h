#ifndef LIB_PUBLIC_SUPPORT_FAST_SEARCH_BLOCKS_H
#define LIB_PUBLIC_SUPPORT_FAST_SEARCH_BLOCKS_H

#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#elif defined(__aarch64__) && defined(__AARCH64EL__)
#include <arm_neon.h>
#endif

namespace mainControl {

// Sixteen characters in a vector, on machines that have one. Which of them are a wanted one is told as bits, one a
// character, the first character's the lowest.
#if defined(__SSE2__)
#define MAINCONTROL_HAS_BLOCKS 1
struct Block {
    static constexpr size_t kSize = 16;

    __m128i characters;

    static Block load(const char *text) { return {_mm_loadu_si128(reinterpret_cast<const __m128i *>(text))}; }

    [[nodiscard]] uint64_t equalTo(char wanted) const
    {
        return static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(characters, _mm_set1_epi8(wanted))));
    }
};
#elif defined(__aarch64__) && defined(__AARCH64EL__)
#define MAINCONTROL_HAS_BLOCKS 1
struct Block {
    static constexpr size_t kSize = 16;

    uint8x16_t characters;

    static Block load(const char *text) { return {vld1q_u8(reinterpret_cast<const uint8_t *>(text))}; }

    [[nodiscard]] uint64_t equalTo(char wanted) const
    {
        constexpr uint8_t kWeights[] = {1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128};
        const uint8x16_t hits = vceqq_u8(characters, vdupq_n_u8(static_cast<uint8_t>(wanted)));
        const uint8x16_t weighed = vandq_u8(hits, vld1q_u8(kWeights));
        return vaddv_u8(vget_low_u8(weighed)) | static_cast<uint64_t>(vaddv_u8(vget_high_u8(weighed))) << 8;
    }
};
#else
#define MAINCONTROL_HAS_BLOCKS 0
#endif

} // namespace mainControl

#endif

#ifndef LIB_PUBLIC_SUPPORT_SPAN_H
#define LIB_PUBLIC_SUPPORT_SPAN_H

#include <cstddef>
#include <cstring>

namespace mainControl {

/** A stretch of characters that somebody else owns. */
struct Span {
    const char *begin;
    const char *end;

    [[nodiscard]] size_t size() const { return static_cast<size_t>(end - begin); }
    [[nodiscard]] bool empty() const { return begin == end; }
    /** The stretch without its first characters; empty if it has no more than those. */
    [[nodiscard]] Span from(size_t characters) const { return {characters < size() ? begin + characters : end, end}; }
    /** At most its first characters. */
    [[nodiscard]] Span atMost(size_t characters) const
    {
        return {begin, characters < size() ? begin + characters : end};
    }
    [[nodiscard]] bool startsWith(Span prefix) const
    {
        return prefix.size() <= size() && std::memcmp(begin, prefix.begin, prefix.size()) == 0;
    }
    template <size_t Size>
    [[nodiscard]] bool endsWith(const char (&literal)[Size]) const
    {
        return Size - 1 <= size() && std::memcmp(end - (Size - 1), literal, Size - 1) == 0;
    }
};

/** A NUL-terminated text without its terminator. */
inline Span spanOf(const char *text)
{
    return {text, text + std::strlen(text)};
}

/** A literal without its terminator. */
template <size_t Size>
constexpr Span spanOfLiteral(const char (&literal)[Size])
{
    return {literal, literal + Size - 1};
}

/** The text in an array of stated size, which need not be terminated. */
inline Span spanOf(const char *text, size_t room)
{
    return {text, text + strnlen(text, room)};
}

} // namespace mainControl

#endif

#pragma once

#include <cstdint>
#include <cstring>

#include "span.h"

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

/// All bits of those that belong to a text.
[[gnu::noinline]] inline std::uint64_t beginningMask(Span text)
{
    std::uint64_t mask = 0;
    std::memset(&mask, 0xFF, text.atMost(sizeof mask).size());
    return mask;
}

/// A text that others are compared with over and over.
class Beginning {
  public:
    /// Begins no text.
    Beginning() = default;
    /// @param text  the first characters of another one, from which on at least kBeginning can be read
    explicit Beginning(Span text)
        : text_(text), mask_(beginningMask(text)), characters_(beginningOf(text.begin) & mask_)
    {
    }

    [[nodiscard]] std::size_t size() const { return text_.size(); }

    /// Whether another text, which is no shorter and from which on at least kBeginning can be read, begins with it.
    [[nodiscard]] bool begins(Span other) const
    {
        if ((beginningOf(other.begin) & mask_) != characters_) return false;
        if (text_.size() <= sizeof characters_) [[likely]]
            return true;
        return other.startsWith(text_);
    }

  private:
    Span text_{};
    std::uint64_t mask_ = 0;
    std::uint64_t characters_ = 1;
};

} // namespace mainControl

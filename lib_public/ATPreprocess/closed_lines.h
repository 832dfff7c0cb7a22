#pragma once

#include <cstddef>
#include <cstdint>

#include "../support/span.h"

namespace mainControl {

/// The first lines of a body, noted while the flag behind it is searched for, so that assembling them needs no second
/// walk. Lines beyond what there is room for are found again.
class ClosedLines {
  public:
    /// Notes nothing so far, and lines from here on.
    void beginAt(const char *start)
    {
        start_ = start;
        count_ = 0;
    }

    /// Notes a line.
    /// @param end        where the line break behind it stands
    /// @param separator  the first ": " outside quotes in it, or nullptr
    void add(const char *end, const char *separator)
    {
        if (count_ == kRoom || Span{start_, end}.size() > UINT16_MAX) return;
        notes_[count_++] = {offsetOf(end), separator != nullptr ? offsetOf(separator) : kNone};
    }

    [[nodiscard]] std::size_t count() const { return count_; }
    [[nodiscard]] const char *endOf(std::size_t line) const { return start_ + notes_[line].end; }
    [[nodiscard]] const char *separatorOf(std::size_t line) const
    {
        return notes_[line].separator != kNone ? start_ + notes_[line].separator : nullptr;
    }

  private:
    static constexpr std::uint16_t kNone = UINT16_MAX;

    [[nodiscard]] std::uint16_t offsetOf(const char *place) const
    {
        return static_cast<std::uint16_t>(Span{start_, place}.size());
    }

    struct Note {
        std::uint16_t end;
        std::uint16_t separator;
    };
    static constexpr std::size_t kRoom = 384;

    const char *start_ = nullptr;
    std::size_t count_ = 0;
    Note notes_[kRoom]; // of which the first are written
};

} // namespace mainControl

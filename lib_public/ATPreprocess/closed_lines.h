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
    /// @param end  where the line break behind it stands
    void add(const char *end)
    {
        const std::size_t offset = Span{start_, end}.size();
        if (count_ != kRoom && offset <= UINT16_MAX) ends_[count_++] = static_cast<std::uint16_t>(offset);
    }

    /// Lines whose line breaks stand in front of an end.
    [[nodiscard]] std::size_t countWithin(const char *end) const
    {
        std::size_t count = count_;
        while (count != 0 && end - endOf(count - 1) < 2)
            --count;
        return count;
    }
    [[nodiscard]] const char *endOf(std::size_t line) const { return start_ + ends_[line]; }

  private:
    static constexpr std::size_t kRoom = 768;

    const char *start_ = nullptr;
    std::size_t count_ = 0;
    std::uint16_t ends_[kRoom]; // from the start; of which the first are written
};

} // namespace mainControl

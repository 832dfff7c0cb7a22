#pragma once

#include <cstddef>
#include <cstdint>

#include "../support/span.h"

namespace mainControl {

/// The first lines of a body, noted while the flag behind it is searched for, so that assembling them needs no second
/// walk. Lines beyond what there is room for are found again, as are those of texts that no modem sends.
class ClosedLines {
  public:
    /// Notes nothing so far, and then lines of this text.
    void beginIn(Span text)
    {
        start_ = text.begin;
        count_ = 0;
        room_ = text.size() <= UINT16_MAX ? kRoom : 0;
    }

    /// Notes a line, if there is room for it.
    /// @param end  where the line break behind it stands
    bool add(const char *end)
    {
        if (count_ == room_) return false;
        ends_[count_++] = static_cast<std::uint16_t>(end - start_);
        return true;
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
    std::size_t room_ = 0;      // none in a text of which an offset might be too large to be kept
    std::uint16_t ends_[kRoom]; // from the start; of which the first are written
};

} // namespace mainControl

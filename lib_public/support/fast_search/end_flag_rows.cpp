#include "lib_public/support/fast_search/end_flag_rows.h"

#include <algorithm>

namespace mainControl {
namespace {

/** The rows sorted for searching: they hang in chains, in the table's order, by their third to sixth characters. */
class SortedRows {
  public:
    /** Follows the table as it now stands. The rows are sorted anew only where it begins otherwise than it did. */
    void followTable()
    {
        if (!isCurrent()) sort();
    }

    /** Whether any row may stand at a line break, by the first kBeginning characters from there. */
    [[nodiscard]] bool mayStandAt(const char *lineBreak) const
    {
        const uint64_t beginning = beginningOf(lineBreak);
        return firstAlike(heads_[keyOf(lineBreak)], beginning) != kEnd || firstAlike(heads_[kShort], beginning) != kEnd;
    }

    /** The earliest row that a text begins with, or kEnd. */
    [[nodiscard, gnu::noinline]] uint8_t earliestIn(Span text) const
    {
        const uint64_t beginning = text.size() < kBeginning ? beginningOfShort(text) : beginningOf(text.begin);
        uint8_t earliest = kEnd;
        size_t chain = text.size() < kKeyEnd ? kShort : keyOf(text.begin);
        for (;; chain = kShort) {
            earliest = std::min(earliest, firstIn(heads_[chain], text, beginning));
            if (chain == kShort) return earliest;
        }
    }

    [[nodiscard]] uint8_t firstElsewhere() const { return heads_[kElsewhere]; }
    [[nodiscard]] uint8_t next(int32_t row) const { return next_[row]; }

    static constexpr uint8_t kEnd = 255; // of a chain

  private:
    static constexpr int32_t kTableRoom = arraySize(KoraWcdma_AtEndFlgTable);
    static_assert(kTableRoom < kEnd);
    static constexpr unsigned kKeyBits = 10; // for fifty rows, so that the names of common replies find none
    static constexpr size_t kKeys = size_t{1} << kKeyBits;
    static constexpr size_t kShort = kKeys;         // begin with a line break, but end before the key does
    static constexpr size_t kElsewhere = kKeys + 1; // do not begin with a line break
    static constexpr size_t kKeyEnd = 6;

    /** What the order is made of: the first characters of a row's flag. */
    static uint64_t beginningOfRow(int32_t row)
    {
        static_assert(kBeginning >= kKeyEnd);
        return beginningOf(KoraWcdma_AtEndFlgTable[row].flag);
    }

    static size_t keyOf(const char *lineBreak)
    {
        constexpr uint32_t kGoldenRatio = 0x9E3779B9; // of 2^32: multiples of it lie far apart
        uint32_t characters = 0;
        std::memcpy(&characters, lineBreak + 2, sizeof characters);
        return characters * kGoldenRatio >> (32 - kKeyBits);
    }

    static size_t chainOf(const char *flag)
    {
        if (flag[0] != '\r' || flag[1] != '\n') return kElsewhere;
        return strnlen(flag, kKeyEnd) < kKeyEnd ? kShort : keyOf(flag);
    }

    [[nodiscard]] bool isCurrent() const
    {
        if (!isSorted_ || rows_ != endFlagRows()) return false;
        uint64_t differences = 0;
#pragma GCC unroll 50 // all of them: the count is half of what the search costs
        for (int32_t row = 0; row < kTableRoom; ++row)
            differences |= beginnings_[row] ^ beginningOfRow(row);
        return differences == 0;
    }

    [[gnu::cold, gnu::noinline]] void sort()
    {
        isSorted_ = true;
        rows_ = endFlagRows();
        std::memset(heads_, kEnd, sizeof heads_);
        for (int32_t row = 0; row < kTableRoom; ++row)
            beginnings_[row] = beginningOfRow(row);
        for (int32_t row = rows_ - 1; row >= 0; --row) {
            masks_[row] = beginningMask(flagOf(row));
            uint8_t &head = heads_[chainOf(KoraWcdma_AtEndFlgTable[row].flag)];
            next_[row] = head;
            head = static_cast<uint8_t>(row);
        }
    }

    /** The first row from one of a chain on that a text begins as, as far as both are compared. */
    [[nodiscard]] uint8_t firstAlike(uint8_t row, uint64_t beginning) const
    {
        while (row != kEnd && ((beginning ^ beginnings_[row]) & masks_[row]) != 0)
            row = next_[row];
        return row;
    }

    /** The first row from one of a chain on that a text begins with. */
    [[nodiscard]] uint8_t firstIn(uint8_t row, Span text, uint64_t beginning) const
    {
        row = firstAlike(row, beginning);
        while (row != kEnd && goesOnBehindBeginning(row) && !text.startsWith(flagOf(row)))
            row = firstAlike(next_[row], beginning);
        return row;
    }

    [[nodiscard]] bool goesOnBehindBeginning(uint8_t row) const
    {
        return masks_[row] == ~uint64_t{0};
    }

    bool isSorted_ = false;
    int32_t rows_ = 0;
    uint64_t beginnings_[kTableRoom] = {};
    uint64_t masks_[kTableRoom] = {};
    uint8_t heads_[kKeys + 2] = {};
    uint8_t next_[kTableRoom] = {};
};

constinit SortedRows sorted;

int32_t rowOrNone(uint8_t row)
{
    return row != SortedRows::kEnd ? row : kNoRow;
}

} // namespace

EndFlagRows::EndFlagRows(const char *textEnd) : end_(textEnd)
{
    sorted.followTable();
    firstElsewhere_ = rowOrNone(sorted.firstElsewhere());
}

int32_t EndFlagRows::at(const char *lineBreak)
{
    const Span text{lineBreak, end_};
    if (text.size() < kBeginning || sorted.mayStandAt(lineBreak)) return rowOrNone(sorted.earliestIn(text));
    passed_ = beginningOf(lineBreak);
    return kNoRow;
}

int32_t EndFlagRows::nextElsewhere(int32_t row) const
{
    return rowOrNone(sorted.next(row));
}

} // namespace mainControl

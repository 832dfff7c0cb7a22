#include "end_flag_search.h"

#include <mainControl/parser.h>

#include "../support/array_size.h"
#include "../support/quoted_search.h"

namespace mainControl {
namespace {

constexpr std::int32_t kTableRoom = arraySize(KoraWcdma_AtEndFlgTable);
constexpr std::uint8_t kNoRow = 255;
static_assert(kTableRoom < kNoRow);

/// Whether a row's flag stands at a position, where its first characters are already known to.
bool standsAt(std::int32_t row, const char *position, const char *end, std::size_t known)
{
    const char *const flag = KoraWcdma_AtEndFlgTable[row].flag;
    for (std::size_t i = known; i < sizeof KoraWcdma_AtEndFlgTable[row].flag && flag[i] != '\0'; ++i) {
        if (position + i == end || position[i] != flag[i]) return false;
    }
    return true;
}

/// The rows of the live table, sorted for searching: a text is walked from line break to line break, and at each of them
/// only the rows are compared whose fourth and fifth characters may be the ones that stand there.
class SortedRows {
  public:
    /// The rows as the table now stands. They are sorted anew only where it begins otherwise than it did.
    static const SortedRows &ofLiveTable()
    {
        static SortedRows sorted;
        if (!sorted.isCurrent()) sorted.sort();
        return sorted;
    }

    /// The earliest row that stands at a line break, or kNoRow.
    [[nodiscard]] std::uint8_t rowAt(const char *lineBreak, const char *end) const
    {
        std::uint8_t row = firstOf(heads_[kShort], lineBreak, end);
        if (end - lineBreak >= kKeyEnd) {
            const std::uint8_t other = firstOf(heads_[keyOf(lineBreak)], lineBreak, end);
            if (other < row) row = other;
        }
        return row;
    }

    /// Moves the hit to the place of a row that need not stand at a line break, where that comes first.
    void preferOthers(Span text, EndFlagHit &hit) const
    {
        for (std::uint8_t row = heads_[kAnywhere]; row != kNoRow; row = next_[row]) {
            const char *const at = findOutsideQuotes(text, flagOf(row));
            if (at != nullptr && (at < hit.flag || (at == hit.flag && row < hit.row))) {
                hit.flag = at;
                hit.row = row;
            }
        }
    }

  private:
    static constexpr std::size_t kKeys = 64;
    static constexpr std::size_t kShort = kKeys;        // begin with a line break, but end before the key does
    static constexpr std::size_t kAnywhere = kKeys + 1; // do not begin with a line break; only a host adds such rows
    static constexpr std::ptrdiff_t kKeyEnd = 5;

    /// What the order is made of: the first characters of a row's flag.
    static std::uint64_t beginningOf(std::int32_t row)
    {
        std::uint64_t beginning = 0;
        static_assert(sizeof beginning >= kKeyEnd);
        std::memcpy(&beginning, KoraWcdma_AtEndFlgTable[row].flag, sizeof beginning);
        return beginning;
    }

    [[nodiscard]] bool isCurrent() const
    {
        if (!isSorted_ || rows_ != endFlagRows()) return false;
        for (std::int32_t row = 0; row < rows_; ++row) {
            if (beginnings_[row] != beginningOf(row)) return false;
        }
        return true;
    }

    void sort()
    {
        isSorted_ = true;
        rows_ = endFlagRows();
        std::memset(heads_, kNoRow, sizeof heads_);
        for (std::int32_t row = rows_ - 1; row >= 0; --row) {
            beginnings_[row] = beginningOf(row);
            std::uint8_t &head = headFor(KoraWcdma_AtEndFlgTable[row].flag);
            next_[row] = head;
            head = static_cast<std::uint8_t>(row);
        }
    }

    static std::size_t keyOf(const char *lineBreak)
    {
        return (static_cast<unsigned char>(lineBreak[3]) * 8U + static_cast<unsigned char>(lineBreak[4])) % kKeys;
    }

    std::uint8_t &headFor(const char *flag)
    {
        if (flag[0] != '\r' || flag[1] != '\n') return heads_[kAnywhere];
        if (flag[2] == '\0' || flag[3] == '\0' || flag[4] == '\0') return heads_[kShort];
        return heads_[keyOf(flag)];
    }

    [[nodiscard]] std::uint8_t firstOf(std::uint8_t row, const char *lineBreak, const char *end) const
    {
        while (row != kNoRow && !standsAt(row, lineBreak, end, 2))
            row = next_[row];
        return row;
    }

    bool isSorted_ = false;
    std::int32_t rows_ = 0;
    std::uint64_t beginnings_[kTableRoom] = {};
    std::uint8_t heads_[kKeys + 2] = {};
    std::uint8_t next_[kTableRoom] = {};
};

} // namespace

std::int32_t endFlagRows()
{
    return inTable(KoraWcdma_AtEndFlgTableSize, KoraWcdma_AtEndFlgTable);
}

Span flagOf(std::int32_t row)
{
    return spanOf(KoraWcdma_AtEndFlgTable[row].flag, sizeof KoraWcdma_AtEndFlgTable[row].flag);
}

EndFlagHit findEndFlag(Span text)
{
    EndFlagHit hit{findOutsideQuotes(text, "\r\n"), text.end, -1};
    if (hit.start == nullptr) return hit;
    const Span reply{hit.start, text.end};

    // Nothing comes before the first row at the start, and a bare OK is what most commands get.
    if (endFlagRows() > 0 && standsAt(0, reply.begin, reply.end, 0)) {
        hit.flag = reply.begin;
        hit.row = 0;
        return hit;
    }

    const SortedRows &rows = SortedRows::ofLiveTable();
    for (const char *at = reply.begin; at != nullptr; at = findOutsideQuotes({at + 2, reply.end}, "\r\n")) {
        const std::uint8_t row = rows.rowAt(at, reply.end);
        if (row == kNoRow) continue;
        hit.flag = at;
        hit.row = row;
        break;
    }
    rows.preferOthers(reply, hit);
    return hit;
}

} // namespace mainControl

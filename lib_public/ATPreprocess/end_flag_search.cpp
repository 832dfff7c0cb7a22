#include "end_flag_search.h"

#include <mainControl/parser.h>

#include "../support/array_size.h"
#include "../support/beginning.h"
#include "../support/quoted_search.h"
#include "closed_lines.h"

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
/// only the rows are compared whose third to sixth characters may be the ones that stand there.
class SortedRows {
  public:
    /// The rows as the table now stands. They are sorted anew only where it begins otherwise than it did.
    static const SortedRows &ofLiveTable()
    {
        static SortedRows sorted;
        if (!sorted.isCurrent()) sorted.sort();
        return sorted;
    }

    /// Whether any row may stand at a line break with enough characters behind it. At most of them none can.
    [[nodiscard]] bool mayStandAt(const char *lineBreak) const
    {
        return heads_[keyOf(lineBreak)] != kNoRow || mayBeShort(lineBreak);
    }

    /// The earliest row that stands at a line break, or kNoRow.
    [[nodiscard]] std::uint8_t rowAt(const char *lineBreak, const char *end) const
    {
        return end - lineBreak < kKeyEnd || mayStandAt(lineBreak) ? earliestAt(lineBreak, end) : kNoRow;
    }

    /// The same where one may stand, or too few characters are left to tell.
    [[nodiscard, gnu::noinline]] std::uint8_t earliestAt(const char *lineBreak, const char *end) const
    {
        if (end - lineBreak < kKeyEnd) return firstShort(lineBreak, end);
        const std::uint8_t row = firstWithKey(lineBreak, end);
        const std::uint8_t other = mayBeShort(lineBreak) ? firstShort(lineBreak, end) : kNoRow;
        return other < row ? other : row;
    }

    /// Moves the hit to the place of a row that need not stand at a line break, where that comes first.
    void preferOthers(Span text, EndFlagHit &hit) const
    {
        for (std::uint8_t row = heads_[kAnywhere]; row != kNoRow; row = next_[row])
            preferOther(row, text, hit);
    }

  private:
    static constexpr unsigned kKeyBits = 10; // for fifty rows, so that the names of common replies find none
    static constexpr std::size_t kKeys = std::size_t{1} << kKeyBits;
    static constexpr std::size_t kShort = kKeys;        // begin with a line break, but end before the key does
    static constexpr std::size_t kAnywhere = kKeys + 1; // do not begin with a line break; only a host adds such rows
    static constexpr std::ptrdiff_t kKeyEnd = 6;

    /// What the order is made of: the first characters of a row's flag.
    static std::uint64_t beginningOfRow(std::int32_t row)
    {
        static_assert(sizeof(std::uint64_t) >= kKeyEnd);
        return beginningOf(KoraWcdma_AtEndFlgTable[row].flag);
    }

    [[gnu::noinline]] static void preferOther(std::uint8_t row, Span text, EndFlagHit &hit)
    {
        const char *const at = findOutsideQuotes(text, flagOf(row));
        if (at != nullptr && (at < hit.flag || (at == hit.flag && row < hit.row))) {
            hit.flag = at;
            hit.row = row;
        }
    }

    /// Whether one of the short rows may stand at a line break, by the character behind that.
    [[nodiscard]] bool mayBeShort(const char *lineBreak) const
    {
        return isShortThird_[static_cast<unsigned char>(lineBreak[2])];
    }

    using Pair [[gnu::vector_size(16)]] = std::uint64_t;

    [[nodiscard]] bool isCurrent() const
    {
        if (!isSorted_ || rows_ != endFlagRows()) return false;
        static_assert(kTableRoom % 2 == 0);
        Pair differences{};
#pragma GCC unroll 5
        for (std::int32_t row = 0; row < kTableRoom; row += 2) { // and not rows_, so that it unrolls
            const Pair known{beginnings_[row], beginnings_[row + 1]};
            const Pair live{beginningOfRow(row), beginningOfRow(row + 1)};
            differences |= known ^ live;
        }
        return (differences[0] | differences[1]) == 0;
    }

    [[gnu::cold]] void sort()
    {
        isSorted_ = true;
        rows_ = endFlagRows();
        std::memset(heads_, kNoRow, sizeof heads_);
        std::memset(isShortThird_, 0, sizeof isShortThird_);
        for (std::int32_t row = 0; row < kTableRoom; ++row)
            beginnings_[row] = beginningOfRow(row);
        for (std::int32_t row = rows_ - 1; row >= 0; --row) {
            masks_[row] = beginningMask(flagOf(row));
            const char *const flag = KoraWcdma_AtEndFlgTable[row].flag;
            std::uint8_t &head = headFor(flag);
            if (&head == &heads_[kShort]) noteShortThird(flag[2]);
            next_[row] = head;
            head = static_cast<std::uint8_t>(row);
        }
    }

    void noteShortThird(char third)
    {
        if (third != '\0')
            isShortThird_[static_cast<unsigned char>(third)] = true;
        else
            std::memset(isShortThird_, 1, sizeof isShortThird_);
    }

    static std::size_t keyOf(const char *lineBreak)
    {
        constexpr std::uint32_t kGoldenRatio = 0x9E3779B9; // of 2^32: multiples of it lie far apart
        std::uint32_t characters = 0;
        std::memcpy(&characters, lineBreak + 2, sizeof characters);
        return characters * kGoldenRatio >> (32 - kKeyBits);
    }

    std::uint8_t &headFor(const char *flag)
    {
        if (flag[0] != '\r' || flag[1] != '\n') return heads_[kAnywhere];
        if (strnlen(flag, kKeyEnd) < kKeyEnd) return heads_[kShort];
        return heads_[keyOf(flag)];
    }

    /// The first row that stands at a line break, of those that end before the key does.
    [[nodiscard, gnu::noinline]] std::uint8_t firstShort(const char *lineBreak, const char *end) const
    {
        std::uint8_t row = heads_[kShort];
        while (row != kNoRow && !standsAt(row, lineBreak, end, 2))
            row = next_[row];
        return row;
    }

    /// The same of those with the key that stands there.
    [[nodiscard]] std::uint8_t firstWithKey(const char *lineBreak, const char *end) const
    {
        std::uint8_t row = heads_[keyOf(lineBreak)];
        while (row != kNoRow && !keyedStandsAt(row, lineBreak, end))
            row = next_[row];
        return row;
    }

    [[nodiscard]] bool keyedStandsAt(std::uint8_t row, const char *lineBreak, const char *end) const
    {
        if (Span{lineBreak, end}.size() < kBeginning) {
            const char *const flag = KoraWcdma_AtEndFlgTable[row].flag;
            return std::memcmp(flag, lineBreak, kKeyEnd) == 0 && standsAt(row, lineBreak, end, kKeyEnd);
        }
        if (((beginningOf(lineBreak) ^ beginnings_[row]) & masks_[row]) != 0) return false;
        return masks_[row] != ~std::uint64_t{0} || standsAt(row, lineBreak, end, kBeginning);
    }

    bool isSorted_ = false;
    std::int32_t rows_ = 0;
    alignas(Pair) std::uint64_t beginnings_[kTableRoom] = {};
    std::uint64_t masks_[kTableRoom] = {};
    bool isShortThird_[UINT8_MAX + 1] = {}; // whether a short row has that third character, or none
    std::uint8_t heads_[kKeys + 2] = {};
    std::uint8_t next_[kTableRoom] = {};
};

/// The first line break outside quotes, or nullptr.
const char *startOf(Span text)
{
    if (text.startsWith(spanOfLiteral("\r\n"))) return text.begin;
    return findOutsideQuotes(text, "\r\n");
}

/// Looks for a row at each line break of a text, and notes the lines in front of it.
[[gnu::noinline]] void searchLineBreaks(Span text, const SortedRows &rows, ClosedLines &lines, EndFlagHit &hit)
{
    lines.beginIn(text);
    std::uint64_t passed = 0; // a line break and what follows it, where no row can stand
    visitOutsideQuotes(text, '\r', [&](const char *at) {
        const bool isLong = Span{at, text.end}.size() >= kBeginning;
        const bool isPassed = isLong && beginningOf(at) == passed;
        if (!isPassed && !isLineBreak(at, text.end)) return true;
        lines.add(at);
        if (isPassed) return true;
        if (isLong && !rows.mayStandAt(at)) {
            passed = beginningOf(at);
            return true;
        }
        const std::uint8_t row = rows.earliestAt(at, text.end);
        if (row == kNoRow) return true;
        hit.flag = at;
        hit.row = row;
        return false;
    });
}

} // namespace

std::int32_t endFlagRows()
{
    return inTable(KoraWcdma_AtEndFlgTableSize, KoraWcdma_AtEndFlgTable);
}

EndFlagHit findEndFlag(Span text, ClosedLines &lines)
{
    EndFlagHit hit{startOf(text), text.end, -1};
    if (hit.start == nullptr) return hit;

    // Nothing comes before the first row at the start, and a bare OK is what most commands get.
    if (endFlagRows() > 0 && standsAt(0, hit.start, text.end, 0)) {
        hit.flag = hit.start;
        hit.row = 0;
        return hit;
    }

    const SortedRows &rows = SortedRows::ofLiveTable();
    const std::uint8_t row = rows.rowAt(hit.start, text.end);
    if (row != kNoRow) {
        hit.flag = hit.start;
        hit.row = row;
    } else {
        searchLineBreaks({hit.start + 2, text.end}, rows, lines, hit);
    }
    rows.preferOthers({hit.start, text.end}, hit);
    return hit;
}

} // namespace mainControl

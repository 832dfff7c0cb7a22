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

    /// Whether any row may stand at a line break, by the first kBeginning characters from there, which can be read. At
    /// most of them none can.
    [[nodiscard]] bool mayStandAt(const char *lineBreak) const
    {
        const std::uint64_t beginning = beginningOf(lineBreak);
        return anyBegins(heads_[keyOf(lineBreak)], beginning) || anyBegins(heads_[kShort], beginning);
    }

    /// The earliest row that stands at a line break, or kNoRow.
    /// @param passed  out: the first characters from there, if no row can stand where a text begins with them
    [[nodiscard]] std::uint8_t rowAt(const char *lineBreak, const char *end, std::uint64_t &passed) const
    {
        if (Span{lineBreak, end}.size() < kBeginning || mayStandAt(lineBreak)) return earliestAt(lineBreak, end);
        passed = beginningOf(lineBreak);
        return kNoRow;
    }

    /// The same where one may stand, or too few characters are left to tell.
    [[nodiscard, gnu::noinline]] std::uint8_t earliestAt(const char *lineBreak, const char *end) const
    {
        const Span text{lineBreak, end};
        // Where characters are missing there are zeros, which no flag has.
        std::uint64_t beginning = 0;
        std::memcpy(&beginning, text.begin, text.atMost(kBeginning).size());
        const std::uint8_t row = text.size() < kKeyEnd ? kNoRow : firstIn(keyOf(lineBreak), text, beginning);
        if (row < heads_[kShort]) return row; // which comes before all short ones
        const std::uint8_t other = firstIn(kShort, text, beginning);
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
    static constexpr std::size_t kKeyEnd = 6;

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

    /// Whether a text begins as one of a chain of rows does, as far as both are compared.
    [[nodiscard]] bool anyBegins(std::uint8_t row, std::uint64_t beginning) const
    {
        while (row != kNoRow && !isBeginning(row, beginning))
            row = next_[row];
        return row != kNoRow;
    }

    [[nodiscard]] bool isBeginning(std::uint8_t row, std::uint64_t beginning) const
    {
        return ((beginning ^ beginnings_[row]) & masks_[row]) == 0;
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
        for (std::int32_t row = 0; row < kTableRoom; ++row)
            beginnings_[row] = beginningOfRow(row);
        for (std::int32_t row = rows_ - 1; row >= 0; --row) {
            masks_[row] = beginningMask(flagOf(row));
            const char *const flag = KoraWcdma_AtEndFlgTable[row].flag;
            std::uint8_t &head = headFor(flag);
            next_[row] = head;
            head = static_cast<std::uint8_t>(row);
        }
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

    /// The first row of a chain that a text begins with.
    [[nodiscard, gnu::noinline]] std::uint8_t firstIn(std::size_t chain, Span text, std::uint64_t beginning) const
    {
        std::uint8_t row = heads_[chain];
        while (row != kNoRow && !begins(row, text, beginning))
            row = next_[row];
        return row;
    }

    [[nodiscard]] bool begins(std::uint8_t row, Span text, std::uint64_t beginning) const
    {
        if (!isBeginning(row, beginning)) return false;
        return masks_[row] != ~std::uint64_t{0} || standsAt(row, text.begin, text.end, kBeginning);
    }

    bool isSorted_ = false;
    std::int32_t rows_ = 0;
    alignas(Pair) std::uint64_t beginnings_[kTableRoom] = {};
    std::uint64_t masks_[kTableRoom] = {};
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
/// @param passed  a line break and what follows it, where no row can stand
[[gnu::noinline]] void searchLineBreaks(Span text, const SortedRows &rows, std::uint64_t passed, ClosedLines &lines,
                                        EndFlagHit &hit)
{
    lines.beginIn(text);
    visitOutsideQuotes(text, '\r', [&](const char *at) {
        const bool isPassed = Span{at, text.end}.size() >= kBeginning && beginningOf(at) == passed;
        if (!isPassed && !isLineBreak(at, text.end)) return true;
        lines.add(at);
        if (isPassed) return true;
        const std::uint8_t row = rows.rowAt(at, text.end, passed);
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
    std::uint64_t passed = 0;
    const std::uint8_t row = rows.rowAt(hit.start, text.end, passed);
    if (row != kNoRow) {
        hit.flag = hit.start;
        hit.row = row;
    } else {
        searchLineBreaks({hit.start + 2, text.end}, rows, passed, lines, hit);
    }
    rows.preferOthers({hit.start, text.end}, hit);
    return hit;
}

} // namespace mainControl

#include "lib_public/ATPreprocess/end_flag_search.h"

namespace mainControl {
namespace {

/** Looks for a row at each line break of a text, and notes the lines in front of it. */
void searchLineBreaks(Span text, EndFlagRows &rows, NotedLines &lines, EndFlagHit &hit)
{
    lines.beginIn(text);
    visitOutsideQuotes(text, '\r', [&](const char *at) {
        const bool passes = rows.passes(at);
        if (!passes && !isLineBreak(at, text.end)) return true;
        lines.add(at);
        const int32_t row = passes ? kNoRow : rows.at(at);
        if (row == kNoRow) return true;
        hit.flag = at;
        hit.row = row;
        return false;
    });
}

/** Looks for the rows that need not stand at a line break, which may come first. */
[[gnu::noinline]] void searchElsewhere(Span text, const EndFlagRows &rows, EndFlagHit &hit)
{
    for (int32_t row = rows.firstElsewhere(); row != kNoRow; row = rows.nextElsewhere(row)) {
        const char *const at = findOutsideQuotes(text, flagOf(row));
        if (at == nullptr || at > hit.flag || (at == hit.flag && row > hit.row)) continue;
        hit.flag = at;
        hit.row = row;
    }
}

} // namespace

EndFlagHit findEndFlag(Span text, NotedLines &lines)
{
    EndFlagHit hit{findLineBreak(text), text.end, kNoRow};
    if (hit.start == nullptr) return hit;

    // Nothing comes before the first row at the start, and a bare OK is what most commands get.
    const Span reply{hit.start, text.end};
    if (endFlagRows() > 0 && standsAt(0, reply)) return {hit.start, hit.start, 0};

    EndFlagRows rows(text.end);
    hit.row = rows.at(hit.start);
    if (hit.row != kNoRow)
        hit.flag = hit.start;
    else
        searchLineBreaks(reply.from(2), rows, lines, hit);
    if (rows.firstElsewhere() != kNoRow) searchElsewhere(reply, rows, hit);
    return hit;
}

} // namespace mainControl

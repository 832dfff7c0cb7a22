#include "lib_public/support/fast_search/noted_lines.h"

#include "lib_public/support/fast_search/outside_quotes.h"

namespace mainControl {

void NotedLines::addAll(Span text)
{
    beginIn(text);
    visitOutsideQuotes(text, '\r', [&](const char *at) { return !isLineBreak(at, text.end) || add(at); });
}

const char *LineReader::findNextEnd()
{
    const Span rest{next_, end_};
    if (rest.empty()) return nullptr;
    lines_.addAll(rest);
    line_ = 0;
    count_ = lines_.countWithin(end_);
    return count_ != 0 ? lines_.endOf(line_++) : findLineBreak(rest); // in a text too long for notes
}

} // namespace mainControl

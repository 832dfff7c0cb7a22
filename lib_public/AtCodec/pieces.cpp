#include "lib_public/AtCodec/pieces.h"

namespace mainControl {

namespace {

constexpr int32_t kEntries = 100;
constexpr int32_t kIndexLimit = 100;

} // namespace

Span Pieces::searched(Span text, char separator)
{
    return std::memchr(text.begin, separator, text.size()) != nullptr ? text : Span{text.end, text.end};
}

const char *Pieces::nextSeparator()
{
    while (const char *const place = places_.next()) {
        if (separator_.size() == 1 || Span{place, rest_.end}.startsWith(separator_)) return place;
    }
    return nullptr;
}

bool Pieces::next(Span &piece)
{
    if (taken_ < 0 || taken_ >= kEntries || isTooLong_ || rest_.empty()) return false;
    if (const char *const at = nextSeparator()) {
        piece = {rest_.begin, at};
        isTooLong_ = piece.size() >= kFieldLimit;
        if (isTooLong_) return false;
        rest_.begin = at + separator_.size();
    } else {
        // A full last entry is ended by the first byte of the one behind it; behind the list there is none.
        piece = rest_.atMost(taken_ + 1 < kEntries ? kFieldLimit : kFieldLimit - 1);
        rest_.begin = rest_.end;
    }
    ++taken_;
    return true;
}

bool findField(Span text, int32_t indexFromOne, Span separator, Field &field)
{
    for (int32_t number = 1; !separator.empty(); ++number) {
        const char *const at = findOutsideQuotes(text, separator);
        if (at == nullptr) break;
        field = {{text.begin, at}, false};
        if (indexFromOne >= kIndexLimit || field.text.size() >= kFieldLimit) return false;
        if (number == indexFromOne) return true;
        text.begin = at + separator.size();
    }
    field = {text, true};
    return !text.empty();
}

} // namespace mainControl

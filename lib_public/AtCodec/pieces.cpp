#include "pieces.h"

namespace mainControl {

namespace {

constexpr std::int32_t kEntries = 100;
constexpr std::int32_t kIndexLimit = 100;

} // namespace

const char *Pieces::nextSeparator()
{
    while (const char *const place = places_.next()) {
        if (separator_.size() == 1 || Span{place, rest_.end}.startsWith(separator_)) return place;
    }
    return nullptr;
}

bool Pieces::next(Span &piece)
{
    if (taken_ < 0 || taken_ >= kEntries || isTooLong_) return false;
    if (const char *const at = nextSeparator()) {
        piece = {rest_.begin, at};
        isTooLong_ = piece.size() >= kFieldLimit;
        if (isTooLong_) return false;
        rest_.begin = at + separator_.size();
    } else {
        // A full last entry is ended by the first byte of the one behind it; behind the list there is none.
        piece = rest_.atMost(taken_ + 1 < kEntries ? kFieldLimit : kFieldLimit - 1);
        if (piece.empty()) return false;
        rest_.begin = rest_.end;
    }
    ++taken_;
    return true;
}

void Lines::keep(Span piece)
{
    std::memcpy(line_, piece.begin, piece.size());
    line_[piece.size()] = '\0';
}

char *Lines::next()
{
    Span piece{};
    if (!pieces_.next(piece)) return nullptr;
    keep(piece);
    return line_;
}

bool findField(Span text, std::int32_t indexFromOne, Span separator, Field &field)
{
    for (std::int32_t number = 1; !separator.empty(); ++number) {
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

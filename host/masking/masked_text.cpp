#include "host/masking/masked_text.h"

#include <cctype>

#include "host/at/command_line.h"
#include "host/at/text.h"

namespace host::masking {
namespace {

/** What stands between values, which a masked text keeps. */
constexpr std::string_view kSeparators = "\", \t\r\n";

} // namespace

Stretch MaskedText::placeOf(std::string_view part) const
{
    const auto begin = static_cast<size_t>(part.data() - text_.data());
    return {begin, begin + part.size()};
}

void MaskedText::hide(Kind kind, Stretch stretch)
{
    if (!hides(kind)) return;
    for (size_t i = stretch.begin; i < stretch.end; ++i)
        if (!isOneOf(text_[i], kSeparators)) result_[i] = '*';
}

void MaskedText::hideDigits(Kind kind, Stretch stretch)
{
    if (!hides(kind)) return;
    for (size_t i = stretch.begin; i < stretch.end; ++i)
        if (isDigit(text_[i])) result_[i] = '*';
}

void MaskedText::hideArguments(const at::Range &range, Stretch arguments, std::string_view separators)
{
    if (!hides(range.kind)) return;
    size_t firstHidden = arguments.end;
    Stretch rest = arguments;
    for (int number = 1; number <= range.last; ++number) {
        const Stretch argument = argumentAt(text_, rest);
        if (range.has(number) && (!range.sparesWords || looksPrivate(at(argument)))) {
            if (isInHiddenEnd(argument.begin)) return;
            hide(range.kind, argument);
            firstHidden = std::min(firstHidden, argument.begin);
            if (argument.end == rest.end) hiddenEnd_ = {range.sparesWords ? argument.begin : firstHidden, rest.end};
        }
        if (argument.end >= rest.end || !isOneOf(text_[argument.end], separators)) return;
        rest.begin = argument.end + 1;
    }
}

Stretch argumentAt(std::string_view text, Stretch rest)
{
    const size_t end = rest.end;
    text = text.substr(0, end);
    const size_t begin = at::skip(text, at::kBlanks, rest.begin);
    if (begin < end && text[begin] == '"') {
        const size_t quote = text.find('"', begin + 1);
        if (quote >= end) return {begin, end};
        const size_t next = at::skip(text, at::kBlanks, quote + 1);
        return {begin, next == end || isOneOf(text[next], ",;") ? next : end};
    }
    return {begin, std::min(text.find(',', begin), end)};
}

bool looksPrivate(std::string_view argument)
{
    constexpr ptrdiff_t kFewestDigits = 4;
    constexpr ptrdiff_t kFewestLetters = 3; // more than the name of a lock, such as "SC"
    const auto isLetter = [](unsigned char character) { return std::isalnum(character) != 0 || character >= 0x80; };
    if (std::count_if(argument.begin(), argument.end(), isDigit) >= kFewestDigits) return true;
    return isOneOf('"', argument) && std::count_if(argument.begin(), argument.end(), isLetter) >= kFewestLetters;
}

} // namespace host::masking

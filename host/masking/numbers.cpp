#include "host/masking/numbers.h"

#include <cctype>

#include "host/at/command_line.h"
#include "host/at/text.h"

namespace host::masking {
namespace {

constexpr size_t kShortestIdentity = 14; // digits: an IMEI without its check digit
constexpr size_t kMostFilling = 2;       // digits F that fill up an ICCID or IMSI

bool isHexDigit(char character)
{
    return std::isxdigit(static_cast<unsigned char>(character)) != 0;
}

/** Of digits only, within something longer. */
void hideLongRuns(MaskedText &masked, Stretch stretch)
{
    for (size_t from = stretch.begin; from < stretch.end;) {
        const size_t to = std::min(at::skip(masked.text(), kDigits, from), stretch.end);
        if (to - from >= kShortestIdentity) masked.hide(Kind::Identity, {from, to});
        from = to + 1;
    }
}

} // namespace

void hideDialledCodes(MaskedText &masked)
{
    const std::string_view text = masked.text();
    for (auto code = at::findDialledCode(text, 0); code; code = at::findDialledCode(text, code->end)) {
        const Stretch place{code->begin, code->end};
        if (code->changesSecrets)
            masked.hide(Kind::Secret, place);
        else
            masked.hideDigits(Kind::Secret, place);
    }
}

void hideLongNumbers(MaskedText &masked)
{
    const std::string_view text = masked.text();
    for (size_t at = 0; at < text.size();) {
        if (!isHexDigit(text[at])) {
            ++at;
            continue;
        }
        const size_t begin = at;
        size_t digits = 0;
        size_t filling = 0;
        for (; at < text.size() && isHexDigit(text[at]); ++at) {
            digits += isDigit(text[at]) ? 1 : 0;
            filling += isOneOf(text[at], "Ff") ? 1 : 0;
        }
        const bool isFilled = digits + filling == at - begin && filling <= kMostFilling;
        if (!isFilled)
            hideLongRuns(masked, {begin, at});
        else if (at - begin >= kShortestIdentity)
            masked.hide(Kind::Identity, {begin, at});
    }
}

void hidePhoneNumbers(MaskedText &masked)
{
    const std::string_view text = masked.text();
    for (size_t quote = text.find('"'); quote < text.size(); quote = text.find('"', quote + 1)) {
        const size_t begin = quote + 1;
        const size_t from = begin < text.size() && text[begin] == '+' ? begin + 1 : begin;
        const size_t end = at::skip(text, "0123456789*#", from);
        if (end - from < 3 || end == text.size() || text[end] != '"') continue;
        const size_t comma = at::skip(text, at::kBlanks, end + 1);
        if (comma == text.size() || text[comma] != ',') continue;
        const size_t type = at::skip(text, at::kBlanks, comma + 1);
        const size_t typeEnd = at::skip(text, kDigits, type);
        if (typeEnd - type == 3 && isOneOf(text[type], "12")) masked.hide(Kind::Identity, {begin, end});
    }
}

} // namespace host::masking

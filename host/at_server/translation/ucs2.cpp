#include "host/at_server/translation/ucs2.h"

#include <charconv>

#include "host/at_server/translation/fields.h"

namespace host::at_server {
namespace {

constexpr size_t kDigits = 4;

/** A character of text; half of a pair, a control character or a quote, which would end its field, is none. */
bool isOfText(unsigned character)
{
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    const bool isControl = character < ' ' || (character >= 0x7F && character < 0xA0);
    return !isSurrogate && !isControl && character != '"' && character < 0xFFFE;
}

void appendUtf8(unsigned character, std::string &text)
{
    const auto byte = [&](unsigned value) { text += static_cast<char>(value); };
    if (character < 0x80) {
        byte(character);
    } else if (character < 0x800) {
        byte(0xC0 | character >> 6);
        byte(0x80 | (character & 0x3F));
    } else {
        byte(0xE0 | character >> 12);
        byte(0x80 | (character >> 6 & 0x3F));
        byte(0x80 | (character & 0x3F));
    }
}

} // namespace

std::optional<std::string> textOfUcs2(std::string_view digits)
{
    constexpr int kHexadecimal = 16;
    if (digits.size() % kDigits != 0 || !isHexadecimal(digits)) return std::nullopt;
    std::string text;
    for (; !digits.empty(); digits.remove_prefix(kDigits)) {
        unsigned character = 0;
        std::from_chars(digits.data(), digits.data() + kDigits, character, kHexadecimal);
        if (!isOfText(character)) return std::nullopt;
        appendUtf8(character, text);
    }
    return text;
}

} // namespace host::at_server

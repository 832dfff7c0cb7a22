// CODE_Usc2orGsm7ToAscDecode() and CODE_InvertNumbers() of mainControl/host.h. Neither needs memory of its own.
//
// The decoder takes a name as the files of a SIM hold it (3GPP TS 31.102 annex A): octets of the GSM default alphabet, or
// UCS-2 behind 80, 81 or 82. Modems also give plain UCS-2, which nothing marks. A text is taken for that if it consists of
// whole pairs and either has an octet that is in no GSM text, or looks like an alphabet: each pair begins with an octet
// below 08 (Latin to Arabic), or with 20 or 21 (punctuation and signs). FF fills up what is not used. The result is UTF-8
// of at most three bytes for two hexadecimal digits, and a terminator.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

#include <mainControl/host.h>

#include "host/text_codec/gsm_alphabet.h"

namespace {

constexpr int kDecoded = 1;
constexpr int kNotDecoded = 0;
constexpr int kNotInverted = -1;
constexpr uint8_t kFilling = 0xFF;
constexpr char32_t kReplacement = 0xFFFD;

int valueOf(char digit)
{
    if (digit >= '0' && digit <= '9') return digit - '0';
    if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    return -1;
}

/** Whole octets in hexadecimal digits. */
bool isHexadecimal(std::string_view text)
{
    return text.size() % 2 == 0 && std::all_of(text.begin(), text.end(), [](char c) { return valueOf(c) >= 0; });
}

/** Octets behind their hexadecimal digits. */
class Octets {
  public:
    explicit Octets(std::string_view digits) : digits_(digits) {}

    size_t size() const { return digits_.size() / 2; }
    uint8_t operator[](size_t index) const
    {
        return static_cast<uint8_t>(valueOf(digits_[2 * index]) << 4 | valueOf(digits_[2 * index + 1]));
    }
    char16_t pairAt(size_t index) const { return static_cast<char16_t>((*this)[index] << 8 | (*this)[index + 1]); }
    Octets from(size_t index) const { return Octets(digits_.substr(2 * index)); }
    Octets first(size_t count) const { return Octets(digits_.substr(0, 2 * count)); }
    /** How many are left without the filling at the end. */
    size_t used() const
    {
        size_t count = size();
        while (count > 0 && (*this)[count - 1] == kFilling)
            --count;
        return count;
    }

  private:
    std::string_view digits_;
};

/** Writes UTF-8. */
class Writer {
  public:
    explicit Writer(char *destination) : next_(destination) {}

    void put(char32_t character)
    {
        if (character < 0x80) return byte(character);
        if (character < 0x800) {
            byte(0xC0 | character >> 6);
        } else if (character < 0x10000) {
            byte(0xE0 | character >> 12);
            byte(0x80 | (character >> 6 & 0x3F));
        } else {
            byte(0xF0 | character >> 18);
            byte(0x80 | (character >> 12 & 0x3F));
            byte(0x80 | (character >> 6 & 0x3F));
        }
        byte(0x80 | (character & 0x3F));
    }
    void end() { *next_ = '\0'; }

  private:
    void byte(char32_t value) { *next_++ = static_cast<char>(value); }

    char *next_;
};

bool isHighSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(char16_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/** UCS-2 up to its filling or a NUL; what modems give beyond it, in pairs of surrogates, as well. */
bool decodeUcs2(Octets text, Writer &writer)
{
    size_t at = 0;
    for (; at + 1 < text.size(); at += 2) {
        const char16_t unit = text.pairAt(at);
        if (unit == 0xFFFF || unit == 0) return true;
        if (isHighSurrogate(unit) && at + 3 < text.size() && isLowSurrogate(text.pairAt(at + 2))) {
            at += 2;
            writer.put(0x10000U + ((unit & 0x3FFU) << 10) + (text.pairAt(at) & 0x3FFU));
        } else {
            writer.put(isHighSurrogate(unit) || isLowSurrogate(unit) ? kReplacement : unit);
        }
    }
    return at == text.size() || text[at] == kFilling;
}

/** One character of the GSM alphabet, which an escape makes two octets long.
 *  @return how many octets it took */
size_t decodeGsm(Octets text, size_t at, Writer &writer)
{
    const bool isEscaped = text[at] == host::kGsmEscape && at + 1 < text.size() && text[at + 1] < 0x80;
    writer.put(isEscaped ? host::gsmExtension(text[at + 1]) : host::gsmCharacter(text[at]));
    return isEscaped ? 2 : 1;
}

/** GSM characters and, with the upper bit set, characters counted from a base: the forms 81 and 82. */
bool decodeWithBase(Octets text, char16_t base, Writer &writer)
{
    for (size_t at = 0; at < text.size();) {
        if (text[at] < 0x80) {
            at += decodeGsm(text, at, writer);
            continue;
        }
        const auto character = static_cast<char16_t>(base + (text[at++] & 0x7F));
        if (character == 0) return true;
        writer.put(isHighSurrogate(character) || isLowSurrogate(character) ? kReplacement : character);
    }
    return true;
}

bool looksLikeUcs2(Octets text)
{
    const size_t used = text.used();
    const size_t whole = std::min(used + used % 2, text.size()); // a character may end in FF
    if (whole % 2 != 0) return false;
    bool hasForeign = false;
    bool hasLetter = false;
    bool isAlphabetic = true;
    for (size_t at = 0; at < used; ++at) {
        const uint8_t octet = text[at];
        hasForeign = hasForeign || octet > 0x7F;
        if (at % 2 != 0) continue;
        hasLetter = hasLetter || octet < 0x08;
        isAlphabetic = isAlphabetic && (octet < 0x08 || octet == 0x20 || octet == 0x21);
    }
    return hasForeign || (hasLetter && isAlphabetic);
}

bool decodeGsmText(Octets text, Writer &writer)
{
    for (size_t at = 0; at < text.size();) {
        if (text[at] > 0x7F) return false;
        at += decodeGsm(text, at, writer);
    }
    return true;
}

bool decode(Octets text, Writer &writer)
{
    const uint8_t form = text.size() > 0 ? text[0] : kFilling;
    if (form == 0x80) return decodeUcs2(text.from(1), writer);
    if (form == 0x81 || form == 0x82) {
        const size_t header = form == 0x81 ? 3 : 4;
        if (text.size() < header || text.size() - header < text[1]) return false;
        const auto base = form == 0x81 ? static_cast<char16_t>(text[2] << 7) : text.pairAt(2);
        return decodeWithBase(text.from(header).first(text[1]), base, writer);
    }
    if (looksLikeUcs2(text)) return decodeUcs2(text, writer);
    return decodeGsmText(text.first(text.used()), writer);
}

} // namespace

int CODE_Usc2orGsm7ToAscDecode(const char *sourceHex, char *destination, int32_t)
{
    if (sourceHex == nullptr || destination == nullptr) return kNotDecoded;
    Writer writer(destination);
    const bool isDecoded = isHexadecimal(sourceHex) && decode(Octets(sourceHex), writer);
    if (isDecoded)
        writer.end();
    else
        *destination = '\0';
    return isDecoded ? kDecoded : kNotDecoded;
}

int CODE_InvertNumbers(const char *source, char *destination, int32_t sourceLength)
{
    if (source == nullptr || destination == nullptr || sourceLength < 0) return kNotInverted;
    const auto length = static_cast<size_t>(sourceLength);
    if (strnlen(source, length) != length || !isHexadecimal({source, length})) return kNotInverted;
    for (size_t i = 0; i < length; i += 2) { // both digits are read first, so that a text can be inverted in its place
        const char first = source[i];
        destination[i] = source[i + 1];
        destination[i + 1] = first;
    }
    destination[length] = '\0';
    return 0;
}

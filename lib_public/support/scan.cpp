#include "lib_public/support/scan.h"

#include <cstdlib>
#include <cstring>

#include "lib_public/support/characters.h"
#include "lib_public/support/fast_search/copy_short.h"

namespace mainControl {
namespace {

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

const char *skipBlanks(const char *text)
{
    while (isOfKind(*text, kBlank))
        ++text;
    return text;
}

/** Digits as a number. On every machine it keeps the low 32 bits of a number of 64 bits, which ends at the limits of those:
 *  what sscanf() does where a long has 64. */
[[gnu::noinline]] uint32_t lowBitsOf(const char *digits, bool isNegative)
{
    uint64_t number = 0;
    const uint64_t limit = static_cast<uint64_t>(INT64_MAX) + (isNegative ? 1 : 0);
    for (; isDigit(*digits); ++digits) {
        const auto digit = static_cast<uint64_t>(*digits - '0');
        number = number <= (limit - digit) / 10 ? number * 10 + digit : limit;
    }
    return static_cast<uint32_t>(number);
}

/** Reads an integer.
 *  @return behind the number, or nullptr if there is none */
[[gnu::always_inline]] inline const char *readNumber(const char *text, int32_t *target)
{
    constexpr ptrdiff_t kSafeDigits = 9; // so many fit 32 bits
    const bool isNegative = *text == '-';
    if (isNegative || *text == '+') ++text;
    const char *const digits = text;
    uint32_t low = 0;
    for (; isDigit(*text); ++text)
        low = low * 10 + static_cast<uint32_t>(*text - '0');
    if (text == digits) return nullptr;
    if (text - digits > kSafeDigits) low = lowBitsOf(digits, isNegative);
    if (target != nullptr) *target = static_cast<int32_t>(isNegative ? 0 - low : low);
    return text;
}

/** Reads a number with a fraction.
 *  @return behind the number, or nullptr if there is none */
const char *readFraction(const char *text, float *target)
{
    char *end = nullptr;
    const float number = std::strtof(text, &end);
    if (end == text) return nullptr;
    *target = number;
    return end;
}

/** Reads a token.
 *  @return behind the token, or nullptr if there is none */
const char *readToken(const char *text, const ScanTarget &target)
{
    const char *end = text;
    while (!isOfKind(*end, kEndsToken))
        ++end;
    auto length = static_cast<size_t>(end - text);
    if (target.width != 0 && length > target.width) length = target.width;
    if (length == 0) return nullptr;
    const size_t kept = length < target.room ? length : target.room - 1;
    auto *const field = static_cast<char *>(target.address);
    *copyShort(field, {text, text + kept}) = '\0';
    return text + length;
}

/** Reads a number, or a text that is not marked where its line is rewritten.
 *  @return behind the value, or nullptr if there is none */
[[gnu::always_inline]] inline const char *readPlainValue(const char *text, const ScanTarget &target)
{
    if (target.conversion == 'd') return readNumber(text, static_cast<int32_t *>(target.address));
    if (target.conversion != 's' || target.width != 0) return nullptr;
    const char *end = text;
    while (!isOfKind(*end, kEndsPlainText))
        ++end;
    const auto length = static_cast<size_t>(end - text);
    if (length == 0 || length >= target.room) return nullptr;
    auto *const field = static_cast<char *>(target.address);
    std::memcpy(field, text, length);
    field[length] = '\0';
    return end;
}

[[gnu::always_inline]] inline const char *readValue(const char *text, const ScanTarget &target)
{
    text = skipBlanks(text);
    switch (target.conversion) {
    case 'd':
        return readNumber(text, static_cast<int32_t *>(target.address));
    case 'f':
        return readFraction(text, static_cast<float *>(target.address));
    default:
        return readToken(text, target);
    }
}

} // namespace

const char *readValues(const char *text, const ScanTarget *targets, size_t count)
{
    for (; count != 0 && text != nullptr; --count)
        text = readValue(text, *targets++);
    return text;
}

bool readPlainValues(const char *line, const ScanTarget *targets, size_t count)
{
    for (const char *at = line;; ++at) {
        const bool isQuoted = *at == '"';
        at = readPlainValue(isQuoted ? at + 1 : at, *targets++);
        if (at == nullptr || (isQuoted && *at++ != '"')) return false;
        if (--count == 0) return *at == ',' || *at == '\0';
        if (*at != ',') return false;
    }
}

void scanInto(const char *text, const char *format, const ScanTarget *targets)
{
    while (const char directive = *format++) {
        if (directive == '%') {
            text = readValues(text, targets++, 1);
            if (text == nullptr) return;
            while (isDigit(*format))
                ++format;
            ++format; // over the conversion, which the target knows
        } else if (directive == ' ') {
            text = skipBlanks(text);
        } else if (*text++ != directive) {
            return;
        }
    }
}

} // namespace mainControl

#include "scan.h"

#include <cstdlib>
#include <cstring>

namespace mainControl {
namespace {

bool isBlank(char character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

const char *skipBlanks(const char *text)
{
    while (isBlank(*text))
        ++text;
    return text;
}

/// Reads an integer. Like the C library on the common machines, it keeps the low 32 bits of a number of 64 bits, which
/// ends at the limits of those.
/// @return behind the number, or nullptr if there is none
const char *readNumber(const char *text, std::int32_t *target)
{
    const bool isNegative = *text == '-';
    if (*text == '-' || *text == '+') ++text;
    if (!isDigit(*text)) return nullptr;
    const std::uint64_t limit = static_cast<std::uint64_t>(INT64_MAX) + (isNegative ? 1 : 0);
    std::uint64_t number = 0;
    for (; isDigit(*text); ++text) {
        const auto digit = static_cast<std::uint64_t>(*text - '0');
        number = number <= (limit - digit) / 10 ? number * 10 + digit : limit;
    }
    if (target != nullptr) *target = static_cast<std::int32_t>(isNegative ? 0 - number : number);
    return text;
}

/// Reads a number with a fraction.
/// @return behind the number, or nullptr if there is none
const char *readFraction(const char *text, float *target)
{
    char *end = nullptr;
    const float number = std::strtof(text, &end);
    if (end == text) return nullptr;
    *target = number;
    return end;
}

/// Reads a token of at most `width` characters.
/// @return behind the token, or nullptr if there is none
const char *readToken(const char *text, std::size_t width, const ScanTarget &target)
{
    const char *end = text;
    while (*end != '\0' && !isBlank(*end) && static_cast<std::size_t>(end - text) < width)
        ++end;
    if (end == text) return nullptr;
    const auto length = static_cast<std::size_t>(end - text);
    const std::size_t kept = length < target.room ? length : target.room - 1;
    auto *const field = static_cast<char *>(target.address);
    std::memcpy(field, text, kept);
    field[kept] = '\0';
    return end;
}

} // namespace

void scanInto(const char *text, const char *format, const ScanTarget *targets)
{
    for (; *format != '\0'; ++format) {
        if (isBlank(*format)) {
            text = skipBlanks(text);
            continue;
        }
        if (*format != '%') {
            if (*text++ != *format) return;
            continue;
        }
        std::size_t width = 0;
        while (isDigit(*++format))
            width = width * 10 + static_cast<std::size_t>(*format - '0');
        text = skipBlanks(text);
        switch (*format) {
        case 'd':
            text = readNumber(text, static_cast<std::int32_t *>(targets->address));
            break;
        case 'f':
            text = readFraction(text, static_cast<float *>(targets->address));
            break;
        default:
            text = readToken(text, width != 0 ? width : static_cast<std::size_t>(-1), *targets);
            break;
        }
        if (text == nullptr) return;
        ++targets;
    }
}

} // namespace mainControl

#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

/// Reading values out of a text with the conversions of sscanf() that replies need: "%d", "%s" and "%10s", "%f", blanks
/// and literals. Unlike there, a text never runs over its room, and the compiler checks each format against its targets.
namespace mainControl {

/// Where a "%s" goes. A longer token is read whole, and the room keeps what fits with its terminator.
struct TextTarget {
    char *text;
    std::size_t room;
};

/// The field of a record.
template <std::size_t Size>
TextTarget into(char (&field)[Size])
{
    return {field, Size};
}

/// One target of any kind; a nullptr takes its value and drops it.
struct ScanTarget {
    char conversion;
    void *address;
    std::size_t room;
};
constexpr ScanTarget scanTarget(std::int32_t *number)
{
    return {'d', number, 0};
}
constexpr ScanTarget scanTarget(float *number)
{
    return {'f', number, 0};
}
constexpr ScanTarget scanTarget(TextTarget text)
{
    return {'s', text.text, text.room};
}

/// A number to be read and dropped.
constexpr std::int32_t *kDropped = nullptr;

void formatDoesNotFitItsTargets(); // not constexpr: evaluating it is the error

/// A format that has been checked against the kinds of its targets.
template <typename... Targets>
struct ScanFormat {
    const char *text;

    // NOLINTNEXTLINE(google-explicit-constructor): a literal is what it is made from
    consteval ScanFormat(const char *format) : text(format)
    {
        constexpr char kExpected[] = {scanTarget(Targets{}).conversion..., '\0'};
        const char *expected = kExpected;
        for (; *format != '\0'; ++format) {
            if (*format != '%') continue;
            do
                ++format;
            while (*format >= '0' && *format <= '9');
            if (*expected == '\0' || *format != *expected++) formatDoesNotFitItsTargets();
        }
        if (*expected != '\0') formatDoesNotFitItsTargets();
    }
};

void scanInto(const char *text, const char *format, const ScanTarget *targets);

/// Reads values until one is missing; the targets from there on are left alone.
template <typename... Targets>
void scan(const char *text, std::type_identity_t<ScanFormat<Targets...>> format, Targets... targets)
{
    const ScanTarget all[] = {scanTarget(targets)...};
    scanInto(text, format.text, all);
}

} // namespace mainControl

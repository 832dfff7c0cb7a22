#ifndef LIB_PUBLIC_SUPPORT_SCAN_H
#define LIB_PUBLIC_SUPPORT_SCAN_H

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

/** Reading values out of a text with the conversions of sscanf() that replies need: "%d", "%s" and "%10s", "%f", blanks
 *  and literals. Unlike there, a text never runs over its room, and the compiler checks each format against its
 *  targets. */
namespace mainControl {

/** Where a "%s" goes. A longer token is read whole, and the room keeps what fits with its terminator. */
struct TextTarget {
    char *text;
    size_t room;
};

/** The field of a record. */
template <size_t Size>
TextTarget into(char (&field)[Size])
{
    return {field, Size};
}

/** One target of any kind; a nullptr takes its value and drops it. */
struct ScanTarget {
    char conversion;
    uint8_t width; ///< at most so many characters of a text; 0 for any number
    void *address;
    size_t room;
};
constexpr ScanTarget scanTarget(int32_t *number, uint8_t width = 0)
{
    return {'d', width, number, 0};
}
constexpr ScanTarget scanTarget(float *number, uint8_t width = 0)
{
    return {'f', width, number, 0};
}
constexpr ScanTarget scanTarget(TextTarget text, uint8_t width = 0)
{
    return {'s', width, text.text, text.room};
}

/** A number to be read and dropped. */
constexpr int32_t *kDropped = nullptr;

void formatDoesNotFitItsTargets(); // not constexpr: evaluating it is the error

/** A format that has been checked against the kinds of its targets, and read. */
template <typename... Targets>
struct ScanFormat {
    const char *text;
    bool hasLiterals = false; ///< it is more than values and blanks
    uint8_t widths[sizeof...(Targets)]{};

    // NOLINTNEXTLINE(google-explicit-constructor): a literal is what it is made from
    consteval ScanFormat(const char *format) : text(format)
    {
        constexpr char kExpected[] = {scanTarget(Targets{}).conversion..., '\0'};
        size_t value = 0;
        for (; *format != '\0'; ++format) {
            if (*format != '%') {
                if (*format != ' ') hasLiterals = true;
                continue;
            }
            uint32_t width = 0;
            for (++format; *format >= '0' && *format <= '9'; ++format)
                width = width * 10 + static_cast<uint32_t>(*format - '0');
            if (width > UINT8_MAX || kExpected[value] == '\0' || *format != kExpected[value])
                formatDoesNotFitItsTargets();
            widths[value++] = static_cast<uint8_t>(width);
        }
        if (kExpected[value] != '\0') formatDoesNotFitItsTargets();
    }
};

/** Reads values with or without blanks between them.
 *  @return behind the last one, or nullptr if one is missing */
const char *readValues(const char *text, const ScanTarget *targets, size_t count);
/** Reads the values of a line with commas between them, plain or in quotes, where each is all of its field, none is missing
 *  and no text is one that a rewritten line marks or that is longer than its room.
 *  @return false if the line is not of that kind; the values in front of what is not are read by then */
bool readPlainValues(const char *line, const ScanTarget *targets, size_t count);
/** Reads values with literals among them. */
void scanInto(const char *text, const char *format, const ScanTarget *targets);

template <typename... Targets, size_t... Index>
[[gnu::always_inline]] inline void scanBy(const char *text, ScanFormat<Targets...> format,
                                          std::index_sequence<Index...> /*all*/, Targets... targets)
{
    const ScanTarget all[] = {scanTarget(targets, format.widths[Index])...};
    if (format.hasLiterals)
        scanInto(text, format.text, all);
    else
        readValues(text, all, sizeof...(Targets));
}

/** Reads values until one is missing; the targets from there on are left alone. */
template <typename... Targets>
[[gnu::always_inline]] inline void scan(const char *text, std::type_identity_t<ScanFormat<Targets...>> format,
                                        Targets... targets)
{
    scanBy<Targets...>(text, format, std::index_sequence_for<Targets...>{}, targets...);
}

} // namespace mainControl

#endif

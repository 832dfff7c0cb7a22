#pragma once

#include <cstddef>
#include <cstdint>

#include <mainControl/host.h>
#include <mainControl/result_codes.h>

/// The shapes of all log lines. Formats are joined at compile time, so that the host gets the one literal that a reader
/// of the log can search for.
namespace mainControl {

/// A literal as a template argument.
template <std::size_t Size>
struct Literal {
    char text[Size]{};

    // NOLINTNEXTLINE(google-explicit-constructor): a literal is what it is made from
    consteval Literal(const char (&literal)[Size])
    {
        for (std::size_t i = 0; i < Size; ++i)
            text[i] = literal[i];
    }
    consteval Literal() = default;
};

template <std::size_t A, std::size_t B>
consteval Literal<A + B - 1> operator+(const Literal<A> &a, const Literal<B> &b)
{
    Literal<A + B - 1> joined;
    for (std::size_t i = 0; i + 1 < A; ++i)
        joined.text[i] = a.text[i];
    for (std::size_t i = 0; i < B; ++i)
        joined.text[A - 1 + i] = b.text[i];
    return joined;
}

/// What a "%s", a "%d" and a "%f" take. A pointer that is no text is logged as the low 32 bits of its address.
inline const char *logged(const char *text)
{
    return text != nullptr ? text : "(null)";
}
inline std::int32_t logged(std::int32_t number)
{
    return number;
}
inline std::int32_t logged(const void *address)
{
    return static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(address));
}
inline double logged(float number)
{
    return static_cast<double>(number);
}

consteval char conversionFor(const char *)
{
    return 's';
}
consteval char conversionFor(std::int32_t)
{
    return 'd';
}
consteval char conversionFor(double)
{
    return 'f';
}
template <typename Value>
inline constexpr char kConversion = conversionFor(decltype(logged(Value{})){});

/// Whether a format's conversions are exactly those that the values take.
template <typename... Values>
consteval bool fits(const char *format)
{
    constexpr char kExpected[] = {kConversion<Values>..., '\0'};
    std::size_t next = 0;
    for (; *format != '\0'; ++format) {
        if (*format != '%') continue;
        if (*++format != kExpected[next] || *format == '\0') return false;
        ++next;
    }
    return kExpected[next] == '\0';
}

/// The line of the source that logs, taken where the call is written.
struct SourceLine {
    std::int32_t number;
    static constexpr SourceLine here(std::int32_t number = __builtin_LINE()) { return {number}; }
};

/// The lines of one source module.
template <Literal Module>
struct ModuleLog {
    template <Literal Format>
    static void line(SourceLine source = SourceLine::here())
    {
        lineOf<Format>(source);
    }
    template <Literal Format, typename A>
    static void line(A a, SourceLine source = SourceLine::here())
    {
        lineOf<Format>(source, a);
    }
    template <Literal Format, typename A, typename B>
    static void line(A a, B b, SourceLine source = SourceLine::here())
    {
        lineOf<Format>(source, a, b);
    }

    /// A line with any number of values. The source line comes first here, since nothing can stand behind the values.
    template <Literal Format, typename... Values>
    static void lineOf(SourceLine source, Values... values)
    {
        static_assert(fits<Values...>(Format.text), "the format and its values do not agree");
        write(Format.text, source.number, logged(values)...);
    }

  private:
    /// The call of the host stands once for each kind of line, not once for each of the hundreds of lines.
    template <typename... Logged>
    [[gnu::noinline]] static void write(const char *format, std::int32_t source, Logged... values)
    {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security" // checked above
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
        kora_log_append(Module.text, source, "kora_t9lb.log", format, values...);
#pragma GCC diagnostic pop
    }
};

template <ResultCode>
inline constexpr auto kCodeName = nullptr;
template <>
inline constexpr Literal kCodeName<UNI_ERROR_SUCCESS> = "UNI_ERROR_SUCCESS";
template <>
inline constexpr Literal kCodeName<UNI_ERROR_FALSE> = "UNI_ERROR_FALSE";
template <>
inline constexpr Literal kCodeName<UNI_ERROR_INVALID_PARAMETER> = "UNI_ERROR_INVALID_PARAMETER";
template <>
inline constexpr Literal kCodeName<UNI_ERROR_STRING_SIZE_TOO_SMALL> = "UNI_ERROR_STRING_SIZE_TOO_SMALL";
template <>
inline constexpr Literal kCodeName<UNI_ERROR_COMM_FAILURE> = "UNI_ERROR_COMM_FAILURE";

/// ":%s", ":%d" or ":%f".
template <typename Value>
consteval Literal<4> conversionText()
{
    Literal<4> text = ":%?";
    text.text[2] = kConversion<Value>;
    return text;
}

/// The lines of one function of the API: entry, arguments, outputs, exit.
template <Literal Function, Literal Module = "lib_mainControl">
struct ApiLog : ModuleLog<Module> {
    using ModuleLog<Module>::line;

    static void in(SourceLine source = SourceLine::here()) { ApiLog::template line<Function + Literal("-in")>(source); }

    template <Literal Name, typename Value>
    static void in(Value value, SourceLine source = SourceLine::here())
    {
        ApiLog::template line<Function + Literal("-in-") + Name + conversionText<Value>()>(value, source);
    }

    template <Literal Name, typename Value>
    static void out(Value value, SourceLine source = SourceLine::here())
    {
        ApiLog::template line<Function + Literal("-out-") + Name + conversionText<Value>()>(value, source);
    }

    /// Logs the exit and is the code to return.
    template <ResultCode Code>
    static std::uint32_t ret(SourceLine source = SourceLine::here())
    {
        ApiLog::template line<Function + Literal("-return ") + kCodeName<Code>>(source);
        return Code;
    }
    template <ResultCode Code, Literal Reason>
    static std::uint32_t ret(SourceLine source = SourceLine::here())
    {
        ApiLog::template line<Function + Literal("-return ") + kCodeName<Code> + Literal("-") + Reason>(source);
        return Code;
    }

    /// The exit of a function that hands on what another one came to: success, or failure with a reason.
    static std::uint32_t outcome(std::uint32_t code, SourceLine source = SourceLine::here())
    {
        return code == UNI_ERROR_SUCCESS ? ret<UNI_ERROR_SUCCESS>(source) : ret<UNI_ERROR_FALSE>(source);
    }
    template <Literal Reason>
    static std::uint32_t outcome(std::uint32_t code, SourceLine source = SourceLine::here())
    {
        return code == UNI_ERROR_SUCCESS ? ret<UNI_ERROR_SUCCESS>(source) : ret<UNI_ERROR_FALSE, Reason>(source);
    }
};

} // namespace mainControl

#ifndef LIB_PUBLIC_SUPPORT_LOG_H
#define LIB_PUBLIC_SUPPORT_LOG_H

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include <mainControl/host.h>
#include <mainControl/result_codes.h>

#include "lib_public/support/outcome.h"

/** The shapes of all log lines. Formats are joined at compile time, so that the host gets the one literal that a reader
 *  of the log can search for. */
namespace mainControl {

/** A literal as a template argument. */
template <size_t Size>
struct Literal {
    char text[Size]{};

    // NOLINTNEXTLINE(google-explicit-constructor): a literal is what it is made from
    consteval Literal(const char (&literal)[Size])
    {
        for (size_t i = 0; i < Size; ++i)
            text[i] = literal[i];
    }
    consteval Literal() = default;
};

template <size_t A, size_t B>
consteval Literal<A + B - 1> operator+(const Literal<A> &a, const Literal<B> &b)
{
    Literal<A + B - 1> joined;
    for (size_t i = 0; i + 1 < A; ++i)
        joined.text[i] = a.text[i];
    for (size_t i = 0; i < B; ++i)
        joined.text[A - 1 + i] = b.text[i];
    return joined;
}

/** What a "%s", a "%d" and a "%f" are made from. A pointer that is no text is logged as the low 32 bits of its
 *  address. */
inline const char *logged(const char *text)
{
    return text;
}
inline int32_t logged(int32_t number)
{
    return number;
}
inline int32_t logged(const void *address)
{
    return static_cast<int32_t>(reinterpret_cast<uintptr_t>(address));
}
inline double logged(float number)
{
    return static_cast<double>(number);
}

/** What is written where nothing is. */
template <typename Number>
Number shown(Number number)
{
    return number;
}
inline const char *shown(const char *text)
{
    return text != nullptr ? text : "(null)";
}

consteval char conversionFor(const char *)
{
    return 's';
}
consteval char conversionFor(int32_t)
{
    return 'd';
}
consteval char conversionFor(double)
{
    return 'f';
}
template <typename Value>
inline constexpr char kConversion = conversionFor(decltype(logged(Value{})){});

[[noreturn]] void formatDoesNotFitItsValues(); // not constexpr: evaluating it is the error

/** A format that has been checked against the kinds of its values, and the line of the source that it stands in. */
template <typename... Values>
struct LogFormat {
    const char *text;
    int32_t source;

    // NOLINTNEXTLINE(google-explicit-constructor): a literal is what it is made from
    consteval LogFormat(const char *format, int32_t line = __builtin_LINE()) : text(format), source(line)
    {
        constexpr char kExpected[] = {kConversion<Values>..., '\0'};
        size_t next = 0;
        for (; *format != '\0'; ++format) {
            if (*format != '%') continue;
            if (*++format == '\0' || kExpected[next] != *format) formatDoesNotFitItsValues();
            ++next;
        }
        if (kExpected[next] != '\0') formatDoesNotFitItsValues();
    }
};

/** The lines of one source module. */
template <Literal Module>
struct ModuleLog {
    template <typename... Values>
    [[gnu::always_inline]] static void line(std::type_identity_t<LogFormat<Values...>> format, Values... values)
    {
        write(format.text, format.source, logged(values)...);
    }

  protected:
    /** The call of the host stands once for each kind of line, not once for each of the hundreds of lines. */
    template <typename... Logged>
    [[gnu::noinline]] static void write(const char *format, int32_t source, Logged... values)
    {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security" // checked above
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
        kora_log_append(Module.text, source, "kora_t9lb.log", format, shown(values)...);
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

/** ":%s", ":%d" or ":%f". */
template <typename Value>
consteval Literal<4> conversionText()
{
    Literal<4> text = ":%?";
    text.text[2] = kConversion<Value>;
    return text;
}

/** The lines of one function of the API: entry, arguments, outputs, exit. Whatever they join is joined at compile
 *  time. */
template <Literal Function, Literal Module = "lib_mainControl">
struct ApiLog : ModuleLog<Module> {
    static void in(int32_t source = __builtin_LINE()) { writeJoined<Function + Literal("-in")>(source); }

    template <Literal Name, typename Value>
    static void in(Value value, int32_t source = __builtin_LINE())
    {
        writeJoined<Function + Literal("-in-") + Name + conversionText<Value>()>(source, value);
    }

    template <Literal Name, typename Value>
    static void out(Value value, int32_t source = __builtin_LINE())
    {
        writeJoined<Function + Literal("-out-") + Name + conversionText<Value>()>(source, value);
    }

    /** Logs the exit and is the code to return. */
    template <ResultCode Code>
    static uint32_t ret(int32_t source = __builtin_LINE())
    {
        writeJoined<Function + Literal("-return ") + kCodeName<Code>>(source);
        return Code;
    }
    template <ResultCode Code, Literal Reason>
    static uint32_t ret(int32_t source = __builtin_LINE())
    {
        writeJoined<Function + Literal("-return ") + kCodeName<Code> + Literal("-") + Reason>(source);
        return Code;
    }

    /** The exit of a function that returns another code than the general failure that its line tells. */
    template <Literal Reason>
    static uint32_t failure(uint32_t code, int32_t source = __builtin_LINE())
    {
        ret<UNI_ERROR_FALSE, Reason>(source);
        return code;
    }

    /** The exit of a function that hands on what another one came to: success, or failure with a reason. */
    static uint32_t outcome(uint32_t code, int32_t source = __builtin_LINE())
    {
        return code == UNI_ERROR_SUCCESS ? ret<UNI_ERROR_SUCCESS>(source) : ret<UNI_ERROR_FALSE>(source);
    }
    template <Literal Reason>
    static uint32_t outcome(uint32_t code, int32_t source = __builtin_LINE())
    {
        return code == UNI_ERROR_SUCCESS ? ret<UNI_ERROR_SUCCESS>(source) : ret<UNI_ERROR_FALSE, Reason>(source);
    }

    /** The exit of a function that sends one command, which tells apart whether that was sent. */
    static uint32_t outcome(Ending ending, int32_t source = __builtin_LINE())
    {
        if (ending == Ending::NotSent) return ret<UNI_ERROR_FALSE, "send at failed">(source);
        return ending == Ending::Ok ? ret<UNI_ERROR_SUCCESS>(source) : ret<UNI_ERROR_FALSE>(source);
    }
    /** The same where hosts are also told whether the reply was parsed. */
    static uint32_t outcomeOfSteps(Ending ending, int32_t source = __builtin_LINE())
    {
        return ending == Ending::NotParsed ? ret<UNI_ERROR_FALSE, "parse at failed">(source) : outcome(ending, source);
    }

  private:
    template <Literal Format, typename... Values>
    [[gnu::always_inline]] static void writeJoined(int32_t source, Values... values)
    {
        ApiLog::write(Format.text, source, logged(values)...);
    }
};

// The lines of steps that several functions share, for the log of the one that takes them.
template <Literal Name, Literal Function, Literal Module, typename Value>
void logIn(ApiLog<Function, Module> log, Value value, int32_t source = __builtin_LINE())
{
    log.template in<Name>(value, source);
}
template <Literal Name, Literal Function, Literal Module, typename Value>
void logOut(ApiLog<Function, Module> log, Value value, int32_t source = __builtin_LINE())
{
    log.template out<Name>(value, source);
}

} // namespace mainControl

#endif

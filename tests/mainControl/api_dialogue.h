#ifndef TESTS_MAINCONTROL_API_DIALOGUE_H
#define TESTS_MAINCONTROL_API_DIALOGUE_H

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/failures.h"
#include "tests/support/guarded_text.h"
#include "tests/support/platforms.h"
#include "tests/support/sample_text.h"
#include "tests/support/scripted_host.h"

/** A call of the API as a list of events in the order in which they are to happen: each log line of each module, and
 *  each exchange with the modem together with what the parser logs of it. */
namespace dialogue {

using scripted::kPlatforms;
using scripted::OnPlatform;
using Failure = scripted::FailureKind;

inline constexpr Failure kFailures[] = {Failure::Send,     Failure::Unparsable,   Failure::Error,  Failure::CmeError,
                                        Failure::CmsError, Failure::NotSupported, Failure::Prompt, Failure::Report};

/** What guarded outputs are filled with, and what one then reads that was not written. */
inline constexpr unsigned char kFill = 0x5a;
inline constexpr int32_t kKept = 0x5a5a5a5a;

struct Line {
    std::string module;
    std::string format;
    std::string text;
    bool isOpen = false; ///< any number may follow the text: the address of a local
};

struct Event {
    std::vector<Line> lines;
    std::string command; ///< empty for a mere log line
    int32_t timeoutMs = 0;
    std::string reply;
    bool isSent = true;
};
using Events = std::vector<Event>;

inline Events operator+(Events events, const Events &more)
{
    events.insert(events.end(), more.begin(), more.end());
    return events;
}

inline std::string textOf(int32_t number)
{
    return std::to_string(number);
}
inline std::string textOf(const std::string &text)
{
    return text;
}
/** A pointer is logged as a number, by the low half of its address. */
inline std::string textOf(const int32_t *address)
{
    return std::to_string(static_cast<int32_t>(reinterpret_cast<uintptr_t>(address) & 0xffffffffU));
}

/** Puts texts in the place of the conversions of a format. */
inline std::string rendered(std::string_view format, std::initializer_list<std::string> arguments)
{
    std::string text;
    const auto *argument = arguments.begin();
    for (size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '%') {
            text += format[i];
        } else if (argument != arguments.end()) {
            text += *argument++;
            ++i;
        }
    }
    EXPECT_EQ(argument, arguments.end()) << format;
    return text;
}

/** Where log lines come from. */
class Module {
  public:
    constexpr explicit Module(const char *name) : name_(name) {}

    /** A line of a format with its arguments: numbers, texts and pointers to numbers. */
    template <typename... Arguments>
    Event operator()(std::string_view format, const Arguments &...arguments) const
    {
        return {{{name_, std::string(format), rendered(format, {textOf(arguments)...})}}, "", 0, "", true};
    }
    /** A line that ends in an address that the caller cannot know. */
    [[nodiscard]] Event withLocal(std::string_view format) const
    {
        return {
            {{name_, std::string(format), std::string(format.substr(0, format.size() - 2)), true}}, "", 0, "", true};
    }

  private:
    const char *name_;
};

inline constexpr Module kParser{scripted::kParserModule};
inline constexpr Module kSetWrapper{scripted::kSetModule};

/** An exchange whose reply is parsed into parameters and an identifier. */
inline Event answered(std::string command, int32_t timeoutMs, const std::string &reply, const std::string &paras,
                      int32_t cmdId)
{
    Event event = {{}, std::move(command), timeoutMs, reply, true};
    for (const Event &line : {kParser("Bk_Parse_At_Res-in-%s", reply), kParser("Bk_Parse_At_Res-out-%s", paras),
                              kParser("Bk_Parse_At_Res-out-%d", cmdId)})
        event.lines.push_back(line.lines.front());
    return event;
}

/** An exchange that ends in OK, behind a line with these parameters or behind none. */
inline Event ok(std::string command, int32_t timeoutMs, const std::string &line = "", const std::string &paras = "")
{
    const std::string reply = line.empty() ? "\r\nOK\r\n" : scripted::framed({line.c_str()});
    return answered(std::move(command), timeoutMs, reply, paras, 1);
}

/** An exchange that ends in +CME ERROR with a text. */
inline Event cmeError(std::string command, int32_t timeoutMs, const std::string &text)
{
    return answered(std::move(command), timeoutMs, "\r\n+CME ERROR: " + text + "\r\n", text, 4);
}

/** An exchange that fails in one of the ways. */
inline Event failing(Failure kind, std::string command, int32_t timeoutMs)
{
    const scripted::Failure &failure = scripted::failureOf(kind);
    if (!failure.reply) return {{}, std::move(command), timeoutMs, "", false};
    if (failure.identifier != 0)
        return answered(std::move(command), timeoutMs, *failure.reply, failure.paras, failure.identifier);
    Event event = {{}, std::move(command), timeoutMs, *failure.reply, true};
    for (const Event &line : {kParser("Bk_Parse_At_Res-in-%s", *failure.reply), kParser("UNI_ERROR_BK_FAIL1")})
        event.lines.push_back(line.lines.front());
    return event;
}

/** Whether a line is the one that was expected. */
inline bool isLine(const Line &expected, const scripted::LogLine &got)
{
    if (got.module != expected.module || got.format != expected.format) return false;
    if (!expected.isOpen) return got.text == expected.text;
    const size_t length = expected.text.size();
    return got.text.compare(0, length, expected.text) == 0 && got.text.size() > length &&
           got.text.find_first_not_of("-0123456789", length) == std::string::npos;
}

/** Holds what was logged against the events: module, log file, format and rendered text of every line. */
inline void expectLog(const scripted::Host &host, const Events &events)
{
    std::vector<Line> expected;
    for (const Event &event : events)
        expected.insert(expected.end(), event.lines.begin(), event.lines.end());
    for (size_t i = 0; i < std::max(expected.size(), host.log().size()); ++i) {
        const Line wanted = i < expected.size() ? expected[i] : Line{"nothing", "", "", false};
        const scripted::LogLine got =
            i < host.log().size() ? host.log()[i] : scripted::LogLine{"nothing", "", "", "", 0};
        if (!isLine(wanted, got)) {
            ADD_FAILURE() << "log line " << i << "\n  expected " << wanted.module << " | " << wanted.format << " | "
                          << wanted.text << "\n  got      " << got.module << " | " << got.format << " | " << got.text;
            return;
        }
        EXPECT_EQ(got.file, "kora_t9lb.log");
        EXPECT_GT(got.line, 0);
    }
}

/** Puts the platform in force, plays the modem's side of the events around a call, and holds the log against all of them.
 *  @return what the call returned */
template <typename Call>
auto play(int32_t platform, const Events &events, Call call)
{
    scripted::Host host;
    for (const Event &event : events) {
        if (event.command.empty()) continue;
        if (event.isSent)
            host.expect(event.command, event.timeoutMs, event.reply);
        else
            host.expectFailing(event.command, event.timeoutMs);
    }
    const OnPlatform on(platform);
    const auto code = call();
    expectLog(host, events);
    return code;
}

/** A text that makes a command of a length, the rest of which is given. */
inline std::string argumentFor(std::string_view restOfCommand, size_t commandLength)
{
    return filled(commandLength - restOfCommand.size());
}
inline constexpr size_t kLongestCommand = 1023;

/** A function that sends one command and reads nothing but its final result. */
struct Setter {
    const char *name;
    uint32_t (*call)();
    Events entry;
    std::string command;
    int32_t timeoutMs;
    Events success;
    Events failure;
    std::vector<int32_t> platforms = kPlatforms;
};

inline void expectSetter(const Setter &setter)
{
    for (const int32_t platform : setter.platforms) {
        SCOPED_TRACE(setter.name + std::string(" on platform ") + std::to_string(platform));
        EXPECT_EQ(
            play(platform, setter.entry + Events{ok(setter.command, setter.timeoutMs)} + setter.success, setter.call),
            UNI_ERROR_SUCCESS);
        for (const Failure failure : kFailures) {
            SCOPED_TRACE(nameOf(failure));
            const Events events =
                setter.entry + Events{failing(failure, setter.command, setter.timeoutMs)} + setter.failure;
            EXPECT_EQ(play(platform, events, setter.call), UNI_ERROR_FALSE);
        }
    }
}

/** A function that sends one command and reads numbers, each into an output of its own. */
struct Reader {
    const char *name;
    uint32_t (*call)(int32_t *const *outputs);
    size_t outputs;
    Events entry;
    const char *command;
    int32_t timeoutMs;
    Events (*success)(const std::string &paras, const std::vector<int32_t> &values);
    Events (*failure)(Failure failure);
    std::vector<int32_t> platforms = kPlatforms;
};

/** A reply, its parameters, and what the outputs then hold. */
struct Reading {
    std::string reply;
    std::string paras;
    std::vector<int32_t> values;
};

/** Outputs, each with nothing behind it. */
class Outputs {
  public:
    explicit Outputs(size_t count)
    {
        for (size_t i = 0; i < count; ++i) {
            records_.push_back(std::make_unique<GuardedRecord<int32_t>>(kFill));
            pointers_.push_back(records_.back()->get());
        }
    }
    [[nodiscard]] int32_t *const *pointers() const { return pointers_.data(); }
    [[nodiscard]] std::vector<int32_t> values() const
    {
        std::vector<int32_t> values;
        for (const int32_t *pointer : pointers_)
            values.push_back(*pointer);
        return values;
    }

  private:
    std::vector<std::unique_ptr<GuardedRecord<int32_t>>> records_;
    std::vector<int32_t *> pointers_;
};

inline void expectReadings(const Reader &reader, const std::vector<Reading> &readings)
{
    for (const int32_t platform : reader.platforms) {
        for (const Reading &reading : readings) {
            SCOPED_TRACE(reader.name + std::string(" on platform ") + std::to_string(platform) + ": " + reading.paras);
            const Outputs outputs(reader.outputs);
            const Events events = reader.entry +
                                  Events{answered(reader.command, reader.timeoutMs, reading.reply, reading.paras, 1)} +
                                  reader.success(reading.paras, reading.values);
            EXPECT_EQ(play(platform, events, [&] { return reader.call(outputs.pointers()); }), UNI_ERROR_SUCCESS);
            EXPECT_EQ(outputs.values(), reading.values);
        }
    }
}

inline void expectFailures(const Reader &reader)
{
    for (const int32_t platform : reader.platforms) {
        for (const Failure failure : kFailures) {
            SCOPED_TRACE(reader.name + std::string(" on platform ") + std::to_string(platform) + ": " +
                         nameOf(failure));
            const Outputs outputs(reader.outputs);
            const Events events =
                reader.entry + Events{failing(failure, reader.command, reader.timeoutMs)} + reader.failure(failure);
            EXPECT_EQ(play(platform, events, [&] { return reader.call(outputs.pointers()); }), UNI_ERROR_FALSE);
            EXPECT_EQ(outputs.values(), std::vector<int32_t>(reader.outputs, kKept));
        }
    }
}

} // namespace dialogue

#endif

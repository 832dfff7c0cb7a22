#ifndef TESTS_SUPPORT_LOG_LINES_H
#define TESTS_SUPPORT_LOG_LINES_H

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/failures.h"
#include "tests/support/platforms.h"
#include "tests/support/scripted_host.h"

namespace scripted {

/** A command, its time-out and its reply; without a reply it cannot be sent. */
struct Exchange {
    std::string command;
    int32_t timeoutMs;
    std::optional<std::string> reply;
};
using Script = std::vector<Exchange>;

inline void play(Host &host, const Script &script)
{
    for (const Exchange &exchange : script) {
        if (exchange.reply) {
            host.expect(exchange.command, exchange.timeoutMs, *exchange.reply);
        } else {
            host.expectFailing(exchange.command, exchange.timeoutMs);
        }
    }
}

/** The script up to and with a step that fails. */
inline Script failingAt(Script script, size_t step, const Failure &failure)
{
    script.resize(step + 1);
    script[step].reply = failure.reply;
    return script;
}

/** Log lines with module, format and rendered text, in order. */
class Log {
  public:
    /** The lines of a host, of all modules or of one. */
    static Log of(const Host &host, const std::string &module = "")
    {
        Log log;
        for (const LogLine &line : host.log()) {
            EXPECT_EQ(line.file, "kora_t9lb.log") << line.text;
            EXPECT_GT(line.line, 0) << line.text;
            if (module.empty() || line.module == module) log.add(line.module, line.format, line.text);
        }
        return log;
    }

    /** A line of the API. */
    __attribute__((format(printf, 2, 3))) Log &api(const char *format, ...)
    {
        std::va_list arguments;
        va_start(arguments, format);
        addRendered(kApiModule, format, arguments);
        va_end(arguments);
        return *this;
    }
    /** A line of a network wrapper. */
    __attribute__((format(printf, 2, 3))) Log &network(const char *format, ...)
    {
        std::va_list arguments;
        va_start(arguments, format);
        addRendered(kNetworkModule, format, arguments);
        va_end(arguments);
        return *this;
    }
    /** A line of the API without arguments. */
    Log &text(const std::string &text)
    {
        add(kApiModule, text, text);
        return *this;
    }
    Log &then(const Log &log)
    {
        lines_.insert(lines_.end(), log.lines_.begin(), log.lines_.end());
        return *this;
    }

    /** What the parser logs of a reply. */
    Log &parsed(const std::string &reply, const std::string &paras, int32_t identifier = 1)
    {
        add(kParserModule, "Bk_Parse_At_Res-in-%s", "Bk_Parse_At_Res-in-" + reply);
        add(kParserModule, "Bk_Parse_At_Res-out-%s", "Bk_Parse_At_Res-out-" + paras);
        add(kParserModule, "Bk_Parse_At_Res-out-%d", "Bk_Parse_At_Res-out-" + std::to_string(identifier));
        return *this;
    }
    Log &ok() { return parsed("\r\nOK\r\n", ""); }
    Log &failed(const Failure &failure)
    {
        if (!failure.reply) return *this;
        if (failure.identifier != 0) return parsed(*failure.reply, failure.paras, failure.identifier);
        add(kParserModule, "Bk_Parse_At_Res-in-%s", "Bk_Parse_At_Res-in-" + *failure.reply);
        add(kParserModule, "UNI_ERROR_BK_FAIL1", "UNI_ERROR_BK_FAIL1");
        return *this;
    }

    friend bool operator==(const Log &left, const Log &right) { return left.lines_ == right.lines_; }
    friend std::ostream &operator<<(std::ostream &out, const Log &log)
    {
        for (const std::string &line : log.lines_)
            out << "\n  " << testing::PrintToString(line);
        return out;
    }

  private:
    void add(const std::string &module, const std::string &format, const std::string &text)
    {
        std::string line = module;
        line += " | ";
        line += format;
        line += " | ";
        line += text;
        lines_.push_back(std::move(line));
    }
    __attribute__((format(printf, 3, 0))) void addRendered(const char *module, const char *format,
                                                           std::va_list arguments)
    {
        std::va_list again;
        va_copy(again, arguments);
        const int length = std::vsnprintf(nullptr, 0, format, again);
        va_end(again);
        std::string text(static_cast<size_t>(length) + 1, '\0');
        std::vsnprintf(text.data(), text.size(), format, arguments);
        text.pop_back();
        add(module, format, text);
    }

    std::vector<std::string> lines_;
};

/** The bytes of a text in a buffer, terminator included, after another text was copied over it or nothing was. */
inline std::string copiedOver(std::string before, const std::optional<std::string> &text)
{
    before.push_back('\0');
    if (text) before.replace(0, text->size() + 1, text->c_str(), text->size() + 1);
    return before;
}

} // namespace scripted

#endif

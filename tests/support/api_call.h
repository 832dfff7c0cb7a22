#ifndef TESTS_SUPPORT_API_CALL_H
#define TESTS_SUPPORT_API_CALL_H

#include <algorithm>
#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/failures.h"
#include "tests/support/guarded_text.h"
#include "tests/support/platforms.h"
#include "tests/support/scripted_host.h"

/** One line of a log as a test expects it. */
struct Logged {
    std::string module;
    std::string format;
    std::string text;

    bool operator==(const Logged &) const = default;
};

inline std::ostream &operator<<(std::ostream &out, const Logged &line)
{
    return out << line.module << " | " << line.format << " | " << line.text;
}

/** The whole log of a call, built line by line. A line is written as its format and the values that fill it. */
class Log {
  public:
    using Values = std::initializer_list<std::string>;

    Log &api(const std::string &format, Values values = {}) { return add(scripted::kApiModule, format, values); }
    Log &network(const std::string &format, Values values = {})
    {
        return add(scripted::kNetworkModule, format, values);
    }
    /** What the parser writes about a reply that it understands. */
    Log &parsed(const std::string &reply, const std::string &paras, int32_t cmdId)
    {
        add(scripted::kParserModule, "Bk_Parse_At_Res-in-%s", {reply});
        add(scripted::kParserModule, "Bk_Parse_At_Res-out-%s", {paras});
        return add(scripted::kParserModule, "Bk_Parse_At_Res-out-%d", {std::to_string(cmdId)});
    }
    /** What the parser writes about any other reply. */
    Log &unparsed(const std::string &reply)
    {
        add(scripted::kParserModule, "Bk_Parse_At_Res-in-%s", {reply});
        return add(scripted::kParserModule, "UNI_ERROR_BK_FAIL1", {});
    }
    /** What the parser writes about an exchange that fails. */
    Log &failed(const scripted::Failure &failure)
    {
        if (!failure.reply) return *this;
        return failure.identifier != 0 ? parsed(*failure.reply, failure.paras, failure.identifier)
                                       : unparsed(*failure.reply);
    }
    Log &append(const Log &more)
    {
        lines_.insert(lines_.end(), more.lines_.begin(), more.lines_.end());
        return *this;
    }

    /** Expects that a host has logged exactly this. */
    void expectFrom(const scripted::Host &host) const
    {
        std::vector<Logged> got;
        for (const scripted::LogLine &line : host.log()) {
            got.push_back({line.module, line.format, line.text});
            EXPECT_EQ(line.file, "kora_t9lb.log") << line.text;
            EXPECT_GT(line.line, 0) << line.text;
        }
        EXPECT_EQ(got, lines_);
    }

  private:
    Log &add(const char *module, const std::string &format, Values values)
    {
        std::string text;
        const std::string *value = values.begin();
        for (size_t i = 0; i < format.size(); ++i) {
            const bool isConversion = format.compare(i, 2, "%s") == 0 || format.compare(i, 2, "%d") == 0;
            if (isConversion && value == values.end()) ADD_FAILURE() << "a value is missing: " << format;
            if (isConversion && value != values.end()) text += *value++;
            if (isConversion)
                ++i;
            else
                text += format[i];
        }
        lines_.push_back({module, format, text});
        return *this;
    }

    std::vector<Logged> lines_;
};

/** A caller's buffer of exactly the size that is stated, full of a pattern. */
class CallerBuffer {
  public:
    static constexpr char kPattern = 0x5A;

    explicit CallerBuffer(size_t size) : memory_(size) { std::fill_n(memory_.data(), size, kPattern); }

    operator char *() const { return memory_.data(); } // NOLINT(google-explicit-constructor): it stands for a buffer

    /** Expects these bytes at the front, and behind them nothing but the pattern. */
    void expect(const std::string &bytes, const std::string &of) const
    {
        ASSERT_LE(bytes.size(), memory_.size()) << of;
        EXPECT_EQ(std::string(memory_.data(), memory_.size()),
                  bytes + std::string(memory_.size() - bytes.size(), kPattern))
            << of;
    }

  private:
    GuardedMemory memory_;
};

#endif

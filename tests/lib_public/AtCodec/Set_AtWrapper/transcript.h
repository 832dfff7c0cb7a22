#ifndef TESTS_LIB_PUBLIC_ATCODEC_SET_ATWRAPPER_TRANSCRIPT_H
#define TESTS_LIB_PUBLIC_ATCODEC_SET_ATWRAPPER_TRANSCRIPT_H

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/failures.h"
#include "tests/support/guarded_text.h"
#include "tests/support/platforms.h"
#include "tests/support/scripted_host.h"

/** Rows of what is called, sent, answered and expected: what the tests of the Set_AtWrapper functions share. */
namespace transcript {

using scripted::FailureKind;
using scripted::framed;
using scripted::Host;
using scripted::kPlatforms;
using scripted::OnPlatform;
using Texts = std::vector<std::string>;
using Platforms = std::vector<int32_t>;

/** What a number holds that nobody has written. */
constexpr int32_t kUntouched = 0x5A5A5A5A;
constexpr unsigned char kUntouchedByte = 0x5A;

struct Numbers {
    int32_t n[4];
};
using Call = uint32_t (*)(int32_t *out);

struct Command {
    Call call;
    const char *text;
    int32_t timeoutMs;
};

/** A reply and what comes of it. */
struct Row {
    const char *name;
    std::string reply;
    uint32_t code;
    std::vector<int32_t> out; ///< in order; the numbers behind stay untouched
    Texts log;                ///< the wrapper's own lines
};

/** Every line names its log file and the line of the source. */
inline void expectWhereabouts(const Host &host)
{
    for (const scripted::LogLine &line : host.log()) {
        EXPECT_EQ(line.file, "kora_t9lb.log");
        EXPECT_GT(line.line, 0);
    }
}

/** The lines of a wrapper without arguments, whose formats are their texts. */
inline void expectLines(const Host &host, const Texts &log)
{
    EXPECT_EQ(host.texts(scripted::kSetModule), log);
    EXPECT_EQ(host.formats(scripted::kSetModule), log);
    EXPECT_EQ(host.texts().size(), log.size() + host.texts(scripted::kParserModule).size());
    expectWhereabouts(host);
}

inline void expectNumbers(const Numbers &numbers, const std::vector<int32_t> &expected)
{
    for (size_t i = 0; i < 4; ++i)
        EXPECT_EQ(numbers.n[i], i < expected.size() ? expected[i] : kUntouched) << "number " << i;
}

/** Plays rows on some platforms. */
inline void play(const Command &command, const std::vector<Row> &rows, const Platforms &platforms = kPlatforms)
{
    for (const Row &row : rows) {
        for (const int32_t platform : platforms) {
            SCOPED_TRACE(std::string(command.text) + ", " + row.name + ", platform " + std::to_string(platform));
            const OnPlatform on(platform);
            Host host;
            host.expect(command.text, command.timeoutMs, row.reply);
            const GuardedRecord<Numbers> out(kUntouchedByte);
            EXPECT_EQ(command.call(out->n), row.code);
            EXPECT_TRUE(host.isDone());
            expectNumbers(*out.get(), row.out);
            expectLines(host, row.log);
        }
    }
}

/** A send that fails comes to 1, without a parse and whatever the host left in the raw record. */
inline void playFailingSend(const Command &command, const Texts &log, const Platforms &platforms = kPlatforms)
{
    for (const int32_t platform : platforms) {
        for (const int result : {-1, 1, 24}) {
            SCOPED_TRACE(command.text);
            const OnPlatform on(platform);
            Host host;
            host.expectFailing(command.text, command.timeoutMs, result);
            const GuardedRecord<Numbers> out(kUntouchedByte);
            EXPECT_EQ(command.call(out->n), UNI_ERROR_FALSE);
            EXPECT_TRUE(host.isDone());
            expectNumbers(*out.get(), {});
            expectLines(host, log);
            EXPECT_EQ(host.texts(), log);
        }
    }
}

inline std::vector<Row> rowsOf(std::initializer_list<const char *> replies, uint32_t code, const Texts &log)
{
    std::vector<Row> rows;
    for (const char *reply : replies)
        rows.push_back({reply, reply, code, {}, log});
    return rows;
}

/** The failing replies of some kinds. */
inline std::vector<Row> rowsOf(std::initializer_list<FailureKind> kinds, uint32_t code, const Texts &log)
{
    std::vector<Row> rows;
    for (const scripted::Failure &failure : scripted::kFailingReplies) {
        if (std::find(kinds.begin(), kinds.end(), failure.kind) != kinds.end())
            rows.push_back({failure.name.c_str(), *failure.reply, code, {}, log});
    }
    return rows;
}

/** Replies without a final result. */
inline std::vector<Row> unparsable(const Texts &log)
{
    return rowsOf({FailureKind::Unparsable}, UNI_ERROR_FALSE, log);
}

/** Final results that no wrapper interprets. */
inline std::vector<Row> neverInterpreted(const Texts &log)
{
    return rowsOf({FailureKind::CmsError, FailureKind::NotSupported, FailureKind::Prompt, FailureKind::Report},
                  UNI_ERROR_FALSE, log);
}

inline std::vector<Row> errors(uint32_t code, const Texts &log)
{
    return rowsOf({FailureKind::Error}, code, log);
}

inline std::vector<Row> cmeErrors(uint32_t code, const Texts &log)
{
    return rowsOf({FailureKind::CmeError}, code, log);
}

/** Every failure of a wrapper that tells only success from failure, and logs at most its opening. */
inline void playAllFailures(const Command &command, const Texts &log = {})
{
    playFailingSend(command, log);
    play(command, unparsable(log));
    play(command, neverInterpreted(log));
    play(command, errors(UNI_ERROR_FALSE, log));
    play(command, cmeErrors(UNI_ERROR_FALSE, log));
    play(command, rowsOf({"\r\n+CME ERROR: incorrect password\r\n", "\r\n+CME ERROR: SIM PUK required\r\n",
                          "\r\n+CME ERROR: SIM busy\r\n", "\r\n+CME ERROR: 12\r\n"},
                         UNI_ERROR_FALSE, log));
}

inline std::string joined(std::initializer_list<std::string_view> parts)
{
    std::string text;
    for (const std::string_view part : parts)
        text += part;
    return text;
}

constexpr size_t kLongestCommand = 1023;
constexpr size_t kLongestReply = 10239;

/** A command of 1023 characters goes out whole, a longer one goes on as a failed send.
 *  @param head, tail  what is sent around the text
 *  @param call        called with a text that makes the command as long as it is to be */
template <typename Function>
void playLongest(const std::string &head, const std::string &tail, int32_t timeoutMs, Function call,
                 const Texts &sentLog = {}, const Texts &unsentLog = {})
{
    for (const size_t length : {kLongestCommand, kLongestCommand + 1, kLongestCommand + 2, size_t{100000}}) {
        SCOPED_TRACE(head + " of " + std::to_string(length));
        const std::string inside(length - head.size() - tail.size(), '7');
        const bool isSent = length <= kLongestCommand;
        Host host;
        if (isSent) host.expect(joined({head, inside, tail}), timeoutMs, "\r\nOK\r\n");
        EXPECT_EQ(call(GuardedText(inside)), isSent ? UNI_ERROR_SUCCESS : UNI_ERROR_FALSE);
        EXPECT_TRUE(host.isDone());
        expectLines(host, isSent ? sentLog : unsentLog);
        EXPECT_EQ(host.texts(scripted::kParserModule).empty(), !isSent);
    }
}

/** A text made up to a length. */
inline std::string padded(std::string text, size_t length, char with = 'x')
{
    text.resize(length, with);
    return text;
}

/** A reply of the longest kind, ended by a final result. */
inline std::string longestReply(const std::string &start, const std::string &end = "\r\n\r\nOK\r\n")
{
    return padded(start, kLongestReply - end.size()) + end;
}

inline std::string okReply(const std::string &line)
{
    return framed({line.c_str()});
}

} // namespace transcript

#endif

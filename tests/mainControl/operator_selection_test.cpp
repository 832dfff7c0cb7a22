// Selecting an operator, and asking for the one that is selected.

#include <gtest/gtest.h>

#include "tests/support/guarded_text.h"
#include "tests/support/log_lines.h"
#include "tests/support/sample_text.h"

namespace {

using scripted::copiedOver;
using scripted::failingAt;
using scripted::Failure;
using scripted::framed;
using scripted::Host;
using scripted::kFailures;
using scripted::kPlatforms;
using scripted::Log;
using scripted::OnPlatform;
using scripted::Script;

constexpr unsigned char kPattern = 0x5A;
constexpr int32_t kMccBefore = 64;
constexpr int32_t kMncBefore = 65;

bool quotes(int32_t platform)
{
    return platform == PF_MTK || platform == PF_TSP || platform == PF_SPEADTRUM;
}

struct Selection {
    int32_t mode;
    int32_t format;
    std::string oper;
    int32_t act;
    const char *quoted;   ///< what PF_MTK, PF_TSP and PF_SPEADTRUM are sent
    const char *unquoted; ///< what all others are sent
};

const Selection kSelections[] = {
    {1, 2, "46001", 7, "AT+COPS=1,2,\"46001\",7", "AT+COPS=1,2,46001,7"},
    {0, 0, "", 0, "AT+COPS=0,0,\"\",0", "AT+COPS=0,0,,0"},
    {2, 1, "My Net", 2, "AT+COPS=2,1,\"My Net\",2", "AT+COPS=2,1,My Net,2"},
    {3, 2, "", 0, "AT+COPS=3,2", "AT+COPS=3,2,,0"},
    {3, 0, "46001", 7, "AT+COPS=3,0", "AT+COPS=3,0,46001,7"},
    {4, 2, "46001", -1, "AT+COPS=4,2,\"46001\",-1", "AT+COPS=4,2,46001,-1"},
    {-3, -1, "%d%s,\"", INT32_MIN, "AT+COPS=-3,-1,\"%d%s,\"\",-2147483648", "AT+COPS=-3,-1,%d%s,\",-2147483648"},
};

Log setEntry(const Selection &row)
{
    return Log()
        .api("KR_setCops-in")
        .api("KR_setCops-in-nMode:%d", row.mode)
        .api("KR_setCops-in-nformat:%d", row.format)
        .api("KR_setCops-in-cOper:%s", row.oper.c_str())
        .api("KR_setCops-in-nAct:%d", row.act);
}

TEST(SetCops, SendsEverySelectionInThePlatformsForm)
{
    for (const int32_t platform : kPlatforms) {
        for (const Selection &row : kSelections) {
            const OnPlatform on(platform);
            const GuardedText oper(row.oper);
            Host host;
            host.expect(quotes(platform) ? row.quoted : row.unquoted, 180000, "\r\nOK\r\n");
            EXPECT_EQ(KR_setCops(row.mode, row.format, oper, row.act), UNI_ERROR_SUCCESS);
            EXPECT_EQ(Log::of(host), setEntry(row).ok().api("KR_setCops-return UNI_ERROR_SUCCESS"));
        }
    }
}

TEST(SetCops, FailsInOneLine)
{
    for (const Failure &failure : kFailures) {
        Host host;
        play(host, {{kSelections[0].unquoted, 180000, failure.reply}});
        EXPECT_EQ(KR_setCops(1, 2, "46001", 7), UNI_ERROR_FALSE) << failure.name;
        EXPECT_EQ(Log::of(host), setEntry(kSelections[0]).failed(failure).api("KR_setCops-return UNI_ERROR_FALSE"));
    }
}

TEST(SetCops, SendsNoOperatorThatDoesNotFit)
{
    for (const int32_t platform : kPlatforms) {
        for (const size_t length : {62U, 63U, 64U, 65U, 510U, 2000U}) {
            SCOPED_TRACE(length);
            const OnPlatform on(platform);
            const GuardedText oper(filled(length));
            const std::string quote = quotes(platform) ? "\"" : "";
            Host host;
            std::string command = "AT+COPS=1,0,";
            command.append(quote).append(oper).append(quote).append(",2");
            if (length < 64) host.expect(command, 180000, "\r\nOK\r\n");
            EXPECT_EQ(KR_setCops(1, 0, oper, 2), length < 64 ? UNI_ERROR_SUCCESS : UNI_ERROR_FALSE);
            Log log = setEntry({1, 0, oper.str(), 2, "", ""});
            if (length < 64) log.ok();
            EXPECT_EQ(Log::of(host), log.text(length < 64 ? "KR_setCops-return UNI_ERROR_SUCCESS"
                                                          : "KR_setCops-return UNI_ERROR_FALSE"));
        }
    }
}

struct Selected {
    std::string line;
    int32_t mode, format;
    std::string oper;
    int32_t act;
};

const Selected kSelected[] = {
    {"0,0,\"China Net\",7", 0, 0, "China Net", 7},
    {"1,2,\"46001\",2", 1, 2, "46001", 2},
    {"1,2,46001,2", 1, 2, "46001", 2},
    {"-1,-2,\"x\",-3", -1, -2, "x", -3},
    {"0,1,\"a\tb, c\",7", 0, 1, "a\tb, c", 7},
    {"0,0,\"\",7", 0, 0, "", 7},
    // What the reply lacks comes as 0 or empty.
    {"0", 0, 0, "", 0},
    {"4,1", 4, 1, "", 0},
    {"1,2,\"46001\"", 1, 2, "46001", 0},
    {"x,2,\"46001\",7", 0, 0, "", 0},
    {"1,x,\"46001\",7", 1, 0, "", 0},
    {"", 0, 0, "", 0},
    {"0,0,\"" + filled(63) + "\",7", 0, 0, filled(63), 7},
    {"0,0,\"" + filled(64) + "\",7", 0, 0, filled(63), 7},
    {"0,0,\"" + filled(900) + "\",7", 0, 0, filled(63), 7},
};

std::string copsReply(const std::string &line)
{
    return line.empty() ? "\r\nOK\r\n" : framed({("+COPS: " + line).c_str()});
}

TEST(GetCops, HandsOnAllFourFields)
{
    for (const int32_t platform : kPlatforms) {
        for (const Selected &row : kSelected) {
            SCOPED_TRACE(row.line);
            const OnPlatform on(platform);
            const GuardedRecord<int32_t> mode(kPattern);
            const GuardedRecord<int32_t> format(kPattern);
            const GuardedRecord<int32_t> act(kPattern);
            const GuardedRecord<char[64]> oper(kPattern);
            Host host;
            host.expect("AT+COPS?", 5000, copsReply(row.line));
            EXPECT_EQ(KR_getCops(mode.get(), format.get(), oper.data(), act.get()), UNI_ERROR_SUCCESS);
            EXPECT_EQ(*mode.get(), row.mode);
            EXPECT_EQ(*format.get(), row.format);
            EXPECT_STREQ(oper.data(), row.oper.c_str());
            EXPECT_EQ(*act.get(), row.act);
            // The doubled dash is what hosts match on.
            EXPECT_EQ(Log::of(host), Log()
                                         .api("KR_getCops-in")
                                         .parsed(copsReply(row.line), row.line)
                                         .api("KR_getCops-out-*pMode:%d", row.mode)
                                         .api("KR_getCops-out-*pformat:%d", row.format)
                                         .api("KR_getCops-out-cOper:%s", row.oper.c_str())
                                         .api("KR_getCops-out-*pAct:%d", row.act)
                                         .api("KR_getCops--return UNI_ERROR_SUCCESS"));
        }
    }
}

TEST(GetCops, FailureLeavesEveryOutput)
{
    for (const Failure &failure : kFailures) {
        int32_t mode = 71;
        int32_t format = 72;
        int32_t act = 73;
        const GuardedRecord<char[64]> oper(kPattern);
        Host host;
        play(host, {{"AT+COPS?", 5000, failure.reply}});
        EXPECT_EQ(KR_getCops(&mode, &format, oper.data(), &act), UNI_ERROR_FALSE) << failure.name;
        EXPECT_EQ(mode, 71);
        EXPECT_EQ(format, 72);
        EXPECT_EQ(act, 73);
        EXPECT_EQ(std::string(oper.data(), oper.size()), std::string(64, static_cast<char>(kPattern)));
        EXPECT_EQ(Log::of(host),
                  Log().api("KR_getCops-in").failed(failure).api("KR_getCops-return UNI_ERROR_FALSE-copsRead failed"));
    }
}

struct Operator {
    const char *numeric;
    std::string named;
    int32_t nameLen;
    int32_t mcc, mnc;
    std::optional<std::string> name;
};

const Operator kOperators[] = {
    {"0,2,\"46001\",7", "0,0,\"China Net\",7", 30, 460, 1, "China Net"},
    {"0,2,\"310410\",7", "0,0,\"Net\",7", 4, 310, 410, "Net"},
    {"0,2,\"46011\",7", "0,0,\"Net\",7", 3, 460, 11, std::nullopt},
    {"0,2,\"46011\",7", "0,0,\"Net\",7", 1, 460, 11, std::nullopt},
    {"0,2,\"46011\",7", "0,0,\"Net\",7", 0, 460, 11, std::nullopt},
    {"0,2,\"46011\",7", "0,0,\"Net\",7", -1, 460, 11, std::nullopt},
    {"0,2,\"46011\",7", "0,0,\"Net\",7", INT32_MIN, 460, 11, std::nullopt},
    {"0,2,46011,7", "0,0,Net,7", 30, 460, 11, "Net"},
    {"0,2,\"00101\",7", "0,0,\"Test\",7", 30, 1, 1, "Test"},
    {"0,2,\"460 07\",7", "0,0,\"Test\",7", 30, 460, 7, "Test"},
    {"0,2,\"46 007\",7", "0,0,\"Test\",7", 30, 46, 7, "Test"},
    {"0,2,\"46001x\",7", "0,0,\"Test\",7", 30, 460, 1, "Test"},
    // Too short for a network part, or no code at all: 0.
    {"0,2,\"460\",7", "0,0,\"Net\",7", 30, 460, 0, "Net"},
    {"0,2,\"46\",7", "0,0,\"Net\",7", 30, 46, 0, "Net"},
    {"0,2,\"abcde\",7", "0,0,\"Net\",7", 30, 0, 0, "Net"},
    {"0,2,\"\",7", "0,0,\"Net\",7", 30, 0, 0, "Net"},
    {"0", "0", 30, 0, 0, ""},
    {"0,2,\"46001\",7", "0", 1, 460, 1, ""},
    {"0,2,\"46001\",7", "0", 0, 460, 1, std::nullopt},
    {"", "", 30, 0, 0, ""},
    {"0,2,\"46001\",7", "0,0,\"" + filled(63) + "\",7", 64, 460, 1, filled(63)},
    {"0,2,\"46001\",7", "0,0,\"" + filled(64) + "\",7", 64, 460, 1, filled(63)},
    {"0,2,\"46001\",7", "0,0,\"" + filled(300) + "\",7", 63, 460, 1, std::nullopt},
};

Script operatorScript(int32_t platform, const Operator &row)
{
    const std::string rest = quotes(platform) ? "" : ",,0";
    return {{"AT+COPS=3,2" + rest, 180000, "\r\nOK\r\n"},
            {"AT+COPS?", 5000, copsReply(row.numeric)},
            {"AT+COPS=3,0" + rest, 180000, "\r\nOK\r\n"},
            {"AT+COPS?", 5000, copsReply(row.named)}};
}

TEST(NetworkInfoByCops, ReadsTheOperatorInTwoFormats)
{
    for (const int32_t platform : kPlatforms) {
        for (const Operator &row : kOperators) {
            SCOPED_TRACE(row.numeric + (" " + row.named));
            const OnPlatform on(platform);
            const std::string before = filled(row.nameLen > 0 ? static_cast<size_t>(row.nameLen) - 1 : 0);
            const GuardedText name(before);
            const GuardedRecord<int32_t> mcc(kPattern);
            const GuardedRecord<int32_t> mnc(kPattern);
            Host host;
            play(host, operatorScript(platform, row));
            EXPECT_EQ(getNetworkInfoByCops(mcc.get(), mnc.get(), row.nameLen, name), UNI_ERROR_SUCCESS);
            EXPECT_EQ(*mcc.get(), row.mcc);
            EXPECT_EQ(*mnc.get(), row.mnc);
            EXPECT_EQ(name.bytes(), copiedOver(before, row.name));
            Log log;
            log.ok().parsed(copsReply(row.numeric), row.numeric).ok().parsed(copsReply(row.named), row.named);
            EXPECT_EQ(Log::of(host), log);
        }
    }
}

TEST(NetworkInfoByCops, StopsAtTheStepThatFails)
{
    for (size_t step = 0; step < 4; ++step) {
        for (const Failure &failure : kFailures) {
            SCOPED_TRACE(std::to_string(step) + ": " + failure.name);
            int32_t mcc = kMccBefore;
            int32_t mnc = kMncBefore;
            const GuardedText name("old");
            Host host;
            play(host, failingAt(operatorScript(0, kOperators[0]), step, failure));
            EXPECT_EQ(getNetworkInfoByCops(&mcc, &mnc, 4, name), UNI_ERROR_FALSE);
            EXPECT_EQ(mcc, step > 1 ? 460 : kMccBefore);
            EXPECT_EQ(mnc, step > 1 ? 1 : kMncBefore);
            EXPECT_EQ(name.str(), "old");
        }
    }
}

} // namespace

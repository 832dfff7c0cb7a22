// Registration state: the report modes, the packet attach, and the reads of packet and EPS registration.

#include <gtest/gtest.h>

#include "tests/support/guarded_text.h"
#include "tests/support/log_lines.h"
#include "tests/support/sample_text.h"

namespace {

using scripted::copiedOver;
using scripted::Failure;
using scripted::framed;
using scripted::Host;
using scripted::kFailures;
using scripted::kPlatforms;
using scripted::Log;
using scripted::OnPlatform;

struct Setter {
    const char *name;
    uint32_t (*call)(int32_t mode);
    const char *command;
    int32_t timeoutMs;
    Log (*entry)(int32_t mode);
    const char *failure;
    const char *success;
};

Log cregEntry(int32_t mode)
{
    return Log().api("KR_setCregMode-in").api("KR_setCregMode-in-cregType:%d", mode);
}
Log attachEntry(int32_t mode)
{
    return Log().api("KR_setDomainAttachMode-in").api("KR_setDomainAttachMode-in-mode:%d", mode);
}
Log epsEntry(int32_t /*mode*/)
{
    return Log().api("KR_setEPSRegisterState-in");
}
Log gprsEntry(int32_t /*mode*/)
{
    return Log().api("KR_setGPRSRegisterState-in");
}

const Setter kSetters[] = {
    {"creg", KR_setCregMode, "AT+CREG=", 5000, cregEntry, "KR_setCregMode-return UNI_ERROR_FALSE-cregSet failed",
     "KR_setCregMode-return UNI_ERROR_SUCCESS"},
    {"attach", KR_setDomainAttachMode, "AT+CGATT=", 10000, attachEntry,
     "KR_setDomainAttachMode-return UNI_ERROR_FALSE-cgattSet failed",
     "KR_setDomainAttachMode-return UNI_ERROR_SUCCESS"},
    {"eps", KR_setEPSRegisterState, "AT+CEREG=", 5000, epsEntry,
     "KR_setEPSRegisterState-return UNI_ERROR_FALSE-ceregSet failed",
     "KR_setEPSRegisterState-return UNI_ERROR_SUCCESS"},
    // It leaves under the name of the get function, and names the EPS wrapper: hosts match on that.
    {"gprs", KR_setGPRSRegisterState, "AT+CGREG=", 5000, gprsEntry,
     "KR_getGPRSRegisterState-return UNI_ERROR_FALSE-ceregSet failed",
     "KR_getGPRSRegisterState-return UNI_ERROR_SUCCESS"},
};

class SetterTest : public testing::TestWithParam<Setter> {};

TEST_P(SetterTest, PassesAnyModeOnEveryPlatform)
{
    for (const int32_t platform : kPlatforms) {
        for (const int32_t mode : {0, 1, 2, 3, -1, INT32_MAX, INT32_MIN}) {
            const OnPlatform on(platform);
            Host host;
            host.expect(GetParam().command + std::to_string(mode), GetParam().timeoutMs, "\r\nOK\r\n");
            EXPECT_EQ(GetParam().call(mode), UNI_ERROR_SUCCESS);
            EXPECT_EQ(Log::of(host), GetParam().entry(mode).ok().text(GetParam().success));
        }
    }
}

TEST_P(SetterTest, TellsEveryFailureInOneLine)
{
    for (const Failure &failure : kFailures) {
        Host host;
        play(host, {{GetParam().command + std::string("1"), GetParam().timeoutMs, failure.reply}});
        EXPECT_EQ(GetParam().call(1), UNI_ERROR_FALSE) << failure.name;
        EXPECT_EQ(Log::of(host), GetParam().entry(1).failed(failure).text(GetParam().failure)) << failure.name;
    }
}

INSTANTIATE_TEST_SUITE_P(Registration, SetterTest, testing::ValuesIn(kSetters),
                         [](const auto &row) { return std::string(row.param.name); });

// What the caller's outputs hold before a call.
constexpr int32_t kCountBefore = 71;
constexpr int32_t kStatBefore = 72;
constexpr int32_t kActBefore = 73;

struct EpsReply {
    const char *name;
    std::string line;
    int32_t count;
    int32_t stat;
    std::optional<std::string> lac;
    std::optional<std::string> ci;
    int32_t act;
};

const EpsReply kEpsReplies[] = {
    {"whole", "2,1,\"00A1\",\"0001B2C3\",7", 2, 1, "00A1", "0001B2C3", 7},
    {"without quotes", "2,1,00A1,0001B2C3,7", 2, 1, "00A1", "0001B2C3", 7},
    {"negative", "-2,-1,\"A\",\"B\",-7", -2, -1, "A", "B", -7},
    {"more than it reads", "2,5,\"00A1\",\"0001B2C3\",7,0,1", 2, 5, "00A1", "0001B2C3", 7},
    {"without technology", "2,1,\"00A1\",\"0001B2C3\"", 2, 1, "00A1", "0001B2C3", kActBefore},
    {"without cell", "2,5,\"00A1\"", 2, 5, "00A1", std::nullopt, kActBefore},
    {"status only", "0,1", 0, 1, std::nullopt, std::nullopt, kActBefore},
    {"report mode only", "0", 0, kStatBefore, std::nullopt, std::nullopt, kActBefore},
    {"no number", "x,1", kCountBefore, kStatBefore, std::nullopt, std::nullopt, kActBefore},
    {"second no number", "2,x,\"A\",\"B\",7", 2, kStatBefore, std::nullopt, std::nullopt, kActBefore},
    {"last no number", "2,1,\"A\",\"B\",x", 2, 1, "A", "B", kActBefore},
    {"blank and tab in quotes", "2,1,\"00 A1\",\"00\t01\",7", 2, 1, "00 A1", "00\t01", 7},
    {"comma in quotes", "2,1,\"00,A1\",\"0001\",7", 2, 1, "00,A1", "0001", 7},
    {"long", "2,1,\"" + filled(450) + "\",\"" + filled(460) + "\",7", 2, 1, filled(450), filled(460), 7},
    {"line of 1023", "2,1,\"" + filled(1011) + "\",\"b\",7", 2, 1, filled(1011), "b", 7},
    // A line of 1024 is not split at its commas.
    {"line of 1024", "2,1,\"" + filled(1012) + "\",\"b\",7", 2, kStatBefore, std::nullopt, std::nullopt, kActBefore},
};

Log epsOutputs(int32_t count, int32_t stat, const char *lac, const char *ci, int32_t act)
{
    return Log()
        .api("KR_getEPSRegisterState-out-*pCount:%d", count)
        .api("KR_getEPSRegisterState-out-*pStat:%d", stat)
        .api("KR_getEPSRegisterState-out-cLac:%s", lac)
        .api("KR_getEPSRegisterState-out-cCi:%s", ci)
        .api("KR_getEPSRegisterState-out-*pAct:%d", act)
        .api("KR_getEPSRegisterState-return UNI_ERROR_SUCCESS");
}

/** Outputs of the EPS read in guarded memory. */
struct EpsOutputs {
    explicit EpsOutputs(const std::string &lacBefore, const std::string &ciBefore) : lac(lacBefore), ci(ciBefore)
    {
        *count = kCountBefore;
        *stat = kStatBefore;
        *act = kActBefore;
    }
    [[nodiscard]] uint32_t read() const { return KR_getEPSRegisterState(count.get(), stat.get(), lac, ci, act.get()); }

    GuardedRecord<int32_t> count;
    GuardedRecord<int32_t> stat;
    GuardedRecord<int32_t> act;
    GuardedText lac;
    GuardedText ci;
};

TEST(EpsRegisterState, HandsOnWhatTheReplyHolds)
{
    for (const EpsReply &row : kEpsReplies) {
        SCOPED_TRACE(row.name);
        // Room for the token and not a byte more.
        const std::string lacBefore = filled(row.lac ? row.lac->size() : 4);
        const std::string ciBefore = filled(row.ci ? row.ci->size() : 4);
        const EpsOutputs out(lacBefore, ciBefore);
        const std::string reply = framed({row.line.c_str()});
        Host host;
        host.expect("at+CEREG?", 5000, reply);
        EXPECT_EQ(out.read(), UNI_ERROR_SUCCESS);
        EXPECT_EQ(*out.count.get(), row.count);
        EXPECT_EQ(*out.stat.get(), row.stat);
        EXPECT_EQ(*out.act.get(), row.act);
        EXPECT_EQ(out.lac.bytes(), copiedOver(lacBefore, row.lac));
        EXPECT_EQ(out.ci.bytes(), copiedOver(ciBefore, row.ci));
        const std::string lac = row.lac.value_or(lacBefore);
        const std::string ci = row.ci.value_or(ciBefore);
        EXPECT_EQ(Log::of(host), Log()
                                     .api("KR_getEPSRegisterState-in")
                                     .parsed(reply, row.line)
                                     .then(epsOutputs(row.count, row.stat, lac.c_str(), ci.c_str(), row.act)));
    }
}

TEST(EpsRegisterState, LeavesNoByteBehindAShorterTextChanged)
{
    const std::string before = filled(20);
    const EpsOutputs out(before, before);
    Host host;
    host.expect("at+CEREG?", 5000, framed({"2,1,\"00A1\",\"0001B2C3\",7"}));
    EXPECT_EQ(out.read(), UNI_ERROR_SUCCESS);
    EXPECT_EQ(out.lac.bytes(), copiedOver(before, "00A1"));
    EXPECT_EQ(out.ci.bytes(), copiedOver(before, "0001B2C3"));
}

TEST(EpsRegisterState, ReadsEmptyCodesAsEmptyTexts)
{
    struct Row {
        const char *line;
        int32_t act;
    };
    // Without quotes the marked line outgrows its room, and the technology is lost with its tail.
    for (const Row &row : {Row{"2,1,\"\",\"\",7", 7}, Row{"2,1,,,7", kActBefore}}) {
        const EpsOutputs out("old", "old");
        Host host;
        host.expect("at+CEREG?", 5000, framed({row.line}));
        EXPECT_EQ(out.read(), UNI_ERROR_SUCCESS);
        EXPECT_EQ(out.lac.str(), "") << row.line;
        EXPECT_EQ(out.ci.str(), "") << row.line;
        EXPECT_EQ(*out.act.get(), row.act) << row.line;
        EXPECT_EQ(Log::of(host, scripted::kApiModule),
                  Log().api("KR_getEPSRegisterState-in").then(epsOutputs(2, 1, "", "", row.act)));
    }
}

TEST(EpsRegisterState, KeepsEverythingOnABareOk)
{
    const EpsOutputs out("old", "older");
    Host host;
    host.expect("at+CEREG?", 5000, "\r\nOK\r\n");
    EXPECT_EQ(out.read(), UNI_ERROR_SUCCESS);
    EXPECT_EQ(Log::of(host), Log()
                                 .api("KR_getEPSRegisterState-in")
                                 .ok()
                                 .then(epsOutputs(kCountBefore, kStatBefore, "old", "older", kActBefore)));
}

TEST(EpsRegisterState, RestoresTextsThatTheReplyLacksToo)
{
    const EpsOutputs out("a\xFEz", "\xFC");
    Host host;
    host.expect("at+CEREG?", 5000, framed({"0,1"}));
    EXPECT_EQ(out.read(), UNI_ERROR_SUCCESS);
    EXPECT_EQ(out.lac.str(), "a z");
    EXPECT_EQ(out.ci.str(), "\t");
}

struct GprsReply {
    const char *line;
    int32_t mode;
    int32_t stat;
};

const GprsReply kGprsReplies[] = {
    {"0,1", 0, 1},
    {"2,5,\"00A1\",\"0001B2C3\",7", 2, 5},
    {"-2,-5", -2, -5},
    {"3", 3, kStatBefore},
    {"x,1", kCountBefore, kStatBefore},
    {"2,x", 2, kStatBefore},
    {"2,,1", 2, kStatBefore},
};

TEST(GprsRegisterState, HandsOnWhatTheReplyHolds)
{
    for (const int32_t platform : kPlatforms) {
        for (const GprsReply &row : kGprsReplies) {
            const OnPlatform on(platform);
            const std::string reply = framed({row.line});
            GuardedRecord<int32_t> mode;
            GuardedRecord<int32_t> stat;
            *mode = kCountBefore;
            *stat = kStatBefore;
            Host host;
            host.expect("at+CGREG?", 5000, reply);
            EXPECT_EQ(KR_getGPRSRegisterState(mode, stat), UNI_ERROR_SUCCESS);
            EXPECT_EQ(*mode.get(), row.mode) << row.line;
            EXPECT_EQ(*stat.get(), row.stat) << row.line;
            EXPECT_EQ(Log::of(host), Log()
                                         .api("KR_getGPRSRegisterState-in")
                                         .parsed(reply, row.line)
                                         .api("KR_getGPRSRegisterState-out-*pMode:%d", row.mode)
                                         .api("KR_getGPRSRegisterState-out-*pStat:%d", row.stat)
                                         .api("KR_getGPRSRegisterState-return UNI_ERROR_SUCCESS"));
        }
    }
}

TEST(RegisterState, FailuresLeaveEveryOutput)
{
    std::vector<Failure> failures = kFailures;
    // A reply that begins like a report is one.
    failures.push_back(
        {scripted::FailureKind::Report, "named", framed({"+CEREG: 2,1,\"A\",\"B\",7"}), "2,1,\"A\",\"B\",7", 12304});
    failures.push_back({scripted::FailureKind::Report, "named", framed({"+CGREG: 2,1"}), "2,1", 12305});
    for (const Failure &failure : failures) {
        SCOPED_TRACE(failure.name);
        {
            const EpsOutputs out("old", "older");
            Host host;
            play(host, {{"at+CEREG?", 5000, failure.reply}});
            EXPECT_EQ(out.read(), UNI_ERROR_FALSE);
            EXPECT_EQ(*out.count.get(), kCountBefore);
            EXPECT_EQ(*out.stat.get(), kStatBefore);
            EXPECT_EQ(*out.act.get(), kActBefore);
            EXPECT_EQ(out.lac.str(), "old");
            EXPECT_EQ(out.ci.str(), "older");
            EXPECT_EQ(Log::of(host), Log()
                                         .api("KR_getEPSRegisterState-in")
                                         .failed(failure)
                                         .api("KR_getEPSRegisterState-return UNI_ERROR_FALSE-ceregRead failed"));
        }
        int32_t mode = kCountBefore;
        int32_t stat = kStatBefore;
        Host host;
        play(host, {{"at+CGREG?", 5000, failure.reply}});
        EXPECT_EQ(KR_getGPRSRegisterState(&mode, &stat), UNI_ERROR_FALSE);
        EXPECT_EQ(mode, kCountBefore);
        EXPECT_EQ(stat, kStatBefore);
        // The wrapper behind it is cgregRead; the text says otherwise, and hosts match on it.
        EXPECT_EQ(Log::of(host), Log()
                                     .api("KR_getGPRSRegisterState-in")
                                     .failed(failure)
                                     .api("KR_getGPRSRegisterState-return UNI_ERROR_FALSE-ceregRead failed"));
    }
}

} // namespace

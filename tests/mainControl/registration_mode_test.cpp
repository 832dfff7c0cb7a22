// Registering automatically or with one operator, and the scan that is handed on whole.

#include <cstring>

#include <gtest/gtest.h>

#include "tests/support/guarded_text.h"
#include "tests/support/log_lines.h"
#include "tests/support/sample_text.h"

namespace {

using scripted::Exchange;
using scripted::Failure;
using scripted::framed;
using scripted::Host;
using scripted::kFailures;
using scripted::kPlatforms;
using scripted::Log;
using scripted::OnPlatform;

const char *const kOk = "\r\nOK\r\n";

bool quotes(int32_t platform)
{
    return platform == PF_MTK || platform == PF_TSP || platform == PF_SPEADTRUM;
}

Log entry(int32_t mode, const char *code, int32_t status, int32_t act, int32_t supportBandSet)
{
    return Log()
        .api("KR_setNetworkRegistrationMode-in")
        .api("KR_setNetworkRegistrationMode-in-mode:%d", mode)
        .api("KR_setNetworkRegistrationMode-in-pCode:%s", code)
        .api("KR_setNetworkRegistrationMode-in-Status:%d", status)
        .api("KR_setNetworkRegistrationMode-in-dwAct:%d", act)
        .api("KR_setNetworkRegistrationMode-in-supportBandSet:%d", supportBandSet);
}

Exchange selection(int32_t platform, int32_t mode, const std::string &code, int32_t act)
{
    const std::string quote = quotes(platform) ? "\"" : "";
    return {"AT+COPS=" + std::to_string(mode) + ",2," + quote + code + quote + "," + std::to_string(act), 180000, kOk};
}

struct Row {
    int32_t mode;
    int32_t sentMode;
    int32_t act;
    const char *erat; ///< what PF_MTK is set to first
};

const Row kRows[] = {
    {1, 1, 7, "AT+ERAT=2,0"},  {1, 1, 0, "AT+ERAT=0,0"},  {1, 1, 2, "AT+ERAT=1,0"},          {1, 1, 1, "AT+ERAT=2,0"},
    {2, 2, 3, "AT+ERAT=2,0"},  {2, 2, 0, "AT+ERAT=0,0"},  {5, 0, 7, "AT+ERAT=2,0"},          {6, 0, 2, "AT+ERAT=1,0"},
    {-1, 0, 7, "AT+ERAT=2,0"}, {99, 0, 0, "AT+ERAT=0,0"}, {INT32_MIN, 0, -1, "AT+ERAT=2,0"},
};

TEST(SetNetworkRegistrationMode, SelectsTheOperatorOnEveryPlatform)
{
    for (const int32_t platform : kPlatforms) {
        for (const Row &row : kRows) {
            for (const int32_t status : {0, 1, -5}) {
                SCOPED_TRACE(std::to_string(platform) + ": " + std::to_string(row.mode));
                const OnPlatform on(platform);
                const GuardedText code("46000");
                // The band is set with a preference mode only.
                Log log = entry(row.mode, "46000", status, row.act, 1);
                Host host;
                if (platform == PF_MTK) host.expect(row.erat, 5000, kOk);
                if (platform == PF_MTK) log.ok();
                play(host, {selection(platform, row.sentMode, "46000", row.act)});
                EXPECT_EQ(KR_setNetworkRegistrationMode(row.mode, code, status, row.act, 1), UNI_ERROR_SUCCESS);
                EXPECT_EQ(Log::of(host), log.ok().api("KR_setNetworkRegistrationMode-return UNI_ERROR_SUCCESS"));
            }
        }
    }
}

TEST(SetNetworkRegistrationMode, FailsAtEitherStep)
{
    for (const int32_t platform : kPlatforms) {
        for (const Failure &failure : kFailures) {
            SCOPED_TRACE(std::to_string(platform) + ": " + failure.name);
            const OnPlatform on(platform);
            Exchange last = selection(platform, 1, "46000", 2);
            last.reply = failure.reply;
            Log log = entry(1, "46000", 0, 2, 0);
            Host host;
            if (platform == PF_MTK) host.expect("AT+ERAT=1,0", 5000, kOk);
            if (platform == PF_MTK) log.ok();
            play(host, {last});
            EXPECT_EQ(KR_setNetworkRegistrationMode(1, "46000", 0, 2, 0), UNI_ERROR_FALSE);
            EXPECT_EQ(Log::of(host), log.failed(failure).api("KR_setNetworkRegistrationMode-return UNI_ERROR_FALSE"));
        }
    }
    for (const Failure &failure : kFailures) {
        SCOPED_TRACE(failure.name);
        const OnPlatform on(PF_MTK);
        Host host;
        play(host, {{"AT+ERAT=2,0", 5000, failure.reply}});
        EXPECT_EQ(KR_setNetworkRegistrationMode(1, "46000", 0, 7, 0), UNI_ERROR_FALSE);
        EXPECT_EQ(
            Log::of(host),
            entry(1, "46000", 0, 7, 0).failed(failure).api("KR_setNetworkRegistrationMode-return UNI_ERROR_FALSE"));
    }
}

TEST(SetNetworkRegistrationMode, RefusesNoCode)
{
    for (const int32_t platform : kPlatforms) {
        for (const char *code : {static_cast<const char *>(nullptr), ""}) {
            for (const int32_t mode : {1, 2, 5, -1}) {
                const OnPlatform on(platform);
                Host host;
                EXPECT_EQ(KR_setNetworkRegistrationMode(mode, code, 0, 7, 0), UNI_ERROR_INVALID_PARAMETER);
                EXPECT_EQ(Log::of(host), entry(mode, code == nullptr ? "(null)" : "", 0, 7, 0)
                                             .api("KR_setNetworkRegistrationMode-return UNI_ERROR_INVALID_PARAMETER"));
            }
        }
    }
}

TEST(SetNetworkRegistrationMode, CarriesOutNoModeThreeOrFour)
{
    for (const int32_t platform : kPlatforms) {
        for (const std::string &code : {std::string("46000"), std::string(), filled(64)}) {
            for (const int32_t mode : {3, 4}) {
                const OnPlatform on(platform);
                Host host;
                EXPECT_EQ(KR_setNetworkRegistrationMode(mode, code.c_str(), 0, 7, 0), 30U);
                EXPECT_EQ(Log::of(host), entry(mode, code.c_str(), 0, 7, 0));
            }
        }
    }
    Host host;
    EXPECT_EQ(KR_setNetworkRegistrationMode(3, nullptr, 0, 7, 0), 30U);
    EXPECT_EQ(Log::of(host), entry(3, "(null)", 0, 7, 0));
}

TEST(SetNetworkRegistrationMode, SendsNoCodeThatDoesNotFit)
{
    for (const int32_t platform : kPlatforms) {
        for (const size_t length : {62U, 63U, 64U, 65U, 600U, 2000U}) {
            SCOPED_TRACE(std::to_string(platform) + ": " + std::to_string(length));
            const bool fits = length < 64;
            const OnPlatform on(platform);
            const GuardedText code(filled(length));
            Log log = entry(1, code, 0, 0, 0);
            Host host;
            if (fits && platform == PF_MTK) {
                host.expect("AT+ERAT=0,0", 5000, kOk);
                log.ok();
            }
            if (fits) {
                play(host, {selection(platform, 1, code.str(), 0)});
                log.ok();
            }
            EXPECT_EQ(KR_setNetworkRegistrationMode(1, code, 0, 0, 0), fits ? UNI_ERROR_SUCCESS : UNI_ERROR_FALSE);
            EXPECT_EQ(Log::of(host), log.text(fits ? "KR_setNetworkRegistrationMode-return UNI_ERROR_SUCCESS"
                                                   : "KR_setNetworkRegistrationMode-return UNI_ERROR_FALSE"));
        }
    }
}

TEST(SetNetworkRegistrationMode, AutomaticSetsPreferenceModeNought)
{
    const std::string long64 = filled(64);
    for (const char *code : {"46000", "", static_cast<const char *>(nullptr), long64.c_str()}) {
        for (const int32_t supportBandSet : {0, 1, 2}) {
            const OnPlatform on(PF_QC_LTE);
            Log log = entry(0, code == nullptr ? "(null)" : code, 0, 0, supportBandSet);
            Host host;
            if (supportBandSet == 1) host.expect("AT+ZPREFBAND=\"0\"", 5000, kOk);
            if (supportBandSet == 1) log.ok();
            host.expect("AT+ZSNT=0,0,0", 10000, kOk);
            EXPECT_EQ(KR_setNetworkRegistrationMode(0, code, 0, 0, supportBandSet), UNI_ERROR_SUCCESS);
            EXPECT_EQ(Log::of(host), log.ok().api("KR_setNetworkRegistrationMode-return UNI_ERROR_SUCCESS"));
        }
    }
}

TEST(SetNetworkRegistrationMode, AutomaticTakesEachPlatformsRoad)
{
    for (const int32_t platform : kPlatforms) {
        for (const Failure &failure : kFailures) {
            SCOPED_TRACE(std::to_string(platform) + ": " + failure.name);
            const OnPlatform on(platform);
            for (const bool isOk : {true, false}) {
                const std::optional<std::string> reply = isOk ? kOk : failure.reply;
                Host host;
                switch (platform) {
                case PF_MTK:
                    host.expect("AT+COPS?", 5000, framed({"+COPS: 1,2,\"46001\",7"}))
                        .expect("AT+COPS=0,0,\"\",0", 180000, kOk);
                    play(host, {{"AT+ERAT=2,0", 5000, reply}});
                    break;
                case PF_TSP:
                    host.expect("AT+CGATT=0", 10000, kOk);
                    play(host, {{"AT^SYSCONFIG=2,0,1,3", 5000, reply}});
                    host.expect("AT+COPS=0,0,\"\",0", 180000, kOk)
                        .expect("AT^SYSINFO", 5000, framed({"^SYSINFO: 1,0,0,0,1"}))
                        .expect("AT+CGATT=1", 10000, kOk);
                    break;
                case PF_SPEADTRUM:
                    play(host, {{"AT^SYSCONFIG=2,0,1,3", 5000, reply}});
                    break;
                default:
                    play(host, {{"AT+ZSNT=0,0,0", 10000, reply}});
                    break;
                }
                EXPECT_EQ(KR_setNetworkRegistrationMode(0, "", 9, 0, 0), isOk ? UNI_ERROR_SUCCESS : UNI_ERROR_FALSE);
                EXPECT_EQ(Log::of(host, scripted::kApiModule),
                          entry(0, "", 9, 0, 0)
                              .text(isOk ? "KR_setNetworkRegistrationMode-return UNI_ERROR_SUCCESS"
                                         : "KR_setNetworkRegistrationMode-return UNI_ERROR_FALSE-setPrefMode failed"));
            }
        }
    }
}

struct PlmnReply {
    std::string reply;
    std::vector<std::string> lines;
};

const PlmnReply kPlmnReplies[] = {
    {"\r\nOK\r\n", {"OK"}},
    {framed({"+COPS: (2,\"Long\",\"S\",\"46001\",7),(1,\"L\",\"S\",\"46000\",2)"}),
     {"+COPS: (2,\"Long\",\"S\",\"46001\",7),(1,\"L\",\"S\",\"46000\",2)", "OK"}},
    {"AT+COPS=5\r\r\none\r\ntwo\r\n\r\nOK\r\n", {"AT+COPS=5\r", "one", "two", "OK"}},
    {"\r\n\"a\r\nb\"\r\n\r\nOK\r\n\r\n+CGEV: x", {"\"a\r\nb\"", "OK", "+CGEV: x"}},
    {"\r\nERROR\r\n\r\nOK\r\n", {"ERROR", "OK"}},
    {"\r\n" + filled(1023) + "\r\n\r\nOK\r\n", {filled(1023), "OK"}},
    // A longer line runs on into the next entry, which the next line then begins anew.
    {"\r\n" + filled(2000) + "\r\n\r\nOK\r\n", {filled(2000), "OK"}},
};

TEST(GetPlmnInfo, HandsOnEveryLine)
{
    for (const int32_t platform : kPlatforms) {
        for (const PlmnReply &row : kPlmnReplies) {
            SCOPED_TRACE(row.reply);
            const OnPlatform on(platform);
            const GuardedRecord<AtParasList> list(0x5A);
            const GuardedRecord<AtParasList> expected;
            for (const std::string &line : row.lines) {
                std::memcpy(expected.get()->strParasLine[expected.get()->nCount], line.c_str(), line.size() + 1);
                ++expected.get()->nCount;
            }
            Host host;
            host.expect("AT+COPS=5", 360000, row.reply);
            EXPECT_EQ(KR_getPlmnInfo(list.get()), UNI_ERROR_SUCCESS);
            EXPECT_EQ(std::memcmp(list.data(), expected.data(), list.size()), 0);
            EXPECT_EQ(Log::of(host), Log().network("at+cops=5 in").network("at+cops=5 return success"));
        }
    }
}

TEST(GetPlmnInfo, FailsOnWhateverHoldsNoOk)
{
    struct Unanswered {
        std::optional<std::string> reply;
        const char *line;
    };
    for (const Unanswered &row : {Unanswered{std::nullopt, "at+cops=5 in-sendcmd failed"},
                                  {"", "at+cops=5 in-parse atres failed"},
                                  {"OK", "at+cops=5 in-parse atres failed"},
                                  {"\r\nERROR\r\n", "at+cops=5 in-parse atres failed"},
                                  {"\r\n+CME ERROR: 10\r\n", "at+cops=5 in-parse atres failed"},
                                  {"\r\n\"\r\nOK\r\n", "at+cops=5 in-parse atres failed"}}) {
        const GuardedRecord<AtParasList> list(0x5A);
        const GuardedRecord<AtParasList> before(0x5A);
        Host host;
        play(host, {{"AT+COPS=5", 360000, row.reply}});
        EXPECT_EQ(KR_getPlmnInfo(list.get()), UNI_ERROR_FALSE);
        EXPECT_EQ(std::memcmp(list.data(), before.data(), list.size()), 0);
        EXPECT_EQ(host.texts(), (std::vector<std::string>{"at+cops=5 in", row.line}));
        EXPECT_EQ(host.formats(scripted::kNetworkModule), host.texts());
    }
}

} // namespace

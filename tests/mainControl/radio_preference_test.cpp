// The preference of radio technologies as the API hands it on, and a host's own commands.

#include <cstring>

#include <gtest/gtest.h>

#include "tests/support/guarded_text.h"
#include "tests/support/log_lines.h"
#include "tests/support/sample_text.h"

namespace {

using scripted::Failure;
using scripted::framed;
using scripted::Host;
using scripted::kFailures;
using scripted::kPlatforms;
using scripted::Log;
using scripted::OnPlatform;

constexpr int32_t kUntouched = 77;
const char *const kOk = "\r\nOK\r\n";

Log preferEntry(int32_t technologyPref, int32_t supportBandSet)
{
    return Log()
        .api("KR_setNetworkPreferMode-in")
        .api("KR_setNetworkPreferMode-in-technologyPref:%d", technologyPref)
        .api("KR_setNetworkPreferMode-in-supportBandSet:%d", supportBandSet);
}

TEST(SetNetworkPreferMode, RefusesManualSelectionAlone)
{
    for (const int32_t platform : kPlatforms) {
        for (const int32_t supportBandSet : {0, 1}) {
            const OnPlatform on(platform);
            Host host;
            EXPECT_EQ(KR_setNetworkPreferMode(5, supportBandSet), UNI_ERROR_INVALID_PARAMETER);
            EXPECT_EQ(Log::of(host),
                      preferEntry(5, supportBandSet).api("KR_setNetworkPreferMode-return UNI_ERROR_INVALID_PARAMETER"));
        }
    }
    for (const int32_t pref : {4, 6, 23, 99, -1, -5, INT32_MAX, INT32_MIN}) {
        Host host;
        host.expect(pref == 4 ? "AT+ZSNT=2,0,0" : "AT+ZSNT=0,0,2", 10000, kOk);
        EXPECT_EQ(KR_setNetworkPreferMode(pref, 0), UNI_ERROR_SUCCESS);
        EXPECT_EQ(Log::of(host), preferEntry(pref, 0).ok().api("KR_setNetworkPreferMode-return UNI_ERROR_SUCCESS"));
    }
}

TEST(SetNetworkPreferMode, ResetsTheBandOfOnePlatformOnRequest)
{
    for (const int32_t platform : {0, 1, 2, 7}) {
        for (const int32_t supportBandSet : {0, 1, 2, -1}) {
            const bool isReset = platform == PF_QC_LTE && supportBandSet == 1;
            const OnPlatform on(platform);
            Host host;
            Log log = preferEntry(3, supportBandSet);
            if (isReset) host.expect("AT+ZPREFBAND=\"0\"", 5000, kOk);
            if (isReset) log.ok();
            host.expect("AT+ZSNT=1,0,0", 10000, kOk);
            EXPECT_EQ(KR_setNetworkPreferMode(3, supportBandSet), UNI_ERROR_SUCCESS);
            EXPECT_EQ(Log::of(host), log.ok().api("KR_setNetworkPreferMode-return UNI_ERROR_SUCCESS"));
        }
    }
}

TEST(SetNetworkPreferMode, DetachesAndAttachesTspRoundTheChange)
{
    const OnPlatform on(PF_TSP);
    const std::string unserved = framed({"^SYSINFO: 0,0,0,0,1"});
    const std::string served = framed({"^SYSINFO: 2,3,0,5,1"});
    Host host;
    host.expect("AT+CGATT=0", 10000, kOk)
        .expect("AT^SYSCONFIG=18,1,1,3", 5000, kOk)
        .expect("AT+COPS=0,0,\"\",0", 180000, kOk)
        .expect("AT^SYSINFO", 5000, unserved)
        .expect("AT^SYSINFO", 5000, served)
        .expect("AT+CGATT=1", 10000, kOk);
    EXPECT_EQ(KR_setNetworkPreferMode(14, 0), UNI_ERROR_SUCCESS);
    EXPECT_EQ(Log::of(host), preferEntry(14, 0)
                                 .ok()
                                 .ok()
                                 .ok()
                                 .parsed(unserved, "0,0,0,0,1")
                                 .parsed(served, "2,3,0,5,1")
                                 .ok()
                                 .api("KR_setNetworkPreferMode-return UNI_ERROR_SUCCESS"));
}

TEST(SetNetworkPreferMode, FailsWithItsLastStep)
{
    struct Row {
        int32_t platform;
        const char *command;
        int32_t timeoutMs;
    };
    for (const Row &row : {Row{0, "AT+ZSNT=0,0,0", 10000},
                           {PF_QC_LTE, "AT+ZSNT=0,0,0", 10000},
                           {2, "AT+ZSNT=0,0,0", 10000},
                           {7, "AT+ZSNT=0,0,0", 10000},
                           {PF_SPEADTRUM, "AT^SYSCONFIG=2,0,1,3", 5000},
                           {PF_MTK, "AT+ERAT=2,0", 5000}}) {
        for (const Failure &failure : kFailures) {
            SCOPED_TRACE(std::to_string(row.platform) + failure.name);
            const OnPlatform on(row.platform);
            Log log = preferEntry(0, 0);
            Host host;
            if (row.platform == PF_MTK) {
                host.expect("AT+COPS?", 5000, framed({"+COPS: 0"}));
                log.parsed(framed({"+COPS: 0"}), "0");
            }
            play(host, {{row.command, row.timeoutMs, failure.reply}});
            EXPECT_EQ(KR_setNetworkPreferMode(0, 0), UNI_ERROR_FALSE);
            log.failed(failure);
            if (row.timeoutMs == 10000) {
                failure.reply ? log.network("zsntSet UNI_ERROR_FALSE return\n")
                              : log.network("zsntSet ClientSendCmd return\n");
            }
            EXPECT_EQ(Log::of(host), log.api("KR_setNetworkPreferMode-return UNI_ERROR_FALSE-setPrefMode failed"));
        }
    }
}

struct Reading {
    int32_t platform;
    const char *command;
    const char *name;
    const char *values;
    std::optional<int32_t> mode;
};

const Reading kReadings[] = {
    {0, "AT+ZSNT?", "+ZSNT: ", "0,0,3", 12},
    {1, "AT+ZSNT?", "+ZSNT: ", "7,0,0", 11},
    {2, "AT+ZSNT?", "+ZSNT: ", "0,0,0", 0},
    // Manual selection is never told, and never asked for.
    {7, "AT+ZSNT?", "+ZSNT: ", "0,1,2", 2},
    {0, "AT+ZSNT?", "+ZSNT: ", "5,0,0", std::nullopt},
    {0, "AT+ZSNT?", "+ZSNT: ", "8,1,0", std::nullopt},
    {3, "AT+ERAT?", "+ERAT: ", "2,2,2,2", 2},
    {3, "AT+ERAT?", "+ERAT: ", "2,2,0,2", 3},
    {3, "AT+ERAT?", "+ERAT: ", "0,0,4,0", std::nullopt},
    {4, "AT^SYSCONFIG?", "^SYSCONFIG: ", "18,0,1,3", 20},
    {5, "AT^SYSCONFIG?", "^SYSCONFIG: ", "20,0,1,3", 11},
    {5, "AT^SYSCONFIG?", "^SYSCONFIG: ", "2,2,1,3", 22},
    // Known to the modem, but no mode of its own.
    {5, "AT^SYSCONFIG?", "^SYSCONFIG: ", "2,1,1,3", 0},
    {4, "AT^SYSCONFIG?", "^SYSCONFIG: ", "13,1,1,3", 0},
    {4, "AT^SYSCONFIG?", "^SYSCONFIG: ", "1,0,1,3", std::nullopt},
};

TEST(GetNetworkPreferMode, HandsOnTheMode)
{
    for (const Reading &row : kReadings) {
        SCOPED_TRACE(row.values);
        const OnPlatform on(row.platform);
        const std::string reply = framed({(std::string(row.name) + row.values).c_str()});
        const GuardedRecord<int32_t> mode;
        *mode.get() = kUntouched;
        Log log = Log().api("KR_getNetworkPreferMode-in").parsed(reply, row.values);
        if (row.mode) {
            log.api("KR_getNetworkPreferMode-out-*pTechnologyPref:%d", *row.mode)
                .api("KR_getNetworkPreferMode-return UNI_ERROR_SUCCESS");
        } else {
            // It fails under the name of the set function: hosts match on that.
            log.api("KR_setNetworkPreferMode-return UNI_ERROR_FALSE-getPrefMode failed");
        }
        Host host;
        host.expect(row.command, 5000, reply);
        EXPECT_EQ(KR_getNetworkPreferMode(mode.get()), row.mode ? UNI_ERROR_SUCCESS : UNI_ERROR_FALSE);
        EXPECT_EQ(*mode.get(), row.mode.value_or(kUntouched));
        EXPECT_EQ(Log::of(host), log);
    }
}

TEST(GetNetworkPreferMode, FailsWithTheRead)
{
    for (const int32_t platform : kPlatforms) {
        for (const Failure &failure : kFailures) {
            const bool readsConfiguration = platform == PF_TSP || platform == PF_SPEADTRUM;
            const OnPlatform on(platform);
            int32_t mode = kUntouched;
            Host host;
            play(host, {{platform == PF_MTK   ? "AT+ERAT?"
                         : readsConfiguration ? "AT^SYSCONFIG?"
                                              : "AT+ZSNT?",
                         5000, failure.reply}});
            EXPECT_EQ(KR_getNetworkPreferMode(&mode), UNI_ERROR_FALSE) << failure.name;
            EXPECT_EQ(mode, kUntouched);
            EXPECT_EQ(Log::of(host), Log()
                                         .api("KR_getNetworkPreferMode-in")
                                         .failed(failure)
                                         .api("KR_setNetworkPreferMode-return UNI_ERROR_FALSE-getPrefMode failed"));
        }
    }
}

Log lteEntry(int32_t technologyPref)
{
    return Log()
        .api("KR_setLteNetworkPreference-in")
        .api("KR_setLteNetworkPreference-in-technologyPref:%d", technologyPref);
}

TEST(SetLteNetworkPreference, PassesAnyValueOnEveryPlatform)
{
    for (const int32_t platform : kPlatforms) {
        for (const int32_t pref : {0, 1, 5, 99, -1, INT32_MAX, INT32_MIN}) {
            const OnPlatform on(platform);
            Host host;
            host.expect("AT+ZEACT=" + std::to_string(pref), 5000, kOk);
            EXPECT_EQ(KR_setLteNetworkPreference(pref), UNI_ERROR_SUCCESS);
            EXPECT_EQ(Log::of(host), lteEntry(pref).ok().api("KR_setLteNetworkPreference-return UNI_ERROR_SUCCESS"));
        }
    }
}

TEST(SetLteNetworkPreference, TellsASendThatFailsFromAnAnswer)
{
    for (const Failure &failure : kFailures) {
        Host host;
        play(host, {{"AT+ZEACT=2", 5000, failure.reply}});
        EXPECT_EQ(KR_setLteNetworkPreference(2), UNI_ERROR_FALSE) << failure.name;
        EXPECT_EQ(Log::of(host),
                  lteEntry(2).failed(failure).text(
                      failure.reply ? "KR_setLteNetworkPreference-return UNI_ERROR_FALSE"
                                    : "KR_setLteNetworkPreference-return UNI_ERROR_FALSE-send at failed"));
    }
}

TEST(SetbandByBand, SendsTheTextItself)
{
    for (const int32_t platform : kPlatforms) {
        for (const std::string &text : {std::string("AT+ZBAND=\"1,3,7\""), std::string("%d%s%n"), std::string(" "),
                                        std::string("x"), filled(1022), filled(1023)}) {
            const OnPlatform on(platform);
            const GuardedText command(text);
            Host host;
            host.expect(text, 5000, kOk);
            EXPECT_EQ(SetbandByBand(command), UNI_ERROR_SUCCESS) << text;
            EXPECT_EQ(Log::of(host), Log().ok().api("SetbandByBand-return UNI_ERROR_SUCCESS"));
        }
    }
}

TEST(SetbandByBand, SendsNothingOfATextThatIsTooLong)
{
    for (const size_t length : {1024U, 1025U, 5000U}) {
        const GuardedText command(filled(length));
        Host host;
        EXPECT_EQ(SetbandByBand(command), UNI_ERROR_FALSE) << length;
        EXPECT_EQ(Log::of(host), Log().api("SetbandByBand-return UNI_ERROR_FALSE-send at failed"));
    }
}

TEST(SetbandByBand, RefusesNoText)
{
    for (const char *text : {static_cast<const char *>(nullptr), ""}) {
        Host host;
        EXPECT_EQ(SetbandByBand(text), UNI_ERROR_INVALID_PARAMETER);
        EXPECT_EQ(Log::of(host), Log().api("SetbandByBand-return UNI_ERROR_INVALID_PARAMETER"));
    }
}

TEST(SetbandByBand, TellsASendThatFailsFromAnAnswer)
{
    for (const Failure &failure : kFailures) {
        Host host;
        play(host, {{"AT+ZBAND=1", 5000, failure.reply}});
        EXPECT_EQ(SetbandByBand("AT+ZBAND=1"), UNI_ERROR_FALSE) << failure.name;
        EXPECT_EQ(Log::of(host),
                  Log().failed(failure).text(failure.reply ? "SetbandByBand-return UNI_ERROR_FALSE"
                                                           : "SetbandByBand-return UNI_ERROR_FALSE-send at failed"));
    }
}

} // namespace

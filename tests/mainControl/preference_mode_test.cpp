// The preference mode on each platform, command for command.

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
using scripted::Script;

constexpr int32_t kUntouched = 77;
const char *const kOk = "\r\nOK\r\n";
const std::string kServed = framed({"^SYSINFO: 2,3,0,5,1"}); ///< as PF_TSP sends it
const std::string kUnserved = framed({"^SYSINFO: 0,0,0,0,1"});

const Exchange kDetach = {"AT+CGATT=0", 10000, kOk};
const Exchange kAttach = {"AT+CGATT=1", 10000, kOk};
const Exchange kAutomatic = {"AT+COPS=0,0,\"\",0", 180000, kOk}; ///< where operators are quoted
const Exchange kBand = {"AT+ZPREFBAND=\"0\"", 5000, kOk};

Exchange sysinfo(const std::string &reply)
{
    return {"AT^SYSINFO", 5000, reply};
}
Exchange cops(const char *line)
{
    return {"AT+COPS?", 5000, framed({(std::string("+COPS: ") + line).c_str()})};
}
Exchange sysconfig(const char *values)
{
    return {std::string("AT^SYSCONFIG=") + values, 5000, kOk};
}
Exchange erat(const char *values)
{
    return {std::string("AT+ERAT=") + values, 5000, kOk};
}
Exchange zsnt(const char *values)
{
    return {std::string("AT+ZSNT=") + values, 10000, kOk};
}

/** A mode on every platform that has a command of its own, by the columns of the translation. */
struct ModeRow {
    int32_t mode;
    const char *zsnt;
    const char *sysconfig;
    const char *erat;
};

const ModeRow kModes[] = {
    {0, "0,0,0", "2,0,1,3", "2,0"},   {1, "0,0,1", "2,1,1,3", "2,2"},   {2, "0,0,2", "2,2,1,3", "2,2"},
    {3, "1,0,0", "13,0,1,3", "0,0"},  {4, "2,0,0", "14,0,1,3", "1,0"},  {5, "0,1,2", "2,0,1,3", "2,2"},
    {9, "6,0,0", "17,0,1,3", "2,2"},  {11, "7,0,0", "20,0,1,3", "2,2"}, {12, "0,0,3", "2,0,1,3", "2,2"},
    {14, "0,0,2", "18,1,1,3", "2,2"}, {17, "0,0,2", "19,7,1,3", "2,2"}, {21, "0,0,2", "2,6,1,3", "2,2"},
    {99, "0,0,2", "2,0,1,3", "2,2"},  {-1, "0,0,2", "2,0,1,3", "2,2"},
};

Script scriptOf(int32_t platform, int32_t supportBandSet, const ModeRow &row)
{
    switch (platform) {
    case PF_SPEADTRUM:
        return {sysconfig(row.sysconfig)};
    case PF_MTK:
        return {cops("1,2,\"46001\",7"), kAutomatic, erat(row.erat)};
    case PF_TSP:
        return {kDetach, sysconfig(row.sysconfig), kAutomatic, sysinfo(kServed), kAttach};
    default:
        if (platform == PF_QC_LTE && supportBandSet == 1) return {kBand, zsnt(row.zsnt)};
        return {zsnt(row.zsnt)};
    }
}

TEST(SetPrefMode, SendsEachPlatformsCommands)
{
    for (const int32_t platform : kPlatforms) {
        for (const int32_t supportBandSet : {0, 1, 2, -1, 257}) {
            for (const ModeRow &row : kModes) {
                SCOPED_TRACE(std::to_string(platform) + ": " + std::to_string(row.mode));
                const OnPlatform on(platform);
                Host host;
                play(host, scriptOf(platform, supportBandSet, row));
                EXPECT_EQ(setPrefMode(row.mode, supportBandSet), UNI_ERROR_SUCCESS);
                EXPECT_TRUE(host.texts(scripted::kApiModule).empty());
            }
        }
    }
}

/** A step that fails: what still comes, and the code. */
struct FailingStep {
    const char *name;
    int32_t platform;
    Script before;
    Exchange failing;
    Script after;
    uint32_t code;
    bool logsItself = false; ///< AT+ZSNT= does
};

const FailingStep kFailingSteps[] = {
    {"the mode", PF_SPEADTRUM, {}, sysconfig("13,0,1,3"), {}, 1},
    {"asking for the selection is ignored", PF_MTK, {}, cops("1"), {erat("0,0")}, 0},
    {"the automatic selection is ignored", PF_MTK, {cops("1")}, kAutomatic, {erat("0,0")}, 0},
    {"the mode", PF_MTK, {cops("0")}, erat("0,0"), {}, 1},
    {"the mode in manual selection", PF_MTK, {cops("1"), kAutomatic}, erat("0,0"), {}, 1},
    {"the detach is ignored", PF_TSP, {}, kDetach, {sysconfig("13,0,1,3"), kAutomatic, sysinfo(kServed), kAttach}, 0},
    {"the mode, and all else goes on",
     PF_TSP,
     {kDetach},
     sysconfig("13,0,1,3"),
     {kAutomatic, sysinfo(kUnserved), sysinfo(kServed), kAttach},
     1},
    {"the selection is ignored, without polls", PF_TSP, {kDetach, sysconfig("13,0,1,3")}, kAutomatic, {kAttach}, 0},
    {"a poll is ignored",
     PF_TSP,
     {kDetach, sysconfig("13,0,1,3"), kAutomatic},
     sysinfo(""),
     {sysinfo(kServed), kAttach},
     0},
    {"the attach is ignored", PF_TSP, {kDetach, sysconfig("13,0,1,3"), kAutomatic, sysinfo(kServed)}, kAttach, {}, 0},
    {"the band is ignored", PF_QC_LTE, {}, kBand, {zsnt("1,0,0")}, 0},
    {"the mode behind the band", PF_QC_LTE, {kBand}, zsnt("1,0,0"), {}, 1, true},
    {"the mode", 0, {}, zsnt("1,0,0"), {}, 1, true},
    {"the mode", 2, {}, zsnt("1,0,0"), {}, 1, true},
    {"the mode", 7, {}, zsnt("1,0,0"), {}, 1, true},
};

TEST(SetPrefMode, GoesOnOrStopsAtAStepThatFails)
{
    for (const FailingStep &row : kFailingSteps) {
        for (const Failure &failure : kFailures) {
            SCOPED_TRACE(std::to_string(row.platform) + ": " + row.name + ": " + failure.name);
            const OnPlatform on(row.platform);
            Host host;
            play(host, row.before);
            play(host, {{row.failing.command, row.failing.timeoutMs, failure.reply}});
            play(host, row.after);
            EXPECT_EQ(setPrefMode(3, 1), row.code);
            Log log;
            if (row.logsItself && !failure.reply) log.network("zsntSet ClientSendCmd return\n");
            if (row.logsItself && failure.reply) log.network("zsntSet UNI_ERROR_FALSE return\n");
            EXPECT_EQ(Log::of(host, scripted::kNetworkModule), log);
            EXPECT_TRUE(host.texts(scripted::kApiModule).empty());
        }
    }
}

TEST(SetPrefMode, FailsWithBothTheDetachAndTheMode)
{
    const OnPlatform on(PF_TSP);
    Host host;
    play(host, {{kDetach.command, 10000, std::nullopt},
                {"AT^SYSCONFIG=2,0,1,3", 5000, std::nullopt},
                {kAutomatic.command, 180000, std::nullopt},
                {kAttach.command, 10000, std::nullopt}});
    EXPECT_EQ(setPrefMode(0, 0), UNI_ERROR_FALSE);
    EXPECT_EQ(Log::of(host), Log());
}

TEST(SetPrefMode, LeavesAnyOtherSelectionOfMediaTekAlone)
{
    for (const char *selection : {"0,2,\"46001\",7", "2", "3,0", "4,2,\"46001\",7", "-1", "x"}) {
        const OnPlatform on(PF_MTK);
        Host host;
        play(host, {cops(selection), erat("2,0")});
        EXPECT_EQ(setPrefMode(0, 0), UNI_ERROR_SUCCESS) << selection;
    }
}

/** As the platform frames the service status. */
std::string status(int32_t platform, const std::string &values)
{
    return framed({((platform == PF_TSP ? "^SYSINFO: " : "^SYSINFO:") + values).c_str()});
}

Exchange automatic(int32_t platform)
{
    const bool quotes = platform == PF_MTK || platform == PF_TSP || platform == PF_SPEADTRUM;
    return {quotes ? "AT+COPS=0,0,\"\",0" : "AT+COPS=0,0,,0", 180000, kOk};
}

TEST(AutoSearch, PollsUntilThereIsServiceAndTenTimesAtMost)
{
    for (const int32_t platform : kPlatforms) {
        for (const char *served : {"1,0,0,0,1", "2,3,0,5,1", "2"}) {
            for (size_t polls = 1; polls <= 10; ++polls) {
                SCOPED_TRACE(std::to_string(platform) + ": " + std::to_string(polls));
                const OnPlatform on(platform);
                Host host;
                play(host, {automatic(platform)});
                Log log = Log().ok();
                for (size_t poll = 1; poll <= polls; ++poll) {
                    const std::string values = poll == polls ? served : "0,255,0,0,1";
                    host.expect("AT^SYSINFO", 5000, status(platform, values));
                    log.parsed(status(platform, values), (platform == PF_TSP ? "" : "^SYSINFO:") + values);
                }
                EXPECT_EQ(setAutoSearchCheckNetwork(), UNI_ERROR_SUCCESS);
                EXPECT_EQ(Log::of(host), log);
            }
        }
    }
}

TEST(AutoSearch, GivesUpAfterTenPollsWithSuccess)
{
    for (const int32_t platform : kPlatforms) {
        // The framing of one platform has no value for the others.
        std::vector<std::optional<std::string>> replies = {kOk, status(platform == PF_TSP ? 0 : PF_TSP, "2,3,0,5,1")};
        for (const char *values : {"0,0,0,0,1", "3,3,0,5,1", "4,3,0,5,1", "-1,1,1,1,1", "-2", "x", "0,1,2,1,2", "255"})
            replies.emplace_back(status(platform, values));
        for (const Failure &failure : kFailures)
            replies.push_back(failure.reply);
        for (const auto &reply : replies) {
            SCOPED_TRACE(std::to_string(platform) + ": " + reply.value_or("not sent"));
            const OnPlatform on(platform);
            Host host;
            play(host, {automatic(platform)});
            play(host, Script(10, {"AT^SYSINFO", 5000, reply}));
            EXPECT_EQ(setAutoSearchCheckNetwork(), UNI_ERROR_SUCCESS);
        }
    }
}

TEST(AutoSearch, FailsWithoutAPollWhenTheSelectionFails)
{
    for (const int32_t platform : kPlatforms) {
        for (const Failure &failure : kFailures) {
            const OnPlatform on(platform);
            Host host;
            play(host, {{automatic(platform).command, 180000, failure.reply}});
            EXPECT_EQ(setAutoSearchCheckNetwork(), UNI_ERROR_FALSE) << failure.name;
            EXPECT_EQ(Log::of(host), Log().failed(failure));
        }
    }
}

/** A reply to the read of the mode, and the mode that it stands for. */
struct Reading {
    std::vector<int32_t> platforms;
    const char *command;
    std::string reply;
    int32_t flag;
    uint32_t code;
    int32_t mode;
    const char *selection = nullptr; ///< asked for afterwards
};

const std::vector<int32_t> kZsntPlatforms = {0, 1, 2, 7, -4};
const std::vector<int32_t> kSysconfigPlatforms = {4, 5};
const std::vector<int32_t> kEratPlatforms = {3};

const Reading kReadings[] = {
    {kZsntPlatforms, "AT+ZSNT?", framed({"+ZSNT: 0,0,2"}), 0, 0, 2},
    {kZsntPlatforms, "AT+ZSNT?", framed({"+ZSNT: 0,1,2"}), 0, 0, 2},
    {kZsntPlatforms, "AT+ZSNT?", framed({"+ZSNT: 0,1,2"}), 1, 0, 5},
    {kZsntPlatforms, "AT+ZSNT?", framed({"+ZSNT: 0,1,2"}), 2, 0, 2},
    {kZsntPlatforms, "AT+ZSNT?", framed({"+ZSNT: 8,1"}), 1, 0, 5},
    {kZsntPlatforms, "AT+ZSNT?", framed({"+ZSNT: 6,0,0"}), 1, 0, 9},
    {kZsntPlatforms, "AT+ZSNT?", framed({"+ZSNT: 3,0,0"}), 0, 1, kUntouched},
    {kZsntPlatforms, "AT+ZSNT?", framed({"+ZSNT: -1,0,0"}), 0, 1, kUntouched},
    {kZsntPlatforms, "AT+ZSNT?", framed({"+ZSNT: 7"}), 0, 0, 11},
    {kZsntPlatforms, "AT+ZSNT?", framed({"+ZSNT: 0,0"}), 0, 0, 0},
    {kZsntPlatforms, "AT+ZSNT?", kOk, 1, 0, 0},
    {kSysconfigPlatforms, "AT^SYSCONFIG?", framed({"^SYSCONFIG: 2,6,1,3"}), 0, 0, 21},
    {kSysconfigPlatforms, "AT^SYSCONFIG?", framed({"^SYSCONFIG: 20,0,1,3"}), 1, 0, 11},
    {kSysconfigPlatforms, "AT^SYSCONFIG?", framed({"^SYSCONFIG: 2,0"}), 0, 0, 0},
    {kSysconfigPlatforms, "AT^SYSCONFIG?", framed({"^SYSCONFIG: 2,1,1,3"}), 0, 0, kUntouched},
    {kSysconfigPlatforms, "AT^SYSCONFIG?", framed({"^SYSCONFIG: 19,0,1,3"}), 0, 0, kUntouched},
    {kSysconfigPlatforms, "AT^SYSCONFIG?", framed({"^SYSCONFIG: 16,0,1,3"}), 0, 1, kUntouched},
    {kSysconfigPlatforms, "AT^SYSCONFIG?", kOk, 0, 1, kUntouched},
    {kEratPlatforms, "AT+ERAT?", framed({"+ERAT: 9,9,2,2"}), 0, 0, 2},
    {kEratPlatforms, "AT+ERAT?", framed({"+ERAT: 2,2,1,0"}), 0, 0, 4},
    {kEratPlatforms, "AT+ERAT?", framed({"+ERAT: 9,9,2,1"}), 0, 0, 0},
    {kEratPlatforms, "AT+ERAT?", framed({"+ERAT: 2,2,2"}), 0, 0, 0},
    {kEratPlatforms, "AT+ERAT?", framed({"+ERAT: 2,2"}), 0, 0, 3},
    {kEratPlatforms, "AT+ERAT?", framed({"+ERAT: 2,2,3,2"}), 0, 1, kUntouched},
    {kEratPlatforms, "AT+ERAT?", kOk, 0, 0, 3},
    {kEratPlatforms, "AT+ERAT?", framed({"+ERAT: 9,9,2,2"}), 1, 0, 5, "1,2,\"46001\",7"},
    {kEratPlatforms, "AT+ERAT?", framed({"+ERAT: 9,9,9,2"}), -1, 0, 5, "1"},
    {kEratPlatforms, "AT+ERAT?", framed({"+ERAT: 9,9,2,2"}), 1, 0, 2, "0,2,\"46001\",7"},
};

TEST(GetPrefMode, ReadsEachPlatformsValues)
{
    for (const Reading &row : kReadings) {
        for (const int32_t platform : row.platforms) {
            SCOPED_TRACE(std::to_string(platform) + row.reply);
            const OnPlatform on(platform);
            const GuardedRecord<int32_t> mode;
            *mode.get() = kUntouched;
            Host host;
            host.expect(row.command, 5000, row.reply);
            if (row.selection != nullptr) play(host, {cops(row.selection)});
            EXPECT_EQ(getPrefMode(mode.get(), row.flag), row.code);
            EXPECT_EQ(*mode.get(), row.mode);
            EXPECT_TRUE(host.texts(scripted::kApiModule).empty());
        }
    }
}

TEST(GetPrefMode, FailsWithoutAWriteWhenTheReadFails)
{
    for (const int32_t platform : kPlatforms) {
        const char *command = "AT+ZSNT?";
        if (platform == PF_MTK) command = "AT+ERAT?";
        if (platform == PF_TSP || platform == PF_SPEADTRUM) command = "AT^SYSCONFIG?";
        for (const Failure &failure : kFailures) {
            const OnPlatform on(platform);
            int32_t mode = kUntouched;
            Host host;
            play(host, {{command, 5000, failure.reply}});
            EXPECT_EQ(getPrefMode(&mode, 1), UNI_ERROR_FALSE) << failure.name;
            EXPECT_EQ(mode, kUntouched);
            EXPECT_EQ(Log::of(host), Log().failed(failure));
        }
    }
}

} // namespace

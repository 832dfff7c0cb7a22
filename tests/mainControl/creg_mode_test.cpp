// Circuit-switched registration with its location: the report mode is raised for one read.

#include <cstring>

#include <gtest/gtest.h>

#include "tests/support/guarded_text.h"
#include "tests/support/log_lines.h"
#include "tests/support/sample_text.h"

namespace {

using scripted::failingAt;
using scripted::Failure;
using scripted::framed;
using scripted::Host;
using scripted::kFailures;
using scripted::kPlatforms;
using scripted::Log;
using scripted::OnPlatform;
using scripted::Script;

/** One line of a reply: the commas that are counted, and what is read of it. */
struct Line {
    std::string text;
    int32_t commas;
    std::optional<int32_t> mode;
    std::optional<int32_t> status;
    std::optional<std::string> lac;
    std::optional<std::string> cellId;
};

struct CregReply {
    const char *name;
    std::vector<Line> lines;
};

const Line kWhole = {"2,1,\"1A2B\",\"01C2D3E4\",7", 4, 2, 1, "1A2B", "01C2D3E4"};
const Line kRoaming = {"2,5,\"0F\",\"02\",2", 4, 2, 5, "0F", "02"};

Line untaken(const std::string &text, int32_t commas)
{
    return {text, commas, std::nullopt, std::nullopt, std::nullopt, std::nullopt};
}

const CregReply kReplies[] = {
    {"no line", {}},
    {"whole", {kWhole}},
    {"report mode 0", {untaken("0,1", 1)}},
    {"status only", {untaken("1", 0)}},
    {"without technology", {untaken("2,1,\"1A2B\",\"01C2D3E4\"", 3)}},
    {"technology left empty", {untaken("2,1,\"1A2B\",\"01C2D3E4\",", 0)}},
    {"commas in quotes are not counted", {untaken("2,1,\"1,A\",\"0,1\"", 3)}},
    {"comma in quotes", {{"2,1,\"1,A\",\"0,1\",7", 4, 2, 1, "1,A", "0,1"}}},
    {"semicolon in quotes", {{"2,1,\"1;A\",\"0;1\",7", 4, 2, 1, "1;A", "0;1"}}},
    {"blank and tab in quotes", {{"2,1,\"1 A\",\"0\t1\",7", 4, 2, 1, "1 A", "0\t1"}}},
    {"without quotes", {{"2,1,1A2B,01C2D3E4,7", 4, 2, 1, "1A2B", "01C2D3E4"}}},
    {"six parameters", {{"2,1,\"1A2B\",\"01C2D3E4\",7,\"01\"", 5, 2, 1, "1A2B", "01C2D3E4"}}},
    {"negative", {{"-2,-1,\"A\",\"B\",7", 4, -2, -1, "A", "B"}}},
    {"mode no number", {untaken("x,1,\"A\",\"B\",7", 4)}},
    {"status no number", {{"2,x,\"A\",\"B\",7", 4, 2, std::nullopt, std::nullopt, std::nullopt}}},
    {"the last of two wins", {kWhole, kRoaming}},
    {"a short one does not undo", {kRoaming, untaken("0,1", 1)}},
    {"a short one before", {untaken("0,1", 1), kWhole}},
    {"codes of 35", {{"2,1,\"" + filled(35) + "\",\"" + filled(35) + "\",7", 4, 2, 1, filled(35), filled(35)}}},
    {"codes of 36", {{"2,1,\"" + filled(36) + "\",\"" + filled(36) + "\",7", 4, 2, 1, filled(35), filled(35)}}},
    {"codes of 300", {{"2,1,\"" + filled(300) + "\",\"" + filled(310) + "\",7", 4, 2, 1, filled(35), filled(35)}}},
};

constexpr unsigned char kPattern = 0xA5;
constexpr const char *kLacBefore = "old area";
constexpr const char *kCellBefore = "old cell";

CregPara recordBefore()
{
    CregPara record;
    std::memset(&record, kPattern, sizeof record);
    record.mode = 11;
    record.status = 12;
    std::memcpy(record.lac, kLacBefore, std::strlen(kLacBefore) + 1);
    std::memcpy(record.cellid, kCellBefore, std::strlen(kCellBefore) + 1);
    return record;
}

std::string bytesOf(const CregPara &record)
{
    return {reinterpret_cast<const char *>(&record), sizeof record};
}

void take(CregPara &record, const Line &line)
{
    record.mode = line.mode.value_or(record.mode);
    record.status = line.status.value_or(record.status);
    if (line.lac) std::memcpy(record.lac, line.lac->c_str(), line.lac->size() + 1);
    if (line.cellId) std::memcpy(record.cellid, line.cellId->c_str(), line.cellId->size() + 1);
}

/** A reply with its log lines and the record it leaves. */
struct Expected {
    std::string reply;
    Log read;
    CregPara record = recordBefore();

    explicit Expected(const std::vector<Line> &lines)
    {
        std::string paras;
        for (const Line &line : lines) {
            reply += "\r\n+CREG: " + line.text + "\r\n";
            paras += (paras.empty() ? "" : ";") + line.text;
        }
        reply += "\r\nOK\r\n";
        read.parsed(reply, paras).network("cregRead-outtAtRes.Paras:%s", paras.c_str());
        for (const Line &line : lines) {
            take(record, line);
            read.network("cregRead-tParasList.strParasLine[i]:%s", line.text.c_str())
                .network("cregRead-out-num:%d", line.commas)
                .network("cregRead-out-pCregPara->cellid:%s", record.cellid)
                .network("cregRead-out-pCregPara->lac:%s", record.lac)
                .network("cregRead-out-pCregPara->mode:%d", record.mode)
                .network("cregRead-out-pCregPara->status:%d", record.status);
        }
    }
};

Script script(const std::string &reply)
{
    return {{"AT+CREG=2", 5000, "\r\nOK\r\n"}, {"AT+CREG?", 5000, reply}, {"AT+CREG=0", 5000, "\r\nOK\r\n"}};
}

Log success(const CregPara &record)
{
    return Log()
        .api("KR_getCregMode-out-cregPara->cellid:%s", record.cellid)
        .api("KR_getCregMode-out-cregPara->lac:%s", record.lac)
        .api("KR_getCregMode-out-cregPara->mode:%d", record.mode)
        .api("KR_getCregMode-out-cregPara->status:%d", record.status)
        .api("KR_getCregMode-return UNI_ERROR_SUCCESS");
}

TEST(CregMode, ReadsEachReplyIntoTheRecord)
{
    for (const CregReply &row : kReplies) {
        SCOPED_TRACE(row.name);
        const Expected expected(row.lines);
        GuardedRecord<CregPara> record;
        *record = recordBefore();
        Host host;
        play(host, script(expected.reply));
        EXPECT_EQ(KR_getCregMode(record), UNI_ERROR_SUCCESS);
        EXPECT_EQ(bytesOf(*record.get()), bytesOf(expected.record));
        EXPECT_EQ(Log::of(host),
                  Log().api("KR_getCregMode-in").ok().then(expected.read).ok().then(success(expected.record)));
    }
}

TEST(CregMode, TakesTheSameRoadOnEveryPlatform)
{
    const Expected expected({kWhole});
    for (const int32_t platform : kPlatforms) {
        const OnPlatform on(platform);
        CregPara record = recordBefore();
        Host host;
        play(host, script(expected.reply));
        EXPECT_EQ(KR_getCregMode(&record), UNI_ERROR_SUCCESS) << platform;
        EXPECT_EQ(bytesOf(record), bytesOf(expected.record)) << platform;
    }
}

TEST(CregMode, ReadsEmptyCodesAsEmptyTexts)
{
    for (const char *line : {"+CREG: 2,1,\"\",\"\",7", "+CREG: 2,1,,,7"}) {
        CregPara record = recordBefore();
        Host host;
        play(host, script(framed({line})));
        EXPECT_EQ(KR_getCregMode(&record), UNI_ERROR_SUCCESS);
        EXPECT_STREQ(record.lac, "") << line;
        EXPECT_STREQ(record.cellid, "") << line;
        EXPECT_EQ(record.status, 1) << line;
    }
}

TEST(CregMode, LeavesAZeroedRecordZeroedWithoutTechnology)
{
    for (const char *line : {"+CREG: 0,1", "+CREG: 2,1,\"1A2B\",\"01C2D3E4\""}) {
        CregPara record = {};
        Host host;
        play(host, script(framed({line})));
        EXPECT_EQ(KR_getCregMode(&record), UNI_ERROR_SUCCESS);
        EXPECT_EQ(bytesOf(record), std::string(sizeof record, '\0')) << line;
    }
}

TEST(CregMode, StopsAtTheStepThatFails)
{
    const Expected expected({kWhole});
    const char *const reasons[] = {
        "KR_getCregMode-return UNI_ERROR_FALSE-cregSet(2) failed",
        "KR_getCregMode-return UNI_ERROR_FALSE-cregRead failed",
        "KR_getCregMode-return UNI_ERROR_FALSE-cregSet(0) failed",
    };
    for (size_t step = 0; step < std::size(reasons); ++step) {
        for (const Failure &failure : kFailures) {
            SCOPED_TRACE(std::string(reasons[step]) + ": " + failure.name);
            GuardedRecord<CregPara> record;
            *record = recordBefore();
            Host host;
            play(host, failingAt(script(expected.reply), step, failure));
            EXPECT_EQ(KR_getCregMode(record), UNI_ERROR_FALSE);
            // What was read stays, even if the last step fails.
            EXPECT_EQ(bytesOf(*record.get()), bytesOf(step < 2 ? recordBefore() : expected.record));
            Log log = Log().api("KR_getCregMode-in");
            if (step > 0) log.ok();
            if (step > 1) log.then(expected.read);
            EXPECT_EQ(Log::of(host), log.failed(failure).text(reasons[step]));
        }
    }
}

} // namespace

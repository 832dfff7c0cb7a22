// The steps of the parser that start from parameters, each called alone.

#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/parse_run.h"
#include "tests/support/work_record.h"

namespace {

constexpr unsigned char kPattern = 0xA5;

struct OkCase {
    const char *paras;
    const char *name;
    const char *assembled;
};

TEST(OkBody, IsReadFromTheParametersWithoutTheirFirstTwo)
{
    const OkCase cases[] = {
        {"\r\n+A: 1\r\n+A: 2\r\n", "+A", "1;2"},
        {"\r\n+A: 1\r\n+B: 2\r\n+A: 3\r\n", "+A", "1"},
        {"xy+A: 1\r\n", "+A", "1"},
        {"\r\n12", "", ""},
        {"\r\n", "", ""},
        {"", "", ""},
        {"\r\n\r\nab\r\n", "", "ab"},
    };
    for (const OkCase &row : cases) {
        SCOPED_TRACE(shown(row.paras));
        const GuardedRecord<AtRes> record;
        setField(record->Paras, row.paras);
        const std::string before(record.data(), record.size());
        const WorkRecord work;
        EXPECT_EQ(_Parse_At_Ok_Res(record, work), 0U);
        work.expect(row.name, row.assembled);
        EXPECT_TRUE(before == std::string(record.data(), record.size()));
    }
}

TEST(OkBody, StaysInsideAFullRecord)
{
    const GuardedRecord<AtRes> record('x');
    const WorkRecord work;
    EXPECT_EQ(_Parse_At_Ok_Res(record, work), 0U);
    work.expect("", "");
}

TEST(OkBody, RefusesNull)
{
    const scripted::Host host;
    const GuardedRecord<AtRes> record;
    setField(record->Paras, "\r\n+A: 1\r\n");
    const WorkRecord work("+A", "x");
    EXPECT_EQ(_Parse_At_Ok_Res(nullptr, work), 20U);
    EXPECT_EQ(_Parse_At_Ok_Res(record, nullptr), 20U);
    EXPECT_EQ(_Parse_At_Ok_Res(nullptr, nullptr), 20U);
    work.expect("+A", "x");
    EXPECT_STREQ(record->Paras, "\r\n+A: 1\r\n");
}

struct CallerCase {
    const char *parameters;
    const char *behind;
    int32_t code;
};

TEST(CallerLine, IsTakenWithItsOkOnly)
{
    const SavedTables saved;
    const CallerCase cases[] = {
        {"\"1\",129", "\r\n\r\nOK\r\n", 1},
        {",", "\r\n\r\nOK\r\n", 1},
        {"\"1,2\",3", "\r\n\r\nOK\r\n", 1},
        {"\"1,2\"", "\r\n\r\nOK\r\n", 0},
        {"12", "\r\n\r\nOK\r\n", 0},
        {"", "\r\n\r\nOK\r\n", 0},
        {"1,2,3", "\r\n\r\nOK\r\n", 0},
        {"1,2", "\r\n\r\nOK\r\nx", 0},
        {"1,2", "\r\n\r\nOK\r", 0},
        {"1,2", "\r\nOK\r\n", 0},
        {"1,2", "\r\n", 0},
        {"1,2", "", 0},
        {"1,2", "\r\n\r\nok\r\n", 0},
        {"12", "\r\n,\r\nOK\r\n", 0},
    };
    for (const CallerCase &row : cases) {
        for (const int32_t ignored : {0, 1, -1}) {
            SCOPED_TRACE(shown(row.parameters) + shown(row.behind));
            const GuardedText text("\r\n+CLIP: " + std::string(row.parameters) + row.behind);
            char *const start = text.data() + 9;
            char *const end = start + std::strlen(row.parameters);
            const ParseRun run("", kPattern);
            g_iProcDataLen = 9;
            const WorkRecord work;
            EXPECT_EQ(ProcessClipCmd(start, end, ignored, run.record, work), row.code);
            const int32_t counted = static_cast<int32_t>(std::strlen(row.parameters)) + 8;
            EXPECT_EQ(g_iProcDataLen, row.code == 1 ? 9 + counted : 9);
            EXPECT_EQ(run.record->Result, row.code == 1 ? 1 : kPattern);
            EXPECT_EQ(run.record->CmdId, 0xA5A5);
            EXPECT_EQ(run.record->ParasLen, 0xA5A5);
            EXPECT_TRUE(run.isUntouchedFrom(0));
            work.expect("", row.code == 1 ? row.parameters : "");
        }
    }
}

TEST(CallerLine, RefusesNull)
{
    const SavedTables saved;
    const GuardedText text("1,2\r\n\r\nOK\r\n");
    const ParseRun run("", kPattern);
    const WorkRecord work;
    char *const start = text.data();
    char *const end = start + 3;
    EXPECT_EQ(ProcessClipCmd(nullptr, end, 0, run.record, work), 0);
    EXPECT_EQ(ProcessClipCmd(start, nullptr, 0, run.record, work), 0);
    EXPECT_EQ(ProcessClipCmd(start, end, 0, nullptr, work), 0);
    EXPECT_EQ(ProcessClipCmd(start, end, 0, run.record, nullptr), 0);
    EXPECT_TRUE(run.isUntouched());
    work.expect("", "");
    EXPECT_EQ(g_iProcDataLen, ParseRun::kUntouched);
}

struct CopyCase {
    const char *text;
    size_t start;
    size_t length;
    int32_t counted;
};

TEST(Parameters, AreCountedAndCopied)
{
    const SavedTables saved;
    const CopyCase cases[] = {
        {"\r\n+A: 1,2\r\n", 6, 3, 5}, {"\r\n+A: \r\n", 6, 0, 2},          {"1", 0, 1, 3},
        {"CDS: 1\r\n2", 5, 4, 4},     {"\r\n+A: 1\r\nCMT:\r\n", 6, 9, 9}, {"CBM:1\r\n", 4, 1, 1},
        {"ZCLAS:1\r\n", 6, 1, 1},     {"\"CMT:\"1\r\n", 6, 1, 1},         {"CMT1\r\n", 3, 1, 3},
    };
    for (const CopyCase &row : cases) {
        for (const int32_t before : {0, 9, -3}) {
            SCOPED_TRACE(shown(row.text));
            const GuardedText text(row.text);
            const ParseRun run("", kPattern);
            g_iProcDataLen = before;
            char *const start = text.data() + row.start;
            EXPECT_EQ(_Parse_At_ParaOfTheEndColon(text, start, start + row.length, run.record), 0U);
            EXPECT_EQ(std::string(run.record->Paras, row.length), std::string(row.text).substr(row.start, row.length));
            EXPECT_TRUE(run.isUntouchedFrom(row.length));
            EXPECT_EQ(run.record->ParasLen, row.length);
            EXPECT_EQ(run.record->CmdId, 0xA5A5);
            EXPECT_EQ(run.record->Result, kPattern);
            EXPECT_EQ(g_iProcDataLen, before + row.counted);
        }
    }
}

// A count that cannot grow any further still must not stop the step.
TEST(Parameters, BearAFullCount)
{
    const SavedTables saved;
    const GuardedText text("1,2\r\n\r\nOK\r\n");
    char *const end = text.data() + 3;
    const ParseRun run("");
    const WorkRecord work;
    g_iProcDataLen = 2147483647;
    EXPECT_EQ(_Parse_At_ParaOfTheEndColon(text, text, end, run.record), 0U);
    EXPECT_STREQ(run.record->Paras, "1,2");
    g_iProcDataLen = 2147483647;
    EXPECT_EQ(ProcessClipCmd(text, end, 0, run.record, work), 1);
    work.expect("", "1,2");
}

TEST(Parameters, NullChangesNothing)
{
    const SavedTables saved;
    const GuardedText text("1\r\n");
    const ParseRun run("", kPattern);
    char *const end = text.data() + 1;
    EXPECT_EQ(_Parse_At_ParaOfTheEndColon(nullptr, text, end, run.record), 0U);
    EXPECT_EQ(_Parse_At_ParaOfTheEndColon(text, nullptr, end, run.record), 0U);
    EXPECT_EQ(_Parse_At_ParaOfTheEndColon(text, text, nullptr, run.record), 0U);
    EXPECT_EQ(_Parse_At_ParaOfTheEndColon(text, text, end, nullptr), 0U);
    EXPECT_TRUE(run.isUntouched());
    EXPECT_EQ(g_iProcDataLen, ParseRun::kUntouched);
}

} // namespace

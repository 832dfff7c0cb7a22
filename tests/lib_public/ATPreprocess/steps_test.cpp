// The searching and cutting steps of the parser, each called alone.

#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/filled.h"
#include "tests/support/parse_run.h"

namespace {

constexpr unsigned char kPattern = 0xA5;
constexpr int kNone = -1;

/** Everything that one step works with. */
struct Step {
    /** @param flagAt  where the end position stands */
    Step(std::string_view reply, size_t flagAt, int32_t procDataLen)
        : text(reply), record(kPattern), work(0), end(text.data() + flagAt)
    {
        g_iProcDataLen = procDataLen;
        g_bWaitingRes = 1;
    }

    [[nodiscard]] ptrdiff_t endAt() const { return end - text.data(); }
    [[nodiscard]] std::string paras(size_t length) const { return {record->Paras, length}; }
    [[nodiscard]] bool parasAreUntouched(size_t from = 0) const
    {
        return isFilledWith(kPattern, record->Paras + from, sizeof record->Paras - from);
    }
    [[nodiscard]] bool workIsZero() const { return isFilledWith(0, work.data(), work.size()); }

    SavedTables saved;
    GuardedText text;
    GuardedRecord<AtRes> record;
    GuardedRecord<AtCmdLine> work;
    char *end;
};

struct SearchCase {
    const char *text;
    const char *needle;
    int at;
};

TEST(FindSubStr, FindsTheFirstOutsideQuotes)
{
    const SearchCase cases[] = {
        {"abc", "a", 0},
        {"abc", "c", 2},
        {"abcabc", "bc", 1},
        {"abc", "abcd", kNone},
        {"", "a", kNone},
        {"", "", 0},
        {"abc", "", 0},
        {"\"a\"", "", 0},
        {"\"a\"", "a", kNone},
        {"\"a\"a", "a", 3},
        {"\"a\"\"a\"a", "a", 6},
        {"\"\"a", "a", 2},
        {"\"a", "a", kNone},
        {"x\"aa\"a", "aa", kNone},
        {"x\"aa\"aa", "aa", 5},
        {"a\"a", "a", 0},
        {"\"\r\n\"\r\n", "\r\n", 4},
        {"\"a\r\nb\r\n", "\r\n", kNone},
        // A needle may hold quotes itself.
        {"\"a\"", "\"", 0},
        {"\"a\"", "\"a\"", 0},
        {"\"b\" b\"", "b\"", 4},
        {"\"a\"\"c\"", "\"c", 3},
        // The first character of a hit inside quotes is passed over uncounted, even if it is a quote.
        {"a\"b\"cx\"c", "\"c", kNone},
        {"a\"b\"cx\"\"c", "\"c", 7},
        // Hits may overlap.
        {"\"aa\"aaa", "aaa", 4},
        {"\"\r\n\r\n\"\r\n\r\n", "\r\n\r\n", 6},
    };
    for (const SearchCase &row : cases) {
        const GuardedText text(row.text);
        const GuardedText needle(row.needle);
        const char *const found = _Find_Sub_Str(text, needle);
        EXPECT_EQ(found == nullptr ? kNone : found - text.data(), row.at) << shown(row.text) << shown(row.needle);
    }
}

TEST(FindSubStr, FindsNothingInNull)
{
    const GuardedText text("a");
    EXPECT_EQ(_Find_Sub_Str(nullptr, text), nullptr);
    EXPECT_EQ(_Find_Sub_Str(text, nullptr), nullptr);
    EXPECT_EQ(_Find_Sub_Str(nullptr, nullptr), nullptr);
}

struct PreCase {
    const char *text;
    uint32_t code;
    const char *left;
    int endAt;
    int row;
};

TEST(PreProcess, FindsTheFlagThatComesFirst)
{
    const PreCase cases[] = {
        {"\r\nOK\r\n", 0, "\r\nOK\r\n", 0, 0},
        {"AT\r\r\n12\r\n\r\nOK\r\n", 0, "\r\n12\r\n\r\nOK\r\n", 6, 0},
        {"\r\nab\r\n\r\nERROR\r\n\r\nOK\r\n", 0, "\r\nab\r\n\r\nERROR\r\n\r\nOK\r\n", 6, 1},
        {"\r\n+CGREG: 1\r\n\r\n+CEREG: 1\r\n", 0, "\r\n+CGREG: 1\r\n\r\n+CEREG: 1\r\n", 0, 26},
        {"x\r\n+CGEV: ", 0, "\r\n+CGEV: ", 0, 49},
        {"\r\n\"\r\nOK\r\n\"\r\n> ", 0, "\r\n\"\r\nOK\r\n\"\r\n> ", 10, 4},
        {"\r\n", 19, "\r\n", 2, -1},
        {"ab\r\n12\r\n", 19, "\r\n12\r\n", 6, -1},
    };
    for (const PreCase &row : cases) {
        SCOPED_TRACE(shown(row.text));
        const GuardedText text(row.text);
        char *end = nullptr;
        int32_t index = -77;
        EXPECT_EQ(_Parse_At_PreProcess(text, &end, &index), row.code);
        EXPECT_EQ(text.str(), row.left);
        ASSERT_NE(end, nullptr);
        EXPECT_EQ(end - text.data(), row.endAt);
        EXPECT_EQ(index, row.row);
    }
}

TEST(PreProcess, KeepsTheLastCharacterWithoutALineBreak)
{
    for (const std::string reply : {"", "x", "OK", "AT+X=\"\r\nOK\r\n"}) {
        const GuardedText text(reply);
        char *end = text.data();
        int32_t index = -77;
        EXPECT_EQ(_Parse_At_PreProcess(text, &end, &index), 19U);
        EXPECT_EQ(text.str(), reply.substr(reply.empty() ? 0 : reply.size() - 1));
        EXPECT_EQ(end, text.data());
        EXPECT_EQ(index, -77);
    }
}

TEST(PreProcess, RefusesNull)
{
    const GuardedText text("\r\nOK\r\n");
    char *end = nullptr;
    int32_t index = -77;
    EXPECT_EQ(_Parse_At_PreProcess(nullptr, &end, &index), 19U);
    EXPECT_EQ(_Parse_At_PreProcess(text, nullptr, &index), 19U);
    EXPECT_EQ(_Parse_At_PreProcess(text, &end, nullptr), 19U);
}

TEST(NoPara, TakesTheBody)
{
    Step step("\r\n+A: 1\r\n+A: 2\r\n\r\nOK\r\n", 16, 6);
    step.record->Result = 1;
    EXPECT_EQ(_Parse_At_End_Flag_NoPara(step.text, step.record, &step.end, step.work), 0U);
    EXPECT_EQ(step.endAt(), 0);
    EXPECT_EQ(g_iProcDataLen, 22);
    EXPECT_EQ(step.paras(sizeof step.record->Paras), "1;2" + std::string(sizeof step.record->Paras - 3, '\0'));
    EXPECT_STREQ(step.work->CmdName, "+A");
    EXPECT_STREQ(step.work->Line, "1;2");
    EXPECT_EQ(step.record->CmdId, 0xA5A5);
    EXPECT_EQ(step.record->ParasLen, 0xA5A5);
    EXPECT_EQ(step.text.str(), "\r\n+A: 1\r\n+A: 2\r\n\r\nOK\r\n");
}

TEST(NoPara, CountsOnFromWhateverIsCounted)
{
    for (const int32_t counted : {0, 100, -100, 1000000}) {
        Step step("\r\n12\r\n\r\nOK\r\n", 6, counted);
        step.record->Result = 1;
        EXPECT_EQ(_Parse_At_End_Flag_NoPara(step.text, step.record, &step.end, step.work), 0U);
        EXPECT_EQ(g_iProcDataLen, counted + 6);
        EXPECT_STREQ(step.record->Paras, "12");
    }
}

// A count that cannot grow any further still must not stop the step.
TEST(NoPara, BearsAFullCount)
{
    Step step("\r\n12\r\n\r\nOK\r\n", 6, 2147483647);
    step.record->Result = 1;
    EXPECT_EQ(_Parse_At_End_Flag_NoPara(step.text, step.record, &step.end, step.work), 0U);
    EXPECT_EQ(step.endAt(), 0);
    EXPECT_STREQ(step.record->Paras, "12");
}

TEST(NoPara, OnlyCountsWhileNothingIsWaitedFor)
{
    Step step("\r\n12\r\n\r\nOK\r\n", 6, 6);
    step.record->Result = 1;
    g_bWaitingRes = 0;
    EXPECT_EQ(_Parse_At_End_Flag_NoPara(step.text, step.record, &step.end, step.work), 19U);
    EXPECT_EQ(step.endAt(), 0);
    EXPECT_EQ(g_iProcDataLen, 12);
    EXPECT_TRUE(step.parasAreUntouched());
    EXPECT_TRUE(step.workIsZero());
    for (const int32_t waiting : {1, 2, -1}) {
        Step other("\r\n12\r\n\r\nOK\r\n", 6, 6);
        other.record->Result = 1;
        g_bWaitingRes = waiting;
        EXPECT_EQ(_Parse_At_End_Flag_NoPara(other.text, other.record, &other.end, other.work), 0U) << waiting;
    }
}

TEST(NoPara, LeavesOtherResultsAndBareOksAlone)
{
    struct Case {
        const char *text;
        size_t flagAt;
        uint8_t result;
    };
    for (const Case &row : {Case{"\r\nab\r\n\r\nERROR\r\n", 6, 2}, Case{"\r\n+ZEND\r\n", 0, 12},
                            Case{"\r\nab\r\n\r\nOK\r\n", 6, 0}, Case{"\r\nOK\r\n", 0, 1}}) {
        SCOPED_TRACE(shown(row.text));
        Step step(row.text, row.flagAt, 9);
        step.record->Result = row.result;
        EXPECT_EQ(_Parse_At_End_Flag_NoPara(step.text, step.record, &step.end, step.work), 19U);
        EXPECT_EQ(step.endAt(), static_cast<ptrdiff_t>(row.flagAt));
        EXPECT_EQ(g_iProcDataLen, 9);
        EXPECT_TRUE(step.parasAreUntouched());
        EXPECT_TRUE(step.workIsZero());
        EXPECT_EQ(step.record->Result, row.result);
    }
}

struct ParaCase {
    const char *text;
    size_t flagAt;
    int32_t counted;
    std::string paras;
    int32_t countedAfter;
};

TEST(HavePara, TakesTheParameters)
{
    const ParaCase cases[] = {
        {"\r\n+CEREG: 1,5\r\n\r\nOK\r\n", 0, 10, "1,5", 15},
        {"\r\nab\r\n\r\n+CGEV: X\r\n", 6, 9, "X", 12},
        {"\r\n+A: \"1\r\n2\"\r\n", 0, 6, "\"1\r\n2\"", 14},
        {"\r\n+A: CDS:\r\n2", 0, 6, "CDS:\r\n2", 13},
        {"\r\nCBM:\r\n+A: 1\r\n", 6, 6, "1\r\n", 9},
        {"\r\n+A: \r\n", 0, 6, "", 8},
        // The parameters begin wherever the count says.
        {"\r\n+A: 1\r\n", 0, 0, "", 2},
        {"\r\n+A: 1\r\n", 0, 2, "+A: 1", 9},
        {"\r\n+A: 1\r\n", 3, -1, "+A: 1", 6},
    };
    for (const ParaCase &row : cases) {
        SCOPED_TRACE(shown(row.text));
        Step step(row.text, row.flagAt, row.counted);
        step.record->CmdId = 7;
        EXPECT_EQ(_Parse_At_End_Flag_HavePara(step.text, step.record, &step.end, step.work), 0U);
        EXPECT_EQ(step.paras(row.paras.size()), row.paras);
        EXPECT_TRUE(step.parasAreUntouched(row.paras.size()));
        EXPECT_EQ(step.record->ParasLen, row.paras.size());
        EXPECT_EQ(g_iProcDataLen, row.countedAfter);
        EXPECT_EQ(step.endAt(), static_cast<ptrdiff_t>(row.flagAt));
        EXPECT_EQ(step.record->CmdId, 7);
        EXPECT_EQ(step.record->Result, kPattern);
        EXPECT_TRUE(step.workIsZero());
        EXPECT_EQ(step.text.bytes(), row.text + std::string(1, '\0'));
    }
}

TEST(HavePara, LeavesAnUnclosedLineAlone)
{
    for (const char *text : {"\r\n+A: 1", "\r\n+A: ", "\r\n+A: \"\r\n"}) {
        Step step(text, 0, 6);
        EXPECT_EQ(_Parse_At_End_Flag_HavePara(step.text, step.record, &step.end, step.work), 19U) << shown(text);
        EXPECT_TRUE(step.parasAreUntouched());
        EXPECT_EQ(step.record->ParasLen, 0xA5A5);
        EXPECT_EQ(g_iProcDataLen, 6);
    }
}

// A count that leads out of the text must not be followed there. The text fills its pages, so both of its ends are watched.
TEST(HavePara, StaysInsideTheTextWhateverIsCounted)
{
    std::string reply = "\r\n+A: 1\r\n";
    reply += std::string(4095 - reply.size(), 'x');
    for (const int32_t counted : {4096, 100000, 2147483647, -1, -100000, -2147483647 - 1}) {
        for (const char *name : {"", "CMT:"}) {
            const std::string whole = name + reply.substr(std::strlen(name));
            Step step(whole, 0, counted);
            const uint32_t code = _Parse_At_End_Flag_HavePara(step.text, step.record, &step.end, step.work);
            EXPECT_TRUE(code == 0 || code == 19) << counted;
            EXPECT_EQ(step.text.bytes(), whole + '\0') << counted;
        }
    }
}

TEST(EndFlag, ChoosesTheStepByTheColumn)
{
    Step body("\r\n12\r\n\r\nOK\r\n", 6, 6);
    body.record->Result = 1;
    EXPECT_EQ(_Parse_At_End_Flag(body.text, body.record, &body.end, body.work, 0), 0U);
    EXPECT_STREQ(body.record->Paras, "12");
    Step bare("\r\nOK\r\n", 0, 6);
    bare.record->Result = 1;
    EXPECT_EQ(_Parse_At_End_Flag(bare.text, bare.record, &bare.end, bare.work, 0), 19U);
    Step report("\r\n+A: 12\r\n", 0, 6);
    EXPECT_EQ(_Parse_At_End_Flag(report.text, report.record, &report.end, report.work, 1), 0U);
    EXPECT_EQ(report.paras(2), "12");
    Step unclosed("\r\n+A: 12", 0, 6);
    EXPECT_EQ(_Parse_At_End_Flag(unclosed.text, unclosed.record, &unclosed.end, unclosed.work, 1), 19U);
    for (const int32_t column : {2, -1, 256, 65536}) {
        Step other("\r\n12\r\n\r\nOK\r\n", 6, 6);
        other.record->Result = 1;
        EXPECT_EQ(_Parse_At_End_Flag(other.text, other.record, &other.end, other.work, column), 19U) << column;
        EXPECT_TRUE(other.parasAreUntouched());
        EXPECT_EQ(other.endAt(), 6);
        EXPECT_EQ(g_iProcDataLen, 6);
    }
}

TEST(EndFlag, StepsRefuseNull)
{
    for (int missing = 0; missing < 4; ++missing) {
        Step step("\r\n12\r\n\r\nOK\r\n", 6, 6);
        step.record->Result = 1;
        char *const text = missing == 0 ? nullptr : step.text.data();
        AtRes *const record = missing == 1 ? nullptr : step.record.get();
        char **const end = missing == 2 ? nullptr : &step.end;
        AtCmdLine *const work = missing == 3 ? nullptr : step.work.get();
        EXPECT_EQ(_Parse_At_End_Flag_NoPara(text, record, end, work), 19U) << missing;
        EXPECT_EQ(_Parse_At_End_Flag_HavePara(text, record, end, work), 19U) << missing;
        EXPECT_EQ(_Parse_At_End_Flag(text, record, end, work, 0), 19U) << missing;
        EXPECT_EQ(_Parse_At_End_Flag(text, record, end, work, 1), 19U) << missing;
        EXPECT_EQ(_Parse_At_End_Flag(text, record, end, work, 2), 19U) << missing;
        EXPECT_TRUE(step.parasAreUntouched());
        EXPECT_TRUE(step.workIsZero());
        EXPECT_EQ(step.endAt(), 6);
    }
}

} // namespace

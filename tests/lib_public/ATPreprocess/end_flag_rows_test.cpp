// The parser obeys the end-flag table as it stands.

#include <string>

#include <gtest/gtest.h>

#include "tests/support/parse_run.h"

namespace {

class EndFlagRows : public testing::Test {
  protected:
    static void put(int index, std::string_view flag, int32_t result, int32_t identifier, int32_t hasParas)
    {
        KoraWcdma_AtEndFlgTable[index] = endFlag(flag, result, identifier, hasParas);
    }

    SavedTables saved_;
};

TEST_F(EndFlagRows, CallerLineWithItsOkIsAnOk)
{
    put(49, "\r\n+CLIP: ", 12, 89, 1);
    const ReplyCase cases[] = {
        {"with its OK", "\r\n+CLIP: \"1\",129\r\n\r\nOK\r\n", 89, 1, "", 0, "\r\n+CLIP: \"1\",129\r\n\r\nOK\r\n", ""},
        {"echo and body before", "x\r\nab\r\n\r\n+CLIP: 1,2\r\n\r\nOK\r\n", 89, 1, "", 0,
         "\r\n+CLIP: 1,2\r\n\r\nOK\r\n", "\r\nab\r\n"},
        {"comma in quotes too", "\r\n+CLIP: \"1,2\",129\r\n\r\nOK\r\n", 89, 1, "", 0,
         "\r\n+CLIP: \"1,2\",129\r\n\r\nOK\r\n", ""},
        {"comma alone", "\r\n+CLIP: ,\r\n\r\nOK\r\n", 89, 1, "", 0, "\r\n+CLIP: ,\r\n\r\nOK\r\n", ""},
        {"comma in quotes only", "\r\n+CLIP: \"1,2\"\r\n\r\nOK\r\n", 89, 12, "\"1,2\"", 5, "\r\n+CLIP: \"1,2\"\r\n",
         "\r\nOK\r\n"},
        {"no comma", "\r\n+CLIP: 1\r\n\r\nOK\r\n", 89, 12, "1", 1, "\r\n+CLIP: 1\r\n", "\r\nOK\r\n"},
        {"two commas", "\r\n+CLIP: 1,2,3\r\n\r\nOK\r\n", 89, 12, "1,2,3", 5, "\r\n+CLIP: 1,2,3\r\n", "\r\nOK\r\n"},
        {"no OK", "\r\n+CLIP: 1,2\r\n", 89, 12, "1,2", 3, "\r\n+CLIP: 1,2\r\n", ""},
        {"OK without its own line break", "\r\n+CLIP: 1,2\r\nOK\r\n", 89, 12, "1,2", 3, "\r\n+CLIP: 1,2\r\n", "OK\r\n"},
        {"unclosed OK", "\r\n+CLIP: 1,2\r\n\r\nOK", 89, 12, "1,2", 3, "\r\n+CLIP: 1,2\r\n", "\r\nOK"},
        {"ERROR", "\r\n+CLIP: 1,2\r\n\r\nERROR\r\n", 89, 12, "1,2", 3, "\r\n+CLIP: 1,2\r\n", "\r\nERROR\r\n"},
        {"more behind the OK", "\r\n+CLIP: 1,2\r\n\r\nOK\r\n+", 89, 12, "1,2", 3, "\r\n+CLIP: 1,2\r\n", "\r\nOK\r\n+"},
        {"unclosed", "\r\n+CLIP: 1,2", 89, 12, "", 0, "\r\n+CLIP: ", "1,2"},
        {"text that runs to its end", "\r\n+CLIP: CMT:,2\r\n\r\nOK\r\n", 89, 12, "CMT:,2\r\n\r\nOK\r\n", 14,
         "\r\n+CLIP: CMT:,2\r\n\r\nOK\r\n", ""},
    };
    for (const ReplyCase &row : cases)
        expectReply(row);
    put(49, "\r\n+CLIP: ", 12, 90, 1);
    expectReply(
        {"another identifier", "\r\n+CLIP: 1,2\r\n\r\nOK\r\n", 90, 12, "1,2", 3, "\r\n+CLIP: 1,2\r\n", "\r\nOK\r\n"});
}

TEST_F(EndFlagRows, AddedReportIsKnown)
{
    put(49, "\r\n+CREG: ", 12, 71, 1);
    expectReply({"report", "\r\n+CREG: 1,\"00A1\"\r\n", 71, 12, "1,\"00A1\"", 8, "\r\n+CREG: 1,\"00A1\"\r\n", ""});
    expectReply(
        {"it now takes a reply", "\r\n+CREG: 1,1\r\n\r\nOK\r\n", 71, 12, "1,1", 3, "\r\n+CREG: 1,1\r\n", "\r\nOK\r\n"});
    expectReply({"replaced row", "\r\n+CGEV: X\r\n\r\nOK\r\n", 1, 1, "X", 0, "\r\n+CGEV: X\r\n\r\nOK\r\n", ""});
}

// However many lines before it began the same way.
TEST_F(EndFlagRows, RowMayBeginAsOtherLinesDo)
{
    std::string lines = "\r\n";
    for (int i = 0; i < 50; ++i)
        lines += "+LINE: 7\r\n";
    for (const char *const flag : {"\r\n+LINE: 7!", "\r\n+LINE: 8", "\r\n+LINK", "\r\n+LI!", "\r\n+!", "\r\n!"}) {
        SCOPED_TRACE(flag + 2);
        put(49, flag, 12, 71, 1);
        const std::string hit = std::string(flag + 2) + "x\r\n";
        expectReply({"behind the lines", lines + hit, 71, 12, "x", 1, "\r\n" + hit, lines.substr(0, lines.size() - 2)});
    }
}

// Such a row may also stand where lines that were already passed end.
TEST_F(EndFlagRows, RowMayStandAnywhere)
{
    const std::string lines = "\r\n+A: 1\r\n+A: 2\r\n+A: 3\r\n";
    put(49, "!", 1, 1, 0);
    expectReply({"behind a line break", lines + "!", 1, 1, "1;2;3", 0, lines + "!", ""});
    expectReply({"inside a line", lines + "+A: 4!\r\n", 1, 1, "1;2;3", 0, lines + "+A: 4!", "\r\n"});
    expectReply({"behind the shortest lines", "\r\n+: 1\r\n+: 2\r\n+: \r\n!", 1, 1, "1;2;", 0,
                 "\r\n+: 1\r\n+: 2\r\n+: \r\n!", ""});
    put(49, "\n!", 1, 1, 0);
    expectReply({"inside a line break", lines + "!", 1, 1, "1;2", 0, lines + "!", ""});
}

// Each change is as small as one can be, and the text stays the same.
TEST_F(EndFlagRows, ChangeCountsFromTheNextCallOn)
{
    const std::string report = "\r\n+CGEV: X\r\n";
    const std::string reply = report + "\r\nOK\r\n";
    const ReplyCase asReport = {"report", reply, 4193, 12, "X", 1, report, "\r\nOK\r\n"};
    const ReplyCase asBody = {"body", reply, 1, 1, "X", 0, reply, ""};
    AtEndFlagRow &row = KoraWcdma_AtEndFlgTable[49];
    expectReply(asReport);
    row.flag[6] = 'X';
    expectReply(asBody);
    row.flag[6] = 'V';
    expectReply(asReport);
    KoraWcdma_AtEndFlgTableSize = 49;
    expectReply(asBody);
    KoraWcdma_AtEndFlgTableSize = 50;
    expectReply(asReport);
    row.identifier = 7;
    expectReply({"identifier", reply, 7, 12, "X", 1, report, "\r\nOK\r\n"});
    row.result = 3;
    expectReply({"result", reply, 7, 3, "X", 1, report, "\r\nOK\r\n"});
    row.hasParas = 0;
    expectReply({"column", reply, 7, 3, "", 0, "\r\n+CGEV: ", "X\r\n\r\nOK\r\n"});
    row.flag[8] = '\0';
    expectReply({"shorter", reply, 7, 3, "", 0, "\r\n+CGEV:", " X\r\n\r\nOK\r\n"});
    KoraWcdma_AtEndFlgTable[0].flag[2] = 'o';
    KoraWcdma_AtEndFlgTableSize = 49;
    ParseRun run(reply);
    EXPECT_EQ(run.parse(), (ParseState{19, 0, 0, 0, "", reply, ParseRun::kUntouched}));
}

TEST_F(EndFlagRows, OddColumnTakesTheFlagAlone)
{
    for (const int32_t column : {2, -1, 256, 2147483647}) {
        put(49, "\r\n+ODD: ", 12, 70, column);
        put(48, "\r\nDONE\r\n", 1, 7, column);
        SCOPED_TRACE(column);
        expectReply({"report", "\r\nab\r\n+ODD: 1\r\n", 70, 12, "", 0, "\r\n+ODD: ", "\r\nab1\r\n"});
        expectReply({"OK", "\r\nab\r\n\r\nDONE\r\n", 7, 1, "", 0, "\r\nDONE\r\n", "\r\nab\r\n"});
    }
}

TEST_F(EndFlagRows, FlagNeedNotBeginWithALineBreak)
{
    put(49, "RING", 12, 82, 1);
    put(48, "DONE", 1, 7, 0);
    put(47, "\nEND", 1, 8, 0);
    expectReply({"report", "x\r\nabRING1\r\nc", 82, 12, "1", 1, "RING1\r\n", "\r\nabc"});
    expectReply({"OK", "\r\nab\r\nDONEc", 7, 1, "ab", 0, "\r\nab\r\nDONE", "c"});
    expectReply({"line break alone as its body", "\r\nDONE", 7, 1, "", 0, "\r\nDONE", ""});
    expectReply({"half a line break as its body", "\r\nEND", 8, 1, "", 0, "\r\nEND", ""});
    expectReply({"dropped with the junk", "DONE RING\r\nOK\r\n", 1, 1, "", 0, "\r\nOK\r\n", ""});
}

// A quote that begins an occurrence inside quotes does not end them.
TEST_F(EndFlagRows, FlagMayBeginWithAQuote)
{
    put(49, "\"c", 12, 99, 1);
    expectReply({"outside quotes", "\r\nx\"c1\r\n", 99, 12, "1", 1, "\"c1\r\n", "\r\nx"});
    ParseRun run("\r\na\"b\"cx\"c1\r\n");
    EXPECT_EQ(run.parse(), (ParseState{19, 0, 0, 0, "", "\r\na\"b\"cx\"c1\r\n", ParseRun::kUntouched}));
}

TEST_F(EndFlagRows, EarlierRowWinsAtOnePosition)
{
    const ReplyCase shorter = {"shorter", "\r\n+AB: 1\r\n", 101, 12, "B: 1", 4, "\r\n+AB: 1\r\n", ""};
    const ReplyCase longer = {"longer", "\r\n+AB: 1\r\n", 102, 12, "1", 1, "\r\n+AB: 1\r\n", ""};
    const auto behind = [](ReplyCase row) {
        row.reply = row.left = "\r\nab";
        row.reply += row.consumed;
        return row;
    };
    put(10, "\r\n+A", 12, 101, 1);
    put(20, "\r\n+AB: ", 12, 102, 1);
    expectReply(shorter);
    expectReply(behind(shorter));
    put(20, "\r\n+A", 12, 101, 1);
    put(10, "\r\n+AB: ", 12, 102, 1);
    expectReply(longer);
    expectReply(behind(longer));
    put(5, "\r\n+AB: ", 12, 103, 1);
    expectReply({"twice the same", "\r\n+AB: 1\r\n", 103, 12, "1", 1, "\r\n+AB: 1\r\n", ""});
}

TEST_F(EndFlagRows, EarlierPositionWinsOverEarlierRow)
{
    put(49, "\n+AB: ", 12, 102, 1);
    put(48, "\r\n+AB: ", 12, 101, 1);
    put(0, "B: ", 12, 103, 1);
    expectReply({"line break first", "\r\n+AB: 1\r\n", 101, 12, "1", 1, "\r\n+AB: 1\r\n", ""});
}

TEST_F(EndFlagRows, EmptyFlagStandsAtTheStart)
{
    put(49, "", 12, 99, 0);
    expectReply({"OK", "\r\n12\r\n\r\nOK\r\n", 99, 12, "", 0, "", "\r\n12\r\n\r\nOK\r\n"});
    expectReply({"earlier row at the start", "\r\nOK\r\n", 1, 1, "", 0, "\r\nOK\r\n", ""});
    expectReply({"no other flag", "x\r\n", 99, 12, "", 0, "", "\r\n"});
    put(49, "", 12, 99, 1);
    expectReply({"with parameters", "\r\n12\r\n", 99, 12, "", 0, "\r\n", "12\r\n"});
    put(0, "", 1, 98, 0);
    expectReply({"before all others", "\r\nERROR\r\n", 98, 1, "", 0, "", "\r\nERROR\r\n"});
}

// What stands behind the field in the row, here the digit 1, is no part of the flag.
TEST_F(EndFlagRows, FlagThatFillsItsFieldEndsWithIt)
{
    const std::string flag = "\r\n+A-NAME-OF-THIRTY-CHARACTERS: ";
    ASSERT_EQ(flag.size(), sizeof KoraWcdma_AtEndFlgTable[0].flag);
    put(49, flag, '1', 99, 1);
    expectReply({"behind it something else", flag + "2\r\n", 99, '1', "2", 1, flag + "2\r\n", ""});
    expectReply({"behind it the same", flag + "1\r\n", 99, '1', "1", 1, flag + "1\r\n", ""});
    expectReply(
        {"less than it", flag.substr(0, 31) + "\r\nOK\r\n", 1, 1, "", 0, flag.substr(0, 31) + "\r\nOK\r\n", ""});
}

TEST_F(EndFlagRows, NumbersAreCutToTheirFields)
{
    put(49, "\r\n+BIG: ", 256 + 12, 65536 + 7, 1);
    put(48, "\r\n+NEG: ", -1, -1, 1);
    expectReply({"big", "\r\n+BIG: 1\r\n", 7, 12, "1", 1, "\r\n+BIG: 1\r\n", ""});
    expectReply({"negative", "\r\n+NEG: 1\r\n", 65535, 255, "1", 1, "\r\n+NEG: 1\r\n", ""});
}

TEST_F(EndFlagRows, SizeWordEndsTheSearch)
{
    KoraWcdma_AtEndFlgTableSize = 1;
    expectReply({"first row", "\r\nOK\r\n", 1, 1, "", 0, "\r\nOK\r\n", ""});
    expectReply(
        {"text of a row behind the last", "\r\nERROR\r\n\r\nOK\r\n", 1, 1, "ERROR", 0, "\r\nERROR\r\n\r\nOK\r\n", ""});
    for (const int32_t none : {0, -1, -2147483647 - 1}) {
        KoraWcdma_AtEndFlgTableSize = none;
        ParseRun run("ab\r\nOK\r\n");
        EXPECT_EQ(run.parse(), (ParseState{19, 0, 0, 0, "", "\r\nOK\r\n", ParseRun::kUntouched}));
    }
}

TEST_F(EndFlagRows, SizeWordBeyondTheArrayAddsNoRow)
{
    for (const int32_t size : {51, 5000, 2147483647}) {
        KoraWcdma_AtEndFlgTableSize = size;
        expectReply({"last row", "\r\n+CGEV: X\r\n", 4193, 12, "X", 1, "\r\n+CGEV: X\r\n", ""});
        ParseRun run("\r\n+NONE: X\r\n");
        EXPECT_EQ(run.parse(), (ParseState{19, 0, 0, 0, "", "\r\n+NONE: X\r\n", ParseRun::kUntouched}));
    }
}

} // namespace

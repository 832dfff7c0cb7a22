// One parameter line rewritten for sscanf(), its texts restored, and command texts formatted.

#include <cstdio>

#include <gtest/gtest.h>

#include <mainControl/codec.h>

#include "tests/support/guarded_text.h"
#include "tests/support/list_image.h"
#include "tests/support/sample_text.h"

namespace {

using Rewrite = void (*)(char *);

/** Expects a result in the room of the text: zeros behind a shorter one, and the terminator where it was. */
void expectRewritten(Rewrite rewrite, const std::string &text, std::string result)
{
    const GuardedText guarded(text);
    rewrite(guarded);
    ASSERT_LE(result.size(), text.size());
    result.resize(text.size() + 1);
    EXPECT_EQ(difference(result, guarded.bytes()), "") << text;
}

struct Row {
    std::string text;
    std::string result;
};

const Row kLines[] = {
    {"1", "1"},
    {"1,2", "1 2"},
    {"1, 2", "1  2"},
    {"1\t2", "1\t2"},
    {"+CREG: 2,\"00A1\"", "+CREG: 2 00A1"},
    {"1,\"my net\",,2", "1 my\xFEnet \xFD 2"},
    // Empty parameters.
    {",5", " 5"},
    {",", " "},
    {"5,", "5 "},
    {"\"5\",", "5 \xFD"},
    {"1,,2", "1 \xFD "},
    {"\"1\",,2", "1 \xFD 2"},
    {"\"1\",,", "1 \xFD \xFD"},
    {"\"12\",,\"3\",", "12 \xFD 3 \xFD"},
    {",,5", " \xFD "},
    {",,\"5\"", " \xFD 5"},
    {",,,", " \xFD "},
    {"1,\"\",2", "1 \xFD 2"},
    {"\"\"", "\xFD"},
    {"\"\",\"\"", "\xFD \xFD"},
    {"\"\",", "\xFD \xFD"},
    {",\"\"", " \xFD"},
    // Quotes.
    {"\"", ""},
    {"\"a\"\"b\"", "a\xFD"
                   "b"},
    {"\"\"\"", "\xFD\xFD"},
    {"\"\"\"\"", "\xFD\xFD\xFD"},
    {"a\"b\"c", "abc"},
    {"\"a,b\",c", "a,b c"},
    {"\",\",", ", \xFD"},
    {"\",,\"", ",,"},
    {"a,\"b,c d", "a b,c\xFE"
                  "d"},
    {"a,\"b,", "a b,"},
    {"\" \"", "\xFE"},
    {"\"\t\"", "\xFC"},
    {"\"a\tb c\",d e", "a\xFC"
                       "b\xFE"
                       "c d e"},
    {"\"  \t\t\"", "\xFE\xFE\xFC\xFC"},
    // What is not told apart by a marker stays as it is.
    {"\xFD,\xFE,\xFC", "\xFD \xFE \xFC"},
    {"\"\xC3\xA9\"", "\xC3\xA9"},
    {"(1,2);(3)", "(1 2);(3)"},
    {"\"a\r\nb\"", "a\r\nb"},
};

TEST(LineRewrite, LeavesAResultAndZerosInTheRoomOfTheText)
{
    for (const Row &row : kLines)
        expectRewritten(ATCodec_PreProc_Res_ParaLine, row.text, row.result);
}

TEST(LineRewrite, LosesTheTailOfAResultThatIsLonger)
{
    const Row rows[] = {
        {"1,,,,2", "1 \xFD \xFD "},
        {"1,,2,,3", "1 \xFD 2 \xFD"},
        {repeated(",", 7), " \xFD \xFD \xFD "},
        {repeated(",", 511), repeated(" \xFD", 255) + " "},
        {repeated(",", 100) + "\"x\"", repeated(" \xFD", 51) + " "},
    };
    for (const Row &row : rows)
        expectRewritten(ATCodec_PreProc_Res_ParaLine, row.text, row.result);
}

TEST(LineRewrite, TakesTextsOfLessThan1024Characters)
{
    const std::string line = "\"a b\",";
    expectRewritten(ATCodec_PreProc_Res_ParaLine, line + filled(1016),
                    "a\xFE"
                    "b " +
                        filled(1016));
    expectRewritten(ATCodec_PreProc_Res_ParaLine, line + filled(1017),
                    "a\xFE"
                    "b " +
                        filled(1017));
    for (const size_t length : {1018U, 1019U, 5000U})
        expectRewritten(ATCodec_PreProc_Res_ParaLine, line + filled(length), line + filled(length));
    expectRewritten(ATCodec_PreProc_Res_ParaLine, filled(1023), filled(1023));
}

TEST(LineRewrite, TakesResultsOfLessThan1024Characters)
{
    // A comma before another or at the end makes two characters.
    const Row rows[] = {
        {repeated(",", 510) + "abc", repeated(" \xFD", 256) + " "}, // 1022 characters before the cut
        {repeated(",", 510) + "abcd", repeated(" \xFD", 257)},      // 1023
        {repeated(",", 510) + "abcde", repeated(",", 510) + "abcde"},
        {repeated(",", 511) + "a", repeated(" \xFD", 256)},        // 1022
        {repeated(",", 511) + "ab", repeated(" \xFD", 256) + " "}, // 1023
        {repeated(",", 511) + "abc", repeated(",", 511) + "abc"},
        {repeated(",", 512), repeated(",", 512)},
        {"a" + repeated(",", 512), "a" + repeated(",", 512)}, // the last step goes from 1023 to 1025
        {repeated(",", 1023), repeated(",", 1023)},
        {filled(1021) + ",", filled(1021) + " "},
        {filled(1022) + ",", filled(1022) + ","},
        {"\"" + filled(1020) + "\",", filled(1020) + " \xFD"},         // 1022
        {"\"" + filled(1017) + "\",,,", filled(1017) + " \xFD \xFD "}, // 1023
        {"\"" + filled(1018) + "\",,,", "\"" + filled(1018) + "\",,,"},
    };
    for (const Row &row : rows)
        expectRewritten(ATCodec_PreProc_Res_ParaLine, row.text, row.result);
}

TEST(LineRewrite, LeavesAnEmptyTextAlone)
{
    expectRewritten(ATCodec_PreProc_Res_ParaLine, "", "");
    ATCodec_PreProc_Res_ParaLine(nullptr);
}

const Row kGroups[] = {
    {"(1,2),(3,4)", "1,2;3,4"},
    {"(0-3),(1,2)", "0-3;1,2"},
    {"1,2", "1,2"},
    {"(1)", "1"},
    {"(1),", "1;"},
    {"(1),,2", "1;,2"},
    {"()", ""},
    {"(),()", ";"},
    {"((1,2),(3)),4", "1,2;3;4"},
    {"(1))),2", "1;2"},
    {"(1) ,2", "1 ,2"},
    {"),)", ";"},
    {"(\"a,b\"),(\"c\")", "\"a,b\";\"c\""},
    {"\"(a),(b)\"", "\"a;b\""},
    {"a b\tc;d", "a b\tc;d"},
};

TEST(GroupRewrite, LeavesAResultAndZerosInTheRoomOfTheText)
{
    for (const Row &row : kGroups)
        expectRewritten(ATCodec_ProcRes_ParaLineEx, row.text, row.result);
}

TEST(GroupRewrite, TakesTextsOfLessThan1024Characters)
{
    expectRewritten(ATCodec_ProcRes_ParaLineEx, "(1),(" + filled(1018), "1;" + filled(1018));
    expectRewritten(ATCodec_ProcRes_ParaLineEx, repeated("(", 1023), "");
    for (const size_t length : {1019U, 1020U, 5000U})
        expectRewritten(ATCodec_ProcRes_ParaLineEx, "(1),(" + filled(length), "(1),(" + filled(length));
    expectRewritten(ATCodec_ProcRes_ParaLineEx, "", "");
    ATCodec_ProcRes_ParaLineEx(nullptr);
}

const Row kMarked[] = {
    {"\xFD", ""},
    {"", ""},
    {"a", "a"},
    {"\xFE", " "},
    {"\xFC", "\t"},
    {"my\xFEnet", "my net"},
    {"\xFE\xFE"
     "a\xFC"
     "b\xFE",
     "  a\tb "},
    {"\xFD\xFD", "\xFD\xFD"},
    {"\xFD"
     "a",
     "\xFD"
     "a"},
    {"a\xFD", "a\xFD"},
    {"\xFD\xFE", "\xFD "},
    {"\xFB\xFF \t\"", "\xFB\xFF \t\""},
};

TEST(Restore, UndoesTheMarkers)
{
    for (const Row &row : kMarked)
        expectRewritten(ATCodec_Restore_String_Para, row.text, row.result);
    expectRewritten(ATCodec_Restore_String_Para, repeated("\xFE\xFC\xFD", 2000), repeated(" \t\xFD", 2000));
    ATCodec_Restore_String_Para(nullptr);
}

TEST(Restore, EndsTheRoadFromALineToItsValues)
{
    const GuardedText line("1,\"my net\",,2");
    ATCodec_PreProc_Res_ParaLine(line);
    int first = -1;
    int last = -1;
    char name[16] = "untouched";
    char empty[16] = "untouched";
    ASSERT_EQ(std::sscanf(line, "%d %15s %15s %d", &first, name, empty, &last), 4);
    EXPECT_STREQ(name, "my\xFEnet");
    EXPECT_STREQ(empty, "\xFD");
    ATCodec_Restore_String_Para(name);
    ATCodec_Restore_String_Para(empty);
    EXPECT_EQ(first, 1);
    EXPECT_STREQ(name, "my net");
    EXPECT_STREQ(empty, "");
    EXPECT_EQ(last, 2);
}

TEST(Restore, GivesBackQuotedBlanksAndTabs)
{
    const GuardedText line("\"a\tb  c\",\"\",\"d,e\"");
    ATCodec_PreProc_Res_ParaLine(line);
    char texts[3][16] = {};
    ASSERT_EQ(std::sscanf(line, "%15s %15s %15s", texts[0], texts[1], texts[2]), 3);
    for (char *const text : texts)
        ATCodec_Restore_String_Para(text);
    EXPECT_STREQ(texts[0], "a\tb  c");
    EXPECT_STREQ(texts[1], "");
    EXPECT_STREQ(texts[2], "d,e");
}

/** Expects the text and its terminator to fill the output to its last byte. */
#define EXPECT_FORMATTED(text, ...)                                                                                    \
    do {                                                                                                               \
        const GuardedMemory output(std::string_view(text).size() + 1);                                                 \
        EXPECT_EQ(ATCodec_TranslateToCmdPara(output.data(), __VA_ARGS__), 0);                                          \
        EXPECT_EQ(std::string(output.data(), output.size()), (text) + std::string(1, '\0'));                           \
    } while (false)

TEST(Format, WritesACommandText)
{
    EXPECT_FORMATTED("AT+CFUN=1", "AT+CFUN=%d", 1);
    EXPECT_FORMATTED("AT+CLCK=\"SC\",2", "AT+CLCK=\"%s\",%d", "SC", 2);
    EXPECT_FORMATTED("AT%", "AT%%");
    EXPECT_FORMATTED("-2147483648 ff   x", "%d %x %3s", INT32_MIN, 255U, "x");
    EXPECT_FORMATTED("1 2 3 4 5 6 7 8", "%d %d %d %d %d %d %d %d", 1, 2, 3, 4, 5, 6, 7, 8);
    EXPECT_FORMATTED(filled(5000), "%s", filled(5000).c_str());
    EXPECT_FORMATTED("", "%s", "");
}

TEST(Format, DoesNothingForNull)
{
    // Through a pointer, since a compiler that sees the format rightly objects.
    int32_t (*const format)(char *, const char *, ...) = ATCodec_TranslateToCmdPara;
    char output[] = "untouched";
    EXPECT_EQ(format(output, nullptr), 0);
    EXPECT_STREQ(output, "untouched");
    EXPECT_EQ(format(nullptr, "AT+CFUN=%d", 1), 0);
    EXPECT_EQ(format(nullptr, nullptr), 0);
}

} // namespace

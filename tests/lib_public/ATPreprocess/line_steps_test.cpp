// The steps of the parser that take up single lines, each called alone.

#include <string>

#include <gtest/gtest.h>

#include "tests/support/parse_run.h"
#include "tests/support/work_record.h"

namespace {

constexpr char kPattern = '\xA5';

constexpr size_t kRoom = sizeof(AtCmdLine::Line) - 1;

struct NamedCase {
    std::string storedName;
    std::string storedLine;
    std::string line;
    int32_t code;
    std::string name;
    std::string assembled;
};

TEST(NamedLine, IsTakenUnlessItsNameDiffers)
{
    const std::string n29(29, 'N');
    const NamedCase cases[] = {
        {"", "", "+A: 1", 1, "+A", "1"},
        {"", "x", "+A: 1", 1, "+A", "x1"},
        {"+A", "", "+A: 1", 1, "+A", ";1"},
        {"+A", "x", "+A: 1", 1, "+A", "x;1"},
        {"+A", "x", "+A: ", 1, "+A", "x;"},
        {"+A", "x", "+B: 1", 0, "+A", "x"},
        {"+A", "x", "+AB: 1", 0, "+A", "x"},
        {"+AB", "x", "+A: 1", 1, "+AB", "x;1"},
        {"+A", "x", "+a: 1", 0, "+A", "x"},
        {"+A", "x", ": 1", 1, "+A", "x;1"},
        {"", "x", ": 1", 1, "", "x1"},
        {"", "", "+A: b: c", 1, "+A", "b: c"},
        {"", "", n29 + ": 1", 1, n29, "1"},
        {"", "", n29 + "M: 1", 1, n29, "1"},
        {n29, "x", n29 + "M: 1", 1, n29, "x;1"},
        {n29, "x", n29.substr(1) + "M: 1", 0, n29, "x"},
        {"", "", "+A: " + std::string(1023, 'v'), 1, "+A", std::string(1023, 'v')},
        {"", "", "+A: " + std::string(1025, 'v'), 1, "+A", std::string(1024, 'v')},
        {"+A", "x", "+A: " + std::string(5000, 'v'), 1, "+A", "x;" + std::string(1024, 'v')},
    };
    for (const NamedCase &row : cases) {
        SCOPED_TRACE(row.storedName + "|" + row.storedLine + "|" + row.line);
        const WorkRecord work(row.storedName, row.storedLine);
        const GuardedText line(row.line);
        EXPECT_EQ(ParseCmdLineWithCmdName(work, line, line.data() + row.line.find(": ")), row.code);
        work.expect(row.name, row.assembled);
    }
}

TEST(NamedLine, RefusesNull)
{
    const WorkRecord work("+A", "x");
    const GuardedText line("+A: 1");
    EXPECT_EQ(ParseCmdLineWithCmdName(nullptr, line, line.data() + 2), 0);
    EXPECT_EQ(ParseCmdLineWithCmdName(work, nullptr, line.data() + 2), 0);
    EXPECT_EQ(ParseCmdLineWithCmdName(work, line, nullptr), 0);
    work.expect("+A", "x");
}

struct BareCase {
    std::string storedName;
    std::string line;
    std::string rest;
    std::string assembled; ///< onto an "x"
};

TEST(BareLine, IsQuotedBehindANameAndDroppedBeforeOne)
{
    const BareCase cases[] = {
        {"", "ab", "ab\r\ncd\r\n", "xab"},
        {"", "ab", "ab", "xab"},
        {"", "ab", "ab\r\n+A: 1\r\n", "x"},
        {"", "ab", "ab\r\n\": \"\r\n", "x"},
        {"", "ab", "ab\r\n:\r\n", "xab"},
        {"", "ab", "ab\r\n+A: ", "x"},
        {"+A", "ab", "ab\r\n", "x,\"ab\""},
        {"+A", "ab", "ab\r\n+A: 1\r\n", "x,\"ab\""},
        {"+A", "\"a\"", "\"a\"\r\n", "x,\"\"a\"\""},
        {"", std::string(1025, 'v'), std::string(1025, 'v') + "\r\n", "x" + std::string(1024, 'v')},
        {"+A", std::string(5000, 'v'), std::string(5000, 'v') + "\r\n", "x,\"" + std::string(1024, 'v') + "\""},
    };
    for (const BareCase &row : cases) {
        SCOPED_TRACE(row.storedName + "|" + row.line + "|" + row.rest);
        const WorkRecord work(row.storedName, "x");
        const GuardedText line(row.line);
        const GuardedText rest(row.rest);
        ParseCmdLineWithoutCmdName(work, line, rest);
        work.expect(row.storedName, row.assembled);
    }
}

TEST(FullLine, TakesNothingMore)
{
    const std::string full(kRoom, 'f');
    const GuardedText named("+A: 1");
    const GuardedText bare("ab");
    for (const char *name : {"", "+A"}) {
        const WorkRecord work(name, full);
        EXPECT_EQ(ParseCmdLineWithCmdName(work, named, named.data() + 2), 1);
        work.expect("+A", full);
        ParseCmdLineWithoutCmdName(work, bare, bare);
        work.expect("+A", full);
    }
    const WorkRecord unnamed("", full);
    ParseCmdLineWithoutCmdName(unnamed, bare, bare);
    unnamed.expect("", full);
}

TEST(FullLine, KeepsItsTerminator)
{
    for (size_t room = 1; room < 8; ++room) {
        const std::string almost(kRoom - room, 'f');
        const GuardedText named("+A: " + std::string(2000, 'v'));
        const GuardedText bare(std::string(2000, 'b'));
        const WorkRecord first("+A", almost);
        EXPECT_EQ(ParseCmdLineWithCmdName(first, named, named.data() + 2), 1);
        const WorkRecord second("+A", almost);
        ParseCmdLineWithoutCmdName(second, bare, bare);
        for (const WorkRecord *work : {&first, &second}) {
            EXPECT_EQ(work->whole().substr(0, almost.size()), almost);
            EXPECT_EQ(work->whole().back(), '\0');
        }
    }
}

struct BodyCase {
    std::string body;
    uint32_t code;
    std::string name;
    std::string assembled;
    std::string lastLine; ///< what the line buffer holds
};

TEST(Body, IsTakenLineByLine)
{
    const std::string longLine = std::string(1000, 'l') + std::string(1000, 'm');
    const BodyCase cases[] = {
        {"+A: 1\r\n", 0, "+A", "1", "+A: 1"},
        {"+A: 1\r\n+A: 2\r\nab\r\n", 0, "+A", "1;2,\"ab\"", "ab"},
        {"+A: longer\r\n+A: 2\r\n", 0, "+A", "longer;2", "+A: 2"},
        {"ab\r\n\r\ncd\r\n", 0, "", "abcd", "cd"},
        {"\r\n\r\nab\r\n\r\n", 0, "", "ab", "ab"},
        {"+A: 1\r\n+B: 2\r\n+A: 3\r\n", 19, "+A", "1", "+B: 2"},
        {"+A: 1\r\n+A: 2", 0, "+A", "1", "+A: 1"},
        {"+A: \"1\r\n2\"\r\n", 0, "+A", "\"1\r\n2\"", "+A: \"1\r\n2\""},
        {"ab\r\n+A: 1\r\n", 0, "+A", "1", "+A: 1"},
        {longLine + "\r\n", 0, "", longLine.substr(0, 1024), longLine.substr(0, 1024)},
        {"+A: " + longLine + "\r\n", 0, "+A", longLine.substr(0, 1024), ("+A: " + longLine).substr(0, 1024)},
        {longLine + "\r\nab\r\n", 0, "", longLine.substr(0, 1024) + "ab", "ab"},
        {longLine.substr(0, 1023) + "\r\n", 0, "", longLine.substr(0, 1023), longLine.substr(0, 1023)},
    };
    for (const BodyCase &row : cases) {
        SCOPED_TRACE(shown(row.body));
        const WorkRecord work;
        const GuardedText body(row.body);
        const GuardedText buffer(std::string(1023, kPattern));
        EXPECT_EQ(_First_Parse_At_OK_Res(body, buffer, work), row.code);
        work.expect(row.name, row.assembled);
        EXPECT_EQ(buffer.bytes(), row.lastLine + std::string(1024 - row.lastLine.size(), '\0'));
    }
}

TEST(Body, WithoutAClosedLineChangesNothing)
{
    for (const char *text : {"", "ab", "+A: 1", "\"\r\n", "\r\n"}) {
        const WorkRecord work("+B", "x");
        const GuardedText body(text);
        const GuardedText buffer(std::string(1023, kPattern));
        EXPECT_EQ(_First_Parse_At_OK_Res(body, buffer, work), 0U) << shown(text);
        work.expect("+B", "x");
        EXPECT_EQ(buffer.bytes(), std::string(1023, kPattern) + '\0');
    }
}

TEST(Body, GoesOnFromWhatTheWorkRecordHolds)
{
    const WorkRecord named("+A", "0");
    const WorkRecord lineOnly("", "0");
    const GuardedText body("ab\r\n+A: 1\r\n+B: 2\r\n");
    const GuardedText buffer(std::string(1023, 'x'));
    EXPECT_EQ(_First_Parse_At_OK_Res(body, buffer, named), 19U);
    named.expect("+A", "0,\"ab\";1");
    EXPECT_EQ(_First_Parse_At_OK_Res(body, buffer, lineOnly), 19U);
    lineOnly.expect("+A", "01");
}

TEST(Body, RefusesNull)
{
    const WorkRecord work("+A", "x");
    const GuardedText body("+A: 1\r\n");
    const GuardedText buffer(std::string(1023, 'x'));
    EXPECT_EQ(_First_Parse_At_OK_Res(nullptr, buffer, work), 19U);
    EXPECT_EQ(_First_Parse_At_OK_Res(body, nullptr, work), 19U);
    EXPECT_EQ(_First_Parse_At_OK_Res(body, buffer, nullptr), 19U);
    work.expect("+A", "x");
}

} // namespace

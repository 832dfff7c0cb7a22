// Long lines, long names and long texts.

#include <numeric>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/parse_run.h"

namespace {

constexpr size_t kRoom = sizeof(AtRes::Paras) - 1;

std::string ok(const std::string &body)
{
    return body + "\r\nOK\r\n";
}

/** A text that differs everywhere, so that a shifted copy shows. */
std::string digits(size_t length)
{
    std::string text;
    for (size_t i = 0; text.size() < length; ++i)
        text += std::to_string(i) + ".";
    text.resize(length);
    return text;
}

void expectBody(const char *name, const std::string &body, const std::string &paras)
{
    expectReply({name, ok(body), 1, 1, paras, 0, ok(body), ""});
}

TEST(LongLines, AddAtMostThatMany)
{
    for (const size_t length : {1023U, 1024U, 1025U, 5000U}) {
        const std::string text = digits(length);
        const std::string kept = text.substr(0, 1024);
        SCOPED_TRACE(length);
        expectBody("bare", "\r\n" + text + "\r\n", kept);
        expectBody("two bare", "\r\n" + text + "\r\n" + text + "\r\n", kept + kept);
        expectBody("named", "\r\n+A: " + text + "\r\n", kept);
        expectBody("two named", "\r\n+A: " + text + "\r\n+A: " + text + "\r\n", kept + ";" + kept);
        expectBody("bare behind named", "\r\n+A: 1\r\n" + text + "\r\n+A: 2\r\n", "1,\"" + kept + "\";2");
        expectBody("named, as a whole that long", "\r\n+A: " + text.substr(4) + "\r\n", text.substr(4, 1024));
        expectBody("colon behind a long name", "\r\n" + text + ": 1\r\n" + text + ": 2\r\n", "1;2");
        expectBody("colon that far inside quotes", "\r\n+A: 1\r\n\"" + text + ": \"\r\n",
                   "1,\"" + ("\"" + text + ": \"").substr(0, 1024) + "\"");
        expectBody("colon that far drops a bare line", "\r\nab\r\n" + text + ": 1\r\n", "1");
    }
}

TEST(LongNames, AreKeptToTwentyNineCharacters)
{
    for (const size_t length : {28U, 29U, 30U, 40U}) {
        SCOPED_TRACE(length);
        const std::string name = digits(length);
        const std::string lastDiffers = name.substr(0, length - 1) + "!";
        const bool seen = length <= 29;
        expectBody("the same", "\r\n" + name + ": 1\r\n" + name + ": 2\r\n", "1;2");
        expectBody("another last character", "\r\n" + name + ": 1\r\n" + lastDiffers + ": 2\r\n", seen ? "1" : "1;2");
        expectBody("one more", "\r\n" + name + ": 1\r\n" + name + "!: 2\r\n", length < 29 ? "1" : "1;2");
        expectBody("one less", "\r\n" + name + ": 1\r\n" + name.substr(0, length - 1) + ": 2\r\n", "1;2");
        expectBody("another first character", "\r\n" + name + ": 1\r\n!" + name.substr(1) + ": 2\r\n", "1");
    }
}

/** Lines, and what they come to. */
struct Lines {
    void addNamed(const std::string &name, const std::string &value)
    {
        paras += (body == "\r\n" ? "" : ";") + value.substr(0, 1024);
        body += name + ": " + value + "\r\n";
    }

    void addBare(const std::string &line, bool isNamed)
    {
        if (!line.empty()) paras += isNamed ? ",\"" + line.substr(0, 1024) + '"' : line.substr(0, 1024);
        body += line + "\r\n";
    }

    std::string body = "\r\n";
    std::string paras;
};

/** Short ones one by one, and some around the limit. */
std::vector<size_t> lengths()
{
    std::vector<size_t> lengths(71);
    std::iota(lengths.begin(), lengths.end(), 0);
    for (const size_t length : {1010U, 1016U, 1023U, 1024U, 1025U, 3U, 1100U, 0U, 9U})
        lengths.push_back(length);
    return lengths;
}

// Lines that begin as the one before them are taken together, so each length is tried behind others like it.
TEST(RunsOfLines, MayHaveValuesOfAnyLength)
{
    for (const char *const name : {"+", "+A", "+CPBR", "+CPBR2", "+CGDCONT", "+A-NAME-OF-MORE-CHARACTERS"}) {
        SCOPED_TRACE(name);
        Lines lines;
        for (const size_t length : lengths())
            lines.addNamed(name, digits(length));
        expectBody("in order", lines.body, lines.paras);
    }
}

TEST(RunsOfLines, MayBeBare)
{
    for (const bool isNamed : {false, true}) {
        SCOPED_TRACE(isNamed);
        Lines lines;
        if (isNamed) lines.addNamed("+A", "1");
        for (const size_t length : lengths())
            lines.addBare(digits(length), isNamed);
        expectBody("in order", lines.body, lines.paras);
        expectBody("with a name that comes later", lines.body + "+A: 2\r\n",
                   isNamed ? lines.paras + ";2" : std::string("2"));
        expectBody("with a quoted one", lines.body + "\"+A: 2\"\r\n34\r\n",
                   isNamed ? lines.paras + ",\"\"+A: 2\"\",\"34\"" : std::string("34"));
    }
}

TEST(RunsOfLines, EndAtOthers)
{
    const std::string alike = "+CPBR: 1\r\n+CPBR: 2\r\n+CPBR: 3\r\n";
    expectBody("empty", "\r\n" + alike + "\r\n" + alike, "1;2;3;1;2;3");
    expectBody("short", "\r\n" + alike + "+CP\r\n" + alike, "1;2;3,\"+CP\";1;2;3");
    expectBody("bare", "\r\n" + alike + "+CPBR:12\r\n" + alike, "1;2;3,\"+CPBR:12\";1;2;3");
    expectBody("bare at the end", "\r\n" + alike + "ab\r\n\r\ncd\r\n", "1;2;3,\"ab\",\"cd\"");
    expectBody("quoted separator", "\r\n" + alike + "\"+CPBR: 4\"\r\n" + alike, "1;2;3,\"\"+CPBR: 4\"\";1;2;3");
    expectBody("name with another end", "\r\n" + alike + "+CPBRX: 4\r\n" + alike, "1;2;3");
    expectBody("shorter name", "\r\n" + alike + "+CPB: 4\r\n" + alike, "1;2;3;4;1;2;3");
    const std::string named = "+CGDCONT: 1\r\n+CGDCONT: 2\r\n+CGDCONT: 3\r\n";
    expectBody("another behind the eighth character", "\r\n" + named + "+CGDCONTX: 4\r\n" + named, "1;2;3");
    expectBody("quotes over lines", "\r\n" + alike + "+CPBR: \"4\r\n+CPBR: 5\"\r\n" + alike,
               "1;2;3;\"4\r\n+CPBR: 5\";1;2;3");
}

// More lines than are noted on one walk, and than on two.
TEST(RunsOfLines, MayHaveAnyNumber)
{
    for (const int count : {767, 768, 769, 770, 1535, 1536, 1537, 5000, 12000}) {
        SCOPED_TRACE(count);
        Lines named;
        Lines bare;
        for (int i = 0; i < count; ++i) {
            named.addNamed("+A", std::to_string(i % 10));
            bare.addBare(std::to_string(i % 10), false);
        }
        expectBody("named", named.body, named.paras);
        expectBody("bare", bare.body, bare.paras);
    }
}

/** A body of that many characters, of named lines, and what it comes to. */
struct LongBody {
    explicit LongBody(size_t length)
    {
        body = "\r\n";
        for (size_t i = 0; length - body.size() > 200; ++i)
            add(digits(70 + i % 30));
        add(digits(length - body.size() - 9));
    }

    void add(const std::string &value)
    {
        body += "+LINE: " + value + "\r\n";
        paras += (paras.empty() ? "" : ";") + value;
        if (body.size() <= kRoom) ofFirstLines = paras.size();
    }

    std::string body;
    std::string paras;
    size_t ofFirstLines = 0; ///< how much of it comes from lines that end inside the room
};

TEST(LongBodies, AreTakenWholeUpToTheRoomForThem)
{
    for (const size_t length : {size_t{10239}, kRoom}) {
        const LongBody lines(length);
        ASSERT_EQ(lines.body.size(), length);
        expectBody("lines", lines.body, lines.paras);
    }
}

// Of a longer body as much is taken as the record holds; nothing of it stays in the text.
TEST(LongBodies, NeverLeaveTheRecord)
{
    for (const size_t length : {kRoom + 1, size_t{150000}}) {
        SCOPED_TRACE(length);
        const LongBody lines(length);
        ASSERT_EQ(lines.body.size(), length);
        ParseRun run(ok(lines.body) + "more");
        const ParseState state = run.parse();
        EXPECT_EQ(state.code, 0U);
        EXPECT_EQ(state.left, "more");
        EXPECT_EQ(state.procDataLen, static_cast<int32_t>(length + 6));
        EXPECT_EQ(state.parasLen, 0);
        ASSERT_LE(state.paras.size(), kRoom);
        // Whether the body is cut before or behind the assembling, these lines come through.
        ASSERT_GT(lines.ofFirstLines, kRoom / 2);
        EXPECT_EQ(state.paras.substr(0, lines.ofFirstLines), lines.paras.substr(0, lines.ofFirstLines));
    }
}

// Each short bare line grows by a character when it is quoted.
TEST(LongBodies, ThatGrowNeverLeaveTheRecord)
{
    std::string body = "\r\n+A: 1\r\n";
    std::string paras = "1";
    while (body.size() + 3 <= kRoom) {
        body += "b\r\n";
        paras += ",\"b\"";
    }
    ASSERT_GT(paras.size(), kRoom + 10000);
    ParseRun run(ok(body));
    const ParseState state = run.parse();
    EXPECT_EQ(state.code, 0U);
    EXPECT_EQ(state.left, "");
    ASSERT_LE(state.paras.size(), kRoom);
    const size_t beforeTheLastPiece = kRoom - 4;
    ASSERT_GE(state.paras.size(), beforeTheLastPiece);
    EXPECT_EQ(state.paras.substr(0, beforeTheLastPiece), paras.substr(0, beforeTheLastPiece));
}

TEST(LongReports, AreTakenWholeUpToTheRoomForThem)
{
    for (const size_t length : {size_t{1024}, size_t{5000}, size_t{10239}, kRoom}) {
        const std::string text = digits(length);
        SCOPED_TRACE(length);
        expectReply({"line", "\r\n+CEREG: " + text + "\r\nmore", 12304, 12, text, static_cast<int32_t>(length & 0xFFFF),
                     "\r\n+CEREG: " + text + "\r\n", "more"});
        expectReply({"to the end", "\r\n+CDS: " + text, 27, 12, text, static_cast<int32_t>(length & 0xFFFF),
                     "\r\n+CDS: " + text, ""});
    }
}

TEST(LongReports, NeverLeaveTheRecord)
{
    for (const size_t length : {kRoom + 1, size_t{150000}}) {
        const std::string text = digits(length);
        SCOPED_TRACE(length);
        ParseRun run("\r\n+CEREG: " + text + "\r\nmore");
        const ParseState state = run.parse();
        EXPECT_EQ(state.code, 0U);
        EXPECT_EQ(state.cmdId, 12304);
        EXPECT_EQ(state.paras, text.substr(0, kRoom));
        EXPECT_EQ(state.left, "more");
        EXPECT_EQ(state.procDataLen, static_cast<int32_t>(length + 12));
    }
}

TEST(LongOperatorScans, KeepWhatFits)
{
    for (const size_t length : {size_t{10239}, kRoom, kRoom + 1, size_t{150000}}) {
        const std::string reply = digits(length - 6) + "\r\nOK\r\n";
        SCOPED_TRACE(length);
        ParseRun run(reply);
        const ParseState state = run.parseOperatorScan();
        EXPECT_EQ(state.code, 0U);
        EXPECT_EQ(state.paras, reply.substr(0, kRoom));
        EXPECT_EQ(run.text.bytes(), reply + '\0');
    }
}

TEST(LongTexts, WithoutAnEndFlagFailAsShortOnesDo)
{
    const std::string junk = digits(150000);
    std::string breaks;
    for (int i = 0; i < 50000; ++i)
        breaks += "\r\n+";
    const std::pair<std::string, std::string> cases[] = {
        {junk, junk.substr(junk.size() - 1)},
        {junk + "\r\n" + junk, "\r\n" + junk},
        {"\r\n\"" + junk + "\r\nOK\r\n", "\r\n\"" + junk + "\r\nOK\r\n"},
        {breaks, breaks},
    };
    for (const auto &[reply, left] : cases) {
        ParseRun run(reply);
        EXPECT_EQ(run.parse(), (ParseState{19, 0, 0, 0, "", left, ParseRun::kUntouched}));
    }
}

} // namespace

// What a parse leaves alone, what it logs, and further calls on one text.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/parse_run.h"

namespace {

using Texts = std::vector<std::string>;

constexpr unsigned char kPattern = 0xA5;
constexpr int32_t kPatternWord = 0xA5A5;

/** The text of a record filled with the pattern. */
std::string patternText(size_t from)
{
    return std::string(sizeof(AtRes::Paras) - 1 - from, static_cast<char>(kPattern));
}

struct KeptCase {
    const char *name;
    const char *reply;
    int32_t cmdId;
    int32_t result;
    bool parasLenIsSet;
    const char *paras; ///< over the pattern
};

TEST(ParsedRecord, KeepsWhatIsNotWritten)
{
    const KeptCase cases[] = {
        {"bare OK", "\r\nOK\r\n", 1, 1, false, ""},
        {"ERROR", "\r\nab\r\n\r\nERROR\r\n", 2, 2, false, ""},
        {"prompt", "\r\n> ", 5, 11, false, ""},
        {"not support", "\r\nnot support\r\n", 6, 13, false, ""},
        {"report without parameters", "\r\n+ZEND\r\n", 4111, 12, false, ""},
        {"unclosed report", "\r\n+CEREG: 1", 12304, 12, false, ""},
        {"report", "\r\n+CEREG: 1,5\r\n", 12304, 12, true, "1,5"},
        {"empty report", "\r\n+CEREG: \r\n", 12304, 12, true, ""},
        {"CME error", "\r\n+CME ERROR: 10\r\n", 4, 4, true, "10"},
        {"to the end", "\r\n+CDS: 1\r\n2", 27, 12, true, "1\r\n2"},
    };
    for (const KeptCase &row : cases) {
        SCOPED_TRACE(row.name);
        ParseRun run(row.reply, kPattern);
        const std::string paras = row.paras;
        const ParseState state = run.parse();
        EXPECT_EQ(state.code, 0U);
        EXPECT_EQ(state.cmdId, row.cmdId);
        EXPECT_EQ(state.result, row.result);
        EXPECT_EQ(state.parasLen, row.parasLenIsSet ? static_cast<int32_t>(paras.size()) : kPatternWord);
        EXPECT_EQ(state.paras, paras + patternText(paras.size()));
    }
}

TEST(ParsedRecord, IsClearedWholeForABody)
{
    for (const char *reply : {"\r\n+A: 1\r\n\r\nOK\r\n", "\r\n12345\r\nOK\r\n", "\r\n\r\nOK\r\n"}) {
        ParseRun run(reply, kPattern);
        EXPECT_EQ(run.parse().parasLen, kPatternWord);
        const std::string paras = reply[2] == '+' ? "1" : "";
        EXPECT_EQ(std::string(run.record->Paras, sizeof run.record->Paras),
                  paras + std::string(sizeof run.record->Paras - paras.size(), '\0'));
    }
}

TEST(ParsedRecord, IsUntouchedByAFailure)
{
    for (const char *reply : {"", "OK", "\r\n", "\r\n12\r\n", "ab\r\n+CEREG 1\r\n", "\"\r\nOK\r\n\""}) {
        ParseRun run(reply, kPattern);
        EXPECT_EQ(run.parse().code, UNI_ERROR_BK_FAIL1) << shown(reply);
        EXPECT_TRUE(run.isUntouched()) << shown(reply);
    }
}

TEST(Parse, RefusesNull)
{
    ParseRun run("ab\r\nOK\r\n", kPattern);
    EXPECT_EQ(Bk_Parse_At_Res(nullptr, run.record), UNI_ERROR_BK_INVALID_ARG);
    EXPECT_EQ(Bk_Parse_At_Res(run.text, nullptr), UNI_ERROR_BK_INVALID_ARG);
    EXPECT_EQ(Bk_Parse_At_Res(nullptr, nullptr), UNI_ERROR_BK_INVALID_ARG);
    EXPECT_TRUE(run.isUntouched());
    EXPECT_EQ(run.text.str(), "ab\r\nOK\r\n");
    EXPECT_EQ(g_iProcDataLen, ParseRun::kUntouched);
    EXPECT_EQ(run.host.texts(),
              (Texts{"Bk_Parse_At_Res-in-(null)", "UNI_ERROR_BK_INVALID_ARG", "Bk_Parse_At_Res-in-ab\r\nOK\r\n",
                     "UNI_ERROR_BK_INVALID_ARG", "Bk_Parse_At_Res-in-(null)", "UNI_ERROR_BK_INVALID_ARG"}));
}

/** All lines of the parser carry the same module and file. */
void expectLog(const scripted::Host &host, const Texts &formats, const Texts &texts)
{
    EXPECT_EQ(host.formats(), formats);
    EXPECT_EQ(host.texts(), texts);
    for (const scripted::LogLine &line : host.log()) {
        EXPECT_EQ(line.module, "../lib_public/ATPreprocess/ATPreprocess");
        EXPECT_EQ(line.file, "kora_t9lb.log");
        EXPECT_GT(line.line, 0);
    }
}

const Texts kParsedFormats = {"Bk_Parse_At_Res-in-%s", "Bk_Parse_At_Res-out-%s", "Bk_Parse_At_Res-out-%d"};

TEST(ParseLog, TellsTheTextTheParametersAndTheIdentifier)
{
    const Texts cases[] = {
        {"AT+A?\r\r\n+A: %s\r\n\r\nOK\r\n", "%s", "1"}, {"\r\nOK\r\n", "", "1"},
        {"\r\nab\r\n\r\nERROR\r\n", "", "2"},           {"\r\n+CME ERROR: 10\r\n", "10", "4"},
        {"\r\n+CEREG: 1\r\n\r\nOK\r\n", "1", "12304"},  {"\r\n+CEREG: 1", "", "12304"},
    };
    for (const Texts &row : cases) {
        SCOPED_TRACE(shown(row[0]));
        ParseRun run(row[0]);
        run.parse();
        expectLog(run.host, kParsedFormats,
                  {"Bk_Parse_At_Res-in-" + row[0], "Bk_Parse_At_Res-out-" + row[1], "Bk_Parse_At_Res-out-" + row[2]});
    }
}

TEST(ParseLog, TellsNothingOfARecordWithoutATerminator)
{
    const scripted::Host host;
    const GuardedText text("\r\nERROR\r\n");
    const GuardedRecord<AtRes> record(kPattern);
    EXPECT_EQ(Bk_Parse_At_Res(text, record), UNI_ERROR_SUCCESS);
    expectLog(host, kParsedFormats,
              {"Bk_Parse_At_Res-in-\r\nERROR\r\n", "Bk_Parse_At_Res-out-", "Bk_Parse_At_Res-out-2"});
}

TEST(ParseLog, TellsTheTextAndTheFailure)
{
    for (const std::string reply : {"", "OK", "ab\r\n12\r\n", "%s%n\r\n"}) {
        ParseRun run(reply);
        run.parse();
        expectLog(run.host, {"Bk_Parse_At_Res-in-%s", "UNI_ERROR_BK_FAIL1"},
                  {"Bk_Parse_At_Res-in-" + reply, "UNI_ERROR_BK_FAIL1"});
    }
}

TEST(ParseLog, TellsTheNullArgument)
{
    ParseRun run("\r\nOK\r\n");
    Bk_Parse_At_Res(nullptr, run.record);
    expectLog(run.host, {"Bk_Parse_At_Res-in-%s", "UNI_ERROR_BK_INVALID_ARG"},
              {"Bk_Parse_At_Res-in-(null)", "UNI_ERROR_BK_INVALID_ARG"});
}

TEST(Parse, TakesOneResultAfterTheOther)
{
    ParseRun run("AT+A?\r\r\n+CEREG: 1\r\n\r\n+A: 7\r\n\r\n+CGEV: X\r\n\r\nOK\r\n\r\n+ZEND\r\n\r\n> junk");
    const ParseState expected[] = {
        {0, 12304, 12, 1, "1", "\r\n+A: 7\r\n\r\n+CGEV: X\r\n\r\nOK\r\n\r\n+ZEND\r\n\r\n> junk", 13},
        {0, 4193, 12, 1, "X", "\r\n+A: 7\r\n\r\nOK\r\n\r\n+ZEND\r\n\r\n> junk", 12},
        {0, 1, 1, 0, "7", "\r\n+ZEND\r\n\r\n> junk", 15},
        {0, 4111, 12, 0, "", "\r\n> junk", 9},
        {0, 5, 11, 0, "", "junk", 4},
        {19, 0, 0, 0, "", "k", 4},
        {19, 0, 0, 0, "", "k", 4},
    };
    for (const ParseState &state : expected) {
        run.fillRecord();
        EXPECT_EQ(run.parse(), state);
    }
}

TEST(Parse, SetsItsGlobalsAnew)
{
    const SavedTables saved;
    for (const int32_t before : {0, -5, 2147483647}) {
        ParseRun run("\r\n12\r\n\r\nOK\r\n");
        g_iProcDataLen = before;
        g_bWaitingRes = 0;
        g_SingleReport = before;
        EXPECT_EQ(run.parse(), (ParseState{0, 1, 1, 0, "12", "", 12}));
        EXPECT_EQ(g_bWaitingRes, 1);
        EXPECT_EQ(g_SingleReport, before);
    }
    g_SingleReport = 0;
}

struct ScanCase {
    const char *reply;
    uint32_t code;
};

TEST(OperatorScan, KeepsTheWholeText)
{
    const ScanCase cases[] = {
        {"\r\nOK\r\n", 0},
        {"AT+COPS=5\r\r\n+COPS: 1\r\n+COPS: 2\r\n\r\nOK\r\n", 0},
        {"junk\r\nOK\r\nmore", 0},
        {"\r\n+CEREG: 1\r\n\r\nERROR\r\n\r\nOK\r\n", 0},
        {"\"\r\nOK\r\n\"\r\nOK\r\n", 0},
        {"", 19},
        {"OK", 19},
        {"\r\nOK", 19},
        {"\r\nERROR\r\n", 19},
        {"\"\r\nOK\r\n\"", 19},
        {"+COPS: \"a\r\n\r\nOK\r\n", 19},
    };
    for (const ScanCase &row : cases) {
        SCOPED_TRACE(shown(row.reply));
        const std::string reply = row.reply;
        ParseRun run(reply, kPattern);
        const ParseState state = run.parseOperatorScan();
        EXPECT_EQ(state.code, row.code);
        EXPECT_EQ(run.text.bytes(), reply + '\0');
        EXPECT_EQ(g_iProcDataLen, ParseRun::kUntouched);
        if (row.code != 0) {
            EXPECT_TRUE(run.isUntouched());
        } else {
            EXPECT_EQ(state, (ParseState{0, 1, 1, kPatternWord, reply + patternText(reply.size()), reply,
                                         ParseRun::kUntouched}));
        }
        EXPECT_EQ(run.host.texts(), Texts{});
    }
}

TEST(OperatorScan, RefusesNull)
{
    ParseRun run("\r\nOK\r\n", kPattern);
    EXPECT_EQ(Bk_Parse_At_COPS5_Res(nullptr, run.record), UNI_ERROR_BK_INVALID_ARG);
    EXPECT_EQ(Bk_Parse_At_COPS5_Res(run.text, nullptr), UNI_ERROR_BK_INVALID_ARG);
    EXPECT_EQ(Bk_Parse_At_COPS5_Res(nullptr, nullptr), UNI_ERROR_BK_INVALID_ARG);
    EXPECT_TRUE(run.isUntouched());
    const Texts lines(3, "UNI_ERROR_BK_INVALID_ARG");
    expectLog(run.host, lines, lines);
}

} // namespace

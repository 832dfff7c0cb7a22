// The road of a report to the handler of its row.

#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/parse_run.h"

namespace {

constexpr int kCeregRow = 25;
constexpr int kCgevRow = 49;

struct Call {
    AtRes report;
    int32_t rowFromOne;
    int32_t tableSize;
    int32_t identifier;
    char by;
};

std::vector<Call> theCalls;

uint32_t note(char by, AtRes *report, int32_t rowFromOne, int32_t tableSize, int32_t identifier)
{
    theCalls.push_back({*report, rowFromOne, tableSize, identifier, by});
    return 0;
}

uint32_t first(AtRes *report, int32_t rowFromOne, int32_t tableSize, int32_t identifier)
{
    return note('1', report, rowFromOne, tableSize, identifier);
}

uint32_t second(AtRes *report, int32_t rowFromOne, int32_t tableSize, int32_t identifier)
{
    return note('2', report, rowFromOne, tableSize, identifier);
}

uint32_t failing(AtRes *report, int32_t rowFromOne, int32_t tableSize, int32_t identifier)
{
    note('f', report, rowFromOne, tableSize, identifier);
    return 19;
}

uint32_t scribbling(AtRes *report, int32_t rowFromOne, int32_t tableSize, int32_t identifier)
{
    note('s', report, rowFromOne, tableSize, identifier);
    std::memset(report, 0x5A, sizeof *report);
    return 0xFFFFFFFF;
}

class Transfer : public testing::Test {
  protected:
    Transfer() { theCalls.clear(); }

    /** Hands a report over; the text that stays goes to left. */
    uint32_t hand(std::string_view text)
    {
        const GuardedText guarded(text);
        const uint32_t code = unsolicitedATProcess(guarded);
        left = guarded.str();
        return code;
    }

    static void expectReport(const AtRes &report, uint16_t cmdId, uint8_t result, const std::string &paras,
                             size_t parasLen)
    {
        EXPECT_EQ(report.CmdId, cmdId);
        EXPECT_EQ(report.Result, result);
        EXPECT_EQ(report.ParasLen, parasLen);
        EXPECT_EQ(std::string(report.Paras, sizeof report.Paras),
                  paras + std::string(sizeof report.Paras - paras.size(), '\0'));
    }

    scripted::Host host;
    SavedTables saved_;
    std::string left;
};

TEST_F(Transfer, ParsesAndDropsWithoutAHandler)
{
    for (const char *text : {"\r\n+CEREG: 1\r\n", "\r\n+CGEV: X\r\n", "\r\nOK\r\n", "\r\n+ZEND\r\n", "\r\n+CEREG: 1"})
        EXPECT_EQ(hand(text), 0U) << shown(text);
    EXPECT_EQ(hand("x\r\n+CEREG: 1\r\n\r\n+CGEV: X\r\n"), 0U);
    EXPECT_EQ(left, "\r\n+CGEV: X\r\n");
}

TEST_F(Transfer, FailsWhenTheTextCannotBeParsed)
{
    KoraWcdma_AtEndFlgTable[kCeregRow].handler = first;
    for (const char *text : {"", "OK", "\r\n", "\r\n+CREG: 1\r\n", "\"\r\n+CEREG: 1\r\n\""})
        EXPECT_EQ(hand(text), 1U) << shown(text);
    EXPECT_EQ(unsolicitedATProcess(nullptr), 1U);
    EXPECT_TRUE(theCalls.empty());
}

TEST_F(Transfer, LogsTheParse)
{
    using Texts = std::vector<std::string>;
    hand("\r\n+CEREG: 1\r\n");
    EXPECT_EQ(host.texts(scripted::kParserModule),
              (Texts{"Bk_Parse_At_Res-in-\r\n+CEREG: 1\r\n", "Bk_Parse_At_Res-out-1", "Bk_Parse_At_Res-out-12304"}));
    host.forgetLog();
    hand("12");
    EXPECT_EQ(host.texts(scripted::kParserModule), (Texts{"Bk_Parse_At_Res-in-12", "UNI_ERROR_BK_FAIL1"}));
    host.forgetLog();
    unsolicitedATProcess(nullptr);
    EXPECT_EQ(host.texts(scripted::kParserModule), (Texts{"Bk_Parse_At_Res-in-(null)", "UNI_ERROR_BK_INVALID_ARG"}));
}

TEST_F(Transfer, HandsTheWholeRecordToTheHandler)
{
    KoraWcdma_AtEndFlgTable[kCeregRow].handler = first;
    EXPECT_EQ(hand("\r\n+CEREG: 1,\"00A1\"\r\n\r\nOK\r\n"), 0U);
    EXPECT_EQ(left, "\r\nOK\r\n");
    ASSERT_EQ(theCalls.size(), 1U);
    EXPECT_EQ(theCalls[0].rowFromOne, kCeregRow + 1);
    EXPECT_EQ(theCalls[0].tableSize, 50);
    EXPECT_EQ(theCalls[0].identifier, 12304);
    expectReport(theCalls[0].report, 12304, 12, "1,\"00A1\"", 8);
}

TEST_F(Transfer, HandsOverAnyMatch)
{
    for (const int row : {0, 3, 13})
        KoraWcdma_AtEndFlgTable[row].handler = first;
    EXPECT_EQ(hand("AT\r\r\n+A: 1\r\n+A: 2\r\n\r\nOK\r\n"), 0U);
    EXPECT_EQ(hand("\r\n+CME ERROR: 10\r\n"), 0U);
    EXPECT_EQ(hand("\r\n+ZEND\r\n"), 0U);
    ASSERT_EQ(theCalls.size(), 3U);
    expectReport(theCalls[0].report, 1, 1, "1;2", 0);
    expectReport(theCalls[1].report, 4, 4, "10", 2);
    expectReport(theCalls[2].report, 4111, 12, "", 0);
    EXPECT_EQ(theCalls[0].rowFromOne, 1);
    EXPECT_EQ(theCalls[1].rowFromOne, 4);
    EXPECT_EQ(theCalls[2].rowFromOne, 14);
}

TEST_F(Transfer, HandsOverALongReportWhole)
{
    KoraWcdma_AtEndFlgTable[kCeregRow].handler = first;
    for (const size_t length : {1U, 5000U, 102399U, 10U}) {
        theCalls.clear();
        const std::string parameters(length, 'p');
        EXPECT_EQ(hand("\r\n+CEREG: " + parameters + "\r\n"), 0U);
        ASSERT_EQ(theCalls.size(), 1U);
        expectReport(theCalls[0].report, 12304, 12, parameters, length & 0xFFFF);
    }
}

// The row that matched the text (15) and the row that holds the handler (14) share an identifier.
TEST_F(Transfer, CallsTheFirstRowOfTheIdentifierThatHasAHandler)
{
    KoraWcdma_AtEndFlgTable[14].handler = first;
    KoraWcdma_AtEndFlgTable[15].handler = second;
    EXPECT_EQ(hand("\r\n+STKPCI: 1\r\n"), 0U);
    KoraWcdma_AtEndFlgTable[14].handler = nullptr;
    EXPECT_EQ(hand("\r\n+ZPSTM: 2\r\n"), 0U);
    ASSERT_EQ(theCalls.size(), 2U);
    EXPECT_EQ(theCalls[0].by, '1');
    EXPECT_EQ(theCalls[0].rowFromOne, 15);
    EXPECT_EQ(theCalls[1].by, '2');
    EXPECT_EQ(theCalls[1].rowFromOne, 16);
    expectReport(theCalls[1].report, 4110, 12, "2", 1);
}

TEST_F(Transfer, CallsNoHandlerOfAnotherIdentifier)
{
    KoraWcdma_AtEndFlgTable[kCgevRow].handler = first;
    EXPECT_EQ(hand("\r\n+CEREG: 1\r\n\r\n+CGEV: X\r\n"), 0U);
    EXPECT_TRUE(theCalls.empty());
    EXPECT_EQ(hand(left), 0U);
    EXPECT_EQ(theCalls.size(), 1U);
}

TEST_F(Transfer, IgnoresTheResultOfAHandler)
{
    KoraWcdma_AtEndFlgTable[kCeregRow].handler = failing;
    KoraWcdma_AtEndFlgTable[kCgevRow] = KoraWcdma_AtEndFlgTable[kCeregRow];
    KoraWcdma_AtEndFlgTable[kCgevRow].handler = second;
    EXPECT_EQ(hand("\r\n+CEREG: 1\r\n"), 0U);
    ASSERT_EQ(theCalls.size(), 1U);
    EXPECT_EQ(theCalls[0].by, 'f');
}

TEST_F(Transfer, StartsEachReportWithACleanRecord)
{
    for (AtEndFlagRow &row : KoraWcdma_AtEndFlgTable)
        row.handler = scribbling;
    for (const char *text : {"\r\n+CEREG: 12345\r\n", "\r\n+CEREG: 1\r\n", "\r\nERROR\r\n", "\r\n12\r\n\r\nOK\r\n"})
        EXPECT_EQ(hand(text), 0U);
    ASSERT_EQ(theCalls.size(), 4U);
    expectReport(theCalls[0].report, 12304, 12, "12345", 5);
    expectReport(theCalls[1].report, 12304, 12, "1", 1);
    expectReport(theCalls[2].report, 2, 2, "", 0);
    expectReport(theCalls[3].report, 1, 1, "12", 0);
}

TEST_F(Transfer, KeepsNothingOfAReportWithoutAHandler)
{
    for (const char *text : {"\r\n+CEREG: 12345\r\n", "\r\n12345\r\n\r\nOK\r\n", "\r\n+CDS: 1\r\n2345"}) {
        theCalls.clear();
        for (AtEndFlagRow &row : KoraWcdma_AtEndFlgTable)
            row.handler = nullptr;
        EXPECT_EQ(hand(text), 0U);
        EXPECT_EQ(hand("12345"), 1U);
        host.forgetLog();
        EXPECT_EQ(hand("\r\nERROR\r\n"), 0U);
        EXPECT_EQ(host.texts().at(1), "Bk_Parse_At_Res-out-");
        EXPECT_EQ(hand(text), 0U);
        for (AtEndFlagRow &row : KoraWcdma_AtEndFlgTable)
            row.handler = first;
        EXPECT_EQ(hand("\r\n+CEREG: 9\r\n"), 0U);
        EXPECT_EQ(hand("\r\nOK\r\n"), 0U);
        ASSERT_EQ(theCalls.size(), 2U);
        expectReport(theCalls[0].report, 12304, 12, "9", 1);
        expectReport(theCalls[1].report, 1, 1, "", 0);
    }
}

TEST_F(Transfer, LooksForHandlersInsideTheTableOnly)
{
    KoraWcdma_AtEndFlgTable[kCgevRow] = endFlag("", 12, 12304, 1);
    KoraWcdma_AtEndFlgTable[kCgevRow].handler = first;
    KoraWcdma_AtEndFlgTableSize = kCgevRow;
    EXPECT_EQ(hand("\r\n+CEREG: 1\r\n"), 0U);
    EXPECT_TRUE(theCalls.empty());
    for (const int32_t size : {51, 5000, 2147483647}) {
        KoraWcdma_AtEndFlgTableSize = size;
        EXPECT_EQ(hand("\r\n+ZEND\r\n"), 0U) << size;
    }
    EXPECT_TRUE(theCalls.empty());
    KoraWcdma_AtEndFlgTable[kCeregRow].handler = second;
    KoraWcdma_AtEndFlgTableSize = kCeregRow + 1;
    EXPECT_EQ(hand("\r\n+CEREG: 1\r\n"), 0U);
    ASSERT_EQ(theCalls.size(), 1U);
    EXPECT_EQ(theCalls[0].by, '2');
    EXPECT_EQ(theCalls[0].tableSize, kCeregRow + 1);
}

} // namespace

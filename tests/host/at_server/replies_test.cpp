// From bytes to replies and reports, as tables: no port, no time.
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tests/host/at_server/collecting_client.h"
#include "tests/host/at_server/golden_replies.h"

using namespace host::at_server;
using Client = CollectingClient;

namespace {

struct Row {
    const char *name;
    std::string_view command; ///< empty: none runs
    std::string_view bytes;
    std::string_view replies;
    std::string_view reports = {};
    std::string_view discarded = {};
};

std::ostream &operator<<(std::ostream &stream, const Row &row)
{
    return stream << row.name;
}

class Bytes : public testing::TestWithParam<Row> {};

TEST_P(Bytes, BecomeRepliesAndReports)
{
    const Row &row = GetParam();
    for (const size_t piece : {std::string_view::npos, size_t{1}, size_t{2}, size_t{7}}) {
        Client client;
        if (!row.command.empty()) client.send(row.command);
        client.feed(row.bytes, piece);
        EXPECT_EQ(client.replies, row.replies) << "in pieces of " << piece;
        EXPECT_EQ(client.reports, row.reports) << "in pieces of " << piece;
        EXPECT_EQ(row.bytes.substr(0, client.raw.size()), client.raw) << "which the transcript has";
        if (piece != std::string_view::npos) continue;
        EXPECT_EQ(client.discarded, row.discarded);
    }
}

constexpr std::string_view kSignal = "\r\n+CSQ: 20,99\r\n\r\nOK\r\n";
constexpr std::string_view kOk = "\r\nOK\r\n";
constexpr std::string_view kReport = "\r\n+CEREG: 1\r\n";
constexpr std::string_view kHomeReply = "\r\n+CREG: 0,1,\"\",\"\",\"\"\r\n\r\nOK\r\n";

INSTANTIATE_TEST_SUITE_P(
    Framing, Bytes,
    testing::Values(
        Row{"standard", "AT+CSQ", "\r\n+CSQ: 20,99\r\n\r\nOK\r\n", kSignal},
        Row{"echo on", "AT+CSQ", "AT+CSQ\r\r\n+CSQ: 20,99\r\n\r\nOK\r\n", kSignal},
        Row{"echo with an odd number of quotes", "AT+ZNCK=\"1\"2\"", "AT+ZNCK=\"1\"2\"\r\r\nOK\r\n", kOk},
        Row{"one line break before OK", "AT+CSQ", "\r\n+CSQ: 20,99\r\nOK\r\n", kSignal},
        Row{"no line break at the start", "AT+CSQ", "+CSQ: 20,99\r\nOK\r\n", kSignal},
        Row{"bare line feeds", "AT+CSQ", "\n+CSQ: 20,99\n\nOK\n", kSignal},
        Row{"bare carriage returns", "AT+CSQ", "AT+CSQ\r+CSQ: 20,99\rOK\r", kSignal},
        Row{"CR CR LF", "AT+CSQ", "\r\r\n+CSQ: 20,99\r\r\n\r\r\nOK\r\r\n", kSignal},
        Row{"no blank behind the colon", "AT+CSQ", "\r\n+CSQ:20,99\r\n\r\nOK\r\n", kSignal},
        Row{"no blank behind an error's colon", "AT+CSQ", "\r\n+CME ERROR:10\r\n", "\r\n+CME ERROR: 10\r\n"},
        Row{"nor behind that of a message error", "AT+CMGD=1", "\r\n+CMS ERROR:321\r\n", "\r\n+CMS ERROR: 321\r\n"},
        Row{"two blanks stay", "AT+X", "\r\n+X:  20,99\r\n\r\nOK\r\n", "\r\n+X:  20,99\r\n\r\nOK\r\n"},
        Row{"a colon in a bare line", "AT+CGMR", "\r\nV1:2\r\n\r\nOK\r\n", "\r\nV1:2\r\n\r\nOK\r\n"},
        Row{"an address", "AT+CGPADDR=1", "\r\n+CGPADDR:1,\"2001:db8::1\"\r\n\r\nOK\r\n",
            "\r\n+CGPADDR: 1,\"2001:db8::1\"\r\n\r\nOK\r\n"},
        Row{"an empty line between entries", "AT+X?", "\r\n+X: 1\r\n\r\n+X: 2\r\n\r\nOK\r\n",
            "\r\n+X: 1\r\n+X: 2\r\n\r\nOK\r\n"},
        Row{"a body before an error", "AT+X", "\r\n+X: 1\r\n\r\nERROR\r\n", "\r\n+X: 1\r\n\r\nERROR\r\n"},
        Row{"not support", "AT+X", "\r\nnot support\r\n", "\r\nnot support\r\n"},
        Row{"a blank behind OK", "AT+X", "\r\nOK \r\n", kOk},
        Row{"OK in quotes is no result", "AT+X", "\r\n+X: \"\r\nOK\r\n\"\r\n\r\nOK\r\n",
            "\r\n+X: \"\r\nOK\r\n\"\r\n\r\nOK\r\n"},
        Row{"an open quote in a name", "AT+COPS?", "\r\n+COPS: 0,0,\"A\"B\",7\r\n\r\nOK\r\n",
            "\r\n+COPS: 0,0,\"A\"B\",7\r\n\r\nOK\r\n"},
        Row{"several lines in quotes", "AT+X", "\r\n+X: \"one\ntwo\r\n\r\nthree\",1\r\n\r\nOK\r\n",
            "\r\n+X: \"one\ntwo\r\n\r\nthree\",1\r\n\r\nOK\r\n"},
        Row{"text behind the result", "AT+CSQ", "\r\n+CSQ: 20,99\r\n\r\nOK\r\nstray\r\nOK\r\n", kSignal, "",
            "stray\r\nOK\r\n"},
        Row{"a report behind the result", "AT+CSQ", "\r\n+CSQ: 20,99\r\n\r\nOK\r\n\r\n+CEREG: 1\r\n", kSignal, kReport},
        Row{"zeros among the characters", "AT+CSQ", std::string_view("\0\r\n\0+CSQ: 2\0000,99\r\n\r\nO\0K\r\n", 25),
            kSignal},
        Row{"eight bits", "AT+CSQ", "\r\n+CSQ: \x80\xFF\r\n\r\nOK\r\n", "\r\n+CSQ: \x80\xFF\r\n\r\nOK\r\n"},
        Row{"no result", "AT+CSQ", "\r\n+CSQ: 20,99\r\n", ""}, Row{"no line end", "AT+CSQ", "\r\nOK", ""},
        Row{"prompt", "AT+CMGS=5", "\r\n> ", "\r\n> "}, Row{"prompt without a blank", "AT+CMGS=5", "\r\n>", "\r\n> "},
        Row{"prompt with a line end", "AT+CMGS=5", "\r\n> \r\n", "\r\n> "},
        Row{"prompt with a line end and no blank", "AT+CMGS=5", ">\n", "\r\n> "},
        Row{"prompt right behind the echo", "AT+CMGS=5", "AT+CMGS=5\r> ", "\r\n> "},
        Row{"prompt that nobody asked for", "", "\r\n> ", "", "", "\r\n> "},
        Row{"report right behind a prompt", "AT+CMGS=5", "\r\n> \r\n+CEREG: 1\r\n", "\r\n> ", kReport}));

INSTANTIATE_TEST_SUITE_P(
    CallResults, Bytes,
    testing::Values(Row{"connected", "ATD*99#", "\r\nCONNECT 150000000\r\n", "\r\nCONNECT 150000000\r\n\r\nOK\r\n"},
                    Row{"no carrier", "ATD123;", "\r\nNO CARRIER\r\n", "\r\nNO CARRIER\r\n\r\nERROR\r\n"},
                    Row{"no carrier behind a basic command", "ATE0H", "\r\nNO CARRIER\r\n",
                        "\r\nNO CARRIER\r\n\r\nERROR\r\n"},
                    Row{"busy", "ATD123;", "\r\nBUSY\r\n", "\r\nBUSY\r\n\r\nERROR\r\n"},
                    Row{"no answer", "ATD123;", "\r\nNO ANSWER\r\n", "\r\nNO ANSWER\r\n\r\nERROR\r\n"},
                    Row{"no dial tone", "ATD123;", "\r\nNO DIALTONE\r\n", "\r\nNO DIALTONE\r\n\r\nERROR\r\n"},
                    Row{"a call that ends while something else is asked", "AT+CSQ",
                        "\r\n+CSQ: 20,99\r\n\r\nNO CARRIER\r\n\r\nOK\r\n", kSignal, "\r\nNO CARRIER\r\n"}));

INSTANTIATE_TEST_SUITE_P(
    Reports, Bytes,
    testing::Values(
        Row{"nothing runs", "", "\r\n+CEREG: 1\r\n\r\n+NEW:1\r\n", "", "\r\n+CEREG: 1\r\n\r\n+NEW: 1\r\n"},
        Row{"words", "AT+CSQ", "\r\nRING\r\n\r\n+ZEND\r\n\r\n+CSQ: 20,99\r\n\r\nOK\r\n", kSignal,
            "\r\nRING\r\n\r\n+ZEND\r\n"},
        Row{"no blank, as they are read", "AT+CSQ", "\r\n+ZMCON:1\r\n+CON_STATUS:2\r\n\r\n+CSQ: 20,99\r\n\r\nOK\r\n",
            kSignal, "\r\n+ZMCON:1\r\n\r\n+CON_STATUS:2\r\n"},
        Row{"no blank, but to be read with it", "AT+CSQ", "\r\n+CEREG:1\r\n\r\n+CSQ: 20,99\r\n\r\nOK\r\n", kSignal,
            kReport},
        Row{"of another name with ^", "AT+CSQ", "\r\n^MODE: 5\r\n\r\n+CSQ: 20,99\r\n\r\nOK\r\n", kSignal,
            "\r\n^MODE: 5\r\n"},
        Row{"a reply with ^ to +", "AT+HVER", "\r\n^HVER: 1\r\n\r\nOK\r\n", "\r\n^HVER: 1\r\n\r\nOK\r\n"},
        Row{"same name", "AT+CUSD?", "\r\n+CUSD: 1\r\n\r\nOK\r\n", "\r\n+CUSD: 1\r\n\r\nOK\r\n"},
        Row{"same name in lower case", "at+cusd?", "\r\n+CUSD: 1\r\n\r\nOK\r\n", "\r\n+CUSD: 1\r\n\r\nOK\r\n"},
        Row{"second of two commands", "AT+CSQ;+CREG?", "\r\n+CSQ: 1\r\n+CREG: 0,1\r\n\r\nOK\r\n",
            "\r\n+CSQ: 1\r\n+CREG: 0,1\r\n\r\nOK\r\n"},
        Row{"behind a basic command", "ATE0+CREG?", "\r\n+CREG: 0,1\r\n\r\nOK\r\n", "\r\n+CREG: 0,1\r\n\r\nOK\r\n"},
        Row{"blanks in the command", " at +C REG ?", "\r\n+CREG: 0,1\r\n\r\nOK\r\n", kHomeReply},
        Row{"lines of a text", "AT+CSQ", "\r\n+CUSD: 0,\"one\r\nOK\r\n\",15\r\n\r\n+CSQ: 20,99\r\n\r\nOK\r\n", kSignal,
            "\r\n+CUSD: 0,\"one\r\nOK\r\n\",15\r\n"},
        Row{"cut within quotes", "AT+CSQ", "\r\n+CEREG: 1,\"00A\r\n+CSQ: 20,99\r\n\r\nOK\r\n", kSignal,
            "\r\n+CEREG: 1,\"00A\r\n"},
        Row{"message in text mode", "AT+CSQ", "\r\n+CMT: \"+123\",,\"24/01/01\"\r\nOK\r\n\r\n+CSQ: 20,99\r\n\r\nOK\r\n",
            kSignal, "\r\n+CMT: \"+123\",,\"24/01/01\"\r\nOK\r\n"},
        Row{"empty message", "AT+CSQ", "\r\n+CMT: \"+123\",,\"24/01/01\"\r\n\r\n\r\n+CSQ: 20,99\r\n\r\nOK\r\n", kSignal,
            "\r\n+CMT: \"+123\",,\"24/01/01\"\r\n\r\n"},
        Row{"message as PDU", "AT+CSQ", "\r\n+CMT: ,24\r\n0791AB\r\n\r\n+CSQ: 20,99\r\n\r\nOK\r\n", kSignal,
            "\r\n+CMT: ,24\r\n0791AB\r\n"},
        Row{"PDU that does not come", "AT+CSQ", "\r\n+CMT: ,24\r\n\r\n+CSQ: 20,99\r\n\r\nOK\r\n", kSignal,
            "\r\n+CMT: ,24\r\n"},
        Row{"cell broadcast", "", "\r\n+CBM: 88\r\n0123456789abcdef\r\n", "", "\r\n+CBM: 88\r\n0123456789abcdef\r\n"},
        Row{"status report in one line", "", "\r\n+CDS: 6,7,\"+123\",145\r\n\r\n+CEREG: 1\r\n", "",
            "\r\n+CDS: 6,7,\"+123\",145\r\n\r\n+CEREG: 1\r\n"},
        Row{"status report as PDU", "", "\r\n+CDS: 25\r\n0006\r\n", "", "\r\n+CDS: 25\r\n0006\r\n"},
        Row{"before the echo", "AT+CSQ", "\r\n+CEREG: 1\r\nAT+CSQ\r\r\n+CSQ: 20,99\r\n\r\nOK\r\n", kSignal, kReport}));

INSTANTIATE_TEST_SUITE_P(
    Registration, Bytes,
    testing::Values(
        Row{"short", "AT+CREG?", "\r\n+CREG: 0,1\r\n\r\nOK\r\n", kHomeReply},
        Row{"blank between numbers", "AT+CREG?", "\r\n+CREG: 0, 1\r\n\r\nOK\r\n", kHomeReply},
        Row{"report of a state", "AT+CREG?", "\r\n+CREG: 5\r\n\r\n+CREG: 0,1\r\n\r\nOK\r\n", kHomeReply,
            "\r\n+CREG: 5\r\n"},
        Row{"report with codes in quotes", "AT+CREG?",
            "\r\n+CREG: 2,1,\"A\",\"B\",7\r\n\r\n+CREG: 5,\"A\",\"B\",7\r\n\r\nOK\r\n",
            "\r\n+CREG: 2,1,\"A\",\"B\",7\r\n\r\nOK\r\n", "\r\n+CREG: 5,\"A\",\"B\",7\r\n"},
        Row{"report with bare codes", "AT+CREG?",
            "\r\n+CREG: 5,1A2B,01C2,7\r\n\r\n+CREG: 2,1,1A2B,01C2,7\r\n\r\nOK\r\n",
            "\r\n+CREG: 2,1,\"1A2B\",\"01C2\",7\r\n\r\nOK\r\n", "\r\n+CREG: 5,\"1A2B\",\"01C2\",7\r\n"},
        Row{"report with an empty code", "AT+CGREG?", "\r\n+CGREG: 0,,\r\n\r\n+CGREG: 2,0\r\n\r\nOK\r\n",
            "\r\n2,0\r\n\r\nOK\r\n", "\r\n+CGREG: 0,\"\",\"\"\r\n"},
        Row{"another domain's report", "AT+CEREG?", "\r\n+CGREG: 0,1\r\n\r\n+CEREG: 0,1\r\n\r\nOK\r\n",
            "\r\n0,1\r\n\r\nOK\r\n", "\r\n+CGREG: 1\r\n"},
        Row{"a reply that looks like a report", "AT+CREG?", "\r\n+CREG: 1\r\n\r\nOK\r\n", "\r\n+CREG: 1\r\n\r\nOK\r\n"},
        Row{"which an error has not", "AT+CREG?", "\r\n+CREG: 1\r\n\r\nERROR\r\n", "\r\nERROR\r\n", "\r\n+CREG: 1\r\n"},
        Row{"ranges", "AT+CREG=?", "\r\n+CREG: (0-2)\r\n\r\nOK\r\n", "\r\n+CREG: (0-2)\r\n\r\nOK\r\n"},
        Row{"ranges without a name", "AT+CEREG=?", "\r\n+CEREG: (0-5)\r\n\r\nOK\r\n", "\r\n(0-5)\r\n\r\nOK\r\n"},
        Row{"set", "AT+CREG=2", "\r\n+CREG: 1,\"A\",\"B\",7\r\n\r\nOK\r\n", kOk, "\r\n+CREG: 1,\"A\",\"B\",7\r\n"}));

INSTANTIATE_TEST_SUITE_P(
    Scans, Bytes,
    testing::Values(Row{"no operator", "AT+COPS=?", "\r\n+COPS: ,,(0,1,2,3,4),(0,1,2)\r\n\r\nOK\r\n", kOk},
                    Row{"no lists at the end", "AT+COPS=?", "\r\n+COPS: (2,\"A\",\"B\",\"1\",7)\r\n\r\nOK\r\n",
                        "\r\n+COPS: 2,\"A\",\"B\",\"1\",7\r\n\r\nOK\r\n"},
                    Row{"lists without an empty field before them", "AT+COPS=?",
                        "\r\n+COPS: (2,\"A\",\"B\",\"1\",7),(0,1,4),(0,2)\r\n\r\nOK\r\n",
                        "\r\n+COPS: 2,\"A\",\"B\",\"1\",7\r\n\r\nOK\r\n"},
                    Row{"brackets and commas in a name", "AT+COPS=?",
                        "\r\n+COPS: (1,\"A (x), B\",\"),(\",\"1\",2),,(0),(0)\r\n\r\nOK\r\n",
                        "\r\n+COPS: 1,\"A (x), B\",\"),(\",\"1\",2\r\n\r\nOK\r\n"},
                    Row{"an operator a line in brackets", "AT+COPS=?",
                        "\r\n+COPS:(1,\"A\",\"B\",\"1\",2),\r\n(2,\"C\",\"D\",\"2\",7)\r\n\r\nOK\r\n",
                        "\r\n+COPS: 1,\"A\",\"B\",\"1\",2\r\n+COPS: 2,\"C\",\"D\",\"2\",7\r\n\r\nOK\r\n"},
                    Row{"lines without brackets stay", "AT+COPS=5", "\r\n+COPS: 1,\"A\",\"B\",\"1\",2\r\n\r\nOK\r\n",
                        "\r\n+COPS: 1,\"A\",\"B\",\"1\",2\r\n\r\nOK\r\n"},
                    Row{"the operator in use is no scan", "AT+COPS?", "\r\n+COPS: 0,0,\"A\",7\r\n\r\nOK\r\n",
                        "\r\n+COPS: 0,0,\"A\",7\r\n\r\nOK\r\n"}));

TEST(SystemInformation, GoesByFamily)
{
    const auto shaped = [](Family family, std::string_view bytes) {
        Client client(family);
        client.send("AT^SYSINFO");
        client.feed(bytes, std::string_view::npos);
        return client.replies;
    };
    for (const std::string_view bytes :
         {"\r\n^SYSINFO:2,3,0,5,1\r\n\r\nOK\r\n", "\r\n^SYSINFO: 2,3,0,5,1\r\n\r\nOK\r\n"}) {
        EXPECT_EQ(shaped(Family::Tsp, bytes), "\r\n^SYSINFO: 2,3,0,5,1\r\n\r\nOK\r\n");
        for (const host::family::Row &row : host::family::kRows)
            if (row.family != Family::Tsp) {
                EXPECT_EQ(shaped(row.family, bytes), "\r\n^SYSINFO:2,3,0,5,1\r\n\r\nOK\r\n");
            }
    }
}

// Reports in replies

constexpr std::string_view kReportsToInsert[] = {
    "\r\n+CEREG: 1\r\n", "\r\n+CREG: 5,\"00A1\",\"0001B2C3\",7\r\n", "\r\n^RSSI: 18\r\n", "\r\n+CMT: ,24\r\n0791AB\r\n",
    "\r\nRING\r\n",
};

bool isLineBoundary(std::string_view bytes, size_t at)
{
    return at == 0 || (at >= 2 && bytes.substr(at - 2, 2) == "\r\n");
}

TEST(ReportsInReplies, LeaveTheReplyWholeAtEachLineBoundary)
{
    for (const GoldenReply &golden : kGoldenReplies) {
        for (const std::string_view report : kReportsToInsert) {
            for (size_t at = 0; at <= golden.fromModem.size(); ++at) {
                if (!isLineBoundary(golden.fromModem, at)) continue;
                Client client;
                client.send(golden.command);
                const std::string bytes =
                    std::string(golden.fromModem.substr(0, at)).append(report).append(golden.fromModem.substr(at));
                client.feed(bytes, 3);
                EXPECT_EQ(client.replies, golden.toClient) << report << " at " << at << " of " << golden.command;
                EXPECT_EQ(client.reports, report) << " at " << at << " of " << golden.command;
            }
        }
    }
}

TEST(ReportsInReplies, LeaveTheNextReplyWholeAtEachByte)
{
    size_t cases = 0;
    for (const GoldenReply &golden : kGoldenReplies) {
        for (const std::string_view report : kReportsToInsert) {
            for (size_t at = 0; at <= golden.fromModem.size(); ++at, ++cases) {
                Client client;
                client.send(golden.command);
                client.feed(
                    std::string(golden.fromModem.substr(0, at)).append(report).append(golden.fromModem.substr(at)), 5);
                client.collector.expectLateReplies("AT", golden.command);
                client.feed("\r\nOK\r\n", 1);
                client.collector.expectNothing();
                client.collector.endMiddle();
                client.clear();
                client.send("AT+CSQ");
                client.feed(kSignal, 4);
                EXPECT_EQ(client.replies, kSignal) << report << " at " << at << " of " << golden.command;
            }
        }
    }
    EXPECT_GT(cases, 1000U);
}

TEST(ReportsInReplies, CutAnywhereLeaveTheReplyWhole)
{
    // Those of numbers and codes; what is left of the line is all that can be missing.
    for (const std::string_view report :
         {"\r\n+CEREG: 1,\"00A1\",\"0001B2C3\",7", "\r\n+CGEV: ME PDN ACT 1", "\r\n^MODE: 5,\"x\""}) {
        for (size_t length = 9; length <= report.size(); ++length) {
            Client client;
            client.send("AT+CSQ");
            client.feed(std::string(report.substr(0, length)).append(kSignal), 6);
            if (report.find("^MODE") != std::string_view::npos && length >= report.size() - 2) break; // may have lines
            EXPECT_EQ(client.replies, kSignal) << report.substr(0, length);
            EXPECT_EQ(client.reports, reportAsLibraryReads({std::string(report.substr(2, length - 2))}));
        }
    }
}

// Limits

TEST(LongReplies, AreHandedOnUntilTheyCannotBeKept)
{
    Client client;
    client.send("AT+X");
    client.feed("\r\n" + std::string(40000, 'x') + "\r\n\r\nOK\r\n", 1000);
    EXPECT_EQ(client.replies.size(), 40000U + 10);
    EXPECT_EQ(client.tooLong, 0U);

    client.send("AT+X");
    client.feed("\r\n" + std::string(50000, 'x') + "\r\n\r\nOK\r\n", 1000);
    EXPECT_EQ(client.tooLong, 1U);

    client.send("AT+X");
    for (int i = 0; i < 1000; ++i)
        client.feed("\r\n" + std::string(80, 'x') + "\r\n", std::string_view::npos);
    client.feed("\r\nOK\r\n", 1);
    EXPECT_EQ(client.tooLong, 2U);

    client.clear();
    client.send("AT+CSQ");
    client.feed(kSignal, 1000);
    EXPECT_EQ(client.replies, kSignal);
}

TEST(Middles, AreKnownAndGivenUp)
{
    Client client;
    EXPECT_FALSE(client.collector.isInMiddle());
    client.feed("\r\n+CUSD: 0,\"open\r\n", 1);
    EXPECT_TRUE(client.collector.isInMiddle());
    client.collector.endMiddle();
    EXPECT_FALSE(client.collector.isInMiddle());
    EXPECT_EQ(client.discarded, "\r\n+CUSD: 0,\"open\r\n");

    client.feed("\r\n+CMT: \"1\",,\"2\"\r\n", 1);
    EXPECT_TRUE(client.collector.isInMiddle()) << "its text is to come";
    client.collector.endMiddle();
    EXPECT_EQ(client.reports, "\r\n+CMT: \"1\",,\"2\"\r\n");
}

TEST(StrayResults, AreTold)
{
    Client client;
    client.send("AT+CSQ");
    client.feed("\r\n+CSQ: 20,99\r\n\r\nOK\r\n\r\nOK\r\nstray\r\n+CME ERROR: 3\r\nCONNECT 9600\r\n>", 3);
    EXPECT_EQ(client.replies, kSignal);
    EXPECT_EQ(client.strays, "OK|+CME ERROR: 3|CONNECT 9600|> |");
}

TEST(LateReplies, AreToldButNotKept)
{
    Client client;
    client.collector.expectLateReplies("AT", "AT+CREG?");
    client.feed("AT\r\r\n+CREG: 0,1\r\n\r\n+CSQ: \"\r\n\r\nOK\r\n\r\n+CEREG: 1\r\nAT\r\r\nOK\r\n", 3);
    EXPECT_EQ(client.replies, "\r\nOK\r\n\r\nOK\r\n");
    EXPECT_EQ(client.reports, kReport);
}

} // namespace

// Which lines and results belong to the command that runs, and which to one before it or to none.
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "host/at_server/echo.h"
#include "tests/host/at_server/collecting_client.h"

using namespace host::at_server;

namespace {

constexpr std::string_view kSignal = "\r\n+CSQ: 20,99\r\n\r\nOK\r\n";
constexpr std::string_view kNumber = "\r\n460001234567890\r\n\r\nOK\r\n";

struct Row {
    const char *name;
    std::vector<std::string_view> before; ///< commands: those with '!' in front had no reply, the others had one
    std::string_view command;             ///< that runs; with '~' in front its echo is awaited; empty: none
    std::string_view bytes;
    std::string_view replies;
    std::string_view discarded = {};
    size_t foreign = 0;
    std::string_view early = {};
    std::string_view reports = {};
};

std::ostream &operator<<(std::ostream &stream, const Row &row)
{
    return stream << row.name;
}

void send(CollectingClient &client, std::string_view command)
{
    const bool isEchoed = command.front() == '~';
    client.send(command.substr(isEchoed ? 1 : 0), isEchoed);
}

void bringAbout(CollectingClient &client, std::string_view before)
{
    if (before.front() == '!') {
        client.send(before.substr(1));
        client.collector.expectLateReplies("AT", before.substr(1));
    } else if (before.front() == '+' || before.front() == '^') { // comes by itself
        client.feed(std::string("\r\n").append(before).append("\r\n"), 9);
    } else {
        client.send(before);
        client.feed("\r\nOK\r\n", 9);
    }
    client.collector.expectNothing();
    client.clear();
}

class Evidence : public testing::TestWithParam<Row> {};

TEST_P(Evidence, TellsWhatBelongsToACommand)
{
    const Row &row = GetParam();
    for (const size_t piece : {std::string_view::npos, size_t{1}, size_t{5}}) {
        CollectingClient client;
        for (const std::string_view before : row.before)
            bringAbout(client, before);
        if (!row.command.empty()) send(client, row.command);
        client.feed(row.bytes, piece);
        EXPECT_EQ(client.replies, row.replies) << "in pieces of " << piece;
        EXPECT_EQ(client.reports, row.reports) << "in pieces of " << piece;
        EXPECT_EQ(client.foreign, row.foreign) << "in pieces of " << piece;
        EXPECT_EQ(client.early, row.early) << "in pieces of " << piece;
        if (piece == std::string_view::npos) {
            EXPECT_EQ(client.discarded, row.discarded);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Names, Evidence,
    testing::Values(
        Row{"of the command", {}, "AT+CSQ", kSignal, kSignal},
        Row{"of one of its parts", {}, "AT+CREG?;+CSQ", kSignal, kSignal},
        Row{"of none", {}, "AT+CSQ", "\r\n+NEW: 1\r\n\r\nOK\r\n", "\r\nOK\r\n", "\r\n+NEW: 1\r\n", 1},
        Row{"of none, with another sign",
            {},
            "AT+CSQ",
            "\r\n^NEW: 1\r\n\r\nOK\r\n",
            "\r\nOK\r\n",
            "\r\n^NEW: 1\r\n",
            1},
        Row{"that a modem has told by itself",
            {"+NEW: 0"},
            "AT+CSQ",
            "\r\n+NEW: 1\r\n\r\n+CSQ: 20,99\r\n\r\nOK\r\n",
            kSignal,
            "",
            0,
            "",
            "\r\n+NEW: 1\r\n"},
        Row{"that it has told, but only when asked",
            {"AT+NEW?", "AT+X", "AT+X", "+NEW: 0"},
            "AT+CSQ",
            "\r\n+NEW: 1\r\n\r\nOK\r\n",
            "\r\nOK\r\n",
            "\r\n+NEW: 1\r\n",
            1},
        Row{"of the same question under another name",
            {},
            "AT+CCID",
            "\r\n+ICCID: 89\r\n\r\nOK\r\n",
            "\r\n+ICCID: 89\r\n\r\nOK\r\n"},
        Row{"in the text of a message",
            {},
            "AT+CMGR=1",
            "\r\n+CMGR: 1\r\n+NEW: half price\r\n\r\nOK\r\n",
            "\r\n+CMGR: 1\r\n+NEW: half price\r\n\r\nOK\r\n"},
        Row{"in what a modem says of itself",
            {"AT+CSQ"},
            "ATI",
            "\r\nX\r\n+GCAP: +CGSM\r\nAT+CSQ\r\n\r\nOK\r\n",
            "\r\nX\r\n+GCAP: +CGSM\r\nAT+CSQ\r\n\r\nOK\r\n"},
        Row{"of a command that cannot be read", {}, "AT?", "\r\n+NEW: 1\r\n\r\nOK\r\n", "\r\n+NEW: 1\r\n\r\nOK\r\n"}));

INSTANTIATE_TEST_SUITE_P(
    Numbers, Evidence,
    testing::Values(Row{"of the subscriber", {}, "AT+CIMI", kNumber, kNumber},
                    Row{"of the device", {}, "AT+CGSN", kNumber, kNumber},
                    Row{"too short for a card", {}, "AT+CCID", kNumber, "\r\nOK\r\n", "\r\n460001234567890\r\n", 1},
                    Row{"too long for a subscriber",
                        {},
                        "AT+CIMI",
                        "\r\n89860012345678901234\r\n\r\nOK\r\n",
                        "\r\nOK\r\n",
                        "\r\n89860012345678901234\r\n",
                        1},
                    Row{"for a command that answers under its name",
                        {},
                        "AT+CSQ",
                        kNumber,
                        "\r\nOK\r\n",
                        "\r\n460001234567890\r\n",
                        1},
                    Row{"for one of which nothing is known", {}, "AT+NEW", kNumber, kNumber},
                    Row{"that are short", {}, "AT+CBC", "\r\n20\r\n\r\nOK\r\n", "\r\n20\r\n\r\nOK\r\n"}));

INSTANTIATE_TEST_SUITE_P(
    Late, Evidence,
    testing::Values(
        Row{"a whole reply before the own one",
            {"!AT+CSQ", "AT+X", "AT+X"},
            "AT+CFUN?",
            "\r\n+CSQ: 1\r\n\r\nOK\r\n\r\n+CFUN: 1\r\n\r\nOK\r\n",
            "\r\n+CFUN: 1\r\n\r\nOK\r\n",
            "\r\n+CSQ: 1\r\n\r\nOK\r\n"},
        Row{"in the middle of the own one",
            {"!AT+CSQ", "AT+X", "AT+X"},
            "AT+CFUN?",
            "\r\n+CFUN: 1\r\n\r\n+CSQ: 1\r\n\r\nOK\r\n\r\nOK\r\n",
            "\r\n+CFUN: 1\r\n\r\nOK\r\n",
            "\r\n+CSQ: 1\r\n\r\nOK\r\n"},
        Row{"while nothing runs", {"!AT+CSQ", "AT+X", "AT+X"}, "", "\r\n+CSQ: 1\r\n", "", "\r\n+CSQ: 1\r\n"},
        Row{"a registration while nothing runs is a report, with its mode or without",
            {"AT+CREG?"},
            "",
            "\r\n+CREG: 2,5,\"00A1\",\"0001B2C3\",7\r\n",
            "",
            "",
            0,
            "",
            "\r\n+CREG: 5,\"00A1\",\"0001B2C3\",7\r\n"},
        Row{"the last reply again", {"AT+CSQ"}, "", "\r\n+CSQ: 1\r\n", "", "\r\n+CSQ: 1\r\n"},
        Row{"the last reply again, during the next",
            {"AT+CSQ"},
            "AT+CFUN?",
            "\r\n+CSQ: 1\r\n\r\nOK\r\n\r\n+CFUN: 1\r\n\r\nOK\r\n",
            "\r\n+CFUN: 1\r\n\r\nOK\r\n",
            "\r\n+CSQ: 1\r\n\r\nOK\r\n"},
        Row{"an identity",
            {"!AT+CIMI", "AT+X", "AT+X"},
            "AT+CSQ",
            "\r\n460001234567890\r\n\r\nOK\r\n\r\n+CSQ: 20,99\r\n\r\nOK\r\n",
            kSignal,
            "\r\n460001234567890\r\n\r\nOK\r\n"},
        Row{"an echo and a bare result",
            {"!AT+CFUN=1", "AT+X", "AT+X"},
            "AT+CSQ",
            "AT+CFUN=1\r\r\nOK\r\n\r\n+CSQ: 20,99\r\n\r\nOK\r\n",
            kSignal,
            "AT+CFUN=1\r\r\nOK\r\n"},
        Row{"asked again", {"!AT+CSQ"}, "AT+CSQ", kSignal, kSignal},
        Row{"a registration, not a report of it",
            {"!AT+CREG?", "AT+X", "AT+X"},
            "AT+CSQ",
            "\r\n+CREG: 0,1\r\n\r\nOK\r\n\r\n+CREG: 5\r\n\r\n+CSQ: 20,99\r\n\r\nOK\r\n",
            kSignal,
            "\r\n+CREG: 0,1\r\n\r\nOK\r\n",
            0,
            "",
            "\r\n+CREG: 5\r\n"},
        Row{"what is also a report stays one",
            {"!AT+CUSD?", "AT+X", "AT+X"},
            "AT+CSQ",
            "\r\n+CUSD: 1\r\n\r\n+CSQ: 20,99\r\n\r\nOK\r\n",
            kSignal,
            "",
            0,
            "",
            "\r\n+CUSD: 1\r\n"},
        Row{"a prompt is none",
            {"!AT+CSQ", "AT+X", "AT+X"},
            "AT+CMGS=1",
            "\r\n+CSQ: 1\r\n\r\n> ",
            "\r\n> ",
            "\r\n+CSQ: 1\r\n"}));

INSTANTIATE_TEST_SUITE_P(
    Echoes, Evidence,
    testing::Values(
        Row{"then the reply", {}, "~AT+CSQ", "AT+CSQ\r\r\n+CSQ: 20,99\r\n\r\nOK\r\n", kSignal},
        Row{"in capitals, with a blank behind", {}, "~at+csq", "AT+CSQ \r\r\n+CSQ: 20,99\r\n\r\nOK\r\n", kSignal},
        Row{"behind another reply",
            {},
            "~AT+CSQ",
            "\r\n+CSQ: 1\r\n\r\nOK\r\nAT+CSQ\r\r\n+CSQ: 20,99\r\n\r\nOK\r\n",
            kSignal,
            "\r\n+CSQ: 1\r\n\r\nOK\r\n",
            0,
            "OK|"},
        Row{"behind bare results and lines",
            {},
            "~AT+CSQ",
            "\r\nOK\r\nx\r\n+NEW: 1\r\nERROR\r\nAT+CSQ\r\r\n+CSQ: 20,99\r\n\r\nOK\r\n",
            kSignal,
            "\r\nOK\r\nx\r\n+NEW: 1\r\nERROR\r\n",
            0,
            "OK|ERROR|"},
        Row{"behind a report",
            {},
            "~AT+CREG?",
            "\r\n+CREG: 5\r\nAT+CREG?\r\r\n+CREG: 0,1\r\n\r\nOK\r\n",
            "\r\n+CREG: 0,1,\"\",\"\",\"\"\r\n\r\nOK\r\n",
            "",
            0,
            "",
            "\r\n+CREG: 5\r\n"},
        Row{"that does not come", {}, "~AT+CSQ", kSignal, "", kSignal, 0, "OK|"},
        Row{"of a list of commands",
            {},
            "~AT+CLAC",
            "AT+CLAC\r\r\nAT+CGMI\r\nAT+CLAC\r\n\r\nOK\r\n",
            "\r\nAT+CGMI\r\nAT+CLAC\r\n\r\nOK\r\n"}));

TEST(LateReplies, TellWhetherTheQuestionWasEchoed)
{
    struct Results : ReplyCollector::Listener {
        std::string echoed;
        void onReply(Reply &&reply) override { echoed += reply.isEchoed ? 'e' : '-'; }
        void onStray(std::string_view /*result*/) override {}
        void onEarly(std::string_view /*result*/) override {}
        void onForeign() override {}
        void onReport(const std::vector<std::string> & /*lines*/) override {}
        void onLine(std::string_view /*raw*/, LineIs /*what*/) override {}
    } results;
    ReplyCollector collector(results);
    collector.expectLateReplies("AT", "AT+CSQ");
    collector.feed("\r\nOK\r\nAT\r\r\nOK\r\nAT+CSQ\r\r\nOK\r\nAT\r\r\n+CSQ: 1\r\n\r\nOK\r\nAT\r\r\nOK\r\n");
    EXPECT_EQ(results.echoed, "-e--e");
}

// The state of the echo

/** A modem of which the echo has been switched on, and a command has been echoed. */
Echo known()
{
    Echo echo(true);
    echo.portOpened();
    EXPECT_TRUE(echo.isToBeSwitchedOn());
    EXPECT_FALSE(echo.isEvidence());
    echo.switchedOn();
    echo.replied(Echo::kSwitchOn, false);
    echo.replied("AT+CSQ", true);
    return echo;
}

TEST(EchoOfAModem, IsEvidenceOnceItHasBeenHeard)
{
    Echo echo = known();
    EXPECT_TRUE(echo.isEvidence());
    EXPECT_FALSE(echo.isToBeSwitchedOn());
    echo.replied("AT+CSQ", false);
    EXPECT_FALSE(echo.isEvidence());
    EXPECT_FALSE(echo.isToBeSwitchedOn()) << "it has been tried";
}

TEST(EchoOfAModem, IsInDoubtBehindWhatMaySwitchIt)
{
    for (const char *command : {"ATZ", "AT&F", "ATE0V1", "ate0;+csq", "AT+CFUN=1,1", "AT+CFUN=0"}) {
        Echo echo = known();
        echo.replied(command, true);
        EXPECT_FALSE(echo.isEvidence()) << command;
        EXPECT_TRUE(echo.isToBeSwitchedOn()) << command;
    }
    for (const char *command : {"AT+CFUN?", "AT", "ATI", "AT+CMEE=2"}) {
        Echo echo = known();
        echo.replied(command, true);
        EXPECT_TRUE(echo.isEvidence()) << command;
    }
}

TEST(EchoOfAModem, IsGivenUpWhenItComesAndGoes)
{
    Echo echo = known();
    EXPECT_FALSE(echo.missed());
    EXPECT_TRUE(echo.isToBeSwitchedOn());
    EXPECT_FALSE(echo.missed());
    EXPECT_TRUE(echo.missed());
    EXPECT_FALSE(echo.isToBeSwitchedOn());
    echo.replied("AT+CSQ", true);
    EXPECT_FALSE(echo.isEvidence());
    echo.portOpened();
    EXPECT_TRUE(echo.isToBeSwitchedOn());
}

TEST(EchoOfAModem, IsAnsweredForByTheServer)
{
    const Echo echo = known();
    for (const char *command : {"ATE0", "ATE1", "ate", "ATE0E1", " AT E0 "})
        EXPECT_TRUE(echo.answersFor(command)) << command;
    for (const char *command : {"AT", "ATE0V1", "ATE0;+CSQ", "AT+E", "ATI"})
        EXPECT_FALSE(echo.answersFor(command)) << command;
    EXPECT_FALSE(Echo(false).answersFor("ATE0"));
    EXPECT_FALSE(Echo(false).isToBeSwitchedOn());
}

} // namespace

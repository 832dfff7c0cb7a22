// What a person sees and types: terminals of 80 columns and fewer, colours, prompts, moving pictures, Ctrl-C.
#include <algorithm>
#include <cwchar>

#include <gtest/gtest.h>

#include "tests/krctl/bench.h"
#include "tests/krctl/terminal_child.h"

namespace {

constexpr const char *kCtrlC = "\003";

size_t charactersOf(const std::string &text)
{
    return static_cast<size_t>(std::count_if(
        text.begin(), text.end(), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80; }));
}

void expectNoWiderThan(const TerminalChild &terminal, size_t columns)
{
    for (const std::string &line : terminal.lines())
        EXPECT_LE(charactersOf(line), columns) << line;
}

TEST(Terminal, StatusFitsAndHasColours)
{
    const Bench bench("qualcomm");
    for (const int columns : {80, 60}) {
        TerminalChild status({KRCTL, "status"}, bench.environment(), columns);
        EXPECT_EQ(status.wait(), 0) << status.screen();
        expectNoWiderThan(status, static_cast<size_t>(columns));
        EXPECT_NE(status.screen().find("\033[1mModem\033[0m"), std::string::npos) << status.screen();
        EXPECT_NE(status.screen().find("█"), std::string::npos);
    }
}

TEST(Terminal, ColoursAndBlocksOnlyWhereTheyAreWelcome)
{
    const Bench bench("qualcomm");
    processes::Child::Environment environment = bench.environment();
    environment["NO_COLOR"] = "1";
    environment["LC_ALL"] = "C";
    TerminalChild plain({KRCTL, "signal"}, environment, 80);
    EXPECT_EQ(plain.wait(), 0);
    EXPECT_EQ(plain.screen().find('\033'), std::string::npos) << plain.screen();
    EXPECT_NE(plain.screen().find("###"), std::string::npos);
    TerminalChild option({KRCTL, "signal", "--no-color"}, bench.environment(), 80);
    EXPECT_EQ(option.wait(), 0);
    EXPECT_EQ(option.screen().find('\033'), std::string::npos);
}

TEST(Terminal, GoldenSignal)
{
    const Bench bench("qualcomm", R"({"signal": {"walk": 0}})");
    const Result result = bench.krctl({"signal"});
    EXPECT_EQ(result.output, "RSSI  -71 dBm  ████████████████████░░░░░░░░░░  good\n"
                             "RSRP  -95 dBm  ██████████████░░░░░░░░░░░░░░░░  fair\n"
                             "RSRQ    -8 dB  █████████████████████░░░░░░░░░  excellent\n"
                             "SINR    18 dB  ███████████████████████░░░░░░░  good\n");
}

TEST(Terminal, GoldenScan)
{
    const Bench bench("mtk");
    EXPECT_EQ(bench.krctl({"net", "scan"}).output, "Operator       Short   Code   Technology  State\n"
                                                   "Kora Mobile    Kora    46000  LTE         current\n"
                                                   "Kora Mobile    Kora    46000  UMTS        available\n"
                                                   "Kora Mobile    Kora    46000  GSM         available\n"
                                                   "Lumen Telecom  Lumen   46001  LTE         available\n"
                                                   "Lumen Telecom  Lumen   46001  UMTS        available\n"
                                                   "Lumen Telecom  Lumen   46001  GSM         available\n"
                                                   "Old Towers     Towers  46003  GSM         available\n"
                                                   "Closed Circle  Closed  46011  LTE         forbidden\n"
                                                   "Closed Circle  Closed  46011  UMTS        forbidden\n"
                                                   "Closed Circle  Closed  46011  GSM         forbidden\n");
}

TEST(Terminal, APinIsAskedForWithoutEcho)
{
    const Bench bench("tsp", R"({"sim": {"pin_enabled": true}})");
    TerminalChild unlock({KRCTL, "sim", "unlock"}, bench.environment(), 80);
    ASSERT_TRUE(unlock.shows("\nPIN: ")) << unlock.screen();
    EXPECT_TRUE(unlock.shows("Tries left for the PIN: 3"));
    EXPECT_FALSE(unlock.hasEcho());
    unlock.type("1234\n");
    EXPECT_EQ(unlock.wait(), 0) << unlock.screen();
    EXPECT_EQ(unlock.screen().find("1234"), std::string::npos);
    EXPECT_NE(unlock.screen().find("The PIN is right"), std::string::npos) << unlock.screen();

    TerminalChild change({KRCTL, "sim", "change-pin"}, bench.environment(), 80);
    ASSERT_TRUE(change.shows("Old PIN: "));
    change.type("1234\n");
    ASSERT_TRUE(change.shows("New PIN: "));
    change.type("5555\n");
    ASSERT_TRUE(change.shows("Once more: "));
    change.type("5556\n");
    EXPECT_EQ(change.wait(), 2);
    EXPECT_NE(change.screen().find("The two entries differ."), std::string::npos) << change.screen();
}

TEST(Terminal, CtrlCAtAPromptGivesTheEchoBack)
{
    const Bench bench("qualcomm", R"({"sim": {"pin_enabled": true}})");
    TerminalChild unlock({"/bin/sh", "-c", KRCTL " sim unlock; echo status $?; read -r wait"}, bench.environment(), 80);
    ASSERT_TRUE(unlock.shows("\nPIN: "));
    EXPECT_FALSE(unlock.hasEcho());
    unlock.type(kCtrlC);
    EXPECT_TRUE(unlock.shows("Interrupted.")) << unlock.screen();
    EXPECT_TRUE(unlock.hasEcho());
}

TEST(Terminal, TheChartMovesUntilCtrlC)
{
    const Bench bench("qualcomm");
    TerminalChild watch({KRCTL, "signal", "--watch", "--interval", "50"}, bench.environment(), 80);
    ASSERT_TRUE(watch.shows("RSRP over time, every 50 ms; Ctrl-C ends")) << watch.screen();
    EXPECT_TRUE(watch.shows("\033[14A")) << "the second picture is drawn over the first: " << watch.screen();
    EXPECT_TRUE(watch.shows("-140 dBm │"));
    watch.type(kCtrlC);
    EXPECT_EQ(watch.wait(), 130);
    EXPECT_NE(watch.screen().find("\033[?25l"), std::string::npos);
    EXPECT_GT(watch.screen().rfind("\033[?25h"), watch.screen().rfind("\033[?25l")) << "the cursor is back";
}

TEST(Terminal, AScanShowsHowLongItMayTake)
{
    const Bench bench("mtk", "{}", "10"); // a scan of two minutes
    TerminalChild scan({KRCTL, "net", "scan"}, bench.environment(), 80);
    ASSERT_TRUE(scan.shows("0 s of at most 180 s")) << scan.screen();
    EXPECT_TRUE(scan.shows("1 s of at most 180 s")) << scan.screen();
    scan.type(kCtrlC);
    EXPECT_EQ(scan.wait(), 130) << scan.screen();
    EXPECT_EQ(bench.krctl({"power", "status"}).status, 0);
}

TEST(Terminal, WhoeverWaitsIsToldWhatFor)
{
    const Bench bench("mtk", "{}", "10");
    TerminalChild scan({KRCTL, "net", "scan"}, bench.environment(), 80);
    ASSERT_TRUE(scan.shows("s of at most 180 s")) << scan.screen();
    TerminalChild waiting({KRCTL, "power", "status"}, bench.environment(), 80);
    EXPECT_TRUE(waiting.shows("Commands of other clients come first, for at most ")) << waiting.screen();
    scan.type(kCtrlC);
    EXPECT_EQ(scan.wait(), 130);
    EXPECT_EQ(waiting.wait(), 0) << waiting.screen();
}

} // namespace

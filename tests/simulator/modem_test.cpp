// The modem as a device with a state, and its command line.
#include <gtest/gtest.h>

#include "simulator/control.h"
#include "tests/simulator/bench.h"

namespace bench {
namespace {

TEST(CommandLine, TakesCommandsApart)
{
    Bench bench;
    bench.settle();
    EXPECT_EQ(bench.send("AT+CMEE=1;+CMEE?"), framed({"+CMEE: 1"}));
    EXPECT_EQ(bench.send("ATE0V1Q0+CMEE=2;+CMEE?;+ZOPRT?"), framed({"+CMEE: 2", "+ZOPRT: 0"}));
    EXPECT_EQ(bench.send("  at+cmee? "), framed({"+CMEE: 2"}));
    EXPECT_EQ(bench.send("AT+ZSET=\"a;b,c\",1"), framed({"+ZSET: \"a;b,c\",1"}));
    EXPECT_EQ(bench.send("AT+ZOPRT=3;+NOSUCH;+ZOPRT=4"), framed({}, "ERROR")); // what follows is not done
    EXPECT_EQ(bench.send("AT+ZOPRT?"), framed({"+ZOPRT: 3"}));
    for (const char *line : {" AT +ZOPRT ?", "AT+Z OPRT?", "AT;+ZOPRT? ;", "ATE0;V1; +ZOPRT?"})
        EXPECT_EQ(bench.send(line), framed({"+ZOPRT: 3"})) << line;
    EXPECT_EQ(bench.send("AT+ZOPRT = 3 "), ok());
    for (const char *line : {"AT+CREG!", "AT?", "AT&", "AT+", "AT=1"})
        EXPECT_EQ(bench.send(line), framed({}, "ERROR")) << line;
    for (const char *line : {"", "A", "hello", "\x1A", "T+CREG?"})
        EXPECT_EQ(bench.send(line), "") << line;
    EXPECT_EQ(bench.send(std::string(3000, 'A')), framed({}, "ERROR"));
    EXPECT_EQ(bench.send("AX\bT+ZOPRT=?\b\b?"), framed({"+ZOPRT: 3"}));
    EXPECT_EQ(bench.send("\nAT"), ok());
}

TEST(CommandLine, EchoesWhileItIsAsked)
{
    Bench bench;
    bench.settle();
    EXPECT_EQ(bench.send("ATE1"), ok());
    EXPECT_EQ(bench.send("AT+CMEE?"), "AT+CMEE?\r" + framed({"+CMEE: 2"}));
    EXPECT_EQ(bench.send("ATE0"), "ATE0\r" + ok());
    EXPECT_EQ(bench.send("AT"), ok());
}

TEST(CommandLine, SpeaksOfErrorsAsItIsAsked)
{
    Bench bench;
    bench.settle();
    EXPECT_EQ(bench.send("AT+CPIN=\"1234\""), refused("operation not allowed"));
    bench.send("AT+CMEE=1");
    EXPECT_EQ(bench.send("AT+CPIN=\"1234\""), refused("3"));
    bench.send("AT+CMEE=0");
    EXPECT_EQ(bench.send("AT+CPIN=\"1234\""), framed({}, "ERROR"));
    EXPECT_EQ(bench.send("AT+CMEE=3"), framed({}, "ERROR"));
}

TEST(CommandLine, KeepsWhatComesWhileACommandRuns)
{
    Scenario scenario;
    scenario.timing.commands["AT+CSQ"] = 100;
    Bench bench(Family::Qualcomm, scenario);
    bench.settle();
    bench.modem.receive("AT+CSQ\rAT+CMEE?\rAT\r");
    EXPECT_EQ(bench.said(), "");
    EXPECT_EQ(bench.wait(99), "");
    EXPECT_EQ(bench.wait(1), framed({"+CSQ: 21,99"}) + framed({"+CMEE: 2"}) + ok());
}

TEST(Registration, IsReportedInTheModesThatAreSet)
{
    Bench bench;
    bench.settle();
    bench.send("AT+CREG=1;+CGREG=2;+CEREG=0");
    EXPECT_EQ(bench.send("at+cfun=4"), ok() + reports({"+CREG: 0", "+CGREG: 0"}));
    bench.modem.receive("at+cfun=1\r");
    EXPECT_EQ(bench.wait(299), "");
    EXPECT_EQ(bench.wait(1), ok() + reports({"+CREG: 2", "+CGREG: 2"}));
    EXPECT_EQ(bench.send("AT+CREG?"),
              framed({"+CREG: 1,2"}) + reports({"+CREG: 1", "+CGREG: 1,\"43B0\",\"0043B008\",7,\"01\""}));
    bench.send("AT+CREG=0;+CGREG=0;+CEREG=2");
    EXPECT_EQ(bench.send("AT+CGATT=0"), ok() + reports({"+CEREG: 0"}));
    EXPECT_EQ(bench.send("AT+ZPAS?"), framed({"+ZPAS: \"LTE\",\"CS_ONLY\""}));
    EXPECT_EQ(bench.send("AT+CGATT=1"), ok() + reports({"+CEREG: 1,\"43B0\",\"0043B008\",7"}));
}

TEST(Registration, FollowsCoverageAndSim)
{
    Bench bench;
    bench.settle();
    bench.send("AT+CREG=1");
    EXPECT_EQ(control(bench.modem, "coverage off"), "");
    EXPECT_EQ(bench.settle(), reports({"+CREG: 2"}));
    EXPECT_EQ(bench.send("AT+CSQ"), framed({"+CSQ: 99,99"}));
    EXPECT_EQ(bench.send("AT+COPS=?"), framed({"+COPS: ,,(0-4),(0-2)"}));
    EXPECT_EQ(control(bench.modem, "coverage on"), "");
    EXPECT_EQ(bench.settle(), reports({"+CREG: 1"}));
    EXPECT_EQ(control(bench.modem, "sim out"), "");
    EXPECT_EQ(bench.settle(), reports({"+CREG: 0"}));
    EXPECT_EQ(bench.send("AT^SYSINFO"), framed({"^SYSINFO:1,0,0,0,255"}));
}

TEST(Registration, FollowsTheTechnologyThatIsAllowed)
{
    struct Row {
        Family family;
        const char *command;
        const char *type;
    };
    const Row rows[] = {
        {Family::Qualcomm, "AT+ZSNT=1,0,0", "GSM"},
        {Family::Qualcomm, "AT+ZSNT=2,0,0", "UMTS"},
        {Family::Qualcomm, "AT+ZSNT=6,0,0", "LTE"},
        {Family::Qualcomm, "AT+ZSNT=0,0,2", "UMTS"},
        {Family::Default, "AT+ZSNT=0,0,0", "LTE"},
        {Family::Tsp, "AT^SYSCONFIG=13,0,1,3", "GSM"},
        {Family::Tsp, "AT^SYSCONFIG=18,1,1,3", "GSM"},
        {Family::Spreadtrum, "AT^SYSCONFIG=18,2,1,3", "UMTS"},
        {Family::Spreadtrum, "AT^SYSCONFIG=15,0,1,3", "-"},
        {Family::Spreadtrum, "AT^SYSCONFIG=2,6,1,3", "LTE"},
        {Family::Mtk, "AT+ERAT=0,0", "GSM"},
        {Family::Mtk, "AT+ERAT=1,0", "UMTS"},
        {Family::Mtk, "AT+ERAT=2,0", "LTE"},
    };
    for (const Row &row : rows) {
        Bench bench(row.family);
        bench.settle();
        EXPECT_EQ(bench.send(row.command), ok()) << row.command;
        const std::string none = "+ZPAS: \"No Service\",\"NO_SERVICE\"";
        const std::string type = std::string("+ZPAS: \"") + row.type + "\",\"CS_PS\"";
        EXPECT_EQ(bench.send("AT+ZPAS?"), framed({row.type == std::string("-") ? none : type})) << row.command;
    }
    Bench bench(Family::Tsp);
    bench.settle();
    EXPECT_EQ(bench.send("AT^SYSCONFIG=1,0,1,3"), refused("incorrect parameters"));
    bench.send("AT^SYSCONFIG=2,0,1,1");
    EXPECT_EQ(bench.send("AT+ZPAS?"), framed({"+ZPAS: \"LTE\",\"PS_ONLY\""}));
}

TEST(Operators, AreSelectedByHandAndAutomatically)
{
    Bench bench;
    bench.settle();
    EXPECT_EQ(bench.send("AT+COPS=1,2,46001,2"), ok());
    EXPECT_EQ(bench.send("AT+COPS?"), framed({"+COPS: 1,0,\"Lumen Telecom\",2"}));
    EXPECT_EQ(bench.send("AT+CREG?"), framed({"+CREG: 0,5"}));
    EXPECT_EQ(bench.send("AT+ZSNT?"), framed({"+ZSNT: 0,1,0"}));
    EXPECT_EQ(bench.send("AT+COPS=1,0,\"Kora Mobile\",7"), ok());
    EXPECT_EQ(bench.send("AT+COPS=1,2,46011,7"), refused("network not allowed - emergency calls only"));
    EXPECT_EQ(bench.send("AT+CREG?"), framed({"+CREG: 0,3"}));
    EXPECT_EQ(bench.send("AT+COPS=1,2,99999,7"), refused("no network service"));
    EXPECT_EQ(bench.send("AT+COPS?"), framed({"+COPS: 1"}));
    EXPECT_EQ(bench.send("AT+ZDON?"), framed({"+ZDON: ,,,\"Kora Mobile\",\"460\",\"00\""}));
    EXPECT_EQ(bench.send("AT+COPS=4,2,99999,7"), ok());
    EXPECT_EQ(bench.send("AT+COPS?"), framed({"+COPS: 4,0,\"Kora Mobile\",7"}));
    EXPECT_EQ(bench.send("AT+COPS=2"), ok());
    EXPECT_EQ(bench.send("AT+CREG?"), framed({"+CREG: 0,0"}));
    EXPECT_EQ(bench.send("AT+COPS=0,0,,0"), ok());
    EXPECT_EQ(bench.send("AT+COPS=3,1,,0"), ok());
    EXPECT_EQ(bench.send("AT+COPS?"), framed({"+COPS: 0,1,\"Kora\",7"}));
    for (const char *wrong : {"AT+COPS=1", "AT+COPS=9", "AT+COPS=3,5", "AT+COPS=x"})
        EXPECT_EQ(bench.send(wrong), refused("incorrect parameters")) << wrong;
    bench.send("at+cfun=4");
    EXPECT_EQ(bench.send("AT+COPS=0"), refused("operation not allowed"));
}

TEST(Operators, AreScannedInTime)
{
    Bench bench;
    bench.settle();
    bench.modem.receive("AT+COPS=?\r\n");
    EXPECT_EQ(bench.wait(11999), "");
    const std::string scan = bench.wait(1);
    EXPECT_EQ(scan.rfind("\r\n+COPS: (2,\"Kora Mobile\",\"Kora\",\"46000\",7),(1,", 0), 0U) << scan;
    EXPECT_NE(scan.find("),(3,\"Closed Circle\",\"Closed\",\"46011\",0),,(0-4),(0-2)\r\n\r\nOK\r\n"),
              std::string::npos);
    const std::string lines = bench.send("AT+COPS=5");
    EXPECT_EQ(lines.rfind("\r\n+COPS: 2,\"Kora Mobile\",\"Kora\",\"46000\",7\r\n+COPS: 1,", 0), 0U) << lines;
}

TEST(Operators, AScanEndsAtAnyCharacter)
{
    Bench bench;
    bench.settle();
    bench.modem.receive("AT+COPS=?\r");
    bench.wait(1000);
    EXPECT_EQ(bench.send("AT"), ok()); // its first character aborts, the rest is no command
    EXPECT_EQ(bench.send("AT+CMEE?"), framed({"+CMEE: 2"}));
    EXPECT_EQ(bench.settle(), "");
}

TEST(Signal, WalksByItsSeed)
{
    const auto walk = [](uint64_t seed) {
        Scenario scenario;
        scenario.signal.walkDb = 4;
        Bench bench(Family::Qualcomm, scenario, seed);
        bench.settle();
        std::string all;
        for (int i = 0; i < 50; ++i)
            all += bench.send("AT+CSQ") + bench.send("AT+CESQ") + bench.send("AT+ZRSSI?");
        return all;
    };
    EXPECT_EQ(walk(7), walk(7));
    EXPECT_NE(walk(7), walk(8));
}

TEST(Signal, IsWhatIsSet)
{
    Scenario scenario;
    scenario.signal.walkDb = 0;
    Bench bench(Family::Qualcomm, scenario);
    bench.settle();
    EXPECT_EQ(control(bench.modem, "signal -105"), "");
    EXPECT_EQ(bench.send("AT+CSQ"), framed({"+CSQ: 4,99"}));
    EXPECT_EQ(bench.send("AT+CESQ"), framed({"+CESQ: 99,99,255,255,12,12"}));
    EXPECT_EQ(bench.send("AT+ZRSSI?"), framed({"+ZRSSI: -129,-14,-105,-2"}));
    EXPECT_EQ(bench.send("AT*ZAIRINFO?"), framed({"*ZAIRINFO: 17,22.5"}));
    bench.send("AT+ZSNT=2,0,0");
    EXPECT_EQ(bench.send("AT+CESQ"), framed({"+CESQ: 99,99,10,25,255,255"}));
    EXPECT_EQ(bench.send("AT+ZRSSI?"), framed({"+ZRSSI: -111,-12"}));
    bench.send("AT+ZSNT=1,0,0");
    EXPECT_EQ(bench.send("AT+CESQ"), framed({"+CESQ: 6,0,255,255,255,255"}));
    EXPECT_EQ(bench.send("AT+ZRSSI?"), framed({"+ZRSSI: -105"}));
}

TEST(PacketData, HasContextsThatGoOnAndOff)
{
    Bench bench;
    bench.settle();
    EXPECT_EQ(bench.send("AT+CGDCONT=2,\"ipv6\",\"ims\""), ok());
    EXPECT_EQ(bench.send("AT+CGEREP=2,1"), ok());
    EXPECT_EQ(bench.send("AT+CGACT=1,2"), ok() + reports({"+CGEV: ME PDN ACT 2"}));
    EXPECT_EQ(bench.send("AT+CGACT?"), framed({"+CGACT: 1,0", "+CGACT: 2,1"}));
    EXPECT_EQ(bench.send("AT+CGATT=0"), ok() + reports({"+CGEV: ME PDN DEACT 2"}));
    EXPECT_EQ(bench.send("AT+CGACT=1,2"), refused("no network service"));
    EXPECT_EQ(bench.send("AT+CGACT=1,9"), refused("invalid index"));
    EXPECT_EQ(bench.send("AT+CGDCONT=2"), ok());
    EXPECT_EQ(bench.send("AT+CGDCONT?"), framed({"+CGDCONT: 1,\"IP\",\"internet\",\"\",0,0"}));
    for (const char *wrong : {"AT+CGDCONT=17,\"IP\",\"\"", "AT+CGDCONT=1,\"X25\",\"\"", "AT*CGDFLT=2,\"IP\",\"a\",,1"})
        EXPECT_EQ(bench.send(wrong), refused("incorrect parameters")) << wrong;
}

TEST(Power, EndsWithThePlug)
{
    Bench bench(Family::Qualcomm, pinLocked());
    bench.send("AT+CPIN=1234;+CREG=1;+CMEE=0");
    bench.settle();
    bench.modem.receive("AT+COPS=?\r");
    EXPECT_EQ(control(bench.modem, "unplug 500"), "");
    EXPECT_EQ(bench.said(), "<unplugged>");
    bench.modem.receive("AT\r");
    EXPECT_EQ(bench.wait(499), "");
    EXPECT_EQ(bench.wait(1), "<plugged>");
    EXPECT_EQ(bench.send("AT+CPIN?"), framed({"+CPIN: SIM PIN"}));
    EXPECT_EQ(bench.send("AT+CREG?;+CMEE?"), framed({"+CREG: 0,0", "+CMEE: 2"}));
    EXPECT_EQ(control(bench.modem, "unplug"), "");
    EXPECT_EQ(bench.settle(), "<unplugged>");
    EXPECT_EQ(control(bench.modem, "plug"), "");
    EXPECT_EQ(bench.send("AT"), "<plugged>" + ok());
}

TEST(Control, KnowsItsCommands)
{
    Bench bench;
    bench.settle();
    EXPECT_EQ(control(bench.modem, "report +ZCONSTAT: 1,1"), "");
    EXPECT_EQ(bench.said(), reports({"+ZCONSTAT: 1,1"}));
    EXPECT_EQ(control(bench.modem, "signal loud"), "usage: signal DBM");
    EXPECT_EQ(control(bench.modem, "sim"), "usage: sim in|out");
    EXPECT_EQ(control(bench.modem, "unplug soon"), "usage: unplug [MS]");
    EXPECT_EQ(control(bench.modem, "dance"), "unknown command: dance");
    EXPECT_EQ(bench.said(), "");
}

} // namespace
} // namespace bench

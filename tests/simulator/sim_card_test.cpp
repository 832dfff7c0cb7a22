// The SIM of the modem: its PIN and PUK, its files, and the locks that want other codes.
#include <gtest/gtest.h>

#include "tests/simulator/bench.h"

namespace bench {
namespace {

TEST(SimCard, GoesThroughPinAndPukToReady)
{
    Bench bench(Family::Qualcomm, pinLocked());
    EXPECT_EQ(bench.send("AT+CPIN?"), framed({"+CPIN: SIM PIN"}));
    for (const char *gated : {"AT+CIMI", "AT+CNUM", "AT+COPS=?", "AT+CLCK=\"SC\",2", "AT+CPWD=\"SC\",\"1\",\"2\"",
                              "AT+ZDON?", "AT+COPS=0", "AT+CGATT=1"})
        EXPECT_EQ(bench.send(gated), refused("SIM PIN required")) << gated;
    for (const char *open : {"AT+CGMI", "AT+CGSN", "AT+CSQ", "AT+CREG?", "AT+ZPINPUK=?", "at+cfun?", "AT+CGDCONT?",
                             "AT+CRSM=176,12258,0,0,10,"})
        EXPECT_NE(bench.send(open).find("\r\nOK\r\n"), std::string::npos) << open;
    EXPECT_EQ(bench.send("AT+CRSM=176,28423,0,0,9,"), framed({"+CRSM: 105,130"}));

    EXPECT_EQ(bench.send("AT+CPIN=12"), refused("incorrect parameters"));
    EXPECT_EQ(bench.send("AT+CPIN=0000"), refused("incorrect password"));
    EXPECT_EQ(bench.send("AT+ZPINPUK=?"), framed({"+ZPINPUK: 2,10"}));
    bench.send("AT+CPIN=0000");
    EXPECT_EQ(bench.send("AT+CPIN=0000"), refused("SIM PUK required"));
    EXPECT_EQ(bench.send("AT+CPIN?"), framed({"+CPIN: SIM PUK"}));
    EXPECT_EQ(bench.send("AT+CPIN=1234"), refused("SIM PUK required"));
    EXPECT_EQ(bench.send("AT+CIMI"), refused("SIM PUK required"));
    EXPECT_EQ(bench.send("AT+CPIN=00000000,5678"), refused("incorrect password"));
    EXPECT_EQ(bench.send("AT+ZPINPUK=?"), framed({"+ZPINPUK: 0,9"}));
    EXPECT_EQ(bench.send("AT+CPIN=\"12345678\",\"5678\""), ok());
    EXPECT_EQ(bench.send("AT+ZPINPUK=?"), framed({"+ZPINPUK: 3,10"}));
    EXPECT_EQ(bench.send("AT+CPIN?"), framed({"+CPIN: READY"}));
    EXPECT_EQ(bench.send("AT+CPIN=5678"), refused("operation not allowed"));
}

TEST(SimCard, IsBlockedForGoodWithoutTries)
{
    Scenario scenario = pinLocked();
    scenario.sim.pinTries = 0;
    scenario.sim.pukTries = 1;
    Bench bench(Family::Mtk, scenario);
    EXPECT_EQ(bench.send("AT+CPIN=\"11111111\",\"5678\""), refused("SIM failure"));
    EXPECT_EQ(bench.send("AT+CPIN?"), refused("SIM failure"));
    EXPECT_EQ(bench.send("AT+CPIN=\"12345678\",\"5678\""), refused("SIM failure"));
    EXPECT_EQ(bench.send("AT+EPINC?"), framed({"+EPINC: 0,3,0,10"}));
}

TEST(SimCard, LosesItsPinWithThePower)
{
    Bench bench(Family::Qualcomm, pinLocked());
    EXPECT_EQ(bench.send("AT+CPIN=1234"), ok());
    EXPECT_EQ(bench.send("at+cfun=4"), ok());
    EXPECT_EQ(bench.send("AT+CPIN?"), framed({"+CPIN: READY"}));
    EXPECT_EQ(bench.send("at+cfun=0"), ok());
    EXPECT_EQ(bench.send("AT+CPIN?"), framed({"+CPIN: SIM PIN"}));
    bench.send("AT+CPIN=1234");
    EXPECT_EQ(bench.send("at+cfun=1,1"), ok());
    EXPECT_EQ(bench.send("AT+CPIN?"), framed({"+CPIN: SIM PIN"}));
}

TEST(SimCard, ChangesItsLockAndItsPin)
{
    Bench bench;
    bench.settle();
    EXPECT_EQ(bench.send("AT+CPWD=\"SC\",\"1234\",\"5678\""), refused("operation not allowed"));
    EXPECT_EQ(bench.send("AT+CLCK=\"SC\",1,\"0000\""), refused("incorrect password"));
    EXPECT_EQ(bench.send("AT+ZPINPUK=?"), framed({"+ZPINPUK: 2,10"}));
    EXPECT_EQ(bench.send("AT+CLCK=\"SC\",1,\"1234\",1"), ok());
    EXPECT_EQ(bench.send("AT+CLCK=\"SC\",2"), framed({"+CLCK: 1"}));
    EXPECT_EQ(bench.send("AT+CPWD=\"SC\",\"1234\",\"56\""), refused("incorrect parameters"));
    EXPECT_EQ(bench.send("AT+CPWD=\"SC\",\"1234\",\"5678\""), ok());
    EXPECT_EQ(bench.send("AT+CLCK=\"SC\",0,\"1234\""), refused("incorrect password"));
    EXPECT_EQ(bench.send("AT+CLCK=\"SC\",0,\"5678\""), ok());
    EXPECT_EQ(bench.send("AT+CLCK=\"SC\",2"), framed({"+CLCK: 0"}));
}

TEST(SimCard, CanBeAbsentOrBusy)
{
    Scenario scenario;
    scenario.sim.isPresent = false;
    Bench absent(Family::Tsp, scenario);
    for (const char *gated : {"AT+CPIN?", "AT+CIMI", "AT+ZRAP?", "AT+CRSM=176,12258,0,0,10,", "AT+COPS=?"})
        EXPECT_EQ(absent.send(gated), refused("SIM not inserted")) << gated;
    EXPECT_EQ(absent.send("AT^SYSINFO"), framed({"^SYSINFO: 1,0,0,0,255"}));

    scenario.sim.isPresent = true;
    scenario.sim.busyMs = 500;
    Bench busy(Family::Tsp, scenario);
    busy.modem.receive("AT+CPIN?\r");
    EXPECT_EQ(busy.said(), refused("SIM busy"));
    busy.wait(500);
    EXPECT_EQ(busy.send("AT+CPIN?"), framed({"+CPIN: READY"}));
}

TEST(SimCard, HasFiles)
{
    struct Row {
        const char *access;
        const char *answer;
    };
    const Row rows[] = {
        {"176,28423,0,0,9", "144,0,\"084906002143658709\""},
        {"176,28486,0,0,17", "144,0,\"014B6F7261204D6F62696C65FFFFFFFFFF\""},
        {"176,12258,0,2,2", "144,0,\"0021\""},
        {"176,12258,0,9,2", "103,0"},
        {"176,12258,0,-1,2", "107,0"},
        {"176,1,0,0,1", "106,130"},
        {"192,12258,0,0,15", "144,0,\"0000000A2FE20400F04401020000\""},
        {"242,0,0,0,0", "144,0"},
        {"99,12258,0,0,0", "109,0"},
        {"214,28589,0,0,4,\"0000000a\"", "144,0"},
        {"176,28589,0,0,4", "144,0,\"0000000A\""},
        {"214,28589,0,0,4,\"00\"", "103,0"},
    };
    Bench bench;
    bench.settle();
    for (const Row &row : rows)
        EXPECT_EQ(bench.send(std::string("AT+CRSM=") + row.access), framed({std::string("+CRSM: ") + row.answer}))
            << row.access;
}

TEST(Locks, NetworkLockHasTriesOfItsOwn)
{
    Scenario scenario;
    scenario.networkLock = {true, "12345678", 2};
    Bench bench(Family::Qualcomm, scenario);
    EXPECT_EQ(bench.send("AT+CPIN?"), framed({"+CPIN: PH-NET PIN"}));
    EXPECT_EQ(bench.send("AT+ZSEC?"), framed({"+ZSEC: 2,1"}));
    EXPECT_EQ(bench.send("AT+COPS=?"), refused("network personalization PIN required"));
    EXPECT_EQ(bench.send("AT+CREG?"), framed({"+CREG: 0,0"}));
    EXPECT_EQ(bench.send("AT+ZNCK=\"0\""), refused("incorrect password"));
    EXPECT_EQ(bench.send("AT+ZNCK?"), framed({"+ZNCK: 1"}));
    EXPECT_EQ(bench.send("AT+CLCK=\"PN\",2"), framed({"+CLCK: 1"}));

    Bench open(Family::Qualcomm, scenario);
    EXPECT_EQ(open.send("AT+CPIN=12345678"), ok());
    open.settle();
    EXPECT_EQ(open.send("AT+CPIN?"), framed({"+CPIN: READY"}));
    EXPECT_EQ(open.send("AT+CREG?"), framed({"+CREG: 0,1"}));
    EXPECT_EQ(open.send("AT+ZNCK=\"12345678\""), refused("operation not allowed"));

    bench.send("AT+ZNCK=\"0\"");
    EXPECT_EQ(bench.send("AT+ZNCK=\"12345678\""), refused("operation not allowed")); // no try is left
    EXPECT_EQ(bench.send("AT+ZLOCK?"), framed({"+ZLOCK: 1,0"}));
}

TEST(Locks, FacilitiesHaveCodesOfTheirOwn)
{
    Bench bench;
    bench.settle();
    EXPECT_EQ(bench.send("AT+CLCK=\"FD\",2"), framed({"+CLCK: 0"}));
    EXPECT_EQ(bench.send("AT+CLCK=\"FD\",1,\"0000\""), refused("incorrect password"));
    EXPECT_EQ(bench.send("AT+CLCK=\"FD\",1,\"1234\""), ok());
    EXPECT_EQ(bench.send("AT+CLCK=\"FD\",2"), framed({"+CLCK: 1"}));
    EXPECT_EQ(bench.send("AT+CLCK=\"AO\",2"), framed({"+CLCK: 0"}));
    EXPECT_EQ(bench.send("AT+CPWD=\"AO\",\"0000\",\"1111\""), ok());
    EXPECT_EQ(bench.send("AT+CLCK=\"AO\",1,\"1111\""), ok());
    EXPECT_EQ(bench.send("AT+CLCK=\"XX\",2"), refused("operation not supported"));
    EXPECT_EQ(bench.send("AT+CLCK=\"SC\",1"), refused("incorrect parameters"));
    EXPECT_EQ(bench.send("AT+ZPINPUK=?"), framed({"+ZPINPUK: 3,10"}));
}

} // namespace
} // namespace bench

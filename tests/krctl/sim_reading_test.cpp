// What the SIM tells, in all the words that modems have for it.
#include <gtest/gtest.h>

#include "krctl/readings/sim.h"
#include "krctl/session/item.h"

namespace {

using namespace krctl;

constexpr std::nullopt_t kNone = std::nullopt;

std::string replyOf(const std::string &lines)
{
    return "\r\n" + lines + "\r\n\r\nOK\r\n";
}

TEST(SimStateReading, EveryStateOfTheTableIsReadInEverySpelling)
{
    for (const SimStateRow &row : simStateRows()) {
        SCOPED_TRACE(row.word);
        if (row.told != nullptr) {
            const std::string told = row.told;
            EXPECT_EQ(simStateOf(replyOf("+CPIN: " + told)).state, row.state);
            EXPECT_EQ(simStateOf(replyOf("+CPIN:\"" + told + '"')).state, row.state);
            EXPECT_EQ(simStateOf(replyOf("  " + told)).state, row.state);
        }
        if (row.error == 0) continue;
        const std::string text = row.errorText;
        EXPECT_EQ(simStateOf("\r\n+CME ERROR: " + std::to_string(row.error) + "\r\n").state, row.state);
        EXPECT_EQ(simStateOf("\r\n+CME ERROR: " + text + "\r\n").state, row.state);
        EXPECT_EQ(simStateOf("\r\n+CME ERROR:" + text + " required\r\n").state, row.state);
    }
}

TEST(SimStateReading, WordsDifferByModem)
{
    EXPECT_EQ(simStateOf(replyOf("+CPIN: sim pin2")).state, SimState::Pin2Required);
    EXPECT_EQ(simStateOf(replyOf("+CPIN: \"SIM  PUK\"")).state, SimState::PukRequired);
    EXPECT_EQ(simStateOf(replyOf("+CPIN: SIM PUK,3")).state, SimState::PukRequired);
    EXPECT_EQ(simStateOf("\r\n+CME ERROR: network personalisation PUK required\r\n").state,
              SimState::NetworkPukRequired);
    EXPECT_EQ(simStateOf("\r\n+CME ERROR: PH-NET PIN required\r\n").state, SimState::NetworkCodeRequired);
}

TEST(SimStateReading, AnUnknownStateStaysAsItCame)
{
    const SimStateReading unknown = simStateOf(replyOf("+CPIN: \"SIM Sleeping\""));
    EXPECT_EQ(unknown.state, kNone);
    EXPECT_EQ(unknown.told, "SIM Sleeping");
    for (const char *none : {"\r\nERROR\r\n", "\r\n+CME ERROR: 100\r\n", "\r\n+CME ERROR: 16\r\n", "\r\nOK\r\n", ""}) {
        EXPECT_EQ(simStateOf(none).state, kNone) << none;
        EXPECT_EQ(simStateOf(none).told, "") << none;
    }
}

TEST(WrongCode, IsWhatTheModemCallsSo)
{
    for (const char *wrong : {"+CME ERROR: 16", "+CME ERROR:16", "+CME ERROR: incorrect password",
                              "+CME ERROR: Incorrect Password", "+CME ERROR: \"incorrect password\""})
        EXPECT_TRUE(isWrongCode(wrong)) << wrong;
    for (const char *other : {"ERROR", "+CME ERROR: 12", "+CME ERROR: SIM PUK required", "+CME ERROR: 160", "OK", ""})
        EXPECT_FALSE(isWrongCode(other)) << other;
}

TEST(Lock, OnForOneClassIsOn)
{
    EXPECT_EQ(isLockOn(replyOf("+CLCK: 0")), false);
    EXPECT_EQ(isLockOn(replyOf("+CLCK: \"1\"")), true);
    EXPECT_EQ(isLockOn(replyOf("+CLCK: 0,1\r\n+CLCK: 1,2\r\n+CLCK: 0,4")), true);
    EXPECT_EQ(isLockOn(replyOf("+CLCK: \"SC\",1")), true);
    EXPECT_EQ(isLockOn(replyOf("+CLCK: SC,0,7")), false);
    EXPECT_EQ(isLockOn(replyOf("+CLCK: ")), kNone);
    EXPECT_EQ(isLockOn("\r\nERROR\r\n"), kNone);
}

TEST(Tries, StandBehindTheirCodesInAnyOrder)
{
    const Tries tries = triesOf(replyOf("+CPINR: SIM PUK,10,10\r\n+CPINR: \"SIM PIN2\",2,3\r\n+CPINR: sim pin,1"));
    EXPECT_EQ(tries.pin, 1);
    EXPECT_EQ(tries.puk, 10);
    EXPECT_EQ(tries.pin2, 2);
    EXPECT_EQ(tries.puk2, kNone);
    EXPECT_EQ(triesOf(replyOf("+CPINR: SIM PIN,3,3,SIM PUK,9,10")).puk, 9);
    EXPECT_EQ(triesOf(replyOf("+CPINR: 3,10,2,9")).puk2, 9);
    EXPECT_EQ(triesOf(replyOf("+CPINR: PH-SIM PIN,3")).pin, kNone);
    EXPECT_EQ(triesOf("\r\nERROR\r\n").pin, kNone);
}

TEST(SimFile, IsReadBehindEveryStatusOfSuccess)
{
    for (const char *status : {"144,0", "145,15", "146,2", "159,17", "\"144\",\"0\"", " 144 , 0 "})
        EXPECT_EQ(simFileOf(replyOf(std::string("+CRSM: ") + status + ",\"00AB\"")), "00AB") << status;
    for (const char *status : {"106,130", "148,4", "146,64", ",", "x,0"})
        EXPECT_EQ(simFileOf(replyOf(std::string("+CRSM: ") + status + ",\"00AB\"")), "") << status;
    EXPECT_EQ(simFileOf("\r\nERROR\r\n"), "");
}

TEST(Iccid, IsSwappedOnlyWhereThatMakesOne)
{
    for (const auto &[digits, iccid] :
         {std::pair{"984906001032547698F0", "8994600001234567890"},
          std::pair{"98490600103254769810", "89946000012345678901"},
          std::pair{"89946000012345678901", "89946000012345678901"},
          std::pair{"8994600001234567890F", "8994600001234567890"},
          std::pair{"8994600001234567890f", "8994600001234567890"},
          std::pair{"899460000123456789", "899460000123456789"}, std::pair{"89946000012345678", ""},
          std::pair{"899460000123456789012", ""}, std::pair{"00946000012345678901", ""},
          std::pair{"8994600001234567x901", ""}, std::pair{"FFFFFFFFFFFFFFFFFFFF", ""}, std::pair{"", ""}})
        EXPECT_EQ(iccidOf(digits), iccid) << digits;
}

TEST(OwnNumbers, AreAllTold)
{
    EXPECT_EQ(ownNumbersOf(replyOf("+CNUM: \"a, b\",\"+15550001\",145\r\n+CNUM: ,\"15550002\",129\r\n+CNUM: c,,129")),
              (std::vector<std::string>{"+15550001", "15550002"}));
    EXPECT_EQ(ownNumbersOf(replyOf("+CNUM: \"15550003\",129")), (std::vector<std::string>{"15550003"}));
    EXPECT_TRUE(ownNumbersOf(replyOf("+CNUM: \"own\",129")).empty());
    EXPECT_TRUE(ownNumbersOf("\r\nOK\r\n").empty());
}

TEST(Missing, SaysWhichAndWhy)
{
    Missing missing;
    EXPECT_TRUE(missing.sentences().empty());
    missing.add("one", Ending::Silent);
    missing.add("two", Ending::Refused);
    missing.add("three", Ending::Silent);
    EXPECT_EQ(missing.sentences(),
              (std::vector<std::string>{"Refused by this modem: two.", "Not answered in time: one, three."}));
}

} // namespace

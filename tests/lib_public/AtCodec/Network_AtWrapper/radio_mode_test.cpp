// The preference of radio technologies: three families of commands with plain numbers.

#include <gtest/gtest.h>

#include "tests/support/network_exchange.h"

namespace {

using network::kAny;
using network::kKept;
using network::Subject;
using network::Texts;

constexpr int32_t kLeast = -2147483647 - 1;
constexpr int32_t kMost = 2147483647;

Texts zsntLog(const network::Ending &ending)
{
    switch (ending.stage) {
    case network::Stage::Send:
        return {"zsntSet ClientSendCmd return\n"};
    case network::Stage::Success:
        return {};
    default:
        return {"zsntSet UNI_ERROR_FALSE return\n"};
    }
}

Subject zsnt(const char *command, int32_t p1, int32_t p2, int32_t p3)
{
    return {"zsntSet", command, 10000, network::setting([=] { return zsntSet(p1, p2, p3); }), "", zsntLog};
}

Subject sysconfig(const char *command, int32_t mode, int32_t order, int32_t roam, int32_t domain)
{
    return {"sysconfigSet", command, 5000, network::setting([=] { return sysconfigSet(mode, order, roam, domain); })};
}

Subject erat(const char *command, int32_t rat, int32_t preferred)
{
    return {"eratSet", command, 5000, network::setting([=] { return eratSet(rat, preferred); })};
}

Subject zprefband(const char *command, int32_t band)
{
    return {"zprefbandSet", command, 5000, network::setting([=] { return zprefbandSet(band); })};
}

const Subject kSettings[] = {
    zsnt("AT+ZSNT=0,0,2", 0, 0, 2),
    zsnt("AT+ZSNT=6,-1,2147483647", 6, -1, kMost),
    zsnt("AT+ZSNT=-2147483648,-2147483648,-2147483648", kLeast, kLeast, kLeast),
    sysconfig("AT^SYSCONFIG=2,6,1,3", 2, 6, 1, 3),
    // More than fifty characters.
    sysconfig("AT^SYSCONFIG=-2147483648,-2147483647,2147483647,-2147483646", kLeast, kLeast + 1, kMost, kLeast + 2),
    erat("AT+ERAT=6,4", 6, 4),
    erat("AT+ERAT=-2147483648,2147483647", kLeast, kMost),
    zprefband("AT+ZPREFBAND=\"0\"", 0),
    zprefband("AT+ZPREFBAND=\"-1\"", -1),
    zprefband("AT+ZPREFBAND=\"-2147483648\"", kLeast),
    zprefband("AT+ZPREFBAND=\"2147483647\"", kMost),
};

TEST(RadioModeSettings, SendTheirNumbersAndWantAnOk)
{
    for (const Subject &subject : kSettings)
        network::expectSuccess(subject);
}

TEST(RadioModeSettings, FailOnEverythingElse)
{
    for (const Subject &subject : kSettings)
        network::expectFailures(subject);
}

const Subject kZsnt = {"zsntRead", "AT+ZSNT?", 5000,
                       network::numbers<3>([](int32_t *out) { return zsntRead(out, out + 1, out + 2); }),
                       "+ZSNT: 0,0,2"};
const Subject kErat = {"eratRead", "AT+ERAT?", 5000,
                       network::numbers<4>([](int32_t *out) { return eratRead(out, out + 1, out + 2, out + 3); }),
                       "+ERAT: 0,0,6,4"};
const Subject kSysconfig = {"sysconfigRead", "AT^SYSCONFIG?", 5000, network::numbers<4>([](int32_t *out) {
                                return sysconfigRead(reinterpret_cast<SysconfigPara *>(out));
                            }),
                            "^SYSCONFIG: 2,6,1,3"};

TEST(RadioModeReads, FailWithUntouchedOutputs)
{
    for (const Subject &subject : {kZsnt, kErat, kSysconfig})
        network::expectFailures(subject);
}

TEST(ZsntRead, TakesTheParametersAsTheyStand)
{
    network::expectRows(
        kZsnt,
        {{"three values", {"+ZSNT: 0,0,2"}, {"0", "0", "2"}},
         {"a bare line", {"6,0,1"}, {"6", "0", "1"}},
         {"blanks in front of numbers", {"+ZSNT:   6,  0,\t1"}, {"6", "0", "1"}},
         {"a blank behind a number", {"+ZSNT: 6 ,0,1"}, {"6", kKept, kKept}},
         {"signs and zeros", {"+ZSNT: -2147483648,+5,007"}, {"-2147483648", "5", "7"}},
         {"decimal only", {"+ZSNT: 2147483647,0x10,1"}, {"2147483647", "0", kKept}},
         {"two values", {"+ZSNT: 6,0"}, {"6", "0", kKept}},
         {"an open end", {"+ZSNT: 6,"}, {"6", kKept, kKept}},
         {"no value", {"+ZSNT: "}, {kKept, kKept, kKept}},
         {"no line", {}, {kKept, kKept, kKept}},
         {"four values", {"+ZSNT: 6,0,1,9"}, {"6", "0", "1"}},
         {"an empty value", {"+ZSNT: 6,,1"}, {"6", kKept, kKept}},
         {"an empty value in front", {"+ZSNT: ,0,1"}, {kKept, kKept, kKept}},
         {"quotes", {R"(+ZSNT: "6",0,1)"}, {kKept, kKept, kKept}},
         {"blanks for commas", {"+ZSNT: 6 0 1"}, {"6", kKept, kKept}},
         {"a text", {"+ZSNT: 6,auto,1"}, {"6", kKept, kKept}},
         {"two lines", {"+ZSNT: 6,0,1", "+ZSNT: 3,4,5"}, {"6", "0", "1"}},
         {"a line of another name", {"+ZSNT: 6,0,1", "+ZSNTX: 3,4,5"}, {"6", "0", "1"}},
         {"a line behind", {"+ZSNT: 6,0", "3"}, {"6", "0", kKept}},
         {"beyond 32 bits", {"+ZSNT: 6,4294967297,1"}, {"6", kAny, "1"}},
         {"beyond 64 bits", {"+ZSNT: -99999999999999999999999,0,1"}, {kAny, "0", "1"}},
         {"1023 characters", {network::stretched("+ZSNT: 6,0,", '0', "1", 1030)}, {"6", "0", "1"}},
         {"1024 characters", {network::stretched("+ZSNT: 6,0,", '0', "1", 1031)}, {"6", "0", "1"}},
         {"1025 characters, the last is lost", {network::stretched("+ZSNT: 6,0,", '0', "1", 1032)}, {"6", "0", "0"}}});
}

TEST(EratRead, TakesTheParametersAsTheyStand)
{
    network::expectRows(kErat, {{"four values", {"+ERAT: 0,0,6,4"}, {"0", "0", "6", "4"}},
                                {"five values", {"+ERAT: 1,2,3,4,5"}, {"1", "2", "3", "4"}},
                                {"three values", {"+ERAT: 1,2,3"}, {"1", "2", "3", kKept}},
                                {"one value", {"+ERAT: 1"}, {"1", kKept, kKept, kKept}},
                                {"no line", {}, {kKept, kKept, kKept, kKept}},
                                {"negative", {"+ERAT: -1,-2,-3,-4"}, {"-1", "-2", "-3", "-4"}},
                                {"blanks for commas", {"+ERAT: 1 2 3 4"}, {"1", kKept, kKept, kKept}},
                                {"an empty value", {"+ERAT: 1,2,,4"}, {"1", "2", kKept, kKept}},
                                {"quotes", {R"(+ERAT: 1,2,"3",4)"}, {"1", "2", kKept, kKept}},
                                {"beyond 32 bits", {"+ERAT: 1,2,99999999999,4"}, {"1", "2", kAny, "4"}}});
}

TEST(SysconfigRead, TakesTheParametersRewritten)
{
    network::expectRows(
        kSysconfig,
        {{"four values", {"^SYSCONFIG: 2,6,1,3"}, {"2", "6", "1", "3"}},
         {"a bare line", {"2,6,1,3"}, {"2", "6", "1", "3"}},
         {"without a blank the name stays", {"^SYSCONFIG:2,6,1,3"}, {kKept, kKept, kKept, kKept}},
         {"quotes", {R"(^SYSCONFIG: "2","6","1","3")"}, {"2", "6", "1", "3"}},
         {"blanks for commas", {"^SYSCONFIG: 2 6 1 3"}, {"2", "6", "1", "3"}},
         {"blanks round commas", {"^SYSCONFIG: 2 , 6,1 ,3"}, {"2", "6", "1", "3"}},
         {"five values", {"^SYSCONFIG: 2,6,1,3,9"}, {"2", "6", "1", "3"}},
         {"two values", {"^SYSCONFIG: 2,6"}, {"2", "6", kKept, kKept}},
         {"no line", {}, {kKept, kKept, kKept, kKept}},
         {"an empty value", {"^SYSCONFIG: 2,,1,3"}, {"2", kKept, kKept, kKept}},
         {"an empty text", {R"(^SYSCONFIG: 2,"",1,3)"}, {"2", kKept, kKept, kKept}},
         {"an empty value in front", {"^SYSCONFIG: ,6,1,3"}, {"6", "1", "3", kKept}},
         {"an open end", {"^SYSCONFIG: 2,6,1,"}, {"2", "6", "1", kKept}},
         {"a text", {"^SYSCONFIG: 2,auto,1,3"}, {"2", kKept, kKept, kKept}},
         {"negative", {"^SYSCONFIG: -1,-2,-3,-4"}, {"-1", "-2", "-3", "-4"}},
         {"two lines", {"^SYSCONFIG: 2,6,1,3", "^SYSCONFIG: 5,5,5,5"}, {"2", "6", "1", "3"}},
         {"beyond 32 bits", {"^SYSCONFIG: 4294967298,6,1,3"}, {kAny, "6", "1", "3"}},
         {"1023 characters", {network::stretched("^SYSCONFIG: 2,6,1,", '0', "3", 1035)}, {"2", "6", "1", "3"}},
         {"1024 are not rewritten",
          {network::stretched("^SYSCONFIG: 2,6,1,", '0', "3", 1036)},
          {"2", kKept, kKept, kKept}}});
}

TEST(ZsntSet, LogsItsFailureBehindTheParse)
{
    scripted::Host host;
    host.expect("AT+ZSNT=0,0,2", 10000, "\r\nERROR\r\n");
    EXPECT_EQ(zsntSet(0, 0, 2), UNI_ERROR_FALSE);
    EXPECT_EQ(host.texts(), (Texts{"Bk_Parse_At_Res-in-\r\nERROR\r\n", "Bk_Parse_At_Res-out-", "Bk_Parse_At_Res-out-2",
                                   "zsntSet UNI_ERROR_FALSE return\n"}));
    EXPECT_EQ(host.formats(scripted::kNetworkModule), Texts{"zsntSet UNI_ERROR_FALSE return\n"});
}

} // namespace

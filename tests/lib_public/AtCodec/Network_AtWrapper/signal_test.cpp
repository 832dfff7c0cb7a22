// System information, signal figures and the cell lock.

#include <climits>

#include <gtest/gtest.h>

#include "tests/support/network_exchange.h"

namespace {

using network::kAny;
using network::kKept;
using network::Row;
using network::stretched;
using network::Subject;

uint32_t sysinfo(int32_t *out)
{
    return sysinfoExec(out, out + 1, out + 2, out + 3, out + 4, INT_MIN, INT_MAX);
}

Subject sysinfoOn(std::vector<int32_t> platforms, const char *line)
{
    return {"sysinfoExec",
            "AT^SYSINFO",
            5000,
            network::numbers<5>(sysinfo),
            line,
            [](const network::Ending &) { return network::Texts{}; },
            std::move(platforms)};
}

const Subject kSysinfo = sysinfoOn({0, 1, 2, 3, 5, 7}, "^SYSINFO:2,3,0,5,1");
const Subject kSysinfoTsp = sysinfoOn({PF_TSP}, "^SYSINFO: 2,3,0,5,1");

// As in ZrssiPara: Rssi, ecValue, Rscp, rsrq, rsrp, sinr, networkType.
const Subject kZrssi = {"zrssiExec", "AT+ZRSSI", 5000,
                        network::numbers<7>([](int32_t *out) { return zrssiExec(reinterpret_cast<ZrssiPara *>(out)); }),
                        "+ZRSSI: -75,-8,-90"};
const Subject kZrssiLte = {"zrssiLteRead", "AT+ZRSSI?", 5000, network::numbers<7>([](int32_t *out) {
                               return zrssiLteRead(reinterpret_cast<ZrssiPara *>(out));
                           }),
                           "+ZRSSI: -95,-10,-70,12"};
const Subject kZltelc = {"zltelcRead", "AT+ZLTELC?", 5000,
                         network::numbers<3>([](int32_t *out) { return zltelcRead(out, out + 1, out + 2); }),
                         "+ZLTELC: 1,38950,17"};

TEST(Signal, FailsWithUntouchedOutputs)
{
    for (const Subject &subject : {kSysinfo, kSysinfoTsp, kZrssi, kZrssiLte, kZltelc})
        network::expectFailures(subject);
}

TEST(SysinfoExec, ExpectsTheNameInTheParameters)
{
    network::expectRows(
        kSysinfo, {{"five values", {"^SYSINFO:2,3,0,5,1"}, {"2", "3", "0", "5", "1"}},
                   {"seven values", {"^SYSINFO:2,3,0,5,1,8,9"}, {"2", "3", "0", "5", "1"}},
                   {"three values", {"^SYSINFO:2,3,0"}, {"2", "3", "0", kKept, kKept}},
                   {"no value", {"^SYSINFO:"}, {kKept, kKept, kKept, kKept, kKept}},
                   {"no line", {}, {kKept, kKept, kKept, kKept, kKept}},
                   {"with a blank the name goes", {"^SYSINFO: 2,3,0,5,1"}, {kKept, kKept, kKept, kKept, kKept}},
                   {"no name", {"2,3,0,5,1"}, {kKept, kKept, kKept, kKept, kKept}},
                   {"another name", {"^SYSINFX:2,3,0,5,1"}, {kKept, kKept, kKept, kKept, kKept}},
                   {"case counts", {"^sysinfo:2,3,0,5,1"}, {kKept, kKept, kKept, kKept, kKept}},
                   {"a blank in front of the name", {" ^SYSINFO:2,3,0,5,1"}, {kKept, kKept, kKept, kKept, kKept}},
                   {"a tab behind the name", {"^SYSINFO:\t2,3,0,5,1"}, {"2", "3", "0", "5", "1"}},
                   {"blanks for commas", {"^SYSINFO:2 3 0 5 1"}, {"2", "3", "0", "5", "1"}},
                   {"quotes", {R"("^SYSINFO:2",3,"0",5,1)"}, {"2", "3", "0", "5", "1"}},
                   {"an empty value", {"^SYSINFO:2,3,,5,1"}, {"2", "3", kKept, kKept, kKept}},
                   {"an empty value in front", {"^SYSINFO:,3,0,5,1"}, {"3", "0", "5", "1", kKept}},
                   {"beyond 32 bits", {"^SYSINFO:2,3,-4294967297,5,1"}, {"2", "3", kAny, "5", "1"}},
                   {"1023 characters", {stretched("^SYSINFO:2,3,0,5,", '0', "1", 1023)}, {"2", "3", "0", "5", "1"}},
                   {"1024 are not rewritten",
                    {stretched("^SYSINFO:2,3,0,5,", '0', "1", 1024)},
                    {"2", kKept, kKept, kKept, kKept}}});
}

TEST(SysinfoExec, ExpectsBareParametersOnTsp)
{
    network::expectRows(
        kSysinfoTsp, {{"five values", {"^SYSINFO: 2,3,0,5,1"}, {"2", "3", "0", "5", "1"}},
                      {"a bare line", {"2,3,0,5,1"}, {"2", "3", "0", "5", "1"}},
                      {"without a blank the name stays", {"^SYSINFO:2,3,0,5,1"}, {kKept, kKept, kKept, kKept, kKept}},
                      {"four values", {"^SYSINFO: 2,3,0,5"}, {"2", "3", "0", "5", kKept}},
                      {"six values", {"^SYSINFO: 2,3,0,5,1,8"}, {"2", "3", "0", "5", "1"}},
                      {"no line", {}, {kKept, kKept, kKept, kKept, kKept}},
                      {"an empty value", {"^SYSINFO: 2,,0,5,1"}, {"2", kKept, kKept, kKept, kKept}},
                      {"beyond 32 bits", {"^SYSINFO: 99999999999999999999,3,0,5,1"}, {kAny, "3", "0", "5", "1"}},
                      {"1023 characters", {stretched("^SYSINFO: 2,3,0,5,", '0', "1", 1033)}, {"2", "3", "0", "5", "1"}},
                      {"1024 are not rewritten",
                       {stretched("^SYSINFO: 2,3,0,5,", '0', "1", 1034)},
                       {"2", kKept, kKept, kKept, kKept}}});
}

TEST(ZrssiExec, FillsThreeFields)
{
    const auto row = [](const char *name, const char *line, const char *rssi, const char *ec, const char *rscp) {
        return Row{name, {line}, {rssi, ec, rscp, kKept, kKept, kKept, kKept}};
    };
    network::expectRows(
        kZrssi,
        {row("three values", "+ZRSSI: -75,-8,-90", "-75", "-8", "-90"),
         row("a bare line", "-75,-8,-90", "-75", "-8", "-90"),
         row("four values", "+ZRSSI: -75,-8,-90,12", "-75", "-8", "-90"),
         row("two values", "+ZRSSI: -75,-8", "-75", "-8", kKept), row("one value", "+ZRSSI: -75", "-75", kKept, kKept),
         row("no value", "+ZRSSI: ", kKept, kKept, kKept),
         row("quotes", R"(+ZRSSI: "-75","-8","-90")", "-75", "-8", "-90"),
         row("blanks", "+ZRSSI: -75, -8 , -90", "-75", "-8", "-90"),
         row("an empty value", "+ZRSSI: -75,,-90", "-75", kKept, kKept),
         row("a fraction", "+ZRSSI: -75,-8.5,-90", "-75", "-8", kKept),
         row("a text", "+ZRSSI: low,-8,-90", kKept, kKept, kKept),
         row("beyond 32 bits", "+ZRSSI: -75,4294967296,-90", "-75", kAny, "-90"),
         row("1023 characters", stretched("+ZRSSI: -75,-8,-", '0', "90", 1031).c_str(), "-75", "-8", "-90"),
         row("1024 are not rewritten", stretched("+ZRSSI: -75,-8,-", '0', "90", 1032).c_str(), "-75", kKept, kKept)});
    network::expectRows(kZrssi, {{"no line", {}, {kKept, kKept, kKept, kKept, kKept, kKept, kKept}}});
}

TEST(ZrssiLteRead, ChoosesTheFormByTheNumberOfValues)
{
    network::expectRows(
        kZrssiLte,
        {{"one value", {"+ZRSSI: -75"}, {"-75", kKept, kKept, kKept, kKept, kKept, "0"}},
         {"two values", {"+ZRSSI: -90,-8"}, {kKept, "-8", "-90", kKept, kKept, kKept, "1"}},
         {"two values with a blank", {"+ZRSSI: -90, -8"}, {kKept, "-8", "-90", kKept, kKept, kKept, "1"}},
         {"three values", {"+ZRSSI: -95,-10,-70"}, {"-70", kKept, kKept, "-10", "-95", kKept, "2"}},
         {"four values", {"+ZRSSI: -95,-10,-70,12"}, {"-70", kKept, kKept, "-10", "-95", "12", "2"}},
         {"four values with blanks", {"+ZRSSI: -95, -10, -70,\t 12"}, {"-70", kKept, kKept, "-10", "-95", "12", "2"}},
         {"five values", {"+ZRSSI: -95,-10,-70,12,13"}, {"-70", kKept, kKept, "-10", "-95", "12", "2"}},
         {"a bare line", {"-95,-10,-70,12"}, {"-70", kKept, kKept, "-10", "-95", "12", "2"}},
         {"no value", {"+ZRSSI: "}, {kKept, kKept, kKept, kKept, kKept, kKept, "0"}},
         {"no line", {}, {kKept, kKept, kKept, kKept, kKept, kKept, "0"}},
         {"a text", {"+ZRSSI: none"}, {kKept, kKept, kKept, kKept, kKept, kKept, "0"}},
         {"two lines of one value", {"+ZRSSI: -75", "+ZRSSI: -76"}, {"-75", kKept, kKept, kKept, kKept, kKept, "0"}},
         {"an open end", {"+ZRSSI: -90,"}, {kKept, kKept, "-90", kKept, kKept, kKept, "1"}},
         {"empty values", {"+ZRSSI: -95,,,12"}, {kKept, kKept, kKept, kKept, "-95", kKept, "2"}},
         {"only commas", {"+ZRSSI: ,,,"}, {kKept, kKept, kKept, kKept, kKept, kKept, "2"}},
         {"a quoted value", {R"(+ZRSSI: "-75")"}, {kKept, kKept, kKept, kKept, kKept, kKept, "0"}},
         {"a quoted comma counts", {R"(+ZRSSI: -90",")"}, {kKept, kKept, "-90", kKept, kKept, kKept, "1"}},
         {"a blank in front of a comma", {"+ZRSSI: -90 ,-8"}, {kKept, kKept, "-90", kKept, kKept, kKept, "1"}},
         {"beyond 32 bits", {"+ZRSSI: -95,-4294967306,-70,12"}, {"-70", kKept, kKept, kAny, "-95", "12", "2"}},
         {"1024 characters",
          {stretched("+ZRSSI: -95,-10,-70,", '0', "12", 1032)},
          {"-70", kKept, kKept, "-10", "-95", "12", "2"}}});
}

TEST(ZltelcRead, TakesTheParametersAsTheyStand)
{
    network::expectRows(kZltelc, {{"three values", {"+ZLTELC: 1,38950,17"}, {"1", "38950", "17"}},
                                  {"a bare line", {"1,38950,17"}, {"1", "38950", "17"}},
                                  {"four values", {"+ZLTELC: 1,38950,17,4"}, {"1", "38950", "17"}},
                                  {"two values", {"+ZLTELC: 1,38950"}, {"1", "38950", kKept}},
                                  {"one value", {"+ZLTELC: 0"}, {"0", kKept, kKept}},
                                  {"no line", {}, {kKept, kKept, kKept}},
                                  {"blanks behind commas", {"+ZLTELC: 1, 38950, 17"}, {"1", "38950", "17"}},
                                  {"blanks for commas", {"+ZLTELC: 1 38950 17"}, {"1", kKept, kKept}},
                                  {"an empty value", {"+ZLTELC: 1,,17"}, {"1", kKept, kKept}},
                                  {"quotes", {R"(+ZLTELC: "1","38950","17")"}, {kKept, kKept, kKept}},
                                  {"negative", {"+ZLTELC: -1,-2,-3"}, {"-1", "-2", "-3"}},
                                  {"beyond 32 bits", {"+ZLTELC: 1,38950,9999999999"}, {"1", "38950", kAny}}});
}

struct CountRow {
    const char *text;
    int32_t count;
};

TEST(GetZrssiResParasCount, CountsCommasAndOneMore)
{
    for (const CountRow &row : {CountRow{"", 1},
                                {"-75", 1},
                                {"a,b,c", 3},
                                {",", 2},
                                {",,,", 4},
                                {"a,b,", 3},
                                {"-95, -10, -70, 12", 4},
                                {R"("a,b",c)", 3},
                                {"a;b", 1},
                                {"a\r\n,b", 2}}) {
        const scripted::Host host;
        const GuardedText text(row.text);
        EXPECT_EQ(getZrssiResParasCount(text), row.count) << row.text;
        EXPECT_EQ(text.str(), row.text);
        EXPECT_TRUE(host.log().empty());
    }
    EXPECT_EQ(getZrssiResParasCount(GuardedText(std::string(200000, ','))), 200001);
    EXPECT_EQ(getZrssiResParasCount(nullptr), 1);
}

} // namespace

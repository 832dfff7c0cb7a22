// What modems of each family say of themselves and of the world as it is without a scenario.
#include <gtest/gtest.h>

#include "tests/simulator/bench.h"

namespace bench {
namespace {

using Lines = std::vector<std::string>;

struct Exchange {
    const char *command;
    Lines lines;
    const char *finalResult = "OK";
};

void expectDialogue(Family family, const std::vector<Exchange> &dialogue)
{
    Bench bench(family);
    bench.settle();
    for (const Exchange &exchange : dialogue)
        EXPECT_EQ(bench.send(exchange.command), framed(exchange.lines, exchange.finalResult))
            << exchange.command << " on " << nameOf(family);
}

TEST(Family, EveryOneAnswersWhatIsStandard)
{
    for (const host::family::Row &row : host::family::kRows)
        expectDialogue(
            row.family,
            {
                {"AT", {}},
                {"at", {}},
                {"AT+CGMI", {std::string(row.manufacturer)}},
                {"AT+CGSN", {"861234567890123"}},
                {"AT+CIMI", {"460001234567890"}},
                {"AT+CNUM", {"+CNUM: \"Own\",\"13800138000\",129"}},
                {"AT+CPIN?", {"+CPIN: READY"}},
                {"AT+CLCK=\"SC\",2", {"+CLCK: 0"}},
                {"at+cfun?", {"+CFUN: 1"}},
                {"AT+CREG?", {"+CREG: 0,1"}},
                {"AT+CREG=2", {}},
                {"AT+CREG?", {"+CREG: 2,1,\"43B0\",\"0043B008\",7"}},
                {"AT+CEREG=2", {}},
                {"at+CEREG?", {"+CEREG: 2,1,\"43B0\",\"0043B008\",7"}},
                {"AT+CGREG=2", {}},
                {"at+CGREG?", {"+CGREG: 2,1,\"43B0\",\"0043B008\",7,\"01\""}},
                {"AT+CGATT?", {"+CGATT: 1"}},
                {"AT+COPS?", {"+COPS: 0,0,\"Kora Mobile\",7"}},
                {"AT+COPS=3,2", {}},
                {"AT+COPS?", {"+COPS: 0,2,\"46000\",7"}},
                {"AT+ZDON?", {"+ZDON: \"Kora Mobile\",\"460\",\"00\",\"Kora Mobile\",\"460\",\"00\",\"ROAM_OFF\""}},
                {"AT+ZPAS?", {"+ZPAS: \"LTE\",\"CS_PS\""}},
                {"AT+CSQ", {"+CSQ: 21,99"}},
                {"AT+ZLTELC?", {"+ZLTELC: 0,0,0"}},
                {"AT+ZCELLINFO?", {"+ZCELLINFO: 4435976,272,\"B3\",1650"}},
                {"AT+CGDCONT?", {"+CGDCONT: 1,\"IP\",\"internet\",\"\",0,0"}},
                {"AT+CGDCONT=5,\"IPV4V6\",\"wap\",\"\",0,0", {}},
                {"AT*CGDFLT=1,\"IPV6\",\"net\",,1", {}},
                {"AT+CGDCONT?", {"+CGDCONT: 1,\"IPV6\",\"net\",\"\",0,0", "+CGDCONT: 5,\"IPV4V6\",\"wap\",\"\",0,0"}},
                {"AT+CRSM=176,12258,0,0,10", {"+CRSM: 144,0,\"98680021436587092143\""}},
                {"AT+CRSM=176,12258,0,0,10,", {"+CRSM: 144,0,\"98680021436587092143\""}},
                {"AT+ZOPRT=5", {}},
                {"AT+ZOPRT?", {"+ZOPRT: 5"}},
                {"AT+ZSET=\"a b\",3", {"+ZSET: \"a b\",3"}},
                {"AT+FOTACTR=2", {"+FOTACTR: 2,0"}},
                {"AT+ZGAAT=1", {}},
                {"AT+ZEACT=1", {}},
            });
}

TEST(Family, EachHasFormatsOfItsOwn)
{
    const char *const refused = "+CME ERROR: operation not supported";
    expectDialogue(Family::Qualcomm, {
                                         {"AT+ZPINPUK=?", {"+ZPINPUK: 3,10"}},
                                         {"AT+ZPCB?", {"+ZPCB: KRS_HW_A"}},
                                         {"AT+HVER", {}, "ERROR"},
                                         {"AT^SYSINFO", {"^SYSINFO:2,3,0,17,1"}},
                                         {"AT+ZSNT?", {"+ZSNT: 0,0,0"}},
                                         {"AT+ZPREFBAND=\"0\"", {}},
                                         {"AT+ZSEC?", {"+ZSEC: 2,0"}},
                                         {"AT+ZNCK?", {"+ZNCK: 5"}},
                                         {"AT+ZLOCK?", {"+ZLOCK: 0,1"}},
                                         {"AT+ERAT?", {}, "ERROR"},
                                     });
    expectDialogue(Family::Default, {
                                        {"AT+ZPINPUK=?", {"+ZPINPUK: 3,10"}},
                                        {"AT+ZMSN?", {"+ZMSN: KR0000000001"}},
                                        {"AT*prop=net.static_ip,1,10.0.0.1", {}},
                                        {"AT^SYSCONFIG?", {}, "ERROR"},
                                    });
    expectDialogue(Family::Mtk, {
                                    {"AT+EPINC?", {"+EPINC: 3,3,10,10"}},
                                    {"AT+ERAT?", {"+ERAT: 7,1,2,0"}},
                                    {"AT+ERAT=2,2", {}},
                                    {"AT+ESMLCK?", {"+ESMLCK: (0,2,5,10),(1,2,5,10),(2,2,5,10),(3,2,5,10),(4,2,5,10)"}},
                                    {"AT^SYSINFO", {"^SYSINFO:2,3,0,5,1"}},
                                    {"AT+ZNCK?", {}, refused},
                                });
    expectDialogue(Family::Tsp, {
                                    {"AT+CARDMODE", {"+CARDMODE: 1"}},
                                    {"AT+ZRAP?", {"+ZRAP: 3,3,10,10"}},
                                    {"AT+HVER", {"+HVER: KRS_HW_A"}},
                                    {"AT^SYSINFO", {"^SYSINFO: 2,3,0,17,1"}},
                                    {"AT^SYSCONFIG?", {"^SYSCONFIG: 2,0,1,3"}},
                                    {"AT+ZMSN?", {}, "not support"},
                                });
    expectDialogue(Family::Spreadtrum, {
                                           {"AT+XX=0", {"+XX: 3"}},
                                           {"AT+XX=2", {"+XX: 10"}},
                                           {"AT+SPSIMLOCKINFO", {"+SPSIMLOCKINFO: 5"}},
                                           {"AT^SYSCONFIG=17,0,1,3", {}},
                                           {"AT^SYSCONFIG?", {"^SYSCONFIG: 17,0,1,3"}},
                                           {"AT+ZPINPUK=?", {}, refused},
                                       });
}

} // namespace
} // namespace bench

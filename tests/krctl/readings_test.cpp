// Replies in the many words of modems, and the values that they mean.
#include <gtest/gtest.h>

#include "krctl/readings/identity.h"
#include "krctl/readings/operators.h"
#include "krctl/readings/profiles.h"
#include "krctl/readings/reply.h"
#include "krctl/readings/signal.h"

namespace {

using namespace krctl;

constexpr std::nullopt_t kNone = std::nullopt;

std::string replyOf(const std::string &lines)
{
    return "\r\n" + lines + "\r\n\r\nOK\r\n";
}

TEST(Reply, LinesAreThoseThatSaySomething)
{
    EXPECT_EQ(linesOf("\r\n+CSQ: 20,99\r\n\r\nOK\r\n"), (std::vector<std::string>{"+CSQ: 20,99", "OK"}));
    EXPECT_TRUE(linesOf("\r\n\r\n").empty());
    EXPECT_EQ(finalResultOf("\r\n+CSQ: 20,99\r\n\r\nOK\r\n"), "OK");
    EXPECT_EQ(finalResultOf(""), "");
}

TEST(Reply, OnlyAnOkHasABody)
{
    EXPECT_EQ(bodyOf(replyOf("one\r\ntwo")), (std::vector<std::string>{"one", "two"}));
    EXPECT_TRUE(bodyOf("\r\none\r\n\r\nERROR\r\n").empty());
    EXPECT_TRUE(bodyOf("").empty());
}

TEST(Reply, LinesWithANameComeFirst)
{
    EXPECT_EQ(valueLinesOf(replyOf("\xFF\xFE\r\n+CSQ: 20,99")), (std::vector<std::string>{"+CSQ: 20,99"}));
    EXPECT_EQ(valueLinesOf(replyOf("2,1\r\n2,5")), (std::vector<std::string>{"2,1", "2,5"}));
}

TEST(Reply, ValuesLoseQuotesAndBlanks)
{
    EXPECT_EQ(valuesOf("+X : 1, \"a,b\" ,, c "), (Values{"1", "a,b", "", "c"}));
    EXPECT_EQ(numberIn("007"), 7);
    EXPECT_EQ(numberIn("-7"), -7);
    for (const char *none : {"", "7a", "a7", " 7", "99999999999"})
        EXPECT_EQ(numberIn(none), kNone) << none;
    EXPECT_EQ(errorIn("+CME ERROR: SIM busy"), "SIM busy");
    EXPECT_EQ(errorIn("+cme error:14"), "14");
    EXPECT_EQ(errorIn("ERROR"), "");
}

TEST(Replies, AreKeptByTheStartOfTheCommand)
{
    Replies replies;
    replies.add("AT+cops?", "first");
    replies.add("AT+COPS?", "second");
    replies.add("AT+CPIN=1234", "third");
    EXPECT_EQ(replies.to("AT+COPS?"), "second");
    EXPECT_EQ(replies.allTo("AT+COPS?"), (std::vector<std::string_view>{"first", "second"}));
    EXPECT_EQ(replies.to("AT+CPIN="), "third");
    EXPECT_EQ(replies.to("AT+CPIN?"), "");
    EXPECT_EQ(replies.last(), "third");
    EXPECT_EQ(Replies().last(), "");
}

TEST(SelectedOperator, HasANameOrACode)
{
    struct Row {
        const char *line;
        std::optional<int32_t> format;
        const char *name;
        const char *code;
        std::optional<int32_t> technology;
    };
    for (const Row &row :
         {Row{"+COPS: 0", kNone, "", "", kNone}, Row{"+COPS: 0,0,\"Kora\",7", 0, "Kora", "", 7},
          Row{"+COPS: 0,0,\"Kora, Mobile\"", 0, "Kora, Mobile", "", kNone},
          Row{"+COPS: 1,2,\"001001\",13", 2, "", "001001", 13}, Row{"+COPS: 1,2,00101", 2, "", "00101", kNone},
          Row{"+COPS: 0,0,\"46000\",2", 0, "", "46000", 2}, // what a modem says that knows no name
          Row{"+COPS: 0,2,\"Kora\",2", 2, "Kora", "", 2}, Row{"+COPS: 0,0,\"\",0", 0, "", "", kNone},
          Row{"+COPS: 0,0,\"Kora\",", 0, "Kora", "", kNone}}) {
        const SelectedOperator selected = selectedOperatorOf(replyOf(row.line));
        EXPECT_EQ(selected.format, row.format) << row.line;
        EXPECT_EQ(selected.name, row.name) << row.line;
        EXPECT_EQ(selected.code, row.code) << row.line;
        EXPECT_EQ(selected.technology, row.technology) << row.line;
    }
}

TEST(SelectedOperator, SaysHowItWasSelected)
{
    EXPECT_EQ(selectedOperatorOf(replyOf("+COPS: 0")).mode, 0);
    EXPECT_EQ(selectedOperatorOf(replyOf("+COPS: 4,0,\"Kora\",7")).mode, 4);
    EXPECT_EQ(selectedOperatorOf(replyOf("+COPS: ")).mode, kNone);
}

TEST(FoundOperators, KeepEveryStateAndTechnology)
{
    const auto found = foundOperatorsOf(replyOf("+COPS: 0,\"Kora (test)\",\"K\",\"001001\",3\r\n"
                                                "+COPS: 2,,,\"46000\"\r\n"
                                                "+COPS: 1,\"Lumen\",\"\",\"\",13\r\n"
                                                "+COPS: 0,1,2,3\r\n+COPS: ,,,\r\n+COPS: 1"));
    ASSERT_EQ(found.size(), 4U);
    EXPECT_EQ(found[0].state, 0);
    EXPECT_EQ(found[0].name, "Kora (test)");
    EXPECT_EQ(found[0].shortName, "K");
    EXPECT_EQ(found[0].code, "001001");
    EXPECT_EQ(found[0].technology, 3);
    EXPECT_EQ(found[1].name, "");
    EXPECT_EQ(found[1].code, "46000");
    EXPECT_EQ(found[1].technology, 0);
    EXPECT_EQ(found[2].name, "Lumen");
    EXPECT_EQ(found[2].code, "");
}

TEST(NetworkCodes, KeepAllTheirDigits)
{
    const NetworkCodes codes = networkCodesOf(replyOf(R"(+ZDON: "A","310","012","B","001","01","ROAM_ON")"));
    EXPECT_EQ(codes.serving, "310012");
    EXPECT_EQ(codes.home, "00101");
    const NetworkCodes home = networkCodesOf(replyOf(R"(+ZDON: ,,,"B","001","001")"));
    EXPECT_EQ(home.serving, "");
    EXPECT_EQ(home.home, "001001");
    EXPECT_EQ(networkCodesOf(replyOf(R"(+ZDON: "A","31","0012","B","x","1")")).serving, "");
}

TEST(Identity, IsTextWithoutNamesAndQuotes)
{
    for (const auto &[lines, text] :
         {std::pair{"K100", "K100"}, std::pair{"+CGMM: \"K100\"", "K100"}, std::pair{"Model: K100", "K100"},
          std::pair{"Revision:1.2", "1.2"}, std::pair{"Product\r\nVersion 1.2", "Product Version 1.2"},
          std::pair{"Board: A", "Board: A"}, std::pair{"ERROR", ""}, std::pair{"\"\"", ""}})
        EXPECT_EQ(identityOf(replyOf(lines)), text) << lines;
    EXPECT_EQ(identityOf("\r\nERROR\r\n"), "");
}

TEST(Identity, NumbersAreDigitsAlone)
{
    for (const auto &[lines, digits] :
         {std::pair{"123456789012345", "123456789012345"}, std::pair{"+CGSN: \"123456789012345\"", "123456789012345"},
          std::pair{"IMEI: 123456789012345", "123456789012345"}, std::pair{"123456789012345,01", "123456789012345"},
          std::pair{"SN1\r\n123456789012345", "123456789012345"}, std::pair{"1234", ""},
          std::pair{"12345678901234x", ""}})
        EXPECT_EQ(digitsOf(replyOf(lines), 14, 17), digits) << lines;
}

TEST(Signal, CodesStandQuotedOrNot)
{
    EXPECT_EQ(csqOf(replyOf("+CSQ: 20,99")), 20);
    EXPECT_EQ(csqOf(replyOf("+CSQ: \"20\",\"99\"")), 20);
    EXPECT_EQ(csqOf(replyOf("+CSQ: ")), kNone);
    EXPECT_EQ(csqOf("\r\nERROR\r\n"), kNone);
    const ExtendedSignal signal = extendedSignalOf(replyOf("+CESQ: 10,99,\"11\",12,,80"));
    EXPECT_EQ(signal.rxlev, 10);
    EXPECT_EQ(signal.rscp, 11);
    EXPECT_EQ(signal.ecno, 12);
    EXPECT_EQ(signal.rsrq, kNone);
    EXPECT_EQ(signal.rsrp, 80);
}

TEST(Profiles, MayLackFieldsFromTheAccessPointOn)
{
    const auto profiles = profilesOf(replyOf("+CGDCONT: 1,\"IP\"\r\n+CGDCONT: 2,IPV6,net,,0,0\r\n+CGDCONT: x,\"IP\""));
    ASSERT_EQ(profiles.size(), 2U);
    EXPECT_EQ(profiles[0].cid, 1);
    EXPECT_EQ(profiles[0].type, "IP");
    EXPECT_EQ(profiles[0].apn, "");
    EXPECT_EQ(profiles[1].type, "IPV6");
    EXPECT_EQ(profiles[1].apn, "net") << "not that of the line before";
    EXPECT_EQ(profiles[1].address, "");
}

} // namespace

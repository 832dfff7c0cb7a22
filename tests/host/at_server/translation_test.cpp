// What modems say in their own words, and what the library gets to read, as tables.
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "host/at_server/translation/translation.h"
#include "host/at_server/translation/ucs2.h"

using namespace host::at_server;

namespace {

using Lines = std::vector<std::string>;

struct Row {
    const char *name;
    std::string_view command;
    Lines lines; ///< of the modem, its final result the last
    Lines read;  ///< as the library gets them
};

std::ostream &operator<<(std::ostream &stream, const Row &row)
{
    return stream << row.name;
}

Reply replyOf(const Lines &lines)
{
    return {{lines.begin(), lines.end() - 1}, lines.back()};
}

class Replies : public testing::TestWithParam<Row> {};

TEST_P(Replies, TakeTheFormThatTheLibraryReads)
{
    const Row &row = GetParam();
    const std::string once = asLibraryReads(replyOf(row.lines), row.command, Family::Default);
    EXPECT_EQ(once, framed(replyOf(row.read)));
    EXPECT_EQ(asLibraryReads(replyOf(row.read), row.command, Family::Default), once) << "what is read stays";
}

INSTANTIATE_TEST_SUITE_P(
    Registration, Replies,
    testing::Values(
        Row{"no place", "AT+CREG?", {"+CREG: 1,3", "OK"}, {R"(+CREG: 1,3,"","","")", "OK"}},
        Row{"no technology", "AT+CREG?", {R"(+CREG: 2,1,"A1","B2")", "OK"}, {R"(+CREG: 2,1,"A1","B2","")", "OK"}},
        Row{"standard", "AT+CREG?", {R"(+CREG: 2,1,"A1","B2",7)", "OK"}, {R"(+CREG: 2,1,"A1","B2",7)", "OK"}},
        Row{"no quotes", "AT+CREG?", {"+CREG: 2,1,00a1,b2,7", "OK"}, {R"(+CREG: 2,1,"00a1","b2",7)", "OK"}},
        Row{"prefix", "AT+CREG?", {R"(+CREG: 2,1,"0xA1",0XB2,7)", "OK"}, {R"(+CREG: 2,1,"A1","B2",7)", "OK"}},
        Row{"zeros", "AT+CREG?", {R"(+CREG:002,0011,"1",02,000)", "OK"}, {R"(+CREG: 2,11,"1","02",0)", "OK"}},
        Row{"blanks", "AT+CREG?", {R"(+CREG:  2 , 1 , "A1" ,B2 , 7)", "OK"}, {R"(+CREG: 2,1,"A1","B2",7)", "OK"}},
        Row{"blank before the colon", "AT+CREG?", {"+CREG : 2,1", "OK"}, {R"(+CREG: 2,1,"","","")", "OK"}},
        Row{"quoted numbers",
            "AT+CREG?",
            {R"(+CREG: "2","1","A1","B2","7")", "OK"},
            {R"(+CREG: 2,1,"A1","B2",7)", "OK"}},
        Row{"empty fields", "AT+CREG?", {"+CREG: 2,2,,,", "OK"}, {R"(+CREG: 2,2,"","","")", "OK"}},
        Row{"cause", "AT+CREG?", {R"(+CREG: 3,3,"","",,0,15)", "OK"}, {R"(+CREG: 3,3,"","","",0,15)", "OK"}},
        Row{"nine fields",
            "AT+CREG?",
            {R"(+CREG: 5,1,A1,B2,7,,,"00100100","01000111")", "OK"},
            {R"(+CREG: 5,1,"A1","B2",7,"","","00100100","01000111")", "OK"}},
        Row{"short cell", "AT+CREG?", {"+CREG: 2,1,00A1,12,7,0,15", "OK"}, {R"(+CREG: 2,1,"00A1","12",7,0,15)", "OK"}},
        Row{"routing area without a place",
            "AT+CEREG?",
            {"+CEREG: 2,10, 2CA8, 20 ,B5583D ,7", "OK"},
            {R"(2,10,"2CA8","B5583D",7)", "OK"}},
        Row{"routing area with a place",
            "AT+CGREG?",
            {R"(+CGREG: 2,1,"00A1","20","0000B2C3",2)", "OK"},
            {R"(2,1,"00A1","0000B2C3",2,"20")", "OK"}},
        Row{"routing area, no technology",
            "AT+CGREG?",
            {R"(+CGREG: 2,1,"00A1","20","B2C3")", "OK"},
            {R"(2,1,"00A1","B2C3","","20")", "OK"}},
        Row{"technology in hexadecimal",
            "AT+CEREG?",
            {"+CEREG: 2,11,003F,8FE3, B", "OK"},
            {R"(2,11,"003F","8FE3",11)", "OK"}},
        Row{"no name", "AT+CREG?", {"2,1,00A1,B2C3", "OK"}, {R"(+CREG: 2,1,"00A1","B2C3","")", "OK"}},
        Row{"no mode", "AT+CREG?", {R"(+CREG: 1,"00A1","B2C3",7)", "OK"}, {R"(+CREG: 1,"00A1","B2C3",7)", "OK"}},
        Row{"no more than a number", "AT+CREG?", {"+CREG: 1", "OK"}, {"+CREG: 1", "OK"}},
        Row{"open quotes", "AT+CREG?", {R"(+CREG: 2,1,"00A1,B2,7)", "OK"}, {R"(+CREG: 2,1,"00A1,B2,7)", "OK"}},
        Row{"another name", "AT+CREG?", {"+NEW: 2,1", "OK"}, {"+NEW: 2,1", "OK"}},
        Row{"two commands", "AT+CREG?;+CSQ", {"+CREG: 0,1", "OK"}, {"+CREG: 0,1", "OK"}}));

INSTANTIATE_TEST_SUITE_P(
    Operators, Replies,
    testing::Values(
        Row{"in use", "AT+COPS?", {R"(+COPS: 0,0,"A, B",7)", "OK"}, {R"(+COPS: 0,0,"A, B",7)", "OK"}},
        Row{"no quotes", "AT+COPS?", {"+COPS: 0, 0, T - Mobile, 7", "OK"}, {R"(+COPS: 0,0,"T - Mobile",7)", "OK"}},
        Row{"quoted number", "AT+COPS?", {R"(+COPS: 0,2,26201,"7")", "OK"}, {R"(+COPS: 0,2,"26201",7)", "OK"}},
        Row{"no technology", "AT+COPS?", {R"(+COPS: 1,2,"46000")", "OK"}, {R"(+COPS: 1,2,"46000")", "OK"}},
        Row{"none", "AT+COPS?", {"+COPS: 0", "OK"}, {"+COPS: 0", "OK"}},
        Row{"no name", "AT+COPS?", {R"(0,0,"A",7)", "OK"}, {R"(+COPS: 0,0,"A",7)", "OK"}},
        Row{"names without quotes",
            "AT+COPS=?",
            {"+COPS: (2,One Two,O,26201,7),(1,B,B,26202),,(0-4),(0-2)", "OK"},
            {R"(+COPS: 2,"One Two","O","26201",7)", R"(+COPS: 1,"B","B","26202")", "OK"}},
        Row{"a bracket too many",
            "AT+COPS=?",
            {R"(+COPS: (2,"A","A","1"),2),(1,"B","B","2"),0))", "OK"},
            {R"(+COPS: 2,"A","A","1",2)", R"(+COPS: 1,"B","B","2",0)", "OK"}},
        Row{"brackets that do not close",
            "AT+COPS=?",
            {R"(+COPS: (2,"A","A","1",7,(1,"B","B","2",0)", "OK"},
            {R"(+COPS: 2,"A","A","1",7)", R"(+COPS: 1,"B","B","2",0)", "OK"}},
        Row{"a list that does not open",
            "AT+COPS=?",
            {R"(+COPS: 2,"A","A","1",7),(1,"B","B","2",0))", "OK"},
            {R"(+COPS: 2,"A","A","1",7)", R"(+COPS: 1,"B","B","2",0)", "OK"}},
        Row{"brackets in names",
            "AT+COPS=?",
            {R"-(+COPS: (2,"A(B)","),(","1",7),(1,C(D),C,26201,0))-", "OK"},
            {R"-(+COPS: 2,"A(B)","),(","1",7)-", R"-(+COPS: 1,"C(D)","C","26201",0)-", "OK"}},
        Row{"blanks",
            "AT+COPS=?",
            {R"(+COPS: ( 2 , "A" , "B" , "1" , 7 ) , ( 1,"C","D","2",0))", "OK"},
            {R"(+COPS: 2,"A","B","1",7)", R"(+COPS: 1,"C","D","2",0)", "OK"}},
        Row{"missing names",
            "AT+COPS=?",
            {R"(+COPS: (1,,,"26201",2),(3,"",,"26202"))", "OK"},
            {R"(+COPS: 1,"","","26201",2)", R"(+COPS: 3,"","","26202")", "OK"}},
        Row{"a line each",
            "AT+COPS=?",
            {R"(+COPS: (0,"A","A","1",2))", R"(+COPS: (1,"B","B","2",0))", "OK"},
            {R"(+COPS: 0,"A","A","1",2)", R"(+COPS: 1,"B","B","2",0)", "OK"}},
        Row{"no name in front",
            "AT+COPS=?",
            {R"((2,"A","A","1",7),(1,"B","B","2",0))", "OK"},
            {R"(+COPS: 2,"A","A","1",7)", R"(+COPS: 1,"B","B","2",0)", "OK"}},
        Row{"open quotes",
            "AT+COPS=?",
            {R"(+COPS: (2,"A"B","A","1",7))", "OK"},
            {R"(+COPS: (2,"A"B","A","1",7))", "OK"}},
        Row{"no operator", "AT+COPS=?", {"+COPS: (0,1,2,3,4),(1,2,3,4)", "OK"}, {"OK"}},
        Row{"nothing but ranges", "AT+COPS=?", {"+COPS: (),(0-4),(0,2)", "OK"}, {"OK"}}));

INSTANTIATE_TEST_SUITE_P(
    Sim, Replies,
    testing::Values(
        Row{"state", "AT+CPIN?", {"+CPIN: SIM PIN", "OK"}, {"+CPIN: SIM PIN", "OK"}},
        Row{"in quotes", "AT+CPIN?", {R"(+CPIN:"SIM PUK")", "OK"}, {"+CPIN: SIM PUK", "OK"}},
        Row{"in small letters", "AT+CPIN?", {"+CPIN: ready", "OK"}, {"+CPIN: READY", "OK"}},
        Row{"no name", "AT+CPIN?", {"   SIM PUK2", "OK"}, {"+CPIN: SIM PUK2", "OK"}},
        Row{"a state that is not known", "AT+CPIN?", {R"(+CPIN: "Own Lock")", "OK"}, {"+CPIN: Own Lock", "OK"}},
        Row{"not ready", "AT+CPIN?", {"+CPIN: NOT READY", "OK"}, {"+CME ERROR: SIM busy"}},
        Row{"not inserted", "AT+CPIN?", {R"(+CPIN: "Not Inserted")", "OK"}, {"+CME ERROR: SIM not inserted"}},
        Row{"blocked", "AT+CPIN?", {"+CPIN: BLOCKED", "OK"}, {"+CME ERROR: SIM failure"}},
        Row{"error by number", "AT+CPIN?", {"+CME ERROR: 10"}, {"+CME ERROR: SIM not inserted"}},
        Row{"wrong PIN by number", "AT+CPIN=\"1\"", {"+CME ERROR:16"}, {"+CME ERROR: incorrect password"}},
        Row{"wrong PIN by text",
            "AT+CPIN=\"1\"",
            {"+CME ERROR: Incorrect password"},
            {"+CME ERROR: incorrect password"}},
        Row{"error in quotes",
            "AT+CPWD=\"SC\",\"1\",\"2\"",
            {R"(+CME ERROR: "sim puk REQUIRED")"},
            {"+CME ERROR: SIM PUK required"}},
        Row{"a number that has no text", "AT+CPIN?", {"+CME ERROR: 999"}, {"+CME ERROR: 999"}},
        Row{"a text that has no number", "AT+CPIN?", {"+CME ERROR: raspberry"}, {"+CME ERROR: raspberry"}},
        Row{"of another command", "AT+CSQ", {"+CME ERROR: 10"}, {"+CME ERROR: 10"}},
        Row{"tries",
            "AT+CPINR",
            {R"(+CPINR: "SIM PIN",3,3)", R"(+CPINR: "sim puk", 10)", "OK"},
            {"+CPINR: SIM PIN,3,3", "+CPINR: SIM PUK,10", "OK"}},
        Row{"tries on a line",
            "AT+CPINR",
            {"+CPINR: SIM PIN,3,3,SIM PUK,10,10", "OK"},
            {"+CPINR: SIM PIN,3,3", "+CPINR: SIM PUK,10,10", "OK"}},
        Row{"tries without names", "AT+CPINR", {"+CPINR: 3,10,3,10", "OK"}, {"+CPINR: 3,10,3,10", "OK"}},
        Row{"a lock that is on for one class",
            "AT+CLCK=\"AO\",2",
            {"+CLCK: 0,1", "+CLCK: 1,2", "OK"},
            {"+CLCK: 1,2", "+CLCK: 0,1", "OK"}},
        Row{"a lock with its name", "AT+CLCK=\"SC\",2", {R"(+CLCK: "SC","1")", "OK"}, {"+CLCK: 1", "OK"}},
        Row{"a lock without the command's name", "AT+CLCK=\"SC\",2", {"1", "OK"}, {"+CLCK: 1", "OK"}},
        Row{"a lock in brackets", "AT+CLCK=\"SC\",2", {"+CLCK: (0)", "OK"}, {"+CLCK: (0)", "OK"}}));

INSTANTIATE_TEST_SUITE_P(
    Results, Replies,
    testing::Values(Row{"not supported", "AT+X", {"COMMAND NOT SUPPORT"}, {"not support"}},
                    Row{"not supported, otherwise", "AT+X", {"Not supported"}, {"not support"}},
                    Row{"own error", "AT+X", {"+X: 1", "MODEM ERROR: 5"}, {"+X: 1", "MODEM ERROR: 5", "ERROR"}},
                    Row{"too many parameters", "AT+X", {"TOO MANY PARAMETERS"}, {"TOO MANY PARAMETERS", "ERROR"}}));

INSTANTIATE_TEST_SUITE_P(
    Values, Replies,
    testing::Values(Row{"plain", "AT+CGSN", {"861234567890123", "OK"}, {"861234567890123", "OK"}},
                    Row{"quotes", "AT+CIMI", {R"("310260123456789")", "OK"}, {"+CIMI: 310260123456789", "OK"}},
                    Row{"name and quotes", "AT+CGMM", {R"(+CGMM:"M100")", "OK"}, {"+CGMM: M100", "OK"}},
                    Row{"label", "AT+CGMR", {"Revision:1418B03", "OK"}, {"+CGMR: 1418B03", "OK"}},
                    Row{"lines", "AT+CGMR", {"Product", "Version 1.2", "OK"}, {"+CGMR: Product Version 1.2", "OK"}},
                    Row{"colon", "AT+CGMR", {"V1:2", "OK"}, {"V1:2", "OK"}},
                    Row{"refused", "AT+CGMI", {"ERROR"}, {"ERROR"}},
                    Row{"number in quotes", "AT+CSQ", {R"(+CSQ: "20", "99")", "OK"}, {"+CSQ: 20,99", "OK"}},
                    Row{"two blanks", "at+cfun?", {"+CFUN:  1", "OK"}, {"+CFUN: 1", "OK"}},
                    Row{"signal that is not told",
                        "AT+CESQ",
                        {"+CESQ: 99,99,,,20 ,80", "OK"},
                        {"+CESQ: 99,99,255,255,20,80", "OK"}},
                    Row{"another name", "AT+CSQ", {R"(+NEW: "1")", "OK"}, {R"(+NEW: "1")", "OK"}},
                    Row{"text for a number", "AT+CSQ", {"+CSQ: none", "OK"}, {"+CSQ: none", "OK"}},
                    Row{"profile without address",
                        "AT+CGDCONT?",
                        {R"(+CGDCONT: 1,"IP","a b",,0,0)", R"(+CGDCONT: 2,IP)", "OK"},
                        {R"(+CGDCONT: 1,"IP","a b","",0,0)", R"(+CGDCONT: 2,"IP","","",0,0)", "OK"}},
                    Row{"profile with more",
                        "AT+CGDCONT?",
                        {R"(+CGDCONT: 1, "IP", , ,1,,0,0)", "OK"},
                        {R"(+CGDCONT: 1,"IP","","",1,0,0,0)", "OK"}}));

struct Report {
    const char *name;
    std::string line;
    std::string read;
};

std::ostream &operator<<(std::ostream &stream, const Report &report)
{
    return stream << report.name;
}

class Reports : public testing::TestWithParam<Report> {};

TEST_P(Reports, TakeTheFormThatTheLibraryReads)
{
    const Report &report = GetParam();
    EXPECT_EQ(reportAsLibraryReads({report.line}), framedReport({report.read}));
    EXPECT_EQ(reportAsLibraryReads({report.read}), framedReport({report.read})) << "what is read stays";
}

INSTANTIATE_TEST_SUITE_P(
    Registration, Reports,
    testing::Values(
        Report{"state", "+CREG: 3", "+CREG: 3"}, Report{"no codes", "+CREG: 2,,", R"(+CREG: 2,"","")"},
        Report{"no quotes", "+CREG: 1,84CD,00D30156", R"(+CREG: 1,"84CD","00D30156")"},
        Report{"mode in front", R"(+CREG: 2,5,"0502","0404736D")", R"(+CREG: 5,"0502","0404736D")"},
        Report{"mode and nothing else", "+CGREG: 1,3", "+CGREG: 3"},
        Report{"mode and bare codes", "+CREG: 2,11,003F,8FE3, B, C2816", R"(+CREG: 11,"003F","8FE3",11,C2816)"},
        Report{"an area of two digits", "+CREG: 5,21,0000B2C3,7", R"(+CREG: 5,"21","0000B2C3",7)"},
        Report{"an area that could be a state", "+CREG: 1,10,00D30156,2", R"(+CREG: 1,"10","00D30156",2)"},
        Report{"zeros", R"(+CREG: 0011,"0001","0010",000)", R"(+CREG: 11,"0001","0010",0)"},
        Report{"blanks", "+CEREG: 1, 1F00, 79D903 ,7", R"(+CEREG: 1,"1F00","79D903",7)"},
        Report{"routing area without a place", "+CEREG: 11, 78FE, 20 ,14419E ,7", R"(+CEREG: 11,"78FE","14419E",7)"},
        Report{"routing area with a place", R"(+CGREG: 1,"1422","00000142",3,"00")",
               R"(+CGREG: 1,"1422","00000142",3,"00")"},
        Report{"routing area between", "+CGREG: 1,1422,07,00000142,3", R"(+CGREG: 1,"1422","00000142",3,"07")"},
        Report{"open quotes", R"(+CREG: 1,"00A)", R"(+CREG: 1,"00A)"}, Report{"no number", "+CREG: ?", "+CREG: ?"},
        Report{"another report", R"(+CLIP: "123",129)", R"(+CLIP: "123",129)"}, Report{"a word", "RING", "RING"}));

// Alphabets

TEST(Ucs2, IsReadWhereItCanBeSome)
{
    EXPECT_EQ(textOfUcs2("0056006500720069007A006F006E"), "Verizon");
    EXPECT_EQ(textOfUcs2("00e90416 4e2d"), std::nullopt);
    EXPECT_EQ(textOfUcs2("00e904164e2d"), "\xC3\xA9\xD0\x96\xE4\xB8\xAD");
    for (const std::string_view none :
         {"", "Verizon", "26201", "004", "00410", "D83DDE00", "00410000", "00410022", "FFFF"})
        EXPECT_EQ(textOfUcs2(none), std::nullopt) << none;
}

TEST(Ucs2, IsTextOnceTheModemSaysSo)
{
    const Reply reply{{R"(+COPS: (2,"00410042","00410042","00320031003400300037",7),(1,"Plain","P","21404",2))"}, "OK"};
    EXPECT_TRUE(mayHaveUcs2(reply, "AT+COPS=?"));
    EXPECT_FALSE(mayHaveUcs2(reply, "AT+CSQ"));
    EXPECT_EQ(asLibraryReads(reply, "AT+COPS=?", Family::Default, Alphabet::Ucs2),
              framed({{R"(+COPS: 2,"AB","AB","21407",7)", R"(+COPS: 1,"Plain","P","21404",2)"}, "OK"}));
    EXPECT_EQ(
        asLibraryReads(reply, "AT+COPS=?", Family::Default),
        framed({{R"(+COPS: 2,"00410042","00410042","00320031003400300037",7)", R"(+COPS: 1,"Plain","P","21404",2)"},
                "OK"}));
    EXPECT_FALSE(mayHaveUcs2({{R"(+COPS: 0,0,"Verizon",7)"}, "OK"}, "AT+COPS?"));
    EXPECT_FALSE(mayHaveUcs2({{R"(+COPS: 0,2,"310410",7)"}, "OK"}, "AT+COPS?"));
    EXPECT_FALSE(mayHaveUcs2({{R"(+COPS: 0,0,"",7)"}, "OK"}, "AT+COPS?"));
}

TEST(Ucs2, NeedsNoQuotes)
{
    const Reply scan{{"+COPS: (2,00410042,0041,00320031003400300037,7)"}, "OK"};
    EXPECT_TRUE(mayHaveUcs2(scan, "AT+COPS=?"));
    EXPECT_EQ(asLibraryReads(scan, "AT+COPS=?", Family::Default, Alphabet::Ucs2),
              framed({{R"(+COPS: 2,"AB","A","21407",7)"}, "OK"}));
    const Reply inUse{{"+COPS: 0,0,00410042,7"}, "OK"};
    EXPECT_TRUE(mayHaveUcs2(inUse, "AT+COPS?"));
    EXPECT_EQ(asLibraryReads(inUse, "AT+COPS?", Family::Default, Alphabet::Ucs2),
              framed({{R"(+COPS: 0,0,"AB",7)"}, "OK"}));
}

TEST(Ucs2, IsWhatTheModemAnswers)
{
    EXPECT_EQ(alphabetIn({{R"(+CSCS: "UCS2")"}, "OK"}), Alphabet::Ucs2);
    EXPECT_EQ(alphabetIn({{"+CSCS:ucs2"}, "OK"}), Alphabet::Ucs2);
    for (const char *other : {R"(+CSCS: "GSM")", R"(+CSCS: "IRA")", "+CSCS: (\"GSM\",\"UCS2\")"})
        EXPECT_EQ(alphabetIn({{other}, "OK"}), Alphabet::Plain) << other;
    EXPECT_EQ(alphabetIn({{}, "ERROR"}), Alphabet::Plain);
}

} // namespace

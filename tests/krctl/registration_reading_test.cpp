// Registration lines in all the forms that modems give them, and in the one that the server makes of them.
#include <gtest/gtest.h>

#include "krctl/readings/registration.h"

namespace {

using namespace krctl;

using Number = std::optional<int32_t>;
constexpr std::nullopt_t kNone = std::nullopt;

struct Row {
    const char *line;
    Number reports;
    Number state;
    const char *area;
    const char *cell;
    Number technology;
};

void expectRegistration(const Registration &registration, const Row &row)
{
    EXPECT_EQ(registration.reports, row.reports) << row.line;
    EXPECT_EQ(registration.state, row.state) << row.line;
    EXPECT_EQ(registration.area, row.area) << row.line;
    EXPECT_EQ(registration.cell, row.cell) << row.line;
    EXPECT_EQ(registration.technology, row.technology) << row.line;
}

std::string replyOf(const char *line)
{
    return std::string("\r\n") + line + "\r\n\r\nOK\r\n";
}

TEST(RegistrationReply, InAllItsForms)
{
    for (const Row &row :
         {Row{"+CREG: 0,1", 0, 1, "", "", kNone},
          Row{"+CREG: 2,5,\"4A01\",\"00C0FFEE\",7", 2, 5, "4A01", "00C0FFEE", 7},
          Row{"2,5,\"4A01\",\"00C0FFEE\",7", 2, 5, "4A01", "00C0FFEE", 7}, // without its name
          Row{"+CREG: 2,1,4a01,c0ffee", 2, 1, "4A01", "C0FFEE", kNone},
          Row{"+CREG:002,0010,\"0x4A01\",\"0xC0FFEE\",013", 2, 10, "4A01", "C0FFEE", 13},
          Row{"+CGREG: 2,1,\"4A01\",\"00C0FFEE\",3,\"2F\"", 2, 1, "4A01", "00C0FFEE", 3},
          Row{"+CEREG: 2,1,4A01,2F,00C0FFEE,7", 2, 1, "4A01", "00C0FFEE", 7}, // a routing area in between
          Row{"+CGREG: 2,1,\"4A01\",\"2F\",\"10\",7", 2, 1, "4A01", "10", 7},
          Row{"+CGREG: 2,1,\"4A01\",\"2F\",\"00C0FFEE\"", 2, 1, "4A01", "00C0FFEE", kNone},
          Row{"+CEREG: 4,1,\"4A01\",\"00C0FFEE\",9,,,\"00100100\"", 4, 1, "4A01", "00C0FFEE", 9},
          Row{"+CREG: 2,2,,,,", 2, 2, "", "", kNone}, Row{"+CREG: ,1,\"4A01\",,", kNone, 1, "4A01", "", kNone},
          Row{"+CREG: 2 , \"1\" , \"4A01\" , \"00C0FFEE\" , \"7\"", 2, 1, "4A01", "00C0FFEE", 7},
          Row{"+CREG: 1,\"4A01\",\"00C0FFEE\"", kNone, 1, "4A01", "00C0FFEE", kNone}, // without its mode
          Row{"+CREG: 2,1,\"none\",\"00C0FFEE\"", 2, 1, "", "00C0FFEE", kNone},
          Row{"+CREG: 2,99", 2, 99, "", "", kNone}, Row{"+CREG: later", kNone, kNone, "", "", kNone}})
        expectRegistration(registrationOfReply(replyOf(row.line)), row);
    EXPECT_EQ(registrationOfReply("\r\nERROR\r\n").state, kNone);
    EXPECT_EQ(registrationOfReply("").state, kNone);
}

TEST(RegistrationReport, BeginsWithTheStateOrWithTheMode)
{
    for (const Row &row :
         {Row{"+CREG: 5", kNone, 5, "", "", kNone}, Row{"+CREG: 1,4A01,00C0FFEE", kNone, 1, "4A01", "00C0FFEE", kNone},
          Row{"+CREG: 1,\"0010\",\"0020\",0", kNone, 1, "0010", "0020", 0},
          Row{"+CREG: 001,0010,0020,2", kNone, 1, "0010", "0020", 2},
          Row{"+CEREG: 11,4A01,2F,C0FFEE,7", kNone, 11, "4A01", "C0FFEE", 7},
          Row{"+CREG: 2,5,\"4A01\",\"00C0FFEE\"", 2, 5, "4A01", "00C0FFEE", kNone},
          Row{"+CREG: 2,,", kNone, 2, "", "", kNone},
          Row{"+C5GREG: 1,\"4A0100\",\"000C0FFEE\",11", kNone, 1, "4A0100", "000C0FFEE", 11}})
        expectRegistration(registrationOfReport(row.line), row);
}

TEST(RegistrationReply, ARefusalHasItsCauseBehindItsType)
{
    EXPECT_EQ(registrationOfReply(replyOf("+CEREG: 3,3,\"\",\"\",,0,15")).epsRejectCause, 15);
    EXPECT_EQ(registrationOfReply(replyOf("3,3,,,,0,11")).epsRejectCause, 11);
    EXPECT_EQ(registrationOfReply(replyOf("+CEREG: 3,3,\"4A01\",\"C0FFEE\",7,\"00\",0,13")).epsRejectCause, 13);
    EXPECT_EQ(registrationOfReply(replyOf("+CEREG: 3,3,,,,1,15")).epsRejectCause, kNone) << "the maker's own causes";
    EXPECT_EQ(registrationOfReply(replyOf("+CEREG: 2,1,\"4A01\",\"C0FFEE\",7")).epsRejectCause, kNone);
    EXPECT_EQ(registrationOfReply(replyOf("+CEREG: 3,1,\"4A01\",\"C0FFEE\",7,0,0")).epsRejectCause, kNone);
}

} // namespace

#include <gtest/gtest.h>

#include "host/at/secrets.h"

using namespace host::at;

namespace {

TEST(Secrets, AreFoundWhereverTheyStand)
{
    for (const char *secret : {
             "AT+CPIN=1234",
             "at+cpin=\"1234\"",
             "AT+CPIN2=1234",
             "AT+CPUK=12345678,1234",
             "AT+EPIN2=1234",
             "AT^CPIN=1234",
             "AT#CPIN=1234",
             "AT +CPIN = 1",
             "AT+C PIN=1",
             "AT+CPIN\t=1",
             "+CPIN=1234",
             "AT+CPIN=",
             "AT+CPIN=?1234",
             "AT+CPWD=\"SC\",\"1\",\"2\"",
             "AT+CLCK=\"SC\",1,\"1234\"",
             "AT+CLCK=\"SC\",0",
             "AT+CLCK=\"SC\",21",
             "AT+CLCK=\"SC\",2,\"1234\"",
             "AT+CLCK=\"SC\"",
             "AT+CLCK=",
             "AT+CLCK=\"SC\",2;+CLCK=\"SC\",0,\"1234\"",
             "AT+ZNCK=\"1\"",
             "AT+ESMLCK=0,0,\"1\"",
             "AT+XLOCK=\"PN\",0,\"1\"",
             "AT+CARDLOCK=\"1\"",
             "AT+SIMLOCK=\"1\"",
             "AT+CSIM=10,\"0020000108\"",
             "AT+CGLA=1,10,\"0020000108\"",
             "AT+CGAUTH=1,2,\"user\",\"word\"",
             "AT+QICSGP=1,1,\"net\",\"user\",\"word\",1",
             "AT+CSQ;+CPIN=1234",
             "ATE0+CPIN=1234",
             "AT+CSQ=\"open;+CPIN=1234",
             "ATD**04*1234*4321*4321#;",
             "ATD**052*12345678*1*1#",
             "ATD* *0 4*1234*4321*4321#",
             "ATD ***03*330*1234*4321*4321#",
             "AT+CUSD=1,\"**042*1234*1*1#\",15",
             "AT!CPIN=1234",
             "AT&CPIN=1234",
             "AT_CPIN=1234",
             "AT-CPIN=1234",
             "AT%CPIN=1234",
             "AT*CPIN=1234",
             "AT$CPIN=1234",
             "AT@CPIN=1234",
             "AT+ZPSWD=\"1\",\"2\"",
         })
        EXPECT_TRUE(changesSecrets(secret)) << secret;
}

TEST(Secrets, AreNotInWhatOnlyAsks)
{
    for (const char *harmless : {
             "",
             "AT",
             "AT+CPIN?",
             "AT+CPIN",
             "AT+CPIN=?",
             "AT+CPIN = ? ; +CSQ",
             "AT+CPUK?",
             "AT+CLCK=?",
             "AT+CLCK=\"SC\",2",
             "AT+CLCK = \"SC\" , 2",
             "AT+CLCK=\"SC\",2;+CSQ",
             "AT+ZNCK?",
             "AT+CSQ",
             "AT+CIMI",
             "AT+CPINX=1",
             "AT+CRSM=176,12258,0,0,10",
             "AT+CGDCONT=1,\"IP\",\"internet\"",
             "ATD**21*123#;",
             "ATD*#06#",
             "ATD*#0*4#",
             "ATD**06*1#",
             "ATD*04*1234#",
         })
        EXPECT_FALSE(changesSecrets(harmless)) << harmless;
}

TEST(Secrets, HaveTheRuleOfTheirName)
{
    EXPECT_EQ(ruleFor(*findMention("+cpin", 0))->name, "CPIN");
    EXPECT_EQ(ruleFor(*findMention("^ CP IN", 0))->name, "CPIN");
    EXPECT_EQ(ruleFor(*findMention("+CIMI please", 0))->name, "CIMI");
    EXPECT_EQ(ruleFor(*findMention("+CREG", 0)), nullptr);
}

TEST(Secrets, AreInDialledCodes)
{
    const struct {
        const char *text;
        const char *code; ///< nullptr if there is none
    } rows[] = {
        {"ATD*100#;", "*100#"},
        {"ATD#31#123", "#31#123"},
        {"dial * 2 1 * +49 # now", "* 2 1 * +49 #"},
        {"x**04*12a34*1#y", "**04*12a34*1"},
        {"***04*1", "**04*1"},
        {"*4711", "*4711"},
        {"**", nullptr},
        {"*pStatus:1", nullptr},
        {"$GPGGA,1*47", nullptr},
        {"**** 12", nullptr},
        {"### 2026", nullptr},
        {"*", nullptr},
        {"", nullptr},
    };
    for (const auto &row : rows) {
        const std::string_view text = row.text;
        const auto code = findDialledCode(text, 0);
        ASSERT_EQ(code.has_value(), row.code != nullptr) << text;
        if (code) {
            EXPECT_EQ(text.substr(code->begin, code->end - code->begin), row.code);
        }
    }
}

TEST(Files, AreHarmlessIfTheySayNothingOfTheSubscriber)
{
    EXPECT_TRUE(isHarmlessFile(0x6F46));
    EXPECT_FALSE(isHarmlessFile(0x6F07));
    EXPECT_FALSE(isHarmlessFile(0));
}

} // namespace

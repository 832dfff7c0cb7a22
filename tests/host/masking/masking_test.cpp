#include <random>

#include <gtest/gtest.h>

#include "host/masking/masking.h"

using host::Hide;
using host::maskedCommand;
using host::maskedLogLine;
using host::maskedReply;

namespace {

struct CommandRow {
    const char *command;
    const char *secrets; ///< masked
    const char *both;    ///< masked; nullptr if the same
};

TEST(Masking, HidesTheArgumentsOfCommands)
{
    const CommandRow rows[] = {
        {"AT+CPIN=1234", "AT+CPIN=****", nullptr},
        {"AT+CPIN=\"1234\"", "AT+CPIN=\"****\"", nullptr},
        {"AT+CPIN=12345678,4321", "AT+CPIN=********,****", nullptr},
        {"AT+CPIN=\"12345678\",\"4321\"", "AT+CPIN=\"********\",\"****\"", nullptr},
        {"at + cPiN = \"1234\" , 4321", "at + cPiN = \"****\" , ****", nullptr},
        {"AT^CPIN=1234", "AT^CPIN=****", nullptr},
        {"AT#CPIN=1234", "AT#CPIN=****", nullptr},
        {"AT+CPUK=12345678,1234", "AT+CPUK=********,****", nullptr},
        {"AT+C PIN=1234", "AT+C PIN=****", nullptr},
        {"AT+CPIN extra=1234", "AT+**** *****=****", nullptr},
        {"AT+CRSM=+CPIN=1,2,3", "AT+CRSM=*******,*,*", nullptr},
        {"AT+CLCK=+CPIN=1,2,3", "AT+CLCK=*******,*,*", nullptr},
        {"AT+CPIN=\"12\"34\"", "AT+CPIN=\"**\"**\"", nullptr},
        {"AT+CPIN=\"12;34\"", "AT+CPIN=\"*****\"", nullptr},
        {"AT+CPIN=12;34", "AT+CPIN=*****", nullptr},
        {"AT+CPIN=\"1234", "AT+CPIN=\"****", nullptr},
        {"AT+CPIN=12\r34", "AT+CPIN=**\r**", nullptr},
        {"AT+CPIN=\"1234\";+CSQ", "AT+CPIN=\"****\";+CSQ", nullptr},
        {"AT+CMEE=1;+CPIN=1234", "AT+CMEE=1;+CPIN=****", nullptr},
        {"AT+CPIN?", "AT+CPIN?", nullptr},
        {"AT+CPIN=?", "AT+CPIN=?", nullptr},
        {"AT+CPWD=\"SC\",\"1234\",\"4321\"", "AT+CPWD=\"SC\",\"****\",\"****\"", nullptr},
        {"AT+CLCK=\"SC\",2", "AT+CLCK=\"SC\",2", nullptr},
        {"AT+CLCK=\"SC\",1,\"1234\"", "AT+CLCK=\"SC\",1,\"****\"", nullptr},
        {"AT+CLCK=\"SC\",1,\"1234\",1", "AT+CLCK=\"SC\",1,\"****\",*", nullptr},
        {"AT+CLCK=\"SC\",1,\"12,34\"", "AT+CLCK=\"SC\",1,\"**,**\"", nullptr},
        {"AT+ZNCK=\"12345678\"", "AT+ZNCK=\"********\"", nullptr},
        {"AT+ZNCK?", "AT+ZNCK?", nullptr},
        {"AT+ESMLCK=0,0,\"12345678\"", "AT+ESMLCK=0,0,\"********\"", nullptr},
        {"AT+CSIM=26,\"002000010831323334FFFFFFFF\"", "AT+CSIM=26,\"**************************\"", nullptr},
        {"AT+CGAUTH=1,2,\"user\",\"word\"", "AT+CGAUTH=1,2,\"****\",\"****\"", nullptr},
        {"ATD**04*1234*4321*4321#;", "ATD********************;", nullptr},
        {"ATD**052*12345678*1*1#", "ATD*******************", nullptr},
        {"AT+CRSM=176,12258,0,0,10", "AT+CRSM=176,12258,0,0,10", nullptr},
        {"AT+CRSM=214,28480,1,4,4,\"0A1B2C3D\"", "AT+CRSM=214,28480,1,4,4,\"********\"", nullptr},
        {"AT+EGMR=1,7,\"861234567890123\"", "AT+EGMR=1,7,\"861234567890123\"", "AT+EGMR=1,7,\"***************\""},
        {"AT+ANYTHING=461234567890123", "AT+ANYTHING=***************", nullptr},
        {"AT+CGDCONT=1,\"IP\",\"internet\",\"10.0.0.1\",0,0", "AT+CGDCONT=1,\"IP\",\"internet\",\"10.0.0.1\",0,0",
         nullptr},
        {"AT+COPS=1,2,\"46000\",7", "AT+COPS=1,2,\"46000\",7", nullptr},
        {"AT+ZPINPUK=?", "AT+ZPINPUK=?", nullptr},
        {"AT", "AT", nullptr},
        {"", "", nullptr},
        {"+", "*", nullptr},
        {"AT+CPIN", "AT+CPIN", nullptr},
        {"AT+CPIN=", "AT+CPIN=", nullptr},
    };
    for (const CommandRow &row : rows) {
        EXPECT_EQ(maskedCommand(row.command, Hide::Secrets), row.secrets);
        EXPECT_EQ(maskedCommand(row.command, Hide::SecretsAndIdentities), row.both != nullptr ? row.both : row.secrets);
    }
}

struct ReplyRow {
    const char *command;
    const char *reply;
    const char *both;
};

TEST(Masking, HidesIdentitiesInReplies)
{
    const ReplyRow rows[] = {
        {"AT+CIMI", "\r\n460001234567890\r\n\r\nOK\r\n", "\r\n***************\r\n\r\nOK\r\n"},
        {"AT+CIMI", "\r\n+CIMI: 1234567\r\n\r\nOK\r\n", "\r\n+CIMI: *******\r\n\r\nOK\r\n"},
        {"at+cgsn", "\r\nA000001234567B\r\n\r\nOK\r\n", "\r\n**************\r\n\r\nOK\r\n"},
        {"AT+CGSN", "AT+CGSN\r\r\n+CGSN: \"86123456\"\r\n\r\nOK\r\n", "AT+CGSN\r\r\n+CGSN: \"********\"\r\n\r\nOK\r\n"},
        {"AT+CNUM", "\r\n+CNUM: \"Ann\",\"+8613800\",145\r\n+CNUM:\"\",\"13801\",129\r\n\r\nOK\r\n",
         "\r\n+CNUM: \"***\",\"********\",145\r\n+CNUM:\"\",\"*****\",129\r\n\r\nOK\r\n"},
        {"AT+CNUM", "\r\n\"\",\"13801\",129\r\n\r\nOK\r\n", "\r\n\"\",\"*****\",129\r\n\r\nOK\r\n"},
        {"AT+ZMSN?", "\r\n+ZMSN: 32ABC4567\r\n\r\nOK\r\n", "\r\n+ZMSN: *********\r\n\r\nOK\r\n"},
        {"AT+CRSM=176,12258,0,0,10", "\r\n+CRSM: 144,0,\"98681234\"\r\n\r\nOK\r\n",
         "\r\n+CRSM: 144,0,\"********\"\r\n\r\nOK\r\n"},
        {"AT+CRSM=176,12258,0,0,10", "\r\n144,0,\"98681234\"\r\n\r\nOK\r\n", "\r\n144,0,\"********\"\r\n\r\nOK\r\n"},
        {"AT+CRSM=176,28486,0,0,17", "\r\n+CRSM: 144,0,\"00414243444546474849\"\r\n\r\nOK\r\n",
         "\r\n+CRSM: 144,0,\"00414243444546474849\"\r\n\r\nOK\r\n"},
        {"AT+CRSM=178,28480,1,4,28", "\r\n+CRSM: 144,0,\"4A6F06818310325476FFFF\"\r\n\r\nOK\r\n",
         "\r\n+CRSM: 144,0,\"**********************\"\r\n\r\nOK\r\n"},
        {"AT+CSQ;+CIMI", "\r\n+CSQ: 20,99\r\n\r\n1234567\r\n\r\nOK\r\n",
         "\r\n+CSQ: 20,99\r\n\r\n*******\r\n\r\nOK\r\n"},
        {"AT+CRSM=176,28486,0,0,17;+CIMI", "\r\n+CRSM: 144,0,\"0041\"\r\n1234567\r\n\r\nOK\r\n",
         "\r\n+CRSM: 144,0,\"****\"\r\n*******\r\n\r\nOK\r\n"},
        {"AT + CRSM = 176, 28486,0,0,17", "\r\n+CRSM: 144,0,\"00414243444546474849\"\r\n\r\nOK\r\n",
         "\r\n+CRSM: 144,0,\"00414243444546474849\"\r\n\r\nOK\r\n"},
        {"AT#CCID", "\r\n#CCID: 8986001\r\n\r\nOK\r\n", "\r\n****** *******\r\n\r\nOK\r\n"},
        {"AT+CSQ", "\r\n+CIMI: 1234567\r\n\r\n+CSQ: 20,99\r\n\r\nOK\r\n",
         "\r\n+CIMI: *******\r\n\r\n+CSQ: 20,99\r\n\r\nOK\r\n"},
        {"", "\r\n+ZICCID: 89860012345678901234\r\n", "\r\n+ZICCID: ********************\r\n"},
        {"AT+CIMI", "\r\n+CREG: 1,\"00A1\"\r\n\r\n+CME ERROR: 10\r\n",
         "\r\n+CREG: 1,\"00A1\"\r\n\r\n+CME ERROR: 10\r\n"},
    };
    for (const ReplyRow &row : rows) {
        EXPECT_EQ(maskedReply(row.command, row.reply, Hide::SecretsAndIdentities), row.both) << row.command;
        EXPECT_EQ(maskedReply(row.command, row.reply, Hide::Secrets), row.reply) << row.command;
    }
}

TEST(Masking, HidesTheSecretsOfTheCommandInItsReply)
{
    const ReplyRow rows[] = {
        {"AT+CPIN=\"1234\"", "AT+CPIN=\"1234\"\r\r\nOK\r\n", "AT+CPIN=\"****\"\r\r\nOK\r\n"},
        {"AT+CPIN=\"1234\"", "AT+CPIN=\"12", "AT+CPIN=\"**"},
        {"AT+CPIN=\"1234\"", "34\"\r\r\nOK\r\n", "**\"\r\r\nOK\r\n"},
        {"AT+CPIN=\"1234\"", "\r\n+CREG: 1\r\nPIN=\"1234\"\r\n", "\r\n+CREG: 1\r\n****\"****\"\r\n"},
        {"AT+CPIN=1234", "\r\nERROR: bad code 1234\r\n", "\r\nERROR: bad code ****\r\n"},
        {"AT+CLCK=\"SC\",1,\"1111\"", "1\"\r\n", "*\"\r\n"},
        {"AT+CPIN=1234", "\r\n+CME ERROR: 16\r\n", "\r\n+CME ERROR: 16\r\n"},
        {"AT+CGAUTH?", "\r\n+CGAUTH: 1,2,\"me\",\"word\"\r\n\r\nOK\r\n",
         "\r\n+CGAUTH: 1,2,\"**\",\"****\"\r\n\r\nOK\r\n"},
    };
    for (const ReplyRow &row : rows) {
        EXPECT_EQ(maskedReply(row.command, row.reply, Hide::Secrets), row.both);
        EXPECT_EQ(maskedReply(row.command, row.reply, Hide::SecretsAndIdentities), row.both);
    }
}

TEST(Masking, HidesTheValuesOfLogLines)
{
    const struct {
        const char *line;
        const char *secrets;
        const char *both;
    } rows[] = {
        {"KR_verifyPIN-in-newPin:1234", "KR_verifyPIN-in-newPin:****", nullptr},
        {"KR_verifyPIN-in-pValue:12 34", "KR_verifyPIN-in-pValue:** **", nullptr},
        {"KR_unblockPIN-in-pPUKValue:12345678", "KR_unblockPIN-in-pPUKValue:********", nullptr},
        {"KR_changePIN-in-pOldValue:pValue:1", "KR_changePIN-in-pOldValue:********", nullptr},
        {"KR_setFacilityLock-in-strPasswd:(null)", "KR_setFacilityLock-in-strPasswd:******", nullptr},
        {"KR_setLockCode-in-strcode12345678", "KR_setLockCode-in-strcode********", nullptr},
        {"KR_setControlKeyLock-in-strcode:1\r\n2", "KR_setControlKeyLock-in-strcode:*\r\n*", nullptr},
        {"KR_setDefaultProfile: pPassword:word", "KR_setDefaultProfile: pPassword:****", nullptr},
        {"KR_setDefaultProfile: pUsername:me", "KR_setDefaultProfile: pUsername:me",
         "KR_setDefaultProfile: pUsername:**"},
        {"Bk_Parse_At_Res-in-AT+CPIN=\"1234\"\r\r\nOK\r\n", "Bk_Parse_At_Res-in-AT+CPIN=\"****\"\r\r\nOK\r\n", nullptr},
        {"{\"pin\": \"1234\"}", "{\"pin\": \"****\"*", nullptr},
        {"sent AT+CPIN=\"1234\" in vain", "sent AT+CPIN=\"****\" ** ****", nullptr},
        {"KR_getIMSI-out-pString:12345", "KR_getIMSI-out-pString:12345", "KR_getIMSI-out-pString:*****"},
        {"KR_getIMEI-out-pIMEIString:A1", "KR_getIMEI-out-pIMEIString:A1", "KR_getIMEI-out-pIMEIString:**"},
        {"KR_getSerialNumber-out-pSerialNumber:123456", "KR_getSerialNumber-out-pSerialNumber:123456",
         "KR_getSerialNumber-out-pSerialNumber:******"},
        {"KR_getICCID-out-pString:986812", "KR_getICCID-out-pString:986812", "KR_getICCID-out-pString:******"},
        {"KR_getVoiceNumber return OK:+86138", "KR_getVoiceNumber return OK:+86138",
         "KR_getVoiceNumber return OK:******"},
        {"KR_getSPNInfo-out-pCrsmres->response:0841", "KR_getSPNInfo-out-pCrsmres->response:0841",
         "KR_getSPNInfo-out-pCrsmres->response:****"},
        {"Bk_Parse_At_Res-out-144,0,\"4A6F06818310325476FFFF\"", "Bk_Parse_At_Res-out-144,0,\"4A6F06818310325476FFFF\"",
         "Bk_Parse_At_Res-out-144,0,\"**********************\""},
        {"Bk_Parse_At_Res-out-\"\",\"+8613812345678\",145", "Bk_Parse_At_Res-out-\"\",\"+8613812345678\",145",
         "Bk_Parse_At_Res-out-\"\",\"**************\",145"},
        {"x460001234567890y", "x460001234567890y", "x***************y"},
        {"98680064103254769F", "98680064103254769F", "******************"},
        {"ABCDEF460001234567890ABC", "ABCDEF460001234567890ABC", "ABCDEF***************ABC"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(maskedLogLine(row.line, Hide::Secrets), row.secrets);
        EXPECT_EQ(maskedLogLine(row.line, Hide::SecretsAndIdentities), row.both != nullptr ? row.both : row.secrets);
    }
}

TEST(Masking, LeavesOrdinaryLinesAlone)
{
    const char *const lines[] = {
        "Bk_Parse_At_Res-in-\r\n+COPS: 0,2,\"46000\",7\r\n\r\nOK\r\n",
        "Bk_Parse_At_Res-out-0,0,\"Long Operator\",7",
        "cregRead-tParasList.strParasLine[i]:2,1,\"00A1\",\"0001B2C3\",7",
        "+CREG: 2,1,\"12345678\",\"0123456789\",7",
        "Bk_Parse_At_Res-out-20,99",
        "+CCLK: \"26/11/21,23:36:09+00\"",
        "2026-11-21 23:36:09.123 [4711] lib_mainControl:12",
        "+CPIN: SIM PIN",
        "###T9LB LOG### CpinRead SIM PUK",
        "KR_verifyPIN-in-pVerifyRetriesLeft:-1234567890",
        "KR_getPINStatus-out-*pStatus:1",
        "PF_TSP:pinLeft=3,pukLeft=10",
        "KR_getManufacturer-out-pString:Maker Ltd",
        "KR_setNetworkRegistrationMode-in-pCode:46000",
        "KR_parseSPNName-in-pSrcSpnInfo:004F0070",
        "KR_getHardLockStatus-out-*pImsiAuth:1",
        "KR_spnFriendOperlistInvert-in-pSrcSpnFriendOperlist:64f00064f01064f020",
        "CGDCONT_ReadATResProcess:1 IP internet 10.0.0.1 0 0",
        "+CGDCONT: 1,\"IPV4V6\",\"internet\",\"254.128.0.0.0.0.0.1\",0,0",
        "^SYSINFO:2,3,0,5,1",
        "+CESQ: 99,99,255,255,20,50",
        "+CPBS: \"SM\",250,250",
    };
    for (const char *line : lines) {
        EXPECT_EQ(maskedLogLine(line, Hide::SecretsAndIdentities), line);
        EXPECT_EQ(maskedReply("ATI", line, Hide::SecretsAndIdentities), line);
    }
}

/** Texts made of what the rules look for, in any order. */
std::string scrambled(std::mt19937 &random)
{
    static const std::string_view pieces[] = {"AT",  "+CPIN", "+CLCK", "+CRSM",  "^CIMI",   "+CNUM",   "=",
                                              ":",   "\"",    ",",     ";",      "\r",      "\n",      "**04*",
                                              "#",   "?",     " ",     "1",      "F",       "1234567", "OK",
                                              "pin", "+",     "*",     "144,0,", "pValue:", "12258",   "\0"};
    std::string text;
    for (size_t left = random() % 40; left > 0; --left)
        text += pieces[random() % std::size(pieces)];
    return text;
}

TEST(Masking, KeepsTheLengthOfAnyText)
{
    std::mt19937 random(5);
    for (int round = 0; round < 5000; ++round) {
        const std::string command = scrambled(random);
        const std::string text = scrambled(random);
        for (const Hide hide : {Hide::Secrets, Hide::SecretsAndIdentities}) {
            EXPECT_EQ(maskedCommand(text, hide).size(), text.size());
            EXPECT_EQ(maskedReply(command, text, hide).size(), text.size());
            const std::string line = maskedLogLine(text, hide);
            ASSERT_EQ(line.size(), text.size());
            for (size_t i = 0; i < line.size(); ++i)
                EXPECT_TRUE(line[i] == text[i] || line[i] == '*');
        }
    }
}

} // namespace

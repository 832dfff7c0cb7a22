// What modems say again of secrets, and what they tell by themselves: none may be read, and what helps to find faults stays.
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "host/masking/masking.h"
#include "tests/host/masking/hand_typed.h"

using hand_typed::expectNothingToRead;
using host::Hide;

namespace {

struct Said {
    const char *command; ///< that ran
    const char *text;
};

TEST(HandTyped, SecretsInRepliesAreHidden)
{
    const Said rows[] = {
        // echoes, whole and in pieces
        {"AT+CPIN=7391", "AT+CPIN=7391\r\r\nOK\r\n"},
        {"AT+CPIN=7391", "at+cpin=7391\r\n"},
        {"AT+CPIN=\"7391\"", "AT+CPIN=7391\r\n"},
        {"AT+CPIN=7391", "7391\r\n"},
        {"AT+CPIN=7391", "CPIN=7391\r\n"},
        {"AT+FOO=hunter2", "AT+FOO=hunter2\r\r\nOK\r\n"},
        {"AT+FOO=\"hunter2\"", "=\"hunter2\"\r\n"},
        {"AT+FOO=7391", "\r\n+FOO: 7391\r\n"},
        {"AT", "AT+CPIN=7391\r\n"},
        {"", "AT+CPIN=7391\r\n"},
        {"", "AT+FOO=hunter2\r\n"},
        {"AT+CSQ", "AT+CPIN=\"7391\"\r\r\nOK\r\n"},
        {"AT+CSQ", "AT+FOO=\"hunter2\"\r\r\nOK\r\n"},
        // errors
        {"AT+CPIN=7391", "\r\n+CME ERROR: wrong PIN 7391\r\n"},
        {"AT+CPIN=\"7391\"", "\r\nERROR: \"7391\" refused\r\n"},
        {"AT+CPIN=7391", "\r\n+CME ERROR: '7391'\r\n"},
        {"AT+CSQ", "\r\n+CME ERROR: PIN 7391\r\n"},
        {"AT+FOO=hunter2", "\r\n+CME ERROR: HUNTER2\r\n"},
        {"AT+FOO=\"p@ss!w\"", "\r\n+CME ERROR: p@ss!w is short\r\n"},
        {"AT+CLCK=\"SC\",1,\"7391\"", "\r\n+CLCK: \"SC\",1,7391\r\n"},
        // said in another way
        {"AT+CPIN=7391", "\r\n+CSQ: 7-3-9-1\r\n"},
        {"AT+CPIN=7391", "\r\n+CSQ: 73 91\r\n"},
        {"AT+CPIN=\"7391\"", "\r\n+CPIN: \"7391\",READY\r\n"},
        // without the command
        {"", "\r\n+CPIN: \"7391\"\r\n"},
        {"", "\r\n+CPIN:7391\r\n"},
        {"AT+CSQ", "\r\n+CPWD: \"SC\",\"7391\"\r\n"},
        {"AT+CGAUTH?", "\r\n+CGAUTH: 1,2,\"user\",\"hunter2\"\r\n\r\nOK\r\n"},
        {"AT$QCPDPP?", "\r\n$QCPDPP: 1,1,\"hunter2\",\"hunter2\"\r\n\r\nOK\r\n"},
        {"AT!PASS?", "\r\n!PASS: \"hunter2\"\r\n\r\nOK\r\n"},
        {"AT!PASS?", "\r\n!PASS: hunter2\r\n\r\nOK\r\n"},
        {"AT!PASS?", "\r\nhunter2\r\n\r\nOK\r\n"},
        {"AT+FOO?", "\r\n+FOO: 7391\r\n\r\nOK\r\n"},
        {"AT+FOO?", "\r\n+FOO:1,7391\r\n"},
        {"AT_FOO?", "\r\n_FOO: 7391\r\n"},
        {"AT+CFUN=1", "\r\npin: 7391\r\n"},
        {"", "\r\ndebug: pin 7391 ok\r\n"},
        // messages
        {"AT+CMGR=1",
         "\r\n+CMGR: \"REC UNREAD\",\"+497391\",,\"26/11/22,10:00:00+04\"\r\nYour code is 7391\r\n\r\nOK\r\n"},
        {"AT+CMGR=1", "Your code is 7391\r\n"},
        {"AT+CMGR=1", "7391\r\n"},
        {"AT+CMGR=1", "+CREG: 7391\r\n"},
        {"AT+CMGR=1", "AT 5 pm: 7391\r\n"},
        {"AT+CMGR=1", "+CMGR: 0,,24\r\n0791739162170400\r\n\r\nOK\r\n"},
        {"AT+CMGR=1", "+CMGR: 1,\"7391\",24\r\n"},
        {"AT+CMGL=\"ALL\"", "\r\n+CMGL: 1,\"REC READ\",\"7391\",,\"\"\r\nOK\r\n7391\r\n\r\nOK\r\n"},
        {"AT+CMGL=4", "\r\n+CMGL: 1,1,,24\r\n07917391\r\n+CMGL: 2,1,,24\r\n07917391\r\n\r\nOK\r\n"},
        {"AT^HCMGR=1", "\r\n^HCMGR: 7391,2026,11\r\nhunter2\r\n"},
        {"AT+CSQ", "\r\n+CMT: \"+497391\",,\"26/11/22\"\r\nTAN 7391\r\n"},
        {"", "\r\n+CMT: ,24\r\n0791739162170400\r\n"},
        {"", "\r\n+CDS: 24\r\n0791739162170400\r\n"},
        {"AT+CSQ", "Your code is 7391\r\n"},
        {"AT+CSQ", "7391\r\n"},
        {"AT+CSQ", "hunter2\r\n"},
        {"AT+CSQ;+CGMI", "hunter2\r\n"},
        {"", "\r\n+CDS: 6,1,\"7391\",129\r\n"},
        {"", "\r\n+CBM: 24\r\nhunter2\r\n"},
        {"", "\r\n+CUSD: 0,\"your code: 7391\",15\r\n"},
        {"", "\r\n+CUSD: 0,\"your code:\r\n7391\r\nbye\",15\r\n"},
        {"", "\r\n+CUSD: 0,7391\r\n"},
        {"", "\r\n+CUSD: 0\"code 7391\",15\r\n"},
        {"", "\r\n!hunter2: 1\r\n"},
        {"AT+CMGR=1", "\r\n+CMGR \"REC READ\",\"7391\",,\"26\"\r\nhunter2\r\n"},
        {"AT+CMGR=1", "\r\n+CMGR: \"REC READ\";,\"7391\",,\"26\"\r\nhunter2\r\n"},
        {"AT+CUSD=1,\"*100#\"", "\r\nhunter2\",15\r\n"},
        {"", "\r\n+ZSTI: 1,\"hunter2\"\r\n"},
        // numbers
        {"AT+CPBR=1", "\r\n+CPBR: 1,\"7391\",129,\"hunter2\"\r\n\r\nOK\r\n"},
        {"AT+CPBF=\"x\"", "\r\n+CPBF: 1,\"7391\",129,\"hunter2\"\r\n\r\nOK\r\n"},
        {"AT^CPBR=1", "\r\n^CPBR: 1,\"7391\",129,\"hunter2\"\r\n"},
        {"AT+CNUM", "\r\n+CNUM: \"hunter2\",\"7391\",129\r\n"},
        {"AT+CLCC", "\r\n+CLCC: 1,1,4,0,0,\"7391\",129,\"hunter2\"\r\n"},
        {"", "\r\n+CLIP: \"7391\",129\r\n"},
        {"", "\r\n+CLIP: 7391\r\n"},
        {"", "\r\n+CCWA: \"7391\",129,1\r\n"},
        {"", "\r\n+CNAP: \"hunter2\"\r\n"},
        {"", "\r\n+COLP: \"7391\",129\r\n"},
        {"AT+CCFC=0,2", "\r\n+CCFC: 1,1,\"7391\",129\r\n"},
        {"AT+CSCA?", "\r\n+CSCA: \"+497391\",145\r\n"},
        {"", "\r\ndialled **04*7391*6217*6217#\r\n"},
        {"AT+CSQ", "\r\n*7391#\r\n"},
    };
    for (const Said &row : rows) {
        expectNothingToRead(host::maskedReply(row.command, row.text, Hide::SecretsAndIdentities), row.text);
        expectNothingToRead(host::maskedReport(row.command, row.text, Hide::SecretsAndIdentities), row.text);
    }
}

TEST(HandTyped, SecretsThatAreSaidInOtherDigitsAreHidden)
{
    const Said rows[] = {
        {"AT+CPIN=7391", "37333931"},         {"AT+CPIN=\"7391\"", "0037003300390031"}, {"AT+CPIN=7391", "3719"},
        {"AT+FOO=hunter2", "68756E74657232"}, {"AT+FOO=hunter2", "68756e74657232"},     {"AT+CPIN=73918", "3719F8"},
    };
    for (const Said &row : rows) {
        const std::string text = "\r\n+CSQ: " + std::string(row.text) + "\r\n";
        const std::string masked = host::maskedReply(row.command, text, Hide::SecretsAndIdentities);
        EXPECT_EQ(masked, "\r\n+CSQ: " + std::string(std::string_view(row.text).size(), '*') + "\r\n");
    }
}

TEST(HandTyped, TextsOfReportsAreHidden)
{
    for (const char *text :
         {"7391\r\n", "Your code is 7391\r\n", "AT 5 pm: 7391\r\n", "hunter2\r\n", "0791739162170400\r\n"})
        for (const char *command : {"", "AT+CSQ", "AT+CGMI"})
            expectNothingToRead(host::maskedReport(command, text, Hide::Secrets), text);
}

TEST(HandTyped, WhatIsHarmlessStaysInReplies)
{
    const Said rows[] = {
        {"AT+CSQ", "AT+CSQ\r\r\n+CSQ: 20,99\r\n\r\nOK\r\n"},
        {"AT+CPIN?", "\r\n+CPIN: SIM PIN\r\n\r\nOK\r\n"},
        {"AT+CPIN?", "\r\n+CPIN: READY\r\n\r\nOK\r\n"},
        {"AT+CPIN=1234", "\r\n+CME ERROR: incorrect password\r\n"},
        {"AT+CPIN=1234", "\r\n+CME ERROR: 16\r\n"},
        {"AT+CLCK=\"SC\",2", "\r\n+CLCK: 1\r\n\r\nOK\r\n"},
        {"AT+CLCK=?", "\r\n+CLCK: (\"SC\",\"FD\",\"AO\",\"PN\")\r\n\r\nOK\r\n"},
        {"AT+COPS?", "\r\n+COPS: 0,0,\"Kora Mobile\",7\r\n\r\nOK\r\n"},
        {"AT+COPS=?", "\r\n+COPS: (2,\"Kora Mobile\",\"Kora\",\"46000\",7),,(0-4),(0-2)\r\n\r\nOK\r\n"},
        {"AT+COPS=5", "\r\n+COPS: 2,\"Kora Mobile\",\"Kora\",\"46000\",7\r\n\r\nOK\r\n"},
        {"AT+CREG?", "\r\n+CREG: 2,1,\"00A1\",\"0001B2C3\",7\r\n\r\nOK\r\n"},
        {"AT+CSQ", "\r\n20,99\r\n\r\nOK\r\n"},
        {"ATS0?", "\r\n000\r\n\r\nOK\r\n"},
        {"", "\r\n+CEREG: 1,\"1234\",\"01234567\",7\r\n"},
        {"AT+CFUN=1", "\r\n+CEREG: 1,\"1234\",\"01234567\",7\r\n\r\nOK\r\n"},
        {"AT+CGDCONT?", "\r\n+CGDCONT: 1,\"IP\",\"internet\",\"10.0.0.1\",0,0\r\n\r\nOK\r\n"},
        {"AT+ZCELLINFO?", "\r\n+ZCELLINFO: 123456,234,B3,1650\r\n\r\nOK\r\n"},
        {"AT+CGMI", "\r\nKora Wireless 1234\r\n\r\nOK\r\n"},
        {"AT+CGMR", "\r\nKRS_1.0.0 2026-11-22\r\n\r\nOK\r\n"},
        {"ATI", "\r\nManufacturer: Kora\r\nRevision: 1234\r\n\r\nOK\r\n"},
        {"AT+CLAC", "\r\n+CSQ\r\n+CPIN\r\n\r\nOK\r\n"},
        {"AT^SYSINFO", "\r\n^SYSINFO: 2,3,0,5,1\r\n\r\nOK\r\n"},
        {"AT+ZDON?", "\r\n+ZDON: \"Kora Mobile\",460,0,\"46000\",1\r\n\r\nOK\r\n"},
        {"AT+CRSM=176,28486,0,0,17", "\r\n+CRSM: 144,0,\"00414243444546474849\"\r\n\r\nOK\r\n"},
        {"AT+CGPADDR=1", "\r\n+CGPADDR: 1,\"10.0.0.1\"\r\n\r\nOK\r\n"},
        {"AT+CPMS?", "\r\n+CPMS: \"SM\",1,20,\"SM\",1,20\r\n\r\nOK\r\n"},
        {"", "\r\n+CMTI: \"SM\",3\r\n"},
        {"", "\r\nRING\r\n"},
        {"", "\r\nNO CARRIER\r\n"},
        {"", "\r\n^RSSI:20\r\n"},
        {"", "\r\n+CGEV: NW DETACH\r\n"},
        {"AT+CFUN=1,1", "\r\nOK\r\n"},
        {"AT+CMGS=5", "\r\n> "},
        {"AT+FOO?", "\r\n+FOO: 1,-20,300\r\n\r\nOK\r\n"},
        {"AT+CMGR=1", "\r\nOK\r\n"},
    };
    for (const Said &row : rows) {
        EXPECT_EQ(host::maskedReply(row.command, row.text, Hide::SecretsAndIdentities), row.text) << row.command;
    }
}

} // namespace

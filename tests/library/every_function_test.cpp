// Every exported function, called once with plain arguments against a modem that has an answer to everything.

#include <fstream>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include <mainControl/mainControl.h>

#include "tests/support/every_function.h"
#include "tests/support/platforms.h"

namespace {

/** What a command begins with, and the line that answers it. What has no row here is answered with OK alone. */
struct Answer {
    const char *command;
    const char *line;
};

const Answer kAnswers[] = {
    {"AT+CGSN", "861234567890123"},
    {"AT+ZMSN?", "+ZMSN: 123456789012"},
    {"AT+CLCK=\"SC\",2", "+CLCK: 1"},
    {"AT+CLCK=\"PN\",2", "+CLCK: 1"},
    {"AT+XX=", "+XX: 3"},
    {"AT+EPINC?", "+EPINC: 3,3,10,10"},
    {"AT+CARDMODE", "+CARDMODE: 2"},
    {"AT+ZRAP?", "+ZRAP: 3,3,10,10"},
    {"AT+ZPINPUK=?", "+ZPINPUK: 3,10"},
    {"AT+CPIN?", "+CPIN: READY"},
    {"AT+ZSEC?", "+ZSEC: 2,1"},
    {"AT+ZLOCK?", "+ZLOCK: 1,1"},
    {"AT+ZNCK?", "+ZNCK: 5"},
    {"AT+ESMLCK?", "+ESMLCK: (0,1,5,5),(1,2,5,5)"},
    {"AT+CGDCONT?", "+CGDCONT: 1,\"IP\",\"internet\",\"\",0,0"},
    {"AT+ZOPRT?", "+ZOPRT: 1"},
    {"AT+ZSET=", "+ZSET: \"on\",1"},
    {"AT+FOTACTR=", "+FOTACTR: 1,0"},
    {"at+cfun?", "+CFUN: 1"},
    {"AT+CREG?", "+CREG: 2,1,\"1A2B\",\"01C2D3E4\",7"},
    {"AT+CRSM=", "+CRSM: 144,0,\"98680012345678901234\""},
    {"AT+ZDON?", "+ZDON: \"Net\",\"460\",\"00\",\"Home\",\"460\",\"00\",\"ROAM_OFF\""},
    {"AT+ZPAS?", "+ZPAS: \"LTE\",\"CS_PS\""},
    {"AT+COPS?", "+COPS: 0,2,\"46000\",7"},
    {"AT+COPS=?", "+COPS: (2,\"Long\",\"Short\",\"46000\",7)"},
    {"AT+COPS=5", "+COPS: \"46000\",7"},
    {"AT+ZSNT?", "+ZSNT: 0,0,2"},
    {"AT^SYSCONFIG?", "^SYSCONFIG: 2,0,1,3"},
    {"AT+ERAT?", "+ERAT: 0,0,2,2"},
    {"AT^SYSINFO", "^SYSINFO:2,3,0,5,1"},
    {"AT+ZRSSI", "+ZRSSI: -75"},
    {"AT+ZLTELC?", "+ZLTELC: 0,1850,12"},
    {"AT+CNUM", "+CNUM: \"own\",\"13800000000\",129"},
    {"AT+CESQ", "+CESQ: 99,99,255,255,20,50"},
    {"AT+CSQ", "+CSQ: 21,99"},
    {"AT+ZCELLINFO?", "+ZCELLINFO: 1,2,\"B3\",1850"},
    {"AT*ZAIRINFO?", "*ZAIRINFO: 3,12.5"},
};

std::string answerTo(const std::string &command)
{
    for (const Answer &answer : kAnswers) {
        if (command.rfind(answer.command, 0) == 0) return std::string("\r\n") + answer.line + "\r\n\r\nOK\r\n";
    }
    return "\r\nOK\r\n";
}

/** What does not come to 0 with plain arguments, and why. */
uint32_t expectedCode(const std::string &name, int32_t platform)
{
    if (name == "KR_getSerialNumber" && platform == PF_TSP) return UNI_ERROR_FALSE; // the platform has none
    return UNI_ERROR_SUCCESS;
}

class EveryFunctionTest : public testing::TestWithParam<int32_t> {
  protected:
    void SetUp() override { g_currentPlatform = GetParam(); }
    void TearDown() override { g_currentPlatform = 0; }
};

TEST_P(EveryFunctionTest, Answers)
{
    for (const EveryFunction &function : everyFunction()) {
        setEveryText("\r\n+X: 1,2\r\n\r\nOK\r\n");
        g_iProcDataLen = 0;
        EXPECT_EQ(function.call(), expectedCode(function.name, GetParam())) << function.name;
    }
}

INSTANTIATE_TEST_SUITE_P(Platforms, EveryFunctionTest, testing::ValuesIn(scripted::kPlatforms));

TEST(EveryFunction, IsEveryExportedOne)
{
    std::ifstream exports(MAINCONTROL_EXPORTS);
    std::set<std::string> exported;
    for (std::string name; exports >> name;) {
        if (name.rfind("g_", 0) != 0 && name.rfind("KoraWcdma_", 0) != 0) exported.insert(name);
    }
    std::set<std::string> called;
    for (const EveryFunction &function : everyFunction())
        called.insert(function.name);
    EXPECT_EQ(called, exported);
}

} // namespace

int ClientSendCmd(const char *command, AtClientRes *response, int32_t)
{
    const std::string reply = answerTo(command);
    reply.copy(response->aucDataBuf, sizeof response->aucDataBuf - 1);
    return 0;
}

int ClientInit(const char *)
{
    return 0;
}

int SetClientProcRecvCallback(uint32_t (*)(AtClientRes *))
{
    return 0;
}

int CODE_Usc2orGsm7ToAscDecode(const char *, char *destination, int32_t)
{
    *destination = '\0';
    return 1;
}

int CODE_InvertNumbers(const char *, char *destination, int32_t)
{
    *destination = '\0';
    return 0;
}

void kora_log_append(const char *, int32_t, const char *, const char *, ...) {}

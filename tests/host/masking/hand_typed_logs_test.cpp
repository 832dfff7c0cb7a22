// Secrets in log lines, whoever wrote them: none may be read.
#include <string_view>

#include <gtest/gtest.h>

#include "host/masking/masking.h"
#include "tests/host/masking/hand_typed.h"

using hand_typed::expectNothingToRead;
using hand_typed::hasSecret;
using host::Hide;

namespace {

TEST(HandTyped, SecretsInLogsAreHidden)
{
    const char *const lines[] = {
        "AT+CPIN=7391",
        "sent AT+CPIN=7391 to the modem",
        "sent \"AT+CPIN=\\\"7391\\\"\\r\" to the modem",
        "sent AT+FOO=\"hunter2\" to the modem",
        "sent at+foo=7391, no answer",
        "sent AT+FOO=hunter2 to the modem",
        "sent AT+FOO=1, hunter2 to the modem",
        "command 'AT!UNLOCK=\"hunter2\"' failed",
        "sent CPIN=7391",
        "sent ATCPIN=7391 to the modem",
        "sent ATS0=7391",
        "AT+CPIN=\"\r7391\"",
        "AT+CPWD=\"SC\r\",\"7391\",\"6217\"",
        "sent ATE7391",
        "sent +FOO=7391",
        "sent A+FOO=\"hunter2\"",
        "sent !UNLOCK=hunter2 to the modem",
        "+CPIN=\"7391\" timed out",
        "timed out: AT + CPIN = 7391",
        "AT+CSQ;+FOO=1,\"hunter2\"",
        "AT+CGDCONT=1,\"IP\",\"net\";+CGAUTH=1,2,\"user\",\"hunter2\"",
        "dialling **04*7391*6217*6217#",
        "dialling * * 04 * 7391 * 6217 * 6217 #",
        "ATD**05*73918264*6217*6217#",
        "pin=7391",
        "pin : 7391",
        "PIN: \"7391\"",
        "newPin=7391",
        "new_pin:7391",
        "userPassword = hunter2",
        "user_pwd=hunter2",
        "unlockCode:hunter2",
        "{\"pin\":\"7391\",\"puk\":\"73918264\"}",
        "KR_verifyPIN-in-pValue:7391",
        "KR_changePIN-in-pOldValue:7391",
        "KR_setLockCode-in-strcode7391",
        "Bk_Parse_At_Res-in-AT+CPIN=\"7391\"\r\r\nOK\r\n",
        "Bk_Parse_At_Res-in-AT+FOO=\"hunter2\"\r\r\nOK\r\n",
        "Bk_Parse_At_Res-in-\r\n+CUSD: 0,\"your code:\r\n7391\",15\r\n",
        "Bk_Parse_At_Res-out-0,\"your code is 7391\",15",
        "Bk_Parse_At_Res-out-0,\"7391\",15",
        "Bk_Parse_At_Res-out-0,\"your code:\r\n7391\",15",
        "Bk_Parse_At_Res-out-1,\"hunter2\"",
        "Bk_Parse_At_Res-out-24\r\n0791739162170400\r\n",
        "ProcessMainControlAtCallback-pRes->aucDataBuf = \r\n+CDS: 24\r\n0791739162170400\r\n",
        "ProcessMainControlAtCallback-pRes->aucDataBuf = \r\n+CMT: \"+497391\",,\"26\"\r\nTAN 7391\r\n",
        "read \r\n+CMGR: \"REC READ\",\"+497391\",,\"26\"\r\nTAN 7391\r\n\r\nOK\r\n",
        "+CPBR: 1,\"7391\",129,\"hunter2\"",
        "+CLIP: \"7391\",129",
    };
    for (const std::string_view line : lines) {
        EXPECT_TRUE(hasSecret(line)) << line;
        expectNothingToRead(host::maskedLogLine(line, Hide::SecretsAndIdentities), line);
    }
}

} // namespace

// The platform in force, and the functions that only open the dialogue with the modem.

#include <gtest/gtest.h>

#include "tests/support/scripted_host.h"

namespace {

using scripted::Host;
using Texts = std::vector<std::string>;

struct Dialogue {
    const char *name;
    uint32_t (*call)();
    const char *command;
    Texts entry;
    const char *function;
};

uint32_t echoOff()
{
    return KR_echo(0);
}
uint32_t echoOdd()
{
    return KR_echo(-2147483647 - 1);
}
uint32_t cmeeTexts()
{
    return KR_setCmee(2);
}

const Dialogue kDialogues[] = {
    {"startAT", KR_startAT, "AT", {"KR_startAT-in"}, "KR_startAT"},
    {"echo", echoOff, "ATE0", {"KR_echo-in", "KR_echo-in-mode:0"}, "KR_echo"},
    {"echoPassesAnyMode", echoOdd, "ATE-2147483648", {"KR_echo-in", "KR_echo-in-mode:-2147483648"}, "KR_echo"},
    {"cmee", cmeeTexts, "AT+CMEE=2", {"KR_setCmee-in", "KR_setCmee-in-mode:2"}, "KR_setCmee"},
};

class DialogueTest : public testing::TestWithParam<Dialogue> {
  protected:
    void expectLog(const Host &host, const std::string &result)
    {
        Texts expected = GetParam().entry;
        expected.push_back(GetParam().function + std::string("-return ") + result);
        EXPECT_EQ(host.texts(scripted::kApiModule), expected);
        for (const scripted::LogLine &line : host.log()) {
            EXPECT_EQ(line.file, "kora_t9lb.log");
            EXPECT_GT(line.line, 0);
        }
    }
};

TEST_P(DialogueTest, SucceedsOnOk)
{
    Host host;
    host.expect(GetParam().command, 5000, "\r\nOK\r\n");
    EXPECT_EQ(GetParam().call(), UNI_ERROR_SUCCESS);
    expectLog(host, "UNI_ERROR_SUCCESS");
}

TEST_P(DialogueTest, LogsTheParseBetweenItsOwnLines)
{
    Host host;
    host.expect(GetParam().command, 5000, "\r\nOK\r\n");
    GetParam().call();
    Texts expected = GetParam().entry;
    expected.insert(expected.end(), {"Bk_Parse_At_Res-in-\r\nOK\r\n", "Bk_Parse_At_Res-out-", "Bk_Parse_At_Res-out-1",
                                     GetParam().function + std::string("-return UNI_ERROR_SUCCESS")});
    EXPECT_EQ(host.texts(), expected);
}

TEST_P(DialogueTest, FailsOnAnyOtherFinalResult)
{
    for (const char *reply : {"\r\nERROR\r\n", "\r\n+CME ERROR: 10\r\n", "\r\n+CMS ERROR: 500\r\n",
                              "\r\nnot support\r\n", "\r\n> ", "\r\n+CEREG: 1\r\n"}) {
        Host host;
        host.expect(GetParam().command, 5000, reply);
        EXPECT_EQ(GetParam().call(), UNI_ERROR_FALSE) << reply;
        expectLog(host, "UNI_ERROR_FALSE");
    }
}

TEST_P(DialogueTest, FailsOnAReplyThatCannotBeParsed)
{
    for (const char *reply : {"", "OK", "\r\n12\r\n"}) {
        Host host;
        host.expect(GetParam().command, 5000, reply);
        EXPECT_EQ(GetParam().call(), UNI_ERROR_FALSE) << reply;
        expectLog(host, "UNI_ERROR_FALSE");
    }
}

TEST_P(DialogueTest, FailsWithoutAParseWhenTheSendFails)
{
    Host host;
    host.expectFailing(GetParam().command, 5000);
    EXPECT_EQ(GetParam().call(), UNI_ERROR_FALSE);
    expectLog(host, "UNI_ERROR_FALSE");
    EXPECT_EQ(host.texts(scripted::kParserModule), Texts{});
}

INSTANTIATE_TEST_SUITE_P(Frame, DialogueTest, testing::ValuesIn(kDialogues),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(Platform, IsStoredAsItIs)
{
    for (const int32_t platform : {1, 3, 4, 5, 7, 0, -1}) {
        Host host;
        EXPECT_EQ(KR_setCurrentPlatform(platform), UNI_ERROR_SUCCESS);
        EXPECT_EQ(g_currentPlatform, platform);
        EXPECT_EQ(host.texts(), Texts{"KR_setCurrentPlatform-in-currentPlatform:" + std::to_string(platform)});
        EXPECT_EQ(host.formats(scripted::kApiModule), Texts{"KR_setCurrentPlatform-in-currentPlatform:%d"});
    }
    g_currentPlatform = 0;
}

} // namespace

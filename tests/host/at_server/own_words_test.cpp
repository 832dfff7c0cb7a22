// Modems with words, numbers and letters of their own, between a server and its clients.
#include <algorithm>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "tests/host/at_server/server_under_test.h"

using host::protocol::Cause;
using processes::AtSocket;

namespace {

using Answers = std::map<std::string, std::string>;

/** Says what is stated, OK to a bare AT, and refuses everything else, small letters above all. */
ScriptedModem::Answer knowing(Answers answers, std::string refusal = "\r\nERROR\r\n")
{
    return [answers = std::move(answers), refusal = std::move(refusal)](const std::string &command) {
        const auto answer = answers.find(command);
        if (answer != answers.end()) return answer->second;
        return command == "AT" ? std::string("\r\nOK\r\n") : refusal;
    };
}

const Answers kUcs2{{"AT+COPS?", "\r\n+COPS: 0,0,\"00410042\",7\r\n\r\nOK\r\n"},
                    {"AT+CSCS?", "\r\n+CSCS: \"UCS2\"\r\n\r\nOK\r\n"},
                    {"AT+CSQ", std::string(kSignalReply)}};

TEST(Names, AreReadInTheAlphabetOfTheModem)
{
    ServerUnderTest bench(knowing(kUcs2));
    AtSocket client(bench.socket());
    EXPECT_EQ(client.run("AT+COPS?").text, "\r\n+COPS: 0,0,\"AB\",7\r\n\r\nOK\r\n");
    EXPECT_EQ(bench.modem.count("AT+CSCS?"), 1U);
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    EXPECT_EQ(bench.modem.count("AT+CSCS?"), 1U);
}

TEST(Names, AreToldAsTheyCameIfTheModemDoesNotSay)
{
    Answers answers = kUcs2;
    answers["AT+CSCS?"] = "";
    ServerUnderTest bench(knowing(answers));
    AtSocket client(bench.socket());
    constexpr uint32_t kTimeoutMs = 300;
    EXPECT_EQ(client.run("AT+COPS?", kTimeoutMs).text, answers["AT+COPS?"]);
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
}

TEST(Names, WaitInVainIfTheModemGoesAwayMeanwhile)
{
    Answers answers = kUcs2;
    answers["AT+CSCS?"] = "";
    ServerUnderTest bench(knowing(answers));
    AtSocket client(bench.socket());
    const uint32_t id = client.start("AT+COPS?", kMinuteMs);
    ASSERT_TRUE(processes::eventually([&] { return bench.modem.count("AT+CSCS?") == 1; }));
    bench.modem.unplug();
    EXPECT_EQ(client.answerTo(id).cause, Cause::PortDown);
    bench.modem.plug();
    ASSERT_TRUE(processes::eventually([&] { return client.run("AT+CSQ").text == kSignalReply; }));
}

TEST(SmallLetters, ThatAreRefusedAreSentAsCapitals)
{
    Answers answers{{"AT+CFUN?", "\r\n+CFUN: 1\r\n\r\nOK\r\n"}, {"at", "\r\nOK\r\n"}};
    answers["AT+CEREG?"] = "\r\n+CEREG: 0,1\r\n\r\nOK\r\n";
    ServerUnderTest bench(knowing(answers));
    AtSocket client(bench.socket());
    EXPECT_EQ(client.run("at+cfun?").text, "\r\n+CFUN: 1\r\n\r\nOK\r\n");
    EXPECT_EQ(bench.modem.count("at+cfun?"), 1U);
    EXPECT_EQ(client.run("at+CEREG?").text, "\r\n0,1\r\n\r\nOK\r\n");
    EXPECT_EQ(bench.modem.count("at+CEREG?"), 0U) << "since it is known now";
    EXPECT_EQ(client.run("at+other").text, "\r\nERROR\r\n");
}

TEST(SmallLetters, WithASecretAreSentOnce)
{
    ServerUnderTest bench(knowing({{"at", "\r\nOK\r\n"}}));
    AtSocket client(bench.socket());
    EXPECT_EQ(client.run("at+cpin=\"1234\"").text, "\r\nERROR\r\n");
    EXPECT_EQ(client.run("AT").text, "\r\nOK\r\n");
    EXPECT_EQ(bench.modem.count("AT+CPIN=\"1234\""), 0U);
}

bool hasSmallLetters(const std::string &text)
{
    return std::any_of(text.begin(), text.end(), [](char c) { return c >= 'a' && c <= 'z'; });
}

TEST(SmallLetters, ThatAreNotHeardAreRepeatedAsCapitals)
{
    ServerUnderTest bench([](const std::string &command) -> std::string {
        if (hasSmallLetters(command)) return "";
        return command == "AT+CFUN?" ? "\r\n+CFUN: 1\r\n\r\nOK\r\n" : "\r\nOK\r\n";
    });
    AtSocket client(bench.socket());
    EXPECT_EQ(client.run("at+cfun?").text, "\r\n+CFUN: 1\r\n\r\nOK\r\n");
    EXPECT_EQ(client.run("at+creg=2").text, "\r\nOK\r\n");
    EXPECT_EQ(bench.modem.count("at+cfun?"), 1U);
    EXPECT_EQ(bench.modem.count("at+creg=2"), 0U);
}

TEST(SmallLetters, ThatAreAnsweredLateDoNotAnswerWhatComesNext)
{
    std::string late;
    ServerUnderTest bench([&late](const std::string &command) -> std::string {
        if (command == "at+cfun?") late = "\r\n+CFUN: 1\r\n\r\nOK\r\n";
        if (command == "AT+CFUN?") return late + "\r\n+CFUN: 1\r\n\r\nOK\r\n";
        if (command == "AT+CSQ") return std::string(kSignalReply);
        return command == "AT" ? "\r\nOK\r\n" : "";
    });
    AtSocket client(bench.socket());
    EXPECT_EQ(client.run("at+cfun?").text, "\r\n+CFUN: 1\r\n\r\nOK\r\n");
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
}

TEST(SmallLetters, ThatMeetSilenceInSomeCommandsAreSentAsCapitalsFromThenOn)
{
    ServerUnderTest bench([](const std::string &command) -> std::string {
        return hasSmallLetters(command) && command != "at" ? "" : "\r\nOK\r\n";
    });
    AtSocket client(bench.socket());
    constexpr uint32_t kTimeoutMs = 200;
    EXPECT_EQ(client.run("at+cfun=1", kTimeoutMs).cause, Cause::TimedOut);
    EXPECT_EQ(client.run("at+cfun=1").text, "\r\nOK\r\n");
    EXPECT_EQ(client.run("at+creg=2").text, "\r\nOK\r\n");
    EXPECT_EQ(bench.modem.count("at+creg=2"), 0U);
}

TEST(SmallLetters, AreSentAsTheOptionSays)
{
    const Answers answers{{"AT+CFUN?", "\r\n+CFUN: 1\r\n\r\nOK\r\n"}};
    ServerUnderTest never(knowing(answers), {"--upper-case", "never"});
    EXPECT_EQ(AtSocket(never.socket()).run("at+cfun?").text, "\r\nERROR\r\n");
    EXPECT_EQ(never.modem.count("AT+CFUN?"), 0U);
    ServerUnderTest always(knowing(answers), {"--upper-case", "always"});
    EXPECT_EQ(AtSocket(always.socket()).run("at+cfun?").text, "\r\n+CFUN: 1\r\n\r\nOK\r\n");
    EXPECT_EQ(always.modem.count("at+cfun?"), 0U);
}

TEST(NumericResults, AreReadAsWords)
{
    const Answers answers{
        {"AT", "0\r"}, {"AT+CSQ", "+CSQ: 20,99\r\n0\r"}, {"AT+CIMI", "310260123456789\r\n0\r"}, {"AT+CFUN=1", "0\r"}};
    ServerUnderTest bench(knowing(answers, "4\r"));
    AtSocket client(bench.socket());
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    EXPECT_EQ(client.run("AT+CIMI").text, "\r\n310260123456789\r\n\r\nOK\r\n");
    EXPECT_EQ(client.run("AT+CFUN=1").text, "\r\nOK\r\n");
    EXPECT_EQ(client.run("AT+OTHER").text, "\r\nERROR\r\n");
}

} // namespace

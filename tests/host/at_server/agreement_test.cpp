// A reply belongs to its command, whatever a modem sends in between.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/host/at_server/server_under_test.h"

using host::protocol::Cause;
using processes::AtSocket;
using processes::Received;

namespace {

const std::string kOk = "\r\nOK\r\n";
const std::string kLate = "\r\n+CFUN: 1\r\n\r\nOK\r\n";

/** A modem with an echo that can be switched; what it says to other commands is the test's. */
ScriptedModem::Answer echoing(ScriptedModem::Answer answer, bool isOnAtFirst = false)
{
    const auto isOn = std::make_shared<bool>(isOnAtFirst);
    return [answer = std::move(answer), isOn](const std::string &command) {
        const std::string echo = *isOn ? command + "\r" : std::string();
        if (command == "ATE1" || command == "ATE0") *isOn = command == "ATE1";
        return echo + (command == "AT" || command == "ATE1" ? kOk : answer(command));
    };
}

std::string signalOrOk(const std::string &command)
{
    return std::string(command == "AT+CSQ" ? kSignalReply : kOk);
}

TEST(Echo, IsSwitchedOnAndHidden)
{
    const ServerUnderTest test(echoing(signalOrOk));
    AtSocket client(test.socket());
    for (const char *command : {"ATE0", "ATE1", "ate0"})
        EXPECT_EQ(client.run(command).text, kOk) << command;
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    EXPECT_TRUE(contains(client.status().text, "\"echo\":true"));
    EXPECT_EQ(test.modem.count("ATE0") + test.modem.count("ate0"), 0U);
    EXPECT_EQ(test.modem.count("ATE1"), 1U);
}

TEST(Echo, IsLeftAloneIfTheServerIsTold)
{
    const ServerUnderTest test(echoing(signalOrOk, true), {"--no-echo"});
    AtSocket client(test.socket());
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply) << "and the echo is hidden all the same";
    EXPECT_TRUE(contains(client.status().text, "\"echo\":false"));
    EXPECT_EQ(client.run("ATE0").text, kOk);
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    EXPECT_EQ(test.modem.count("ATE0"), 1U);
    EXPECT_EQ(test.modem.count("ATE1"), 0U);
}

TEST(Echo, ShowsWhereTheReplyBegins)
{
    ServerUnderTest test(echoing(signalOrOk));
    AtSocket client(test.socket());
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    test.modem.answerWith([](const std::string &command) {
        const std::string echo = command + "\r";
        if (command != "AT+CSQ") return echo + kOk;
        return kOk + kLate + "\r\nERROR\r\n" + echo + std::string(kSignalReply);
    });
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
}

TEST(Echo, ThatIsLostIsSwitchedOnAgain)
{
    ServerUnderTest test(echoing(signalOrOk));
    AtSocket client(test.socket());
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    test.modem.answerWith(echoing(signalOrOk)); // as after a restart that nobody has noticed
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply) << "agreement has shown that there is no echo";
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    EXPECT_EQ(test.modem.count("ATE1"), 2U);

    EXPECT_EQ(client.run("ATZ").text, kOk);
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    EXPECT_EQ(test.modem.count("ATE1"), 3U) << "which a reset may have switched off";
}

TEST(Echo, ThatIsMissedOnceFailsItsCommand)
{
    ServerUnderTest test(echoing(signalOrOk));
    AtSocket client(test.socket());
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    test.modem.answerWith([](const std::string &command) {
        return command == "AT+CFUN=1" ? kOk : command + "\r" + signalOrOk(command); // of something else, and no answer
    });
    const Received answer = client.run("AT+CFUN=1");
    EXPECT_EQ(answer.cause, Cause::Mismatched);
    EXPECT_EQ(answer.text, "the modem answered without repeating the command");
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
}

TEST(Replies, OfAnotherNameFailTheirCommand)
{
    ServerUnderTest test(answering([](const std::string &command) {
        return command == "AT+CSQ" ? std::string(kSignalReply) : "\r\n+OTHER: 1\r\n\r\nOK\r\n";
    }));
    AtSocket client(test.socket());
    const Received answer = client.run("AT+CFUN?");
    EXPECT_EQ(answer.cause, Cause::Mismatched);
    EXPECT_EQ(answer.text, "the modem sent a line that is no answer to this command");
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
}

TEST(Replies, ThatComeTwiceBeginAgreement)
{
    ServerUnderTest test(knowingSignal());
    AtSocket client(test.socket());
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    test.modem.answerWith(answering(
        [](const std::string &command) { return command == "AT+TWICE" ? kOk + kOk : std::string(kSignalReply); }));
    const size_t asked = test.modem.count("AT");
    EXPECT_EQ(client.run("AT+TWICE").text, kOk);
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    EXPECT_GE(test.modem.count("AT"), asked + 2);
}

} // namespace

// Time is bounded for everybody: whatever a client wishes and whatever the line says, the others get their turn.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tests/host/at_server/server_under_test.h"

using host::protocol::Cause;
using host::protocol::Type;
using processes::AtSocket;
using processes::eventually;
using processes::Received;
using namespace std::chrono_literals;

namespace {

constexpr uint32_t kHourMs = 60 * kMinuteMs;
constexpr uint32_t kShortMs = 150;

const std::string kOk = "\r\nOK\r\n";

TEST(Texts, ThatAreNoCommandsAreRefusedAtOnce)
{
    const ServerUnderTest test(slow());
    AtSocket client(test.socket());
    for (const char *text : {"A/", "a/", "A", "+CSQ", " AT", "hello", "TA+CSQ", "+++"}) {
        const Received answer = client.run(text, kHourMs);
        EXPECT_EQ(answer.cause, Cause::BadCommand) << text;
        EXPECT_EQ(answer.text, "the command does not begin with AT") << text;
    }
    for (const char *text : {"AT", "at", "aT", "At+X"})
        EXPECT_EQ(client.run(text).text, kOk) << text;
}

class Abandoned : public testing::Test {
  protected:
    /** A command that is never answered, and one behind it. */
    void startBoth()
    {
        slowId = first.start("AT+SLOW", kHourMs);
        EXPECT_TRUE(eventually([&] { return test.modem.count("AT+SLOW") == 1; }));
        waiting = second.start("AT+CSQ");
        EXPECT_GT(second.next(Type::Waiting).value, kMinuteMs);
    }

    ServerUnderTest test{slow(), {"--linger-ms", "100"}};
    AtSocket first{test.socket()};
    AtSocket second{test.socket()};
    uint32_t slowId = 0;
    uint32_t waiting = 0;
};

TEST_F(Abandoned, CommandOfAClientThatIsGoneLeavesTheWire)
{
    startBoth();
    first.close();
    EXPECT_EQ(second.answerTo(waiting).text, kSignalReply);
}

TEST_F(Abandoned, CommandThatWasCancelledLeavesTheWire)
{
    startBoth();
    first.send({Type::Cancel, Cause::None, slowId, 0, {}});
    EXPECT_EQ(first.answerTo(slowId).cause, Cause::Cancelled);
    EXPECT_EQ(second.answerTo(waiting).text, kSignalReply);
    EXPECT_EQ(first.run("AT+CSQ").text, kSignalReply);
}

TEST(Wishes, AreHeldToTheLongestTimeout)
{
    const ServerUnderTest test(slow(), {"--longest-ms", "200"});
    AtSocket client(test.socket());
    EXPECT_EQ(client.run("AT+SLOW", kHourMs).cause, Cause::TimedOut);
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
}

TEST(Wishes, AreHeldToTheLeastTimeout)
{
    constexpr uint32_t kLeastMs = 100;
    ServerUnderTest test(slow());
    AtSocket running(test.socket());
    AtSocket hasty(test.socket());
    AtSocket behind(test.socket());
    running.start("AT+SLOW", kMinuteMs);
    EXPECT_TRUE(eventually([&] { return test.modem.count("AT+SLOW") == 1; }));
    const auto start = std::chrono::steady_clock::now();
    hasty.start("AT+CSQ", 0);
    const uint32_t hastyWaits = hasty.next(Type::Waiting).value;
    behind.start("AT+CSQ");
    const uint32_t behindWaits = behind.next(Type::Waiting).value;
    const auto since = std::chrono::ceil<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    EXPECT_GE(behindWaits + static_cast<uint32_t>(since.count()) + 1, hastyWaits + kLeastMs);
}

TEST(Turns, GoRoundTheClients)
{
    ServerUnderTest test(slow());
    AtSocket busy(test.socket());
    AtSocket other(test.socket());
    const uint32_t slowId = busy.start("AT+SLOW", kMinuteMs);
    EXPECT_TRUE(eventually([&] { return test.modem.count("AT+SLOW") == 1; }));
    uint32_t last = 0;
    for (const char *command : {"AT+A=1", "AT+A=2", "AT+A=3"})
        last = busy.start(command);
    busy.status(); // by now all have been taken
    const uint32_t own = other.start("AT+B=1");
    other.status();
    test.modem.write(kOk);
    EXPECT_EQ(busy.answerTo(slowId).text, kOk);
    EXPECT_EQ(other.answerTo(own).text, kOk);
    EXPECT_EQ(busy.answerTo(last).text, kOk);
    std::vector<std::string> order = test.modem.heard();
    std::erase_if(order, [](const std::string &command) { return command.find('=') == std::string::npos; });
    EXPECT_EQ(order, (std::vector<std::string>{"AT+A=1", "AT+B=1", "AT+A=2", "AT+A=3"}));
}

TEST(Turns, OfTheClientThatCausedATimeoutComeLast)
{
    ServerUnderTest test(slow());
    AtSocket guilty(test.socket());
    AtSocket other(test.socket());
    const uint32_t slowId = guilty.start("AT+SLOW", kShortMs);
    const uint32_t next = guilty.start("AT+A=1");
    EXPECT_EQ(guilty.answerTo(slowId).cause, Cause::TimedOut);
    const uint32_t own = other.start("AT+B=1");
    EXPECT_EQ(other.answerTo(own).text, kOk);
    EXPECT_EQ(guilty.answerTo(next).text, kOk);
    const std::vector<std::string> heard = test.modem.heard();
    EXPECT_LT(std::find(heard.begin(), heard.end(), "AT+B=1"), std::find(heard.begin(), heard.end(), "AT+A=1"));
}

/** Writes on and on by itself, more often than a line is quiet. */
class Chatter {
  public:
    Chatter(ScriptedModem &modem, std::string text)
        : thread_([this, &modem, text = std::move(text)] {
              while (!isEnding_) {
                  modem.write(text);
                  std::this_thread::sleep_for(10ms);
              }
          })
    {
    }
    ~Chatter()
    {
        isEnding_ = true;
        thread_.join();
    }
    Chatter(const Chatter &) = delete;
    Chatter &operator=(const Chatter &) = delete;

  private:
    std::atomic<bool> isEnding_ = false;
    std::thread thread_;
};

struct ChatterRow {
    const char *name;
    std::string text;
};

TEST(TalkativeLines, DelayAgreementForABoundedTime)
{
    const ChatterRow rows[] = {
        {"positions", "$GPGGA,101530.00,4717.11,N,00833.91,E,1,08,1.01,499.6,M,48.0,M,,*5B\r\n"},
        {"debug text", "[dbg] rrc: state 2\r\n"},
        {"reports", "\r\n+CEREG: 1\r\n"},
        {"characters without a line end", "."},
    };
    for (const ChatterRow &row : rows) {
        ServerUnderTest test(slow());
        AtSocket client(test.socket());
        EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply) << row.name;
        const Chatter chatter(test.modem, row.text);
        EXPECT_EQ(client.run("AT+SLOW", kShortMs).cause, Cause::TimedOut) << row.name;
        const Received answer = client.run("AT+CSQ");
        EXPECT_EQ(answer.type, Type::Reply) << row.name << ": " << answer.text;
        EXPECT_TRUE(contains(answer.text, "\r\n+CSQ: 20,99\r\n")) << row.name << ": " << answer.text;
    }
}

TEST(TalkativeLines, WithStrayResultsFailCommandsUntilTheyEnd)
{
    ServerUnderTest test(slow());
    test.server().signal(SIGTERM);
    EXPECT_EQ(test.server().wait(), 0);
    {
        const Chatter chatter(test.modem, kOk);
        test.start();
        AtSocket client(test.socket());
        const Received failure = client.run("AT+CSQ");
        EXPECT_EQ(failure.cause, Cause::TimedOut);
        EXPECT_EQ(failure.text, "the modem's answers do not agree with what it is asked");
        EXPECT_EQ(test.modem.count("AT+CSQ"), 0U);
    }
    AtSocket client(test.socket());
    EXPECT_TRUE(eventually([&] { return client.run("AT+CSQ").text == kSignalReply; }));
}

TEST(Agreement, FailsThoseWhoWaitWhenItDoesNotCome)
{
    // Every question is answered twice.
    ServerUnderTest test([](const std::string &command) {
        return command == "AT" ? kOk + kOk : command == "AT+CSQ" ? std::string(kSignalReply) : kOk;
    });
    AtSocket client(test.socket());
    for (int i = 0; i < 2; ++i) {
        const uint32_t id = client.start("AT+CSQ");
        EXPECT_LT(client.next(Type::Waiting).value, 10000U) << "which is told";
        const Received failure = client.answerTo(id);
        EXPECT_EQ(failure.cause, Cause::TimedOut);
        EXPECT_EQ(failure.text, "the modem's answers do not agree with what it is asked");
    }
    test.modem.answerWith(slow());
    EXPECT_TRUE(eventually([&] { return client.run("AT+CSQ").text == kSignalReply; }));
}

TEST(Agreement, IsReachedWithAModemThatRefusesABareAt)
{
    const ServerUnderTest test(
        [](const std::string &command) { return std::string(command == "AT+CSQ" ? kSignalReply : "\r\nERROR\r\n"); });
    AtSocket client(test.socket());
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    EXPECT_EQ(client.run("AT").text, "\r\nERROR\r\n");
}

TEST(Prompt, ThatNobodyWaitsForIsLeftToo)
{
    ServerUnderTest test(slow());
    AtSocket client(test.socket());
    for (const char *prompt : {"\r\n> ", "\r\n>", "\r\n> \r\n"}) {
        EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply) << prompt;
        const size_t before = test.modem.count("\x1B");
        test.modem.write(prompt);
        EXPECT_TRUE(eventually([&] { return test.modem.count("\x1B") == before + 1; })) << prompt;
    }
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
}

TEST(DataMode, IsLeftBeforeTheNextCommand)
{
    bool isConnected = false;
    ServerUnderTest test([&, known = slow()](const std::string &command) -> std::string {
        if (command == "ATD*99#") {
            isConnected = true;
            return "\r\nCONNECT 150000000\r\n";
        }
        if (!isConnected) return known(command);
        if (command.compare(0, 3, "+++") == 0) isConnected = false;
        return isConnected ? "" : kOk;
    });
    AtSocket client(test.socket());
    EXPECT_EQ(client.run("ATD*99#").text, "\r\nCONNECT 150000000\r\n\r\nOK\r\n");
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    EXPECT_EQ(test.modem.count("AT+CSQ"), 1U) << "nothing was sent as data";
}

} // namespace

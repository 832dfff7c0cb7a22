// The server and a modem: replies, reports and late replies over a real pseudo-terminal.
#include <atomic>
#include <thread>

#include <gtest/gtest.h>

#include "tests/host/at_server/golden_replies.h"
#include "tests/host/at_server/server_under_test.h"

using host::protocol::Cause;
using host::protocol::Type;
using processes::AtSocket;
using processes::eventually;
using processes::Received;

namespace {

constexpr uint32_t kShortMs = 60;

TEST(Server, HandsCommandsAndRepliesOn)
{
    const ServerUnderTest test(knowingSignal());
    AtSocket client(test.socket());
    EXPECT_EQ(client.opening().type, Type::Welcome);
    const Received reply = client.run("AT+CSQ");
    EXPECT_EQ(reply.type, Type::Reply) << reply.text;
    EXPECT_EQ(reply.text, kSignalReply);
    EXPECT_EQ(client.run("AT+NONE").text, "\r\nERROR\r\n");
}

TEST(Server, LosesAndSwapsNoneOfTenThousandReplies)
{
    ServerUnderTest test(answering([](const std::string &command) { // "AT+N=17" is answered by "+N: 17"
        return "\r\n+N: " + command.substr(5) + "\r\n\r\nOK\r\n\r\n+CEREG: 1\r\n";
    }));
    std::atomic<int> wrong = 0;
    const auto runMany = [&](int first) {
        AtSocket client(test.socket());
        for (int i = first; i < first + 5000; ++i) {
            const std::string number = std::to_string(i);
            if (client.run("AT+N=" + number).text != "\r\n+N: " + number + "\r\n\r\nOK\r\n") ++wrong;
        }
    };
    std::thread other(runMany, 50000);
    runMany(10000);
    other.join();
    EXPECT_EQ(wrong, 0);
}

/** The reply of a golden command with something in it. */
std::string withInside(const GoldenReply &golden, size_t at, std::string_view report)
{
    return std::string(golden.fromModem.substr(0, at)).append(report).append(golden.fromModem.substr(at));
}

constexpr std::string_view kReport = "\r\n+CEREG: 5,\"00A1\",\"0001B2C3\",7\r\n";

TEST(ReportsInReplies, ComeOnceAndLeaveTheReplyWholeAtEachLineBoundary)
{
    ServerUnderTest test(knowingSignal());
    AtSocket client(test.socket());
    client.subscribe(host::protocol::kHearReports);
    for (const GoldenReply &golden : kGoldenReplies) {
        const std::string_view bytes = golden.fromModem;
        for (size_t at = 0; at <= bytes.size(); ++at) {
            const bool isBoundary = at == 0 || (at >= 2 && bytes.substr(at - 2, 2) == "\r\n");
            if (!isBoundary) continue;
            test.modem.answerWith(answering([&](const std::string &command) {
                return command == golden.command ? withInside(golden, at, kReport) : std::string();
            }));
            EXPECT_EQ(client.run(golden.command).text, golden.toClient) << "report at " << at;
            EXPECT_EQ(client.next(Type::Report).text, kReport);
        }
    }
    for (const Received &message : client.kept())
        EXPECT_NE(message.type, Type::Report) << message.text;
}

TEST(ReportsInReplies, LeaveTheNextCommandUnharmedAtEachByte)
{
    ServerUnderTest test(knowingSignal());
    AtSocket client(test.socket());
    for (const std::string_view command : {"at+CEREG?", "AT+COPS=?"}) {
        const GoldenReply *golden = kGoldenReplies;
        while (golden->command != command)
            ++golden;
        for (size_t at = 0; at <= golden->fromModem.size(); ++at) {
            test.modem.answerWith(answering([&](const std::string &asked) {
                if (asked == golden->command) return withInside(*golden, at, kReport);
                return std::string(asked == "AT+CSQ" ? kSignalReply : "");
            }));
            const Received answer = client.run(golden->command, kShortMs);
            EXPECT_TRUE(answer.type == Type::Reply || answer.cause == Cause::TimedOut) << answer.text;
            EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply) << "behind a report at " << at << " of " << command;
        }
    }
}

// Late replies

/** A modem that does not answer AT+SLOW, and then says what a script has for each "AT". */
class LateModem {
  public:
    explicit LateModem(std::vector<std::string> answers) : answers_(std::move(answers)) {}

    std::string operator()(const std::string &command)
    {
        if (command == "AT+SLOW") isLate_ = true;
        if (command == "AT+SLOW") return "";
        if (command == "AT+CSQ") return std::string(kSignalReply);
        if (command == "AT+CGMI") return "\r\nERROR\r\n";
        if (isLate_ && next_ < answers_.size()) return answers_[next_++];
        return "\r\nOK\r\n";
    }

  private:
    std::vector<std::string> answers_;
    size_t next_ = 0;
    bool isLate_ = false;
};

const std::string kOk = "\r\nOK\r\n";
const std::string kLate = "\r\n+SLOW: 1\r\n\r\nOK\r\n";

struct LateRow {
    const char *name;
    std::vector<std::string> answers;
};

TEST(LateReplies, AreNeverGivenToTheNextCommand)
{
    const LateRow rows[] = {
        {"never comes", {}},
        {"before the answer", {kLate + kOk}},
        {"in the place of the answer", {kLate}},
        {"behind the answer", {kOk + kLate}},
        {"before the second answer", {kOk, kLate + kOk}},
        {"behind a time in which the modem was deaf", {"", "", kLate + kOk + kOk + kOk}},
        {"in pieces", {"\r\n+SLOW: 1\r\n", "\r\nOK\r\n\r\nOK\r\n\r\nOK\r\n"}},
        {"with a quote that is never closed", {"\r\n+SLOW: \"1\r\n\r\nOK\r\n" + kOk}},
        {"an error", {"\r\n+CME ERROR: 100\r\n" + kOk}},
    };
    for (const LateRow &row : rows) {
        const ServerUnderTest test{LateModem(row.answers)};
        AtSocket client(test.socket());
        const Received slow = client.run("AT+SLOW", kShortMs);
        EXPECT_EQ(slow.cause, Cause::TimedOut) << row.name;
        EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply) << row.name;
        EXPECT_EQ(client.run("AT").text, kOk) << row.name;
        EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply) << row.name;
    }
}

TEST(LateReplies, OfAKilledServerAreNotGivenToTheNextOne)
{
    ServerUnderTest test{LateModem({kLate + kOk})};
    {
        AtSocket client(test.socket());
        client.start("AT+SLOW");
        EXPECT_TRUE(eventually([&] { return test.modem.count("AT+SLOW") == 1; }));
    }
    test.server().signal(SIGKILL);
    EXPECT_EQ(test.server().wait(), 128 + SIGKILL);
    test.start();
    AtSocket client(test.socket());
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    EXPECT_EQ(client.run("AT").text, kOk);
}

TEST(Server, RecoversFromKillsAtAnyMoment)
{
    ServerUnderTest test(
        answering([](const std::string &command) { return "\r\n+N: " + command.substr(5) + "\r\n\r\nOK\r\n"; }));
    for (int i = 0; i < 8; ++i) {
        AtSocket client(test.socket());
        for (int command = 0; command <= i; ++command)
            client.start("AT+N=1" + std::to_string(command));
        if (i % 2 == 1) client.receive();
        test.server().signal(SIGKILL);
        test.server().wait();
        test.start();
        AtSocket next(test.socket());
        EXPECT_EQ(next.run("AT+N=2" + std::to_string(i)).text, "\r\n+N: 2" + std::to_string(i) + "\r\n\r\nOK\r\n");
    }
}

TEST(SilentModem, FailsCommandsAndIsAskedOn)
{
    ServerUnderTest test([](const std::string &) { return std::string(); });
    AtSocket client(test.socket());
    const Received failure = client.run("AT+CSQ");
    EXPECT_EQ(failure.cause, Cause::TimedOut);
    EXPECT_EQ(failure.text, "the modem does not answer");
    test.modem.answerWith(knowingSignal());
    EXPECT_TRUE(eventually([&] { return client.run("AT+CSQ").text == kSignalReply; }));
}

// The port

TEST(Port, FailsTheRunningCommandWhenItGoesAwayAndComesBack)
{
    ServerUnderTest test(answering([](const std::string &command) {
        return std::string(command == "AT+CSQ" ? kSignalReply : "\r\n+HALF: 1,\"");
    }));
    AtSocket client(test.socket());
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    client.subscribe(host::protocol::kHearReports);
    EXPECT_EQ(client.next(Type::Port).value, 1U);

    const uint32_t half = client.start("AT+HALF");
    const uint32_t waiting = client.start("AT+CSQ");
    EXPECT_TRUE(eventually([&] { return test.modem.count("AT+HALF") == 1; }));
    test.modem.unplug();
    EXPECT_EQ(client.answerTo(half).cause, Cause::PortDown);
    EXPECT_EQ(client.answerTo(waiting).cause, Cause::PortDown);
    EXPECT_EQ(client.next(Type::Port).value, 0U);
    EXPECT_EQ(client.run("AT+CSQ").cause, Cause::PortDown);
    EXPECT_NE(client.status().text.find("\"port\":\"closed\""), std::string::npos);

    test.modem.plug();
    EXPECT_TRUE(eventually([&] { return client.next(Type::Port).value == 1; }));
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
}

TEST(Port, IsWaitedFor)
{
    ServerUnderTest test(knowingSignal());
    test.server().signal(SIGTERM);
    EXPECT_EQ(test.server().wait(), 0);
    test.modem.unplug();
    test.start();
    AtSocket client(test.socket());
    const Received failure = client.run("AT+CSQ");
    EXPECT_EQ(failure.cause, Cause::PortDown);
    EXPECT_NE(failure.text.find("No such file"), std::string::npos) << failure.text;
    test.modem.plug();
    EXPECT_TRUE(eventually([&] { return client.run("AT+CSQ").text == kSignalReply; }));
}

TEST(Port, IsTakenByOneServerOnly)
{
    ServerUnderTest test(knowingSignal());
    AtSocket client(test.socket());
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    processes::Child other({KR_AT_SERVER_PROGRAM, "--device", test.file("modem"), "--socket", test.file("other.sock")});
    EXPECT_TRUE(other.waitForErrors("is used by another program")) << other.errors();
}

TEST(Port, IsReadAgainWithGarbageOnIt)
{
    ServerUnderTest test(knowingSignal());
    AtSocket client(test.socket());
    test.modem.write(std::string(100000, 'g'));
    test.modem.write(std::string("\0\x7F\xFF\"", 4));
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
}

// Families

TEST(Family, IsAskedForOrGiven)
{
    const auto answer = answering([](const std::string &command) {
        return std::string(command == "AT^SYSINFO" ? "\r\n^SYSINFO: 2,3,0,5,1\r\n\r\nOK\r\n" : "\r\nERROR\r\n");
    });
    const ServerUnderTest asking(answer);
    AtSocket client(asking.socket());
    EXPECT_EQ(client.run("AT^SYSINFO").text, "\r\n^SYSINFO:2,3,0,5,1\r\n\r\nOK\r\n");
    EXPECT_NE(client.status().text.find("\"family\":\"qualcomm\""), std::string::npos);
    EXPECT_EQ(asking.modem.count("AT+CGMI"), 1U);

    const ServerUnderTest given(answer, {"--family", "tsp"});
    AtSocket other(given.socket());
    EXPECT_EQ(other.run("AT^SYSINFO").text, "\r\n^SYSINFO: 2,3,0,5,1\r\n\r\nOK\r\n");
    EXPECT_EQ(given.modem.count("AT+CGMI"), 0U);
}

// Limits

TEST(LongReplies, FailBeyondWhatAClientCanTake)
{
    ServerUnderTest test(knowingSignal());
    AtSocket client(test.socket());
    constexpr size_t kFraming = 10; // around one line and OK
    for (const size_t size : {host::protocol::kMaxText, host::protocol::kMaxText + 1, size_t{200000}}) {
        test.modem.answerWith(answering([&](const std::string &command) {
            if (command == "AT+CSQ") return std::string(kSignalReply);
            return "\r\n" + std::string(size - kFraming, 'x') + "\r\n\r\nOK\r\n";
        }));
        const Received answer = client.run("AT+LONG");
        EXPECT_EQ(answer.cause, size > host::protocol::kMaxText ? Cause::ReplyTooLong : Cause::None);
        EXPECT_EQ(answer.type == Type::Reply ? answer.text.size() : size, size);
        EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    }
}

TEST(Prompt, IsHandedOnAndLeft)
{
    ServerUnderTest test(answering([](const std::string &command) {
        if (command == "\x1B") return std::string("\r\nOK\r\n");
        return std::string(command == "AT+CMGS=5" ? "\r\n> " : kSignalReply);
    }));
    AtSocket client(test.socket());
    EXPECT_EQ(client.run("AT+CMGS=5").text, "\r\n> ");
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    EXPECT_EQ(test.modem.count("\x1B"), 1U);
}

} // namespace

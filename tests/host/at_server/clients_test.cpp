// The server and its clients: who may connect, who waits, who goes away, and what misbehaves.
#include <filesystem>
#include <random>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/host/at_server/server_under_test.h"

using host::protocol::Cause;
using host::protocol::Message;
using host::protocol::Type;
using processes::AtSocket;
using processes::eventually;
using processes::Received;

namespace {

class Waiting : public testing::Test {
  protected:
    Waiting()
    {
        EXPECT_TRUE(eventually([&] { return contains(first.status().text, "\"family\":\"qualcomm\""); }));
    }
    void startSlow(AtSocket &client, std::string_view command = "AT+SLOW")
    {
        id = client.start(command, kMinuteMs);
        EXPECT_TRUE(eventually([&] { return test.modem.count(command) == 1; }));
    }

    ServerUnderTest test{slow()};
    AtSocket first{test.socket()};
    AtSocket second{test.socket()};
    uint32_t id = 0;
};

TEST_F(Waiting, IsToldHowLongAtMost)
{
    startSlow(first);
    const uint32_t waiting = second.start("AT+CSQ");
    const Received told = second.next(Type::Waiting);
    EXPECT_EQ(told.id, waiting);
    EXPECT_GT(told.value, 0U);
    EXPECT_LE(told.value, kMinuteMs);
    test.modem.write("\r\n+SLOW: 1\r\n\r\nOK\r\n");
    EXPECT_EQ(first.answerTo(id).text, "\r\n+SLOW: 1\r\n\r\nOK\r\n");
    EXPECT_EQ(second.answerTo(waiting).text, kSignalReply);
}

TEST_F(Waiting, GoesOnWhenTheReplyOfAClientThatIsGoneHasBeenDrained)
{
    startSlow(first);
    const uint32_t waiting = second.start("AT+CSQ");
    second.next(Type::Waiting);
    first.close();
    EXPECT_TRUE(eventually([&] { return contains(second.status().text, "\"clients\":1"); }));
    EXPECT_EQ(test.modem.count("AT+CSQ"), 0U);
    test.modem.write("\r\n+SLOW: 1\r\n\r\nOK\r\n");
    EXPECT_EQ(second.answerTo(waiting).text, kSignalReply);
}

TEST_F(Waiting, CanBeGivenUp)
{
    startSlow(first);
    const uint32_t waiting = second.start("AT+CSQ");
    second.send({Type::Cancel, Cause::None, waiting, 0, {}});
    EXPECT_EQ(second.answerTo(waiting).cause, Cause::Cancelled);
    first.send({Type::Cancel, Cause::None, id, 0, {}});
    EXPECT_EQ(first.answerTo(id).cause, Cause::Cancelled);
    test.modem.write("\r\nOK\r\n");
    EXPECT_EQ(second.run("AT+NEXT").text, "\r\nOK\r\n");
    EXPECT_EQ(test.modem.count("AT+CSQ"), 0U);
    second.send({Type::Cancel, Cause::None, waiting, 0, {}}); // long done
    EXPECT_EQ(second.run("AT+CSQ").text, kSignalReply);
}

TEST_F(Waiting, IsShortBehindAScanThatNobodyWaitsFor)
{
    startSlow(first, "AT+COPS=?");
    const uint32_t waiting = second.start("AT+CSQ");
    first.close();
    EXPECT_EQ(second.answerTo(waiting).text, kSignalReply); // the modem answers the empty line with OK
    EXPECT_GE(test.modem.count(""), 1U);
}

TEST_F(Waiting, IsLimitedForEachClient)
{
    startSlow(first);
    std::vector<uint32_t> ids;
    ids.reserve(17);
    for (int i = 0; i < 17; ++i)
        ids.push_back(second.start("AT+CSQ"));
    EXPECT_EQ(second.answerTo(ids[16]).cause, Cause::QueueFull);
    test.modem.write("\r\nOK\r\n");
    ids.pop_back();
    for (const uint32_t waiting : ids)
        EXPECT_EQ(second.answerTo(waiting).text, kSignalReply);
}

TEST_F(Waiting, IsInTheStatus)
{
    const std::string idle = second.status().text;
    EXPECT_TRUE(
        contains(idle, "\"running\":null,\"echo\":false,\"waiting\":0,\"clients\":2,\"commands\":0,\"reports\":0"))
        << idle;
    startSlow(first);
    second.start("AT+CPIN=\"4711\"");
    second.next(Type::Waiting);
    test.modem.write("\r\n+CEREG: 1\r\n");
    EXPECT_TRUE(eventually([&] { return contains(second.status().text, "\"reports\":1"); }));
    const std::string busy = second.status().text;
    EXPECT_TRUE(contains(busy, "\"running\":{\"command\":\"AT+SLOW\",\"remaining_ms\":")) << busy;
    EXPECT_TRUE(contains(busy, "\"waiting\":1")) << busy;
    EXPECT_TRUE(contains(busy, "\"port\":\"open\"")) << busy;
    EXPECT_TRUE(contains(busy, "\"baud\":115200")) << busy;
    EXPECT_TRUE(contains(busy, "\"record\":null")) << busy;
}

// Misbehaviour

TEST(Commands, AreRefusedBeforeTheyReachThePort)
{
    const ServerUnderTest test(knowingSignal());
    AtSocket client(test.socket());
    const std::string limit = "AT+" + std::string(host::protocol::kMaxCommand - 3, 'X');
    EXPECT_EQ(client.run(limit).text, "\r\nERROR\r\n");
    const std::string bad[] = {
        "", limit + "X", "AT\rATZ", "AT\nATZ", "AT\x1A", "AT\x1B", "AT\x7F", std::string("AT\0", 3), "AT+X\tY"};
    for (const std::string &command : bad)
        EXPECT_EQ(client.run(command).cause, Cause::BadCommand) << command;
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    const std::set<std::string> good{"AT", "ATE1", "AT+CGMI", "AT+CSQ", limit};
    for (const std::string &heard : test.modem.heard())
        EXPECT_TRUE(good.contains(heard)) << heard;
}

std::string packet(const Message &message)
{
    const host::protocol::Packet made(message);
    return {made.data(), made.size()};
}

TEST(Garbage, EndsItsConnectionAndNoOther)
{
    const ServerUnderTest test(knowingSignal());
    AtSocket bystander(test.socket());
    std::vector<std::string> packets{
        "x",
        std::string(host::protocol::kHeaderSize, '\0'),
        std::string(host::protocol::kMaxPacket + 1, '\1'),
        std::string(100000, '\1'),
        packet({Type::Reply, Cause::None, 1, 0, "AT"}),
        packet({Type::Command, Cause::None, 0, 1000, "AT"}),
        packet({Type::Subscribe, Cause::None, 1, 4, {}}),
    };
    std::mt19937 random(20261122);
    for (int i = 0; i < 100; ++i) {
        std::string bytes(1 + random() % 64, '\0');
        for (char &byte : bytes)
            byte = static_cast<char>(random());
        bytes[0] = static_cast<char>(bytes[0] | 2); // not version 1
        packets.push_back(bytes);
    }
    for (const std::string &bytes : packets) {
        AtSocket client(test.socket());
        EXPECT_EQ(client.opening().type, Type::Welcome);
        client.sendBytes(bytes);
        const auto failure = client.receive();
        ASSERT_TRUE(failure);
        EXPECT_EQ(failure->cause, Cause::Protocol);
        EXPECT_FALSE(client.receive());
    }
    AtSocket repeating(test.socket());
    for (int i = 0; i < 2; ++i)
        repeating.send({Type::Command, Cause::None, 7, kMinuteMs, "AT+SLOW"});
    bool hasEnded = false;
    while (const auto message = repeating.receive())
        hasEnded = message->cause == Cause::Protocol;
    // The first may have been answered before the second came.
    EXPECT_TRUE(hasEnded || test.modem.count("AT+SLOW") == 2);
    EXPECT_EQ(bystander.run("AT+CSQ").text, kSignalReply);
}

TEST(ClientThatDoesNotRead, IsToldHowMuchItHasMissed)
{
    ServerUnderTest test(knowingSignal());
    AtSocket deaf(test.socket());
    deaf.subscribe(host::protocol::kHearReports);
    AtSocket other(test.socket());
    EXPECT_EQ(other.run("AT+CSQ").text, kSignalReply);

    constexpr int kReports = 3000;
    for (int i = 0; i < kReports; ++i)
        test.modem.write("\r\n+CEREG: 1,\"00A1\",\"0001B2C3\",7\r\n");
    const std::string all = "\"reports\":" + std::to_string(kReports);
    EXPECT_TRUE(eventually([&] { return contains(other.status().text, all); }));
    EXPECT_EQ(other.run("AT+CSQ").text, kSignalReply);

    uint32_t reports = 0;
    Received message;
    while (message.type != Type::Lost) {
        message = deaf.receive().value_or(Received{Type::Lost, {}, 0, 0, {}});
        if (message.type == Type::Report) ++reports;
    }
    EXPECT_GT(message.value, 0U);
    EXPECT_EQ(reports + message.value, static_cast<uint32_t>(kReports));
    test.modem.write("\r\n+CEREG: 2\r\n");
    EXPECT_EQ(deaf.next(Type::Report).text, "\r\n+CEREG: 2\r\n");
}

TEST(ClientThatDoesNotRead, IsNotReadEither)
{
    const ServerUnderTest test(knowingSignal());
    AtSocket deaf(test.socket());
    uint32_t id = 0;
    while (deaf.sendUnlessFull({Type::GetStatus, Cause::None, ++id, 0, {}}))
        ASSERT_LT(id, 100000U) << "the server takes everything";
    AtSocket other(test.socket());
    EXPECT_EQ(other.run("AT+CSQ").text, kSignalReply);
    for (uint32_t answered = 1; answered < id; ++answered)
        ASSERT_EQ(deaf.next(Type::Status).id, answered);
    EXPECT_EQ(deaf.run("AT+CSQ").text, kSignalReply);
}

// Who may connect

/** What another user is told first. */
Cause openingFor(const std::string &socket, const char *group)
{
    const std::string heard = processes::heardAs(processes::kNobody, {processes::idOf(group)}, [&] {
        const AtSocket client(socket);
        return std::to_string(static_cast<int>(client.opening().cause));
    });
    return static_cast<Cause>(std::stoi(heard));
}

TEST(Peers, AreAllowedByUserAndGroup)
{
    if (geteuid() != 0) GTEST_SKIP() << "only root can become others";
    const ServerUnderTest test(knowingSignal(), {"--group", processes::kOneGroup});
    const std::string socket = test.socket();
    struct stat status {};
    ASSERT_EQ(stat(socket.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0660U);
    EXPECT_EQ(status.st_gid, processes::idOf(processes::kOneGroup));

    test.openToAll();
    EXPECT_EQ(openingFor(socket, processes::kOneGroup), Cause::None);
    std::filesystem::permissions(socket, std::filesystem::perms(0666)); // as if somebody had been careless
    EXPECT_EQ(openingFor(socket, "nogroup"), Cause::Refused);
}

TEST(Peers, AreLimitedInNumber)
{
    const ServerUnderTest test(knowingSignal());
    std::vector<std::unique_ptr<AtSocket>> clients;
    clients.reserve(32);
    for (int i = 0; i < 32; ++i)
        clients.push_back(std::make_unique<AtSocket>(test.socket()));
    EXPECT_EQ(AtSocket(test.socket()).opening().cause, Cause::Refused);
    clients.pop_back();
    EXPECT_TRUE(eventually([&] { return AtSocket(test.socket()).opening().type == Type::Welcome; }));
}

} // namespace

// Users of other groups as processes: what they may ask for, what they are told, and what is logged of them.
#include <memory>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/host/at_server/server_under_test.h"
#include "tests/processes/other_user.h"

using host::protocol::Cause;
using host::protocol::Type;
using processes::AtSocket;
using processes::eventually;
using processes::heardAs;
using processes::kNobody;
using processes::kOneGroup;
using processes::kOtherGroup;
using processes::Received;

namespace {

/** A modem that says OK to everything but PINs. */
ScriptedModem::Answer agreeing()
{
    return answering([](const std::string &command) {
        return std::string(contains(command, "+CPIN=") ? "\r\n+CME ERROR: 16\r\n" : "\r\nOK\r\n");
    });
}

class OtherUsers : public testing::Test {
  protected:
    void SetUp() override
    {
        if (geteuid() != 0) GTEST_SKIP() << "only root can become others";
    }
    void start(ServerUnderTest::Arguments arguments)
    {
        test = std::make_unique<ServerUnderTest>(agreeing(), std::move(arguments));
        test->openToAll();
        AtSocket root(test->socket());
        EXPECT_TRUE(eventually([&] { return contains(root.status().text, "\"family\":\"qualcomm\""); }));
    }
    std::string heard(const std::vector<const char *> &groups, const std::function<std::string(AtSocket &)> &talk) const
    {
        std::vector<gid_t> ids;
        ids.reserve(groups.size());
        for (const char *group : groups)
            ids.push_back(processes::idOf(group));
        return heardAs(kNobody, ids, [&] {
            AtSocket client(test->socket());
            if (client.opening().type != Type::Welcome) return client.opening().text;
            return talk(client);
        });
    }
    /** All that the server has logged by its end. */
    std::string log() const
    {
        test->server().signal(SIGTERM);
        EXPECT_EQ(test->server().wait(), 0);
        return test->server().errors();
    }

    std::unique_ptr<ServerUnderTest> test;
};

std::string rightsIn(const std::string &status)
{
    const size_t begin = status.find("\"rights\":");
    return begin == std::string::npos ? "none" : status.substr(begin, status.find(']', begin) + 1 - begin);
}

std::string rightsOf(AtSocket &client)
{
    return rightsIn(client.status().text);
}

constexpr const char *kAllOthers = "root and the server's own user have";

TEST_F(OtherUsers, OfTheGroupMayDoAllButThree)
{
    start({"--group", kOneGroup});
    const std::pair<const char *, const char *> rows[] = {
        {"AT", ""},
        {"AT+CSQ", ""},
        {"AT+CGDCONT=1,\"IP\",\"internet\"", ""},
        {"AT+CREG=2;+COPS?", ""},
        {"AT+CLCK=\"AO\",1,\"0000\"", ""},
        {"AT+CFUN=1,1", "device"},
        {"AT&F", "device"},
        {"AT+CSQ;+CFUN=1,1", "device"},
        {"AT+CSQ;&F", "device"},
        {"AT+CGDCONT=1,\"IP\",\"1\";+CFUN=1,1", "device"},
        {"ATD5551234;", "raw"},
        {"ATA", "raw"},
        {"AT+CGDATA=\"PPP\",1", "raw"},
        {"AT+CMGS=22", "raw"},
        {"AT+CSQ;D5551234", "raw"},
        {"AT+NONSENSE", "raw"},
    };
    for (const auto &[command, right] : rows) {
        const std::string answer = heard({kOneGroup}, [command = command](AtSocket &client) {
            const Received received = client.run(command);
            if (received.cause == Cause::NotAllowed) return received.text;
            return std::string(received.type == Type::Reply ? "replied" : "failed");
        });
        if (*right == '\0') {
            EXPECT_EQ(answer, "replied") << command;
            continue;
        }
        EXPECT_EQ(answer, std::string("this user lacks the right ") + right + ", which " + kAllOthers) << command;
        EXPECT_EQ(test->modem.count(command), 0U) << command;
    }
    EXPECT_EQ(heard({kOneGroup}, rightsOf), R"("rights":["read","network","settings","sim"])");
    EXPECT_EQ(rightsIn(AtSocket(test->socket()).status().text),
              R"("rights":["read","network","settings","sim","device","raw","trace"])");
    EXPECT_TRUE(contains(log(), "refused process")) << test->server().errors();
}

TEST_F(OtherUsers, HearWhatOthersSendOnlyIfTheyMay)
{
    start({"--group", kOneGroup});
    const std::string answer = heard({kOneGroup}, [](AtSocket &client) {
        client.send({Type::Subscribe, Cause::None, 900, host::protocol::kHearReports | host::protocol::kHearTrace, {}});
        const Received failure = client.next(Type::Failure);
        if (failure.id != 900 || failure.cause != Cause::NotAllowed) return std::string("allowed");
        client.subscribe(host::protocol::kHearReports);
        return failure.text + '\n' + client.next(Type::Port).text + '\n' + client.run("AT+CSQ").text;
    });
    EXPECT_TRUE(contains(answer, std::string("this user lacks the right trace, which ") + kAllOthers)) << answer;
    EXPECT_TRUE(contains(answer, "is open\n\r\nOK\r\n")) << "the connection goes on: " << answer;

    test->modem.answerWith(slow());
    AtSocket root(test->socket());
    const uint32_t id = root.start("AT+SLOW=SHOW", kMinuteMs);
    EXPECT_TRUE(eventually([&] { return test->modem.count("AT+SLOW=SHOW") == 1; }));
    EXPECT_TRUE(contains(root.status().text, "\"running\":{\"command\":\"AT+SLOW="));
    const std::string status = heard({kOneGroup}, [](AtSocket &client) { return client.status().text; });
    EXPECT_TRUE(contains(status, "\"running\":{\"command\":null,\"remaining_ms\":")) << status;
    test->modem.write("\r\nOK\r\n");
    EXPECT_EQ(root.answerTo(id).type, Type::Reply);
}

TEST_F(OtherUsers, HaveTheSumOfWhatTheirGroupsHave)
{
    start({"--group", "root", "--allow", std::string(kOneGroup) + "=read", "--allow",
           std::string(kOtherGroup) + "=device,trace"});
    struct stat status {};
    ASSERT_EQ(stat(test->socket().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0666U) << "the server looks at who comes";
    EXPECT_EQ(heard({kOneGroup}, rightsOf), R"("rights":["read"])");
    EXPECT_EQ(heard({kOneGroup, kOtherGroup}, rightsOf), R"("rights":["read","device","trace"])");
    EXPECT_EQ(heard({"root"}, rightsOf), R"("rights":["read","network","settings","sim"])");
    EXPECT_EQ(heard({"nogroup"}, rightsOf),
              "this user is neither root, nor that of the server, nor in a group that it allows");
    EXPECT_EQ(
        heard({kOneGroup}, [](AtSocket &client) { return client.run("AT+CFUN=1,1").text; }),
        "this user lacks the right device, which root, the server's own user and members of the group daemon have");
}

TEST_F(OtherUsers, OfTheGroupHaveWhatTheSettingsSay)
{
    start({"--group", kOneGroup, "--allow", std::string(kOneGroup) + "=read,raw"});
    struct stat status {};
    ASSERT_EQ(stat(test->socket().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0660U);
    EXPECT_EQ(heard({kOneGroup}, rightsOf), R"("rights":["read","raw"])");
}

TEST_F(OtherUsers, WhoUseTheSimAreInTheLog)
{
    start({"--group", kOneGroup});
    heard({kOneGroup}, [](AtSocket &client) { return client.run("AT+CPIN=\"4711\"").text; });
    AtSocket(test->socket()).run("AT+CSQ");
    const std::string errors = log();
    EXPECT_TRUE(contains(errors, " of user 65534 sends \"AT+CPIN=\"****\"\"")) << errors;
    EXPECT_TRUE(contains(errors, "a code of user 65534 was refused; the next one waits 1000 ms")) << errors;
    EXPECT_FALSE(contains(errors, "4711")) << errors;
    EXPECT_FALSE(contains(errors, "+CSQ")) << errors;
}

TEST_F(OtherUsers, HaveToBeOfGroupsThatThereAre)
{
    processes::Child server({KR_AT_SERVER_PROGRAM, "--device", "/nonexistent", "--socket", "/nonexistent/at.sock",
                             "--allow", "no-such-group=read"});
    EXPECT_EQ(server.wait(), 1);
    EXPECT_EQ(server.errors(), "kr-at-server: there is no group no-such-group\n");
}

// Codes

TEST(WrongCodes, HoldTheirUserBackAndNothingElse)
{
    const ServerUnderTest test(agreeing(), {"--code-wait-ms", "60000"});
    AtSocket client(test.socket());
    EXPECT_EQ(client.run("AT+CPIN=\"1111\"").text, "\r\n+CME ERROR: incorrect password\r\n");
    AtSocket other(test.socket()); // of the same user
    const uint32_t held = other.start("AT+CPIN=\"2222\"");
    const Received told = other.next(Type::Waiting);
    EXPECT_EQ(told.id, held);
    EXPECT_GT(told.value, 1000U);
    EXPECT_LE(told.value, 60000U);
    EXPECT_EQ(told.text, "a code of this user was refused, after which the next one waits");
    EXPECT_TRUE(contains(client.status().text, "\"running\":null,\"echo\":false,\"waiting\":1"))
        << client.status().text;
    EXPECT_EQ(other.run("AT+CPIN?").text, "\r\nOK\r\n") << "which takes no code";
    other.send({Type::Cancel, Cause::None, held, 0, {}});
    EXPECT_EQ(other.answerTo(held).cause, Cause::Cancelled);
    EXPECT_EQ(test.modem.count("AT+CPIN=\"2222\""), 0U);
}

TEST(WrongCodes, AreFollowedByTheNextInTheEnd)
{
    const ServerUnderTest test(agreeing(), {"--code-wait-ms", "20"});
    AtSocket client(test.socket());
    for (const char *command : {"AT+CPIN=\"1111\"", "AT+CPIN=\"2222\"", "AT+CPIN=\"3333\""}) {
        EXPECT_EQ(client.run(command).text, "\r\n+CME ERROR: incorrect password\r\n");
        EXPECT_EQ(test.modem.count(command), 1U);
    }
}

TEST(WrongCodes, FailWithThePort)
{
    ServerUnderTest test(agreeing(), {"--code-wait-ms", "60000"});
    AtSocket client(test.socket());
    EXPECT_EQ(client.run("AT+CPIN=\"1111\"").text, "\r\n+CME ERROR: incorrect password\r\n");
    const uint32_t held = client.start("AT+CPIN=\"2222\"");
    client.next(Type::Waiting);
    test.modem.unplug();
    EXPECT_TRUE(eventually([&] { return contains(client.status().text, "\"port\":\"closed\""); }));
    EXPECT_TRUE(contains(client.status().text, "\"waiting\":0")) << "at once";
    EXPECT_EQ(client.answerTo(held).cause, Cause::PortDown);
}

} // namespace

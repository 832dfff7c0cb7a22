#include "host/at_client/at_client.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "processes/child_process.h"
#include "scripted_server.h"

using namespace host::protocol;
using scripted::Peer;
using scripted::Server;

namespace {

constexpr int32_t kTimeoutMs = 5000;
constexpr int32_t kLongMs = 60000; // of waiting for what surely comes

/** What the observer and the library's callback were told, as lines. */
std::vector<std::string> told;

void onWaiting(void *, uint32_t atMostMs)
{
    told.push_back("waiting " + std::to_string(atMostMs));
}

void onReport(void *, const char *text)
{
    told.push_back(std::string("report ") + text);
}

void onPort(void *, int isOpen, const char *why)
{
    told.push_back(std::string("port ") + (isOpen != 0 ? "open " : "down ") + why);
}

void onLost(void *, uint32_t messages)
{
    told.push_back("lost " + std::to_string(messages));
}

void onTrace(void *, const char *event)
{
    told.push_back(std::string("trace ") + event);
}

void onReply(void *, const char *command, const char *text)
{
    told.push_back(std::string("reply ") + command + ' ' + text);
}

uint32_t onLibrary(AtClientRes *report)
{
    told.push_back(std::string("library ") + report->aucDataBuf);
    return 0;
}

constexpr ClientObserver kTellAll{onWaiting, onReport, onPort, onLost, onTrace, nullptr, nullptr};

/** A reply's record, beyond whose terminator nothing may be touched. */
struct Response {
    Response() : record(std::make_unique<AtClientRes>()) { std::memset(record.get(), 'x', sizeof *record); }
    std::string text() const { return record->aucDataBuf; }
    std::unique_ptr<AtClientRes> record;
};

int sendCommand(const char *command, Response &response)
{
    return ClientSendCmd(command, response.record.get(), kTimeoutMs);
}

int sendCommand(const char *command)
{
    Response response;
    return sendCommand(command, response);
}

class AtClient : public testing::Test {
  protected:
    /** Reports stay asked for from the first ClientInit() on, so that all tests begin with it done. */
    static void SetUpTestSuite()
    {
        static bool isDone = false; // in an earlier round of the same process
        if (std::exchange(isDone, true)) return;
        const processes::ScratchDirectory directory;
        const std::string path = directory / "at.sock";
        setenv(kSocketVariable, path.c_str(), 1);
        const Server server(path, [](Server &at) {
            Peer peer = at.accept();
            peer.welcome();
            peer.reply(peer.expectCommand("AT"), "\r\nOK\r\n"); // with no subscription before it
            const Peer::Request request = peer.expect(Type::Subscribe);
            EXPECT_EQ(request.value, kHearReports);
            peer.send({.type = Type::Status, .id = request.id, .value = request.value, .text = "{}"});
            peer.reply(peer.expectCommand("AT+CSQ"), "\r\nOK\r\n"); // with no second one
        });
        EXPECT_EQ(sendCommand("AT"), CLIENT_OK) << ClientLastError();
        EXPECT_EQ(ClientInit("queue"), CLIENT_OK) << ClientLastError();
        EXPECT_EQ(ClientInit("queue"), CLIENT_OK) << ClientLastError();
        EXPECT_EQ(sendCommand("AT+CSQ"), CLIENT_OK) << ClientLastError();
    }

    void SetUp() override
    {
        told.clear();
        setenv(kSocketVariable, path_.c_str(), 1);
        ClientSetObserver(&kTellAll);
        SetClientProcRecvCallback(onLibrary);
    }

    void TearDown() override
    {
        unsetenv(CLIENT_PATIENCE_VARIABLE);
        ClientClose();
    }

    const std::string &path() const { return path_; }

  private:
    processes::ScratchDirectory directory_;
    std::string path_ = directory_ / "at.sock";
};

TEST_F(AtClient, HandsOnTheReplyAndNothingElse)
{
    const Server server(path(), [](Server &at) {
        const Peer peer = at.greeted();
        const Peer::Request request = peer.expectCommand("AT+CSQ");
        EXPECT_EQ(request.value, 5000U);
        peer.reply(request, "\r\n+CSQ: 20,99\r\n\r\nOK\r\n");
    });
    Response response;
    EXPECT_EQ(sendCommand("AT+CSQ", response), CLIENT_OK) << ClientLastError();
    EXPECT_EQ(response.text(), "\r\n+CSQ: 20,99\r\n\r\nOK\r\n");
    EXPECT_EQ(response.record->header[0], 0x78787878U);
    EXPECT_EQ(response.record->aucDataBuf[response.text().size() + 1], 'x');
    EXPECT_EQ(ClientLastResult(), CLIENT_OK);
    EXPECT_STREQ(ClientLastError(), "");
}

TEST_F(AtClient, TakesTheLongestReply)
{
    const std::string longest(kMaxText, 'r');
    const Server server(path(), [&](Server &at) {
        const Peer peer = at.greeted();
        peer.reply(peer.expectCommand("AT"), longest);
        peer.reply(peer.expectCommand("AT"), "");
    });
    Response response;
    EXPECT_EQ(sendCommand("AT", response), CLIENT_OK);
    EXPECT_EQ(response.text(), longest);
    EXPECT_EQ(sendCommand("AT", response), CLIENT_OK);
    EXPECT_EQ(response.text(), "");
}

TEST_F(AtClient, GivesEachCauseAResult)
{
    const struct {
        Cause cause;
        int result;
    } rows[] = {
        {Cause::Refused, CLIENT_REFUSED},
        {Cause::BadCommand, CLIENT_BAD_COMMAND},
        {Cause::PortDown, CLIENT_PORT_DOWN},
        {Cause::TimedOut, CLIENT_TIMED_OUT},
        {Cause::ReplyTooLong, CLIENT_REPLY_TOO_LONG},
        {Cause::Cancelled, CLIENT_INTERRUPTED},
        {Cause::QueueFull, CLIENT_SERVER_BUSY},
        {Cause::Stopping, CLIENT_NO_SERVER},
        {Cause::Protocol, CLIENT_PROTOCOL},
        {Cause::None, CLIENT_PROTOCOL},
        {static_cast<Cause>(999), CLIENT_PROTOCOL},
    };
    const Server server(path(), [&](Server &at) {
        const Peer peer = at.greeted();
        for (const auto &row : rows) {
            peer.fail(peer.expectCommand("AT+CPIN?"), row.cause, "because");
            peer.fail(peer.expectCommand("AT+CPIN?"), row.cause);
        }
    });
    for (const auto &row : rows) {
        Response response;
        EXPECT_EQ(sendCommand("AT+CPIN?", response), row.result);
        EXPECT_EQ(ClientLastResult(), row.result);
        EXPECT_STREQ(ClientLastError(), "because");
        EXPECT_EQ(response.record->aucDataBuf[0], 'x') << "a failure leaves the record alone";
        EXPECT_EQ(sendCommand("AT+CPIN?"), row.result);
        EXPECT_STRNE(ClientLastError(), "") << "a failure without words gets some";
    }
}

TEST_F(AtClient, RefusesACommandThatIsTooLongItself)
{
    const Server server(path(), [](Server &at) {
        const Peer peer = at.greeted();
        peer.reply(peer.expectCommand(std::string(kMaxCommand, 'A')), "OK");
        peer.expectEnd();
    });
    EXPECT_EQ(sendCommand(std::string(kMaxCommand, 'A').c_str()), CLIENT_OK);
    EXPECT_EQ(sendCommand(std::string(kMaxCommand + 1, 'A').c_str()), CLIENT_BAD_COMMAND);
    ClientClose();
}

TEST_F(AtClient, SaysThatNobodyListens)
{
    EXPECT_EQ(sendCommand("AT"), CLIENT_NO_SERVER);
    EXPECT_NE(std::string(ClientLastError()).find(path()), std::string::npos) << ClientLastError();
    EXPECT_EQ(ClientInit("queue"), CLIENT_NO_SERVER);
    EXPECT_EQ(ClientDispatch(0), -1);
    EXPECT_EQ(ClientDispatch(-1), -1);
    EXPECT_EQ(ClientFd(), -1);
    EXPECT_EQ(ClientStatus(nullptr, 0), CLIENT_NO_SERVER);
    setenv(kSocketVariable, std::string(300, 'p').c_str(), 1);
    EXPECT_EQ(sendCommand("AT"), CLIENT_NO_SERVER);
}

TEST_F(AtClient, SaysThatTheServerRefuses)
{
    const Server server(path(), [](Server &at) {
        at.accept().send({.type = Type::Failure, .cause = Cause::Refused, .text = "not you"});
        at.greeted().reply({}, "");
    });
    EXPECT_EQ(sendCommand("AT"), CLIENT_REFUSED);
    EXPECT_STREQ(ClientLastError(), "not you");
    EXPECT_EQ(ClientInit("queue"), CLIENT_OK) << "the next call tries again";
}

TEST_F(AtClient, TellsOfCommandsThatComeFirst)
{
    const Server server(path(), [](Server &at) {
        const Peer peer = at.greeted();
        const Peer::Request request = peer.expectCommand("AT");
        peer.send({.type = Type::Waiting, .id = request.id, .value = 120000, .text = {}});
        peer.send({.type = Type::Waiting, .id = request.id, .value = 0, .text = {}});
        peer.reply(request, "OK");
    });
    EXPECT_EQ(sendCommand("AT"), CLIENT_OK);
    EXPECT_EQ(told, (std::vector<std::string>{"waiting 120000", "waiting 0"}));
}

TEST_F(AtClient, ShowsRepliesToTheObserver)
{
    const Server server(path(), [](Server &at) {
        const Peer peer = at.greeted();
        peer.reply(peer.expectCommand("AT+CPIN?"), "\r\n+CME ERROR: 10\r\n");
        peer.fail(peer.expectCommand("AT"), Cause::TimedOut);
    });
    ClientObserver observer{};
    observer.reply = onReply;
    ClientSetObserver(&observer);
    EXPECT_EQ(sendCommand("AT+CPIN?"), CLIENT_OK);
    EXPECT_EQ(sendCommand("AT"), CLIENT_TIMED_OUT);
    EXPECT_EQ(told, (std::vector<std::string>{"reply AT+CPIN? \r\n+CME ERROR: 10\r\n"}));
}

TEST_F(AtClient, DeliversReportsOnlyFromDispatchAndInOrder)
{
    const Server server(path(), [](Server &at) {
        const Peer peer = at.greeted();
        const Peer::Request request = peer.expectCommand("AT");
        peer.report("\r\n+CREG: 1\r\n");
        peer.send({.type = Type::Port, .value = 0, .text = "unplugged"});
        peer.send({.type = Type::Port, .value = 1, .text = ""});
        peer.report("\r\nRING\r\n");
        peer.reply(request, "OK");
        peer.report("\r\n+CGEV: ME DETACH\r\n");
        peer.expectEnd();
    });
    EXPECT_EQ(sendCommand("AT"), CLIENT_OK);
    EXPECT_TRUE(told.empty());
    for (int delivered = 0; delivered < 5;) {
        const int more = ClientDispatch(kLongMs);
        ASSERT_GT(more, 0);
        delivered += more;
    }
    EXPECT_EQ(told,
              (std::vector<std::string>{"report \r\n+CREG: 1\r\n", "library \r\n+CREG: 1\r\n", "port down unplugged",
                                        "port open ", "report \r\nRING\r\n", "library \r\nRING\r\n",
                                        "report \r\n+CGEV: ME DETACH\r\n", "library \r\n+CGEV: ME DETACH\r\n"}));
    EXPECT_EQ(ClientDispatch(0), 0);
    ClientClose();
}

} // namespace

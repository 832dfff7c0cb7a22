#include <cstdlib>
#include <future>

#include "tests/host/at_client/client_fixture.h"

using namespace host::protocol;
using scripted::Peer;
using scripted::Server;

namespace {

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

TEST_F(AtClient, TakesCallsOfOneThreadAtATime)
{
    std::promise<void> isAsked;
    std::promise<void> mayAnswer;
    const Server server(path(), [&](Server &at) {
        const Peer peer = at.greeted();
        const Peer::Request request = peer.expectCommand("AT+SLOW");
        isAsked.set_value();
        mayAnswer.get_future().wait();
        peer.reply(request, "\r\nOK\r\n");
        peer.reply(peer.expectCommand("AT"), "\r\nOK\r\n");
    });
    auto slow = std::async(std::launch::async, [] { return sendCommand("AT+SLOW"); });
    isAsked.get_future().wait();
    EXPECT_EQ(sendCommand("AT+CSQ"), CLIENT_OTHER_THREAD);
    EXPECT_EQ(ClientInit("queue"), CLIENT_OTHER_THREAD);
    EXPECT_EQ(ClientStatus(nullptr, 0), CLIENT_OTHER_THREAD);
    EXPECT_EQ(ClientTrace(1), CLIENT_OTHER_THREAD);
    EXPECT_EQ(SetClientProcRecvCallback(nullptr), CLIENT_OTHER_THREAD);
    EXPECT_EQ(ClientDispatch(0), -1);
    EXPECT_EQ(ClientFd(), -1);
    ClientClose();
    ClientSetObserver(&kTellAll);
    mayAnswer.set_value();
    EXPECT_EQ(slow.get(), CLIENT_OK) << "which nothing of that has disturbed";
    EXPECT_EQ(sendCommand("AT"), CLIENT_OK);
    EXPECT_EQ(told, Lines{}) << "an observer that was not set hears nothing";
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
        {Cause::NotAllowed, CLIENT_NOT_ALLOWED},
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

TEST(Quotes, AreSafeForSomeTexts)
{
    const std::string longest(1023, 'a');
    for (const char *safe : {"", "internet", "my net.example", "10.0.0.1", "a;b,c=d?+^$%*#!&_@'~{|}", longest.c_str()})
        EXPECT_EQ(ClientIsSafeInQuotes(safe), 1) << safe;
    const std::string tooLong = longest + 'a';
    for (const char *unsafe : {"1\";+CFUN=0", "\"", "a\"", "\\", "a\\22", "a\rb", "a\nb", "a\tb", "\x1A", "\x1B",
                               "\x01", "\x7F", "\xA2", "caf\xC3\xA9", tooLong.c_str()})
        EXPECT_EQ(ClientIsSafeInQuotes(unsafe), 0) << unsafe;
    EXPECT_EQ(ClientIsSafeInQuotes(nullptr), 0);
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
        peer.send({.type = Type::Waiting, .id = request.id, .value = 1, .text = " because"});
        peer.send({.type = Type::Waiting, .id = request.id, .value = 0, .text = {}});
        peer.reply(request, "OK");
    });
    EXPECT_EQ(sendCommand("AT"), CLIENT_OK);
    EXPECT_EQ(told, (Lines{"waiting 120000", "waiting 1 because", "waiting 0"}));
    EXPECT_STREQ(ClientLastError(), "");
}

TEST_F(AtClient, ShowsRepliesToTheObserver)
{
    const Server server(path(), [](Server &at) {
        const Peer peer = at.greeted();
        peer.reply(peer.expectCommand("AT+CPIN?"), "\r\n+CME ERROR: 10\r\n");
        peer.fail(peer.expectCommand("AT"), Cause::TimedOut);
    });
    ClientObserver observer{};
    observer.reply = [](void *, const char *command, const char *text) {
        told.push_back(std::string("reply ") + command + ' ' + text);
    };
    ClientSetObserver(&observer);
    EXPECT_EQ(sendCommand("AT+CPIN?"), CLIENT_OK);
    EXPECT_EQ(sendCommand("AT"), CLIENT_TIMED_OUT);
    EXPECT_EQ(told, (Lines{"reply AT+CPIN? \r\n+CME ERROR: 10\r\n"}));
}

TEST_F(AtClient, ReadsTheStatus)
{
    const Server server(path(), [](Server &at) {
        const Peer peer = at.greeted();
        for (int i = 0; i < 3; ++i) {
            const Peer::Request request = peer.expect(Type::GetStatus);
            peer.send({.type = Type::Status, .id = request.id, .text = "{\"port\":\"open\"}"});
        }
    });
    char json[32] = "";
    EXPECT_EQ(ClientStatus(json, sizeof json), CLIENT_OK) << ClientLastError();
    EXPECT_STREQ(json, "{\"port\":\"open\"}");
    EXPECT_EQ(ClientStatus(json, 8), CLIENT_OK);
    EXPECT_STREQ(json, "{\"port\"");
    EXPECT_EQ(ClientStatus(json, 0), CLIENT_OK);
    EXPECT_STREQ(json, "{\"port\"");
}

} // namespace

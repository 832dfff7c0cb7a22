#include <semaphore>

#include <poll.h>

#include "tests/host/at_client/client_fixture.h"

using namespace host::protocol;
using scripted::Peer;
using scripted::Server;

namespace {

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
    dispatch(5);
    EXPECT_EQ(told,
              (std::vector<std::string>{"report \r\n+CREG: 1\r\n", "library \r\n+CREG: 1\r\n", "port down unplugged",
                                        "port open ", "report \r\nRING\r\n", "library \r\nRING\r\n",
                                        "report \r\n+CGEV: ME DETACH\r\n", "library \r\n+CGEV: ME DETACH\r\n"}));
    EXPECT_EQ(ClientDispatch(0), 0);
    ClientClose();
}

bool isReadable(int fd, int timeoutMs)
{
    pollfd polled{fd, POLLIN, 0};
    return poll(&polled, 1, timeoutMs) == 1;
}

std::string reportNumber(int number)
{
    return "\r\n+CREG: " + std::to_string(number) + "\r\n";
}

TEST_F(AtClient, CountsWhatItCannotKeep)
{
    const Server server(path(), [](Server &at) {
        const Peer peer = at.greeted();
        Peer::Request request = peer.expectCommand("AT");
        for (int i = 0; i < CLIENT_MAX_REPORTS + 10; ++i)
            peer.report(reportNumber(i));
        peer.send({.type = Type::Lost, .value = 5, .text = {}});
        peer.reply(request, "OK");

        request = peer.expectCommand("AT"); // bytes are bounded as well
        for (int i = 0; i < 20; ++i)
            peer.report(std::string(kMaxText, 'r'));
        peer.reply(request, "OK");
        peer.expectEnd();
    });
    SetClientProcRecvCallback(nullptr);
    EXPECT_EQ(sendCommand("AT"), CLIENT_OK);
    dispatch(CLIENT_MAX_REPORTS + 1);
    ASSERT_EQ(told.size(), CLIENT_MAX_REPORTS + 1U);
    for (int i = 0; i < CLIENT_MAX_REPORTS; ++i)
        EXPECT_EQ(told[static_cast<size_t>(i)], "report " + reportNumber(i));
    EXPECT_EQ(told.back(), "lost 15");

    told.clear();
    constexpr int kKept = CLIENT_MAX_REPORT_BYTES / kMaxText;
    EXPECT_EQ(sendCommand("AT"), CLIENT_OK);
    dispatch(kKept + 1);
    ASSERT_EQ(told.size(), kKept + 1U);
    EXPECT_EQ(told.back(), "lost " + std::to_string(20 - kKept));
    EXPECT_EQ(ClientDispatch(0), 0) << "there is room again, and nothing is told twice";
    ClientClose();
}

TEST_F(AtClient, HearsTheTranscriptBesideTheReports)
{
    const Server server(path(), [](Server &at) {
        for (int connection = 0; connection < 2; ++connection) {
            const Peer peer = at.accept();
            EXPECT_EQ(peer.greet(), kHearReports | kHearTrace) << "asked for again on a new connection";
            const Peer::Request request = peer.expectCommand("AT");
            for (int i = 0; i < CLIENT_MAX_REPORTS + 3; ++i)
                peer.send({.type = Type::Trace, .text = "{}"});
            peer.report("RING");
            peer.reply(request, "OK");
            peer.expectEnd();
        }
        const Peer peer = at.accept();
        EXPECT_EQ(peer.greet(), kHearReports);
        peer.expectEnd();
    });
    EXPECT_EQ(ClientTrace(1), CLIENT_OK) << ClientLastError();
    for (int connection = 0; connection < 2; ++connection) {
        told.clear();
        EXPECT_EQ(sendCommand("AT"), CLIENT_OK) << ClientLastError();
        dispatch(CLIENT_MAX_REPORTS + 2);
        ASSERT_EQ(told.size(), CLIENT_MAX_REPORTS + 3U);
        EXPECT_EQ(told.front(), "trace {}");
        EXPECT_EQ(told[CLIENT_MAX_REPORTS], "report RING");
        EXPECT_EQ(told.back(), "lost 3");
        ClientClose();
    }
    EXPECT_EQ(ClientTrace(0), CLIENT_OK) << ClientLastError();
    ClientClose();
}

void refuseTrace(const Peer &peer)
{
    Peer::Request request = peer.expect(Type::Subscribe);
    EXPECT_EQ(request.value, kHearReports | kHearTrace);
    peer.fail(request, Cause::NotAllowed, "not you");
    request = peer.expect(Type::Subscribe);
    EXPECT_EQ(request.value, kHearReports);
    peer.send({.type = Type::Status, .id = request.id, .value = request.value, .text = "{}"});
}

TEST_F(AtClient, GoesOnWithoutATranscriptThatIsNotAllowed)
{
    const Server server(path(), [](Server &at) {
        const Peer peer = at.accept();
        peer.welcome();
        refuseTrace(peer);
        peer.reply(peer.expectCommand("AT"), "OK");
        peer.report("RING");
        peer.expectEnd();
    });
    EXPECT_EQ(ClientTrace(1), CLIENT_NOT_ALLOWED);
    EXPECT_STREQ(ClientLastError(), "not you");
    EXPECT_EQ(sendCommand("AT"), CLIENT_OK) << ClientLastError();
    dispatch(1);
    EXPECT_EQ(told, (Lines{"report RING", "library RING"}));
    ClientClose();
}

TEST_F(AtClient, SaysOnceThatATranscriptIsNoLongerAllowed)
{
    const Server server(path(), [](Server &at) {
        {
            const Peer peer = at.accept();
            EXPECT_EQ(peer.greet(), kHearReports | kHearTrace);
        }
        const Peer peer = at.accept();
        peer.welcome();
        refuseTrace(peer);
        peer.reply(peer.expectCommand("AT"), "OK");
        peer.expectEnd();
    });
    EXPECT_EQ(ClientTrace(1), CLIENT_OK) << ClientLastError();
    ClientClose();
    EXPECT_EQ(sendCommand("AT"), CLIENT_NOT_ALLOWED);
    EXPECT_STREQ(ClientLastError(), "not you");
    EXPECT_EQ(sendCommand("AT"), CLIENT_OK) << ClientLastError();
    ClientClose();
}

TEST_F(AtClient, ShowsAnEventLoopWhatWaits)
{
    std::binary_semaphore isReady{0};
    const Server server(path(), [&isReady](Server &at) {
        {
            const Peer peer = at.greeted();
            const Peer::Request request = peer.expectCommand("AT");
            peer.report("RING");
            peer.reply(request, "OK");
            peer.expectCommand("AT+CSQ");
            peer.report("BUSY");
        } // the server goes, and comes back
        const Peer peer = at.greeted();
        isReady.acquire();
        peer.report("NO CARRIER");
        peer.expectEnd();
    });
    EXPECT_EQ(ClientFd(), -1);
    EXPECT_EQ(sendCommand("AT"), CLIENT_OK);
    const int fd = ClientFd();
    ASSERT_GE(fd, 0);
    EXPECT_TRUE(isReadable(fd, 0)) << "the socket has been read, but a report waits";
    dispatch(1);
    EXPECT_FALSE(isReadable(fd, 0));

    EXPECT_EQ(sendCommand("AT+CSQ"), CLIENT_NO_SERVER);
    EXPECT_EQ(ClientFd(), fd) << "a report waits even though the server is gone";
    EXPECT_TRUE(isReadable(fd, 0));
    dispatch(1);
    EXPECT_EQ(ClientFd(), -1) << "nothing waits any more";
    EXPECT_EQ(ClientDispatch(0), 0) << ClientLastError();
    EXPECT_EQ(ClientFd(), fd) << "connected anew";
    isReady.release();
    EXPECT_TRUE(isReadable(fd, kLongMs));
    dispatch(1);
    EXPECT_EQ(told, (Lines{"report RING", "library RING", "report BUSY", "library BUSY", "report NO CARRIER",
                           "library NO CARRIER"}));
    ClientClose();
    EXPECT_EQ(ClientFd(), -1);
}

TEST_F(AtClient, LetsCallbacksSendCommandsButNotDispatch)
{
    const Server server(path(), [](Server &at) {
        const Peer peer = at.greeted();
        peer.report("RING");
        peer.reply(peer.expectCommand("AT+CLCC"), "within");
        peer.expectEnd();
    });
    ClientObserver observer{};
    observer.report = [](void *, const char *text) {
        EXPECT_EQ(ClientDispatch(0), -1);
        EXPECT_EQ(ClientLastResult(), CLIENT_NESTED);
        Response response;
        EXPECT_EQ(sendCommand("AT+CLCC", response), CLIENT_OK) << ClientLastError();
        EXPECT_EQ(response.text(), "within");
        EXPECT_STREQ(text, "RING");
    };
    ClientSetObserver(&observer);
    EXPECT_EQ(ClientInit("queue"), CLIENT_OK);
    dispatch(1);
    EXPECT_EQ(told, (Lines{"library RING"}));
    EXPECT_EQ(ClientLastResult(), CLIENT_OK);
    ClientClose();
}

TEST_F(AtClient, LetsNothingIntoTheMidstOfACommand)
{
    const Server server(path(), [](Server &at) {
        const Peer peer = at.greeted();
        const Peer::Request request = peer.expectCommand("AT");
        peer.send({.type = Type::Waiting, .id = request.id, .value = 1, .text = {}});
        peer.reply(request, "OK");
        peer.expectEnd();
    });
    ClientObserver observer{};
    observer.waiting = [](void *, uint32_t) {
        EXPECT_EQ(sendCommand("AT+CSQ"), CLIENT_NESTED);
        EXPECT_EQ(ClientInit("queue"), CLIENT_NESTED);
        EXPECT_EQ(ClientStatus(nullptr, 0), CLIENT_NESTED);
        EXPECT_EQ(ClientTrace(1), CLIENT_NESTED);
        EXPECT_EQ(ClientDispatch(0), -1);
        EXPECT_EQ(ClientLastResult(), CLIENT_NESTED);
        ClientClose();
        told.emplace_back("refused");
    };
    observer.reply = [](void *, const char *, const char *) { EXPECT_EQ(sendCommand("AT+CSQ"), CLIENT_NESTED); };
    ClientSetObserver(&observer);
    EXPECT_EQ(sendCommand("AT"), CLIENT_OK) << ClientLastError();
    EXPECT_EQ(told, (Lines{"refused"}));
    ClientClose();
}

TEST_F(AtClient, StopsDeliveringWhenItIsClosedWithin)
{
    const Server server(path(), [](Server &at) {
        const Peer peer = at.greeted();
        const Peer::Request request = peer.expectCommand("AT");
        peer.report("1");
        peer.report("2");
        peer.reply(request, "OK");
        peer.expectEnd();
    });
    ClientObserver observer{};
    observer.report = [](void *, const char *text) {
        told.emplace_back(text);
        ClientClose();
    };
    ClientSetObserver(&observer);
    EXPECT_EQ(sendCommand("AT"), CLIENT_OK);
    EXPECT_EQ(ClientDispatch(kLongMs), 1);
    EXPECT_EQ(told, (Lines{"1", "library 1"}));
}

} // namespace

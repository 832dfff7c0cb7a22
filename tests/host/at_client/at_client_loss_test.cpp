#include <atomic>
#include <csignal>
#include <cstdlib>
#include <random>
#include <semaphore>
#include <thread>

#include <pthread.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/host/at_client/client_fixture.h"

using namespace host::protocol;
using scripted::Peer;
using scripted::Server;

namespace {

void interruptIt(int)
{
    ClientInterrupt();
}

void doNothing(int) {}

/** Handles a signal while it lives. */
class Handled {
  public:
    Handled(int number, void (*handler)(int)) : number_(number)
    {
        struct sigaction action = {};
        action.sa_handler = handler;
        sigaction(number, &action, &before_);
    }
    ~Handled() { sigaction(number_, &before_, nullptr); }
    Handled(const Handled &) = delete;
    Handled &operator=(const Handled &) = delete;

  private:
    int number_;
    struct sigaction before_ {};
};

TEST_F(AtClient, ConnectsAnewBeforeItSends)
{
    std::binary_semaphore isGone{0};
    const Server server(path(), [&isGone](Server &at) {
        {
            const Peer peer = at.greeted();
            peer.reply(peer.expectCommand("AT"), "first");
        }
        isGone.release();
        const Peer peer = at.greeted();
        peer.reply(peer.expectCommand("AT+CSQ"), "second");
        peer.reply(peer.expectCommand("AT+CREG?"), "third");
    });
    Response response;
    EXPECT_EQ(sendCommand("AT", response), CLIENT_OK);
    isGone.acquire();
    EXPECT_EQ(sendCommand("AT+CSQ", response), CLIENT_OK) << ClientLastError();
    EXPECT_EQ(response.text(), "second");
    EXPECT_EQ(sendCommand("AT+CREG?", response), CLIENT_OK);
    EXPECT_EQ(response.text(), "third");
}

TEST_F(AtClient, NeverSendsTwice)
{
    const Server server(path(), [](Server &at) {
        at.greeted().expectCommand("AT+CFUN=1"); // and the server dies with it
        const Peer peer = at.greeted();
        peer.reply(peer.expectCommand("AT+CFUN?"), "OK");
    });
    EXPECT_EQ(sendCommand("AT+CFUN=1"), CLIENT_NO_SERVER);
    EXPECT_NE(std::string(ClientLastError()).find(path()), std::string::npos);
    EXPECT_EQ(sendCommand("AT+CFUN?"), CLIENT_OK) << ClientLastError();
}

TEST_F(AtClient, ReadsTheLastWordsOfAServerThatDoesNotListen)
{
    const Server server(path(), [](Server &at) {
        const Peer peer = at.greeted();
        peer.awaitRequest(); // and leave it unread, which resets the connection
        peer.send({.type = Type::Failure, .cause = Cause::Stopping, .text = "the end"});
    });
    EXPECT_EQ(sendCommand("AT"), CLIENT_NO_SERVER);
    EXPECT_STREQ(ClientLastError(), "the end");
}

TEST_F(AtClient, HearsReportsOfAServerThatCameBack)
{
    const Server server(path(), [](Server &at) {
        at.greeted().send({.type = Type::Failure, .cause = Cause::Stopping, .text = {}});
        const Peer peer = at.greeted();
        peer.report("RING");
        peer.expectEnd();
    });
    EXPECT_EQ(ClientInit("queue"), CLIENT_OK);
    EXPECT_EQ(ClientDispatch(-1), 1) << ClientLastError();
    EXPECT_EQ(told, (Lines{"report RING", "library RING"}));
    ClientClose();
}

TEST_F(AtClient, GivesUpOnASilentServer)
{
    const Server server(path(), [](Server &at) {
        const Peer silent = at.greeted();
        silent.expectCommand("AT");
        silent.expectEnd();
        const Peer mute = at.accept();
        mute.expectEnd();
    });
    EXPECT_EQ(ClientInit("queue"), CLIENT_OK);
    setenv(CLIENT_PATIENCE_VARIABLE, "100", 1);
    Response response;
    EXPECT_EQ(ClientSendCmd("AT", response.record.get(), 1), CLIENT_NO_SERVER);
    EXPECT_EQ(response.record->aucDataBuf[0], 'x');
    EXPECT_EQ(sendCommand("AT"), CLIENT_NO_SERVER) << "no welcome comes";
}

TEST_F(AtClient, IsInterruptedByASignal)
{
    const Handled handled(SIGUSR1, interruptIt);
    const pthread_t caller = pthread_self();
    const Server server(path(), [caller](Server &at) {
        const Peer peer = at.greeted();
        const Peer::Request request = peer.expectCommand("AT+COPS=?");
        pthread_kill(caller, SIGUSR1);
        EXPECT_EQ(peer.expect(Type::Cancel).id, request.id);
        peer.reply(request, "too late");
        peer.fail(request, Cause::Cancelled);
        peer.reply(peer.expectCommand("AT"), "in time");
    });
    Response response;
    EXPECT_EQ(sendCommand("AT+COPS=?", response), CLIENT_INTERRUPTED);
    EXPECT_EQ(response.record->aucDataBuf[0], 'x');
    EXPECT_EQ(sendCommand("AT", response), CLIENT_OK) << ClientLastError();
    EXPECT_EQ(response.text(), "in time");
}

TEST_F(AtClient, IsInterruptedByAThread)
{
    const Server server(path(), [](Server &at) {
        const Peer peer = at.greeted();
        peer.expectCommand("AT+COPS=?");
        ClientInterrupt();
        peer.expect(Type::Cancel);
        peer.reply(peer.expectCommand("AT"), "OK");
        peer.expectEnd();
    });
    EXPECT_EQ(sendCommand("AT+COPS=?"), CLIENT_INTERRUPTED);
    ClientInterrupt(); // between calls it does nothing
    EXPECT_EQ(sendCommand("AT"), CLIENT_OK) << ClientLastError();
    ClientClose();
}

TEST_F(AtClient, IsInterruptedWhileItDispatches)
{
    const Server server(path(), [](Server &at) { at.greeted().expectEnd(); });
    EXPECT_EQ(ClientInit("queue"), CLIENT_OK);
    std::atomic<bool> isOver{false};
    std::thread other([&isOver] {
        while (!isOver) // an interruption before the call begins is not for it
            ClientInterrupt();
    });
    EXPECT_EQ(ClientDispatch(-1), 0);
    isOver = true;
    other.join();
    EXPECT_EQ(ClientLastResult(), CLIENT_OK);
    ClientClose();
}

TEST_F(AtClient, IsNotDisturbedByOtherSignals)
{
    const Handled handled(SIGUSR2, doNothing);
    const pthread_t caller = pthread_self();
    const Server server(path(), [caller](Server &at) {
        const Peer peer = at.greeted();
        const Peer::Request request = peer.expectCommand("AT");
        for (int i = 0; i < 100; ++i)
            pthread_kill(caller, SIGUSR2);
        peer.reply(request, "OK");
    });
    EXPECT_EQ(sendCommand("AT"), CLIENT_OK) << ClientLastError();
}

std::string bytesOf(const Message &message)
{
    const Packet packet(message);
    return {packet.data(), packet.size()};
}

TEST_F(AtClient, DropsAServerThatTalksNonsense)
{
    const std::string rows[] = {
        "nonsense",
        std::string(kMaxPacket + 1, '\x01'),
        std::string(3 * kMaxPacket, '\x01'),
        bytesOf({.type = Type::Reply, .text = {}}).replace(0, 1, "\x02"), // of another version
        bytesOf({.type = Type::Reply, .text = {}}).replace(1, 1, "\x63"), // of an unknown type
    };
    const Server server(path(), [&](Server &at) {
        for (const std::string &row : rows) {
            const Peer stranger = at.accept();
            stranger.sendBytes(row);
            stranger.expectEnd();
            const Peer peer = at.greeted();
            peer.expectCommand("AT");
            peer.sendBytes(row);
            peer.expectEnd();
        }
        const Peer peer = at.greeted();
        const Peer::Request request = peer.expectCommand("AT");
        peer.send({.type = Type::Status, .id = request.id, .text = "{}"}); // which was not asked for
        peer.expectEnd();
        const Peer sane = at.greeted();
        const Peer::Request last = sane.expectCommand("AT");
        sane.send({.type = Type::Reply, .id = last.id - 1, .text = "of another command"});
        sane.send({.type = Type::Command, .id = last.id - 1, .text = "of no server"});
        sane.reply(last, "OK");
    });
    for (const std::string &row : rows) {
        EXPECT_EQ(sendCommand("AT"), CLIENT_PROTOCOL) << "instead of a welcome: " << row.substr(0, 20);
        EXPECT_EQ(sendCommand("AT"), CLIENT_PROTOCOL) << "instead of a reply: " << row.substr(0, 20);
    }
    EXPECT_EQ(sendCommand("AT"), CLIENT_PROTOCOL);
    Response response;
    EXPECT_EQ(sendCommand("AT", response), CLIENT_OK) << ClientLastError();
    EXPECT_EQ(response.text(), "OK");
}

/** Any packet, most of them messages. */
std::string randomPacket(std::mt19937 &random, uint32_t id)
{
    const Type types[] = {Type::Command, Type::Cancel, Type::Welcome, Type::Reply, Type::Failure, Type::Waiting,
                          Type::Status,  Type::Report, Type::Port,    Type::Lost,  Type::Trace};
    std::string text;
    for (size_t left = random() % 30; left > 0; --left)
        text += static_cast<char>(random());
    if (random() % 8 == 0) return text;
    return bytesOf({types[random() % std::size(types)], static_cast<Cause>(random() % 12), random() % 3 == 0 ? id : 0,
                    static_cast<uint32_t>(random() % 4), text});
}

TEST_F(AtClient, OutlivesRandomPackets)
{
    constexpr int kRounds = 300;
    ClientObserver quiet{};
    ClientSetObserver(&quiet);
    SetClientProcRecvCallback(nullptr);
    const Server server(path(), [](Server &at) {
        std::mt19937 random(11);
        for (int round = 0; round < kRounds; ++round) {
            const Peer peer = at.greeted();
            const uint32_t id = peer.expectCommand("AT").id;
            for (size_t left = random() % 10; left > 0; --left)
                peer.sendBytes(randomPacket(random, id));
        }
        const Peer peer = at.greeted();
        peer.reply(peer.expectCommand("AT"), "sane");
    });
    for (int round = 0; round < kRounds; ++round) {
        const int result = sendCommand("AT");
        EXPECT_TRUE((result >= CLIENT_OK && result <= CLIENT_PROTOCOL) || result >= CLIENT_NOT_ALLOWED) << result;
        ClientClose();
    }
    Response response;
    EXPECT_EQ(sendCommand("AT", response), CLIENT_OK) << ClientLastError();
    EXPECT_EQ(response.text(), "sane");
}

TEST_F(AtClient, GivesAChildAConnectionOfItsOwn)
{
    const Server server(path(), [](Server &at) {
        const Peer parent = at.greeted();
        const Peer::Request request = parent.expectCommand("AT");
        parent.report("RING");
        parent.reply(request, "OK");
        {
            const Peer child = at.greeted();
            child.reply(child.expectCommand("AT+CGMI"), "child");
            child.expectEnd();
        }
        parent.reply(parent.expectCommand("AT+CGMM"), "parent");
    });
    Response response;
    EXPECT_EQ(sendCommand("AT", response), CLIENT_OK);
    const pid_t child = fork();
    if (child == 0) {
        const bool isFine = sendCommand("AT+CGMI", response) == CLIENT_OK && response.text() == "child" &&
                            ClientDispatch(0) == 0; // its parent's report is not its own
        _exit(isFine ? 0 : 1);
    }
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(sendCommand("AT+CGMM", response), CLIENT_OK) << ClientLastError();
    EXPECT_EQ(response.text(), "parent");
    dispatch(1);
    EXPECT_EQ(told, (Lines{"report RING", "library RING"}));
}

void *callOnce(void *response)
{
    const int result = ClientSendCmd("AT", static_cast<AtClientRes *>(response), kTimeoutMs);
    return result == CLIENT_OK && ClientDispatch(kLongMs) == 1 ? response : nullptr;
}

TEST_F(AtClient, NeedsLittleStack)
{
    const Server server(path(), [](Server &at) {
        const Peer peer = at.greeted();
        const Peer::Request request = peer.expectCommand("AT");
        peer.report("RING");
        peer.reply(request, std::string(kMaxText, 'r'));
    });
    constexpr size_t kStack = size_t{88} * 1024; // what the library leaves of 128 KiB
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStack), 0);
    Response response;
    pthread_t thread{};
    ASSERT_EQ(pthread_create(&thread, &attributes, callOnce, response.record.get()), 0);
    void *result = nullptr;
    pthread_join(thread, &result);
    EXPECT_EQ(result, response.record.get());
    EXPECT_EQ(told, (Lines{"report RING", "library RING"}));
}

} // namespace

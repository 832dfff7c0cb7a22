// What a service manager hears of the server.
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <string>
#include <string_view>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/host/at_server/server_under_test.h"

using processes::AtSocket;

namespace {

/** The manager's side: a socket that takes datagrams. */
class Manager {
  public:
    /** @param path  of a file, or a name behind "@" */
    explicit Manager(const std::string &path) : fd_(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        const bool isAbstract = path[0] == '@';
        if (isAbstract) address.sun_path[0] = '\0';
        const size_t size = isAbstract ? offsetof(sockaddr_un, sun_path) + path.size() : sizeof address;
        EXPECT_EQ(bind(fd_, reinterpret_cast<const sockaddr *>(&address), static_cast<socklen_t>(size)), 0);
    }
    ~Manager() { close(fd_); }
    Manager(const Manager &) = delete;
    Manager &operator=(const Manager &) = delete;

    std::string hear() const
    {
        std::array<char, 1024> lines{};
        pollfd polled{fd_, POLLIN, 0};
        if (poll(&polled, 1, std::chrono::milliseconds(processes::kPatience).count()) <= 0) {
            ADD_FAILURE() << "the server tells nothing";
            return "nothing";
        }
        const ssize_t size = recv(fd_, lines.data(), lines.size(), 0);
        return {lines.data(), static_cast<size_t>(std::max<ssize_t>(size, 0))};
    }
    /** @return how many datagrams came before one with a text */
    int hearUntil(std::string_view text) const
    {
        int before = 0;
        for (std::string heard = hear(); !contains(heard, text) && heard != "nothing"; heard = hear())
            ++before;
        return before;
    }

  private:
    int fd_;
};

class ServiceManager : public testing::TestWithParam<bool> {
  protected:
    const processes::ScratchDirectory directory;
    const bool isAbstract = GetParam();
    const std::string path = isAbstract ? "@" + (directory / "notify") : directory / "notify";
    const Manager manager{path};
};

TEST_P(ServiceManager, HearsWhenClientsCanConnectAndHowThePortIs)
{
    ServerUnderTest test(knowingSignal(), {}, {{"NOTIFY_SOCKET", path}});
    const std::string first = manager.hear();
    EXPECT_TRUE(contains(first, "READY=1\nSTATUS=" + test.file("modem") + " is open")) << first;
    EXPECT_EQ(AtSocket(test.socket()).run("AT+CSQ").text, kSignalReply);
    test.modem.unplug();
    manager.hearUntil("STATUS=" + test.file("modem") + " went away");
    test.modem.plug();
    manager.hearUntil("STATUS=" + test.file("modem") + " is open");
    test.server().signal(SIGTERM);
    EXPECT_EQ(manager.hearUntil("STOPPING=1\n"), 0);
    EXPECT_EQ(test.server().wait(), 0);
}

INSTANTIATE_TEST_SUITE_P(Sockets, ServiceManager, testing::Bool(),
                         [](const auto &kind) { return kind.param ? "OfANameAlone" : "WithAFile"; });

class Watchdog : public testing::Test {
  protected:
    const processes::ScratchDirectory directory;
    const std::string path = directory / "notify";
    const Manager manager{path};
};

TEST_F(Watchdog, IsFedOnAndOn)
{
    const ServerUnderTest test(slow(), {}, {{"NOTIFY_SOCKET", path}, {"WATCHDOG_USEC", "50000"}});
    AtSocket client(test.socket());
    client.start("AT+SLOW", kMinuteMs);
    for (int i = 0; i < 5; ++i)
        manager.hearUntil("WATCHDOG=1");
}

TEST_F(Watchdog, OfAnotherProcessIsLeftAlone)
{
    ServerUnderTest test(slow(), {}, {{"NOTIFY_SOCKET", path}, {"WATCHDOG_USEC", "2000"}, {"WATCHDOG_PID", "1"}});
    EXPECT_EQ(AtSocket(test.socket()).run("AT+CSQ").text, kSignalReply);
    test.server().signal(SIGTERM);
    EXPECT_EQ(test.server().wait(), 0);
    EXPECT_EQ(manager.hearUntil("READY=1"), 0);
    EXPECT_EQ(manager.hearUntil("STOPPING=1"), 0);
}

TEST(NotifySocket, ThatCannotBeUsedIsToldAndNoMore)
{
    for (const char *path : {"notify", "/nowhere/notify", "@nobody has this name"}) {
        ServerUnderTest test(knowingSignal(), {}, {{"NOTIFY_SOCKET", path}, {"WATCHDOG_USEC", "50000"}});
        EXPECT_TRUE(test.server().waitForErrors("the service manager hears nothing")) << path;
        EXPECT_EQ(AtSocket(test.socket()).run("AT+CSQ").text, kSignalReply) << path;
    }
}

} // namespace

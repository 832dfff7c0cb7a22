// What users and idle clients may keep of the server from others.
#include <filesystem>
#include <memory>
#include <vector>

#include <grp.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/host/at_server/server_under_test.h"
#include "tests/processes/other_user.h"

using host::protocol::Cause;
using host::protocol::Type;
using processes::asUser;
using processes::AtSocket;
using processes::eventually;

namespace {

constexpr gid_t kGroup = 26;

/** A server whose socket the users of a group reach. */
class Users : public testing::Test {
  protected:
    void SetUp() override
    {
        if (geteuid() != 0) GTEST_SKIP() << "only root can become others";
        const group *const entry = getgrgid(kGroup);
        ASSERT_NE(entry, nullptr);
        test = std::make_unique<ServerUnderTest>(slow(), std::vector<std::string>{"--group", entry->gr_name});
        std::filesystem::permissions(std::filesystem::path(test->socket()).parent_path(), std::filesystem::perms(0711));
    }

    std::unique_ptr<ServerUnderTest> test;
};

TEST_F(Users, HaveSomePlacesAndLeaveOthersTheirs)
{
    constexpr uid_t kFirstUser = 60001;
    const std::string socket = test->socket();
    const auto welcomed = [&] {
        std::vector<std::unique_ptr<AtSocket>> clients;
        do
            clients.push_back(std::make_unique<AtSocket>(socket));
        while (clients.back()->opening().type == Type::Welcome);
        return static_cast<int>(clients.size()) - 1;
    };
    EXPECT_EQ(asUser(kFirstUser, kGroup, welcomed), 8);
    AtSocket own(socket);
    EXPECT_TRUE(eventually([&] { return contains(own.status().text, "\"clients\":1,"); }));
    std::vector<std::unique_ptr<AtSocket>> trusted;
    trusted.reserve(25);
    for (int i = 0; i < 25; ++i)
        trusted.push_back(std::make_unique<AtSocket>(socket));
    EXPECT_EQ(asUser(kFirstUser, kGroup, welcomed), 2);
    EXPECT_EQ(AtSocket(socket).opening().type, Type::Welcome);
}

TEST_F(Users, HaveSomeCommandsUnanswered)
{
    constexpr uid_t kUser = 60001;
    const std::string socket = test->socket();
    const int refused = asUser(kUser, kGroup, [&] {
        std::vector<std::unique_ptr<AtSocket>> clients;
        for (int i = 0; i < 64; ++i) {
            if (i % 16 == 0) clients.push_back(std::make_unique<AtSocket>(socket));
            clients.back()->start("AT+COPS=?", kMinuteMs);
        }
        for (const auto &client : clients)
            client->status(); // by now all have been taken
        AtSocket more(socket);
        return static_cast<int>(more.run("AT+CSQ").cause);
    });
    EXPECT_EQ(refused, static_cast<int>(Cause::QueueFull));
    EXPECT_EQ(AtSocket(socket).run("AT+CSQ").text, kSignalReply);
}

TEST(IdleClients, LeaveTheirPlacesToOthers)
{
    const ServerUnderTest test(knowingSignal(), {"--idle-ms", "100"});
    std::vector<std::unique_ptr<AtSocket>> clients;
    clients.reserve(32);
    for (int i = 0; i < 32; ++i)
        clients.push_back(std::make_unique<AtSocket>(test.socket()));
    for (size_t i = 1; i < clients.size(); ++i)
        clients[i]->subscribe(host::protocol::kHearReports);
    EXPECT_TRUE(eventually([&] { return AtSocket(test.socket()).opening().type == Type::Welcome; }));
    const auto told = clients[0]->receive();
    ASSERT_TRUE(told);
    EXPECT_EQ(told->cause, Cause::Refused);
    EXPECT_TRUE(contains(told->text, "asked for nothing")) << told->text;
    EXPECT_FALSE(clients[0]->receive());
    for (size_t i = 1; i < clients.size(); ++i)
        EXPECT_EQ(clients[i]->run("AT+CSQ").text, kSignalReply) << i;
}

} // namespace

// How the server starts and ends, and what it says meanwhile.
#include <csignal>
#include <filesystem>
#include <memory>

#include <gtest/gtest.h>

#include "tests/host/at_server/server_under_test.h"

using host::protocol::Cause;
using processes::AtSocket;
using processes::Child;
using processes::eventually;

namespace {

TEST(Life, EndsWithACauseForEverybody)
{
    for (const int signal : {SIGTERM, SIGINT, SIGQUIT, SIGALRM, SIGUSR1, SIGUSR2}) {
        ServerUnderTest test(slow());
        AtSocket client(test.socket());
        const uint32_t running = client.start("AT+SLOW", kMinuteMs);
        const uint32_t waiting = client.start("AT+CSQ");
        EXPECT_TRUE(eventually([&] { return test.modem.count("AT+SLOW") == 1; }));
        test.server().signal(signal);
        EXPECT_EQ(client.answerTo(running).cause, Cause::Stopping) << signal;
        EXPECT_EQ(client.answerTo(waiting).cause, Cause::Stopping) << signal;
        EXPECT_EQ(test.server().wait(), 0) << signal;
        EXPECT_FALSE(std::filesystem::exists(test.socket())) << signal;
    }
}

TEST(Life, BeginsOnlyOnceHoweverManyStart)
{
    ServerUnderTest test(knowingSignal());
    for (int round = 0; round < 4; ++round) {
        test.server().signal(SIGKILL);
        test.server().wait(); // and its socket's file stays
        std::vector<std::unique_ptr<Child>> starting;
        starting.reserve(8);
        for (int i = 0; i < 8; ++i)
            starting.push_back(std::make_unique<Child>(std::vector<std::string>{
                KR_AT_SERVER_PROGRAM, "--device", test.file("modem"), "--socket", test.socket()}));
        int ready = 0;
        for (const auto &child : starting) {
            EXPECT_TRUE(child->waitForErrors(" on " + test.socket())) << child->errors();
            const bool isReady = contains(child->errors(), "ready on ");
            EXPECT_TRUE(isReady || contains(child->errors(), "another server listens on ")) << child->errors();
            ready += isReady ? 1 : 0;
        }
        EXPECT_EQ(ready, 1);
        EXPECT_EQ(AtSocket(test.socket()).run("AT+CSQ").text, kSignalReply);
        starting.clear();
        test.start();
    }
}

TEST(Log, ThatNobodyReadsHoldsUpNobody)
{
    ServerUnderTest test(knowingSignal(), {"--log-level", "debug"});
    AtSocket client(test.socket());
    for (int i = 0; i < 3000; ++i)
        AtSocket(test.socket()).close(); // each is a line
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    EXPECT_TRUE(test.server().waitForErrors("connected")) << "and now they are read";
    AtSocket(test.socket()).close();
    EXPECT_TRUE(test.server().waitForErrors(" lines of this log")) << test.server().errors();
}

TEST(Log, FoldsRefusals)
{
    constexpr int kRefusals = 200;
    ServerUnderTest test(knowingSignal());
    std::vector<std::unique_ptr<AtSocket>> clients;
    clients.reserve(32);
    for (int i = 0; i < 32; ++i)
        clients.push_back(std::make_unique<AtSocket>(test.socket()));
    for (int i = 0; i < kRefusals; ++i)
        EXPECT_EQ(AtSocket(test.socket()).opening().cause, Cause::Refused);
    EXPECT_TRUE(test.server().waitForErrors(" more within a second"));
    const std::string told = test.server().errors();
    int lines = 0;
    for (size_t at = 0; (at = told.find("refused process", at)) != std::string::npos; ++at)
        ++lines;
    EXPECT_LT(lines, kRefusals / 2) << told;
}

TEST(Life, BeginsOnASocketThatNobodyHas)
{
    ServerUnderTest test(knowingSignal());
    Child second({KR_AT_SERVER_PROGRAM, "--device", "/dev/null", "--socket", test.socket()});
    EXPECT_EQ(second.wait(), 1);
    EXPECT_TRUE(contains(second.errors(), "another server listens on ")) << second.errors();

    test.server().signal(SIGKILL);
    test.server().wait();
    EXPECT_TRUE(std::filesystem::exists(test.socket()));
    test.start();
    EXPECT_EQ(AtSocket(test.socket()).run("AT+CSQ").text, kSignalReply);

    Child elsewhere({KR_AT_SERVER_PROGRAM, "--device", "/dev/null", "--socket", test.file("modem")});
    EXPECT_EQ(elsewhere.wait(), 1);
    EXPECT_TRUE(contains(elsewhere.errors(), "is not a socket")) << elsewhere.errors();
}

TEST(Arguments, AreUnderstoodOrNot)
{
    const std::vector<std::vector<std::string>> wrong{{},
                                                      {"--device"},
                                                      {"--device", "x", "--baud", "115201"},
                                                      {"--device", "x", "--family", "none"},
                                                      {"--device", "x", "more"},
                                                      {"--device", "x", "--log-level", "loud"}};
    for (std::vector<std::string> arguments : wrong) {
        arguments.insert(arguments.begin(), KR_AT_SERVER_PROGRAM);
        EXPECT_EQ(Child(arguments).wait(), 2);
    }
    for (const char *const argument : {"--help", "--version"}) {
        Child child({KR_AT_SERVER_PROGRAM, argument});
        EXPECT_EQ(child.wait(), 0);
        EXPECT_TRUE(contains(child.output(), "kr-at-server"));
    }
    Child group({KR_AT_SERVER_PROGRAM, "--device", "x", "--socket", "/nowhere/at.sock", "--group", "no such group"});
    EXPECT_EQ(group.wait(), 1);
    Child nowhere({KR_AT_SERVER_PROGRAM, "--device", "x"}, {{host::protocol::kSocketVariable, "/nowhere/at.sock"}});
    EXPECT_EQ(nowhere.wait(), 1);
    EXPECT_TRUE(contains(nowhere.errors(), "/nowhere/at.sock")) << nowhere.errors();
}

} // namespace

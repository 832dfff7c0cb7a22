// What the server records of its port, and what it keeps to itself.
#include <algorithm>
#include <filesystem>

#include <sys/resource.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/host/at_server/server_under_test.h"

using host::protocol::Cause;
using processes::AtSocket;
using processes::contents;
using processes::Received;

namespace {

constexpr std::string_view kPin = "4711";
constexpr std::string_view kImsi = "460001234567890";
constexpr std::string_view kImei = "861234567890123";
constexpr std::string_view kIccid = "98680011223344556677";

/** Of a modem that repeats what it is sent. */
std::string identities(const std::string &command)
{
    const auto line = [&](std::string_view text) { return command + "\r\r\n" + std::string(text) + "\r\n\r\nOK\r\n"; };
    if (command == "AT+CIMI") return line(kImsi) + "\r\n" + std::string(kImsi) + "\r\n"; // and once more behind it
    if (command == "AT+CGSN") return line(kImei);
    if (command == "AT+CRSM=176,12258,0,0,10") return line("+CRSM: 144,0,\"" + std::string(kIccid) + "\"");
    if (command == "AT+CIMI;+CGSN") return command + "\r\r\n" + std::string(kImsi) + "\r\n"; // and no more
    return command + "\r\r\nOK\r\n";
}

void runIdentities(AtSocket &client)
{
    EXPECT_EQ(client.run("AT+CPIN=\"4711\"").text, "\r\nOK\r\n");
    EXPECT_EQ(client.run("AT+CIMI").text, "\r\n460001234567890\r\n\r\nOK\r\n");
    EXPECT_TRUE(contains(client.run("AT+CGSN").text, kImei));
    EXPECT_TRUE(contains(client.run("AT+CRSM=176,12258,0,0,10").text, kIccid));
    EXPECT_EQ(client.run("AT+CIMI;+CGSN", 50).cause, Cause::TimedOut);
    EXPECT_EQ(client.run("AT+CPIN=\"4711\"").text, "\r\nOK\r\n");
}

TEST(Record, HasNoSecrets)
{
    for (const bool withSecrets : {false, true}) {
        const processes::ScratchDirectory directory;
        const std::string record = directory / "record";
        std::vector<std::string> arguments{"--record", record, "--log-level", "debug"};
        if (withSecrets) arguments.emplace_back("--record-secrets");
        ServerUnderTest test(answering(identities), arguments);
        AtSocket client(test.socket());
        client.subscribe(host::protocol::kHearTrace);
        runIdentities(client);
        test.server().signal(SIGTERM);
        EXPECT_EQ(test.server().wait(), 0);
        std::string traced;
        while (const auto message = client.receive())
            traced += message->text + '\n';
        for (const Received &message : client.kept())
            traced += message.text + '\n';
        for (const std::string_view secret : {kPin, kImsi, kImei, kIccid}) {
            EXPECT_EQ(contains(contents(record), secret), withSecrets) << secret;
            EXPECT_FALSE(contains(traced, secret)) << secret << traced;
            EXPECT_FALSE(contains(test.server().errors(), secret)) << secret << test.server().errors();
        }
        EXPECT_TRUE(contains(traced, "AT+CPIN=\\\"****\\\"\\r")) << traced;
        EXPECT_TRUE(contains(traced, "***************")) << "of equal length";
    }
}

TEST(Record, HasBothDirectionsAndIsOpenedAnewOnHangUp)
{
    const processes::ScratchDirectory directory;
    const std::string record = directory / "record";
    ServerUnderTest test(answering([](const std::string &command) {
                             return command + "\r\r\n+CEREG: 1\r\n" + std::string(kSignalReply);
                         }),
                         {"--record", record});
    AtSocket client(test.socket());
    client.run("AT+CSQ");
    const std::string pid = std::to_string(getpid());
    const std::string wanted[] = {
        "\"event\":\"opened\"",
        "\"dir\":\"tx\",\"text\":\"AT\\r\"}",
        "\"dir\":\"tx\",\"text\":\"AT+CSQ\\r\",\"client\":" + pid + "}",
        "\"dir\":\"rx\",\"text\":\"AT+CSQ\\r\\r\\n\",\"as\":\"echo\"}",
        "\"dir\":\"rx\",\"text\":\"+CEREG: 1\\r\\n\",\"as\":\"report\"}",
        "\"dir\":\"rx\",\"text\":\"\\r\\n+CSQ: 20,99\\r\\n\",\"as\":\"reply\"}",
        "\"dir\":\"rx\",\"text\":\"\\r\\nOK\\r\\n\",\"as\":\"reply\"}",
    };
    const std::string text = contents(record);
    size_t at = 0;
    for (const std::string &part : wanted) {
        at = text.find(part, at);
        ASSERT_NE(at, std::string::npos) << part << " in " << text;
    }
    std::filesystem::rename(record, record + ".1");
    test.server().signal(SIGHUP);
    EXPECT_TRUE(test.server().waitForErrors("opened anew"));
    client.run("AT+CSQ");
    EXPECT_TRUE(contains(contents(record), "AT+CSQ"));
}

int linesOf(const std::string &text)
{
    return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

/** Holds what a program may write to a file to a size. */
void limitFiles(pid_t process, rlim_t bytes)
{
    const rlimit limit{bytes, RLIM_INFINITY};
    EXPECT_EQ(prlimit(process, RLIMIT_FSIZE, &limit, nullptr), 0);
}

TEST(Record, CostsLinesAndNoCommandOnAFullDisk)
{
    const processes::ScratchDirectory directory;
    const std::string record = directory / "record";
    ServerUnderTest test(knowingSignal(), {"--record", record});
    AtSocket client(test.socket());
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    limitFiles(test.server().pid(), std::filesystem::file_size(record) + 10);
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    EXPECT_TRUE(test.server().waitForErrors("the record cannot be written: File too large"));
    const std::string before = contents(record);
    EXPECT_EQ(before.back(), '\n') << before;
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    EXPECT_EQ(contents(record), before);
    limitFiles(test.server().pid(), RLIM_INFINITY);
    EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    EXPECT_TRUE(test.server().waitForErrors("the record is written again; "));
    EXPECT_EQ(contents(record).substr(0, before.size()), before);
    EXPECT_EQ(linesOf(contents(record)), linesOf(before) + 3);
}

TEST(Record, IsOfTheSizeThatIsAskedFor)
{
    constexpr uintmax_t kMost = 4096;
    const processes::ScratchDirectory directory;
    const std::string record = directory / "record";
    const ServerUnderTest test(knowingSignal(), {"--record", record, "--record-size", std::to_string(kMost)});
    AtSocket client(test.socket());
    for (int i = 0; i < 60; ++i)
        EXPECT_EQ(client.run("AT+CSQ").text, kSignalReply);
    for (const std::string &file : {record, record + ".1"}) {
        EXPECT_LE(std::filesystem::file_size(file), kMost) << file;
        EXPECT_EQ(contents(file).substr(0, 9), "{\"time\":\"") << file;
        EXPECT_EQ(contents(file).back(), '\n') << file;
    }
}

TEST(Record, ThatIsNoRegularFileIsRefused)
{
    const processes::ScratchDirectory directory;
    const std::string link = directory / "link";
    std::filesystem::create_symlink(directory / "elsewhere", link);
    for (const std::string &record : {std::string("/dev/full"), link}) {
        processes::Child server({KR_AT_SERVER_PROGRAM, "--device", directory / "modem", "--socket",
                                 directory / "at.sock", "--record", record});
        EXPECT_EQ(server.wait(), 1) << record;
        EXPECT_TRUE(contains(server.errors(), "it is not a regular file")) << server.errors();
    }
    EXPECT_FALSE(std::filesystem::exists(directory / "elsewhere"));
}

} // namespace

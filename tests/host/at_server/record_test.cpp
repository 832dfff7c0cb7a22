// What the server records of its port, and what it keeps to itself.
#include <filesystem>

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

} // namespace

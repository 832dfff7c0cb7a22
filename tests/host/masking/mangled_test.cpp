// Secrets in commands and replies that are mangled by chance, though not the secrets themselves.
#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "host/masking/masking.h"

namespace {

constexpr std::string_view kSecrets[] = {"7391", "hunter2"};

bool isReadable(std::string_view text)
{
    return std::any_of(std::begin(kSecrets), std::end(kSecrets),
                       [&](std::string_view secret) { return text.find(secret) != std::string_view::npos; });
}

/** Whether a place is in a secret, behind its beginning. */
bool isInSecret(std::string_view text, size_t place)
{
    for (const std::string_view secret : kSecrets)
        for (size_t at = text.find(secret); at < place; at = text.find(secret, at + 1))
            if (place < at + secret.size()) return true;
    return false;
}

/** Takes a few characters out, and puts others in. */
std::string mangled(std::string_view was, std::mt19937 &random)
{
    constexpr std::string_view kNoise[] = {" ",  "\"", ",", ";", "+", "=",  "?", "!", "#",  "*",  "\t",
                                           "AT", "a",  "E", "&", "1", "\\", "'", "-", "_",  "@",  "0",
                                           "S",  "$",  "^", "%", ":", "(",  ")", "D", "\r", "\n", "\xFF"};
    std::string text(was);
    for (size_t changes = random() % 4 + 1; changes > 0; --changes) {
        const size_t place = random() % (text.size() + 1);
        if (isInSecret(text, place)) continue;
        const bool isSecret = place < text.size() && isInSecret(text, place + 1);
        if (random() % 3 == 0 && place < text.size() && !isSecret)
            text.erase(place, 1);
        else
            text.insert(place, kNoise[random() % std::size(kNoise)]);
    }
    return text;
}

TEST(Mangled, CommandsKeepTheirSecrets)
{
    constexpr std::string_view kCommands[] = {
        "AT+CPIN=7391",
        "at+cpin=\"7391\"",
        "AT+CLCK=\"SC\",1,\"7391\"",
        "AT+CPWD=\"SC\",\"7391\",\"7391\"",
        "AT+ZNCK=\"hunter2\"",
        "AT+CSQ;+CPIN=7391",
        "AT+CGAUTH=1,2,\"user\",\"hunter2\"",
        "AT+CGDCONT=1,\"IP\",\"net\";+CPIN=7391",
        "AT+COPS=1,2,\"46001\";+FOO=\"hunter2\"",
        "AT+FOO=7391",
        "AT+FOO=1,\"hunter2\",2",
        "AT!FOO=hunter2",
        "ATD**04*7391*7391#;",
        "AT+CUSD=1,\"7391\",15",
        "AT+CMGS=\"7391\"",
        "AT+CPBW=1,\"7391\",129,\"hunter2\"",
        "CPIN=7391",
        "my pin is 7391",
        "7391",
        "ATS0=7391",
    };
    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round) {
        const std::string command = mangled(kCommands[random() % std::size(kCommands)], random);
        const std::string masked = host::maskedCommand(command, host::Hide::Secrets);
        EXPECT_FALSE(isReadable(masked)) << masked << "\nwas: " << command;
    }
}

TEST(Mangled, EchoesAndErrorsKeepTheSecretsOfTheCommand)
{
    constexpr std::string_view kCommands[] = {"AT+CPIN=7391", "AT+FOO=\"hunter2\"", "AT+CLCK=\"SC\",1,\"7391\"",
                                              "ATD**04*7391*7391#;"};
    constexpr std::string_view kReplies[] = {"AT+CPIN=7391\r\r\nOK\r\n", "\r\n+CREG: 1,\"7391\"\r\n",
                                             "\r\n+CME ERROR: 7391 is wrong\r\n", "\r\n+CSQ: hunter2\r\n"};
    std::mt19937 random(8);
    for (int round = 0; round < 20000; ++round) {
        const std::string_view command = kCommands[random() % std::size(kCommands)];
        std::string reply = mangled(kReplies[random() % std::size(kReplies)], random);
        for (const std::string_view secret : kSecrets)
            if (command.find(secret) == std::string_view::npos && reply.find(secret) != std::string::npos)
                reply.clear();
        EXPECT_FALSE(isReadable(host::maskedReply(command, reply, host::Hide::Secrets))) << reply;
        EXPECT_FALSE(isReadable(host::maskedReport(command, reply, host::Hide::Secrets))) << reply;
    }
}

} // namespace

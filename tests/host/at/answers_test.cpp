#include <string_view>

#include <gtest/gtest.h>

#include "host/at/answers.h"

using namespace host::at;

namespace {

struct NameRow {
    std::string_view command;
    std::string_view name;
    bool isAnswer;
};

TEST(Answers, StandUnderTheNameOfTheirCommand)
{
    const NameRow rows[] = {
        {"AT+CSQ", "+CSQ", true},    {"at+csq", "+CSQ", true},
        {"AT+HVER", "^HVER", true},  {"AT+CREG?;+CSQ", "+CSQ", true},
        {"AT+CCID", "+ICCID", true}, {"AT+CGSN", "+GSN", true},
        {"AT+CSQ", "+CREG", false},  {"AT+CSQ", "+CSQX", false},
        {"AT", "+CSQ", false},       {"", "+CSQ", false},
        {"AT+CSQ", "", false},       {"AT+ICCID", "+IMEI", false},
    };
    for (const NameRow &row : rows)
        EXPECT_EQ(answeredUnder(row.name, commandsOf(row.command)) != nullptr, row.isAnswer)
            << row.command << ' ' << row.name;
}

TEST(Answers, AreTextsToSomeCommands)
{
    for (const char *command : {"ATI", "AT&V", "AT+CMGR=1", "at+cmgl=4", "AT+CSQ;+CLAC", "AT?"})
        EXPECT_TRUE(tellsTexts(commandsOf(command))) << command;
    for (const char *command : {"AT", "AT+CSQ", "AT+CMGS=1", "AT+NEW"})
        EXPECT_FALSE(tellsTexts(commandsOf(command))) << command;
}

TEST(Identities, AreManyDigitsAndNothingElse)
{
    for (const char *identity : {"12345678901234", "460001234567890", "89860012345678901234"})
        EXPECT_TRUE(isIdentity(identity)) << identity;
    for (const char *other : {"", "1234567890123", "8986001234567890123F", "+460001234567890", "460001234567890 "})
        EXPECT_FALSE(isIdentity(other)) << other;
}

struct IdentityRow {
    std::string_view command;
    std::string_view identity;
    bool isAnswer;
};

TEST(Identities, AnswerTheirCommandByTheirLength)
{
    constexpr std::string_view kSubscriber = "460001234567890";
    constexpr std::string_view kSoftware = "8612345678901234";
    constexpr std::string_view kCard = "89860012345678901234";
    const IdentityRow rows[] = {
        {"AT+CIMI", kSubscriber, true}, {"AT+CIMI", kSoftware, false},  {"AT+CIMI", kCard, false},
        {"AT+CGSN", kSubscriber, true}, {"AT+CGSN=2", kSoftware, true}, {"AT+CGSN=0", kCard, true},
        {"AT+CGSN", kCard, false},      {"AT+CCID", kCard, true},       {"AT+CCID", kSubscriber, false},
        {"AT^ICCID?", kCard, true},     {"AT+CSQ", kSubscriber, false}, {"AT+CSQ;+CIMI", kSubscriber, true},
        {"AT+NEW", kSubscriber, true},
    };
    for (const IdentityRow &row : rows)
        EXPECT_EQ(canAnswerIdentity(row.identity, commandsOf(row.command)), row.isAnswer)
            << row.command << ' ' << row.identity;
}

} // namespace

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "host/at/command_line.h"

using namespace host::at;

namespace {

/** "+CREG read; E set 0": one text for a line, so that rows stay rows. */
std::string told(std::string_view line)
{
    constexpr const char *kForms[] = {"execute", "read", "test", "set", "malformed"};
    std::string text;
    for (const Command &command : commandsOf(line)) {
        text += (text.empty() ? "" : "; ") + command.name + (command.name.empty() ? "" : " ");
        text += kForms[static_cast<size_t>(command.form)];
        if (command.form == Form::Set) text.append(" ").append(command.parameters);
    }
    return text;
}

TEST(CommandLine, IsReadIntoItsCommands)
{
    const struct {
        const char *line;
        const char *commands;
    } rows[] = {
        {"", ""},
        {"AT", ""},
        {"at", ""},
        {"  AT  ", ""},
        {"AT+CSQ", "+CSQ execute"},
        {"at+creg?", "+CREG read"},
        {"AT+CREG=?", "+CREG test"},
        {"AT+CREG=2", "+CREG set 2"},
        {"AT+CREG=", "+CREG set "},
        {"+CREG?", "+CREG read"},
        {"AT^SYSINFO", "^SYSINFO execute"},
        {"AT*CGDFLT=1,\"IP\",\"net\",,1", "*CGDFLT set 1,\"IP\",\"net\",,1"},
        {"AT$ARMEE", "$ARMEE execute"},
        {"AT%NWSTATE", "%NWSTATE execute"},
        {"AT#CPIN=1234", "#CPIN set 1234"},
        {"AT+GPS_X=1", "+GPS_X set 1"},
        // several, and quotes around what separates
        {"AT+CMEE=2;+CREG?", "+CMEE set 2; +CREG read"},
        {"AT+CSQ;", "+CSQ execute"},
        {"AT;;+CSQ;;+CREG?;", "+CSQ execute; +CREG read"},
        {"AT+CPIN=\"12;34\";+CSQ", "+CPIN set \"12;34\"; +CSQ execute"},
        {"AT+CPIN=\"12;34", "+CPIN set \"12;34"},
        // blanks
        {"AT +CREG = 2 ; +CSQ ", "+CREG set 2; +CSQ execute"},
        {"AT+CREG =\t? ", "+CREG test"},
        {"AT+C REG ?", "+CREG read"},
        {"AT+ZSET=\"a b\", 3", "+ZSET set \"a b\", 3"},
        // basic commands need no separator
        {"ATE0", "E set 0"},
        {"ate", "E execute"},
        {"ATE0V1Q0+CMEE=1;&F", "E set 0; V set 1; Q set 0; +CMEE set 1; &F execute"},
        {"AT & F0", "&F set 0"},
        {"ATD123;", "D set 123"},
        {"ATD*99***1#", "D set *99***1#"},
        {"ATD+49301;+CSQ", "D set +49301; +CSQ execute"},
        {"ATD", "D execute"},
        {"ATA", "A execute"},
        {"ATS0=1", "S set 0=1"},
        {"ATS0?E1", "S set 0?; E set 1"},
        // what is no command
        {"AT+", "malformed"},
        {"AT+=1", "malformed"},
        {"AT?", "malformed"},
        {"AT=5;+CSQ", "malformed; +CSQ execute"},
        {"AT&", "malformed"},
        {"AT+CREG?1", "+CREG malformed"},
        {"AT+CREG\"", "+CREG malformed"},
        {"AT+CREG=??", "+CREG set ??"},
        {"+++", "malformed"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(told(row.line), row.commands) << row.line;
}

TEST(CommandLine, BeginsWithAt)
{
    for (const char *line : {"AT", "at+CSQ", " AT", "\tAt"})
        EXPECT_TRUE(isCommandLine(line)) << line;
    for (const char *line : {"", "A", "A T", "+CSQ", "BAT", "T"})
        EXPECT_FALSE(isCommandLine(line)) << line;
}

TEST(CommandLine, AScanSearchesForOperators)
{
    for (const char *line : {"AT+COPS=?", "at+cops=5", "AT + COPS = 5"})
        EXPECT_TRUE(isOperatorScan(commandsOf(line)[0])) << line;
    for (const char *line : {"AT+COPS?", "AT+COPS=0", "AT+COPS=5,1", "AT+COPN=?", "AT^COPS=?"})
        EXPECT_FALSE(isOperatorScan(commandsOf(line)[0])) << line;
}

TEST(Mentions, AreFoundWhereverTheyStand)
{
    const struct {
        const char *text;
        std::vector<std::string> names;
    } rows[] = {
        {"", {}},
        {"+ ^ ; #", {}},
        {"AT+CPIN=\"1;+csq\"", {"+CPIN", "+CSQ"}},
        {"sent AT + C PIN : 1", {"+CPIN"}},
        {"++^x_1", {"^X_1"}},
        {"### LOG\r\n#CPIN", {"#LOG", "#CPIN"}},
        {"ATD**04*1#", {"*04", "*1"}},
    };
    for (const auto &row : rows) {
        std::vector<std::string> names;
        for (auto mention = findMention(row.text, 0); mention; mention = findMention(row.text, mention->end))
            names.push_back(mention->name);
        EXPECT_EQ(names, row.names) << row.text;
    }
}

TEST(Mentions, SayWhereTheyStand)
{
    const auto mention = findMention("x + C PIN \t= 1", 0);
    ASSERT_TRUE(mention);
    EXPECT_EQ(mention->begin, 2U);
    EXPECT_EQ(mention->end, 11U);
    EXPECT_EQ(mention->name, "+CPIN");
    EXPECT_EQ(mention->word, "+C");
}

} // namespace

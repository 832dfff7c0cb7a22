// The wrappers that open the dialogue and read the serial numbers.

#include <gtest/gtest.h>

#include <mainControl/wrappers.h>

#include "tests/support/guarded_text.h"
#include "tests/support/list_image.h"
#include "tests/support/sample_text.h"
#include "tests/support/scripted_host.h"

namespace {

using scripted::framed;
using scripted::Host;
using Texts = std::vector<std::string>;

constexpr size_t kReplyRoom = sizeof(AtClientRes::aucDataBuf);
constexpr size_t kLongestReply = kReplyRoom - 1;
constexpr char kUntouched = 0x5A;

struct Command {
    const char *name;
    uint32_t (*call)();
    const char *command;
};

const Command kCommands[] = {
    {"atStart", atStart, "AT"},
    {"ateOff", [] { return ateExec(0); }, "ATE0"},
    {"ateOn", [] { return ateExec(1); }, "ATE1"},
    {"ateNegative", [] { return ateExec(-1); }, "ATE-1"},
    {"ateLeast", [] { return ateExec(INT32_MIN); }, "ATE-2147483648"},
    {"ateMost", [] { return ateExec(INT32_MAX); }, "ATE2147483647"},
    {"cmeeOff", [] { return cmeeSet(0); }, "AT+CMEE=0"},
    {"cmeeTexts", [] { return cmeeSet(2); }, "AT+CMEE=2"},
    {"cmeeNegative", [] { return cmeeSet(-7); }, "AT+CMEE=-7"},
    {"cmeeLeast", [] { return cmeeSet(INT32_MIN); }, "AT+CMEE=-2147483648"},
    {"cmeeMost", [] { return cmeeSet(INT32_MAX); }, "AT+CMEE=2147483647"},
};

struct FinalResultRow {
    const char *reply;
    uint32_t code;
};

const FinalResultRow kFinalResults[] = {
    {"\r\nOK\r\n", 0},
    {"ATE0\r\r\nOK\r\n", 0},
    {"\r\n1\r\n\r\nOK\r\n", 0},
    {"\r\n\"\r\nERROR\r\n\"\r\n\r\nOK\r\n", 0},
    {"\r\nOK\r\n\r\nERROR\r\n", 0},
    {"\r\nOK\r\n\r\n+CEREG: 1\r\n", 0},
    {"\r\nERROR\r\n", 1},
    {"\r\nERROR\r\n\r\nOK\r\n", 1},
    {"\r\n+CME ERROR: 10\r\n", 1},
    {"\r\n+CME ERROR: 10", 1},
    {"\r\n+CME ERROR:10\r\n", 1},
    {"\r\n+CMS ERROR: 500\r\n", 1},
    {"\r\nnot support\r\n", 1},
    {"\r\n> ", 1},
    {"\r\n+CEREG: 1\r\n\r\nOK\r\n", 1},
    {"\r\n+ZEND\r\n\r\nOK\r\n", 1},
    {"\r\n\"\r\nOK\r\n\"\r\n", 1},
    {"\r\nok\r\n", 1},
    {"\nOK\n", 1},
    {"\r\nOK", 1},
    {"OK\r\n", 1},
    {"OK", 1},
    {"\r\n", 1},
    {"", 1},
};

TEST(Commands, SucceedOnOkAlone)
{
    for (const Command &command : kCommands) {
        for (const FinalResultRow &row : kFinalResults) {
            Host host;
            host.expect(command.command, 5000, row.reply);
            EXPECT_EQ(command.call(), row.code) << command.name << ": " << row.reply;
            EXPECT_EQ(host.texts(), host.texts(scripted::kParserModule)) << command.name;
            EXPECT_EQ(host.texts().front(), std::string("Bk_Parse_At_Res-in-") + row.reply) << command.name;
        }
    }
}

TEST(Commands, FailWithoutALogLineWhenTheSendFails)
{
    for (const Command &command : kCommands) {
        for (const int result : {-1, 1, 2, 19, INT32_MIN}) {
            Host host;
            host.expectFailing(command.command, 5000, result);
            EXPECT_EQ(command.call(), UNI_ERROR_FALSE) << command.name;
            EXPECT_EQ(host.texts(), Texts{}) << command.name;
        }
    }
}

struct Reader {
    const char *name;
    uint32_t (*read)(char *);
    const char *command;
};

class SerialTest : public testing::TestWithParam<Reader> {
  protected:
    /** Expects a success, and the whole value with its terminator in a buffer that has no byte more. */
    static void expectValue(const std::string &reply, const std::string &value, const std::string &name)
    {
        Host host;
        host.expect(GetParam().command, 5000, reply);
        const GuardedMemory serial(value.size() + 1);
        std::fill_n(serial.data(), serial.size(), kUntouched);
        EXPECT_EQ(GetParam().read(serial.data()), UNI_ERROR_SUCCESS) << name;
        EXPECT_EQ(difference(value + '\0', std::string_view(serial.data(), serial.size())), "") << name;
        const Texts expected = {"Bk_Parse_At_Res-in-" + reply, "Bk_Parse_At_Res-out-" + value, "Bk_Parse_At_Res-out-1"};
        EXPECT_TRUE(host.texts() == expected) << name;
        for (const scripted::LogLine &line : host.log()) {
            EXPECT_EQ(line.module, scripted::kParserModule) << name;
            EXPECT_EQ(line.file, "kora_t9lb.log") << name;
        }
    }

    /** Expects a failure that leaves the buffer alone. */
    static void expectFailure(const std::string &reply, const Texts &out)
    {
        Host host;
        host.expect(GetParam().command, 5000, reply);
        char serial[32];
        std::fill_n(serial, sizeof serial, kUntouched);
        EXPECT_EQ(GetParam().read(serial), UNI_ERROR_FALSE) << reply;
        EXPECT_EQ(std::string(serial, sizeof serial), std::string(sizeof serial, kUntouched)) << reply;
        Texts expected = {"Bk_Parse_At_Res-in-" + reply};
        expected.insert(expected.end(), out.begin(), out.end());
        EXPECT_EQ(host.texts(), expected);
    }
};

struct ValueRow {
    const char *name;
    std::string reply;
    std::string value;
};

const ValueRow kValues[] = {
    {"alone on its line", "\r\n861234567890123\r\n\r\nOK\r\n", "861234567890123"},
    {"echo in front", "AT+CGSN\r\r\n861234567890123\r\n\r\nOK\r\n", "861234567890123"},
    {"echo in front, both breaks", "AT+CGSN\r\n\r\n8612\r\n\r\nOK\r\n", "8612"},
    {"named", framed({"+CGSN: 8612"}), "8612"},
    {"named and quoted", framed({"+ZMSN: \"AB 12\""}), "\"AB 12\""},
    {"blanks stay", framed({" 86 12 "}), " 86 12 "},
    {"named twice", framed({"+CGSN: 1", "+CGSN: 2"}), "1;2"},
    {"another name ends it", framed({"+CGSN: 1", "+OTHER: 2", "+CGSN: 3"}), "1"},
    {"bare behind named", framed({"+CGSN: 1", "abc", "d"}), "1,\"abc\",\"d\""},
    {"bare before named", framed({"abc", "+CGSN: 1"}), "1"},
    {"bare lines", framed({"12", "34"}), "1234"},
    {"quoted colon", framed({"\"a: b\""}), ""},
    {"registration line is no report", framed({"+CREG: 1", "8612"}), "1,\"8612\""},
    {"line not closed", "\r\n8612\r\nOK\r\n", ""},
    {"bare OK", "\r\nOK\r\n", ""},
    {"only empty lines", "\r\n\r\n\r\n\r\nOK\r\n", ""},
    {"report behind", "\r\n8612\r\n\r\nOK\r\n\r\n+CEREG: 1\r\n", "8612"},
    {"final result in quotes", framed({"\"\r\nERROR\r\n\""}), "\"\r\nERROR\r\n\""},
    {"1023 characters", framed({filled(1023).c_str()}), filled(1023)},
    {"1024 characters", framed({filled(1024).c_str()}), filled(1024)},
    {"1025 characters", framed({filled(1025).c_str()}), filled(1024)},
    {"named, 1025 characters", framed({("+CGSN: " + filled(1025)).c_str()}), filled(1024)},
    {"bare behind named, 1025 characters", framed({"+CGSN: 1", filled(1025).c_str()}), "1,\"" + filled(1024) + "\""},
};

TEST_P(SerialTest, IsTheWholeParameterText)
{
    for (const ValueRow &row : kValues)
        expectValue(row.reply, row.value, row.name);
}

struct FailureRow {
    const char *reply;
    Texts out;
};

const FailureRow kFailures[] = {
    {"", {"UNI_ERROR_BK_FAIL1"}},
    {"OK", {"UNI_ERROR_BK_FAIL1"}},
    {"\r\n8612\r\n", {"UNI_ERROR_BK_FAIL1"}},
    {"\r\n8612\r\n\r\nOK", {"UNI_ERROR_BK_FAIL1"}},
    {"\r\n\"8612\r\n\r\nOK\r\n", {"UNI_ERROR_BK_FAIL1"}},
    {"\r\nERROR\r\n", {"Bk_Parse_At_Res-out-", "Bk_Parse_At_Res-out-2"}},
    {"\r\n8612\r\n\r\nERROR\r\n", {"Bk_Parse_At_Res-out-", "Bk_Parse_At_Res-out-2"}},
    {"\r\n+CME ERROR: SIM busy\r\n", {"Bk_Parse_At_Res-out-SIM busy", "Bk_Parse_At_Res-out-4"}},
    {"\r\n+CME ERROR: 10", {"Bk_Parse_At_Res-out-", "Bk_Parse_At_Res-out-4"}},
    {"\r\n+CMS ERROR: 500\r\n", {"Bk_Parse_At_Res-out-500", "Bk_Parse_At_Res-out-3"}},
    {"\r\nnot support\r\n", {"Bk_Parse_At_Res-out-", "Bk_Parse_At_Res-out-6"}},
    {"\r\n> ", {"Bk_Parse_At_Res-out-", "Bk_Parse_At_Res-out-5"}},
    {"\r\n+CEREG: 1\r\n\r\n8612\r\n\r\nOK\r\n", {"Bk_Parse_At_Res-out-1", "Bk_Parse_At_Res-out-12304"}},
    {"\r\n8612\r\n\r\n+CGREG: 5\r\n\r\nOK\r\n", {"Bk_Parse_At_Res-out-5", "Bk_Parse_At_Res-out-12305"}},
    {"\r\n+ZEND\r\n\r\n8612\r\n\r\nOK\r\n", {"Bk_Parse_At_Res-out-", "Bk_Parse_At_Res-out-4111"}},
};

TEST_P(SerialTest, IsLeftAloneByAFailure)
{
    for (const FailureRow &row : kFailures)
        expectFailure(row.reply, row.out);
}

TEST_P(SerialTest, IsLeftAloneWhenTheSendFails)
{
    Host host;
    host.expectFailing(GetParam().command, 5000);
    char serial = kUntouched;
    EXPECT_EQ(GetParam().read(&serial), UNI_ERROR_FALSE);
    EXPECT_EQ(serial, kUntouched);
    EXPECT_EQ(host.texts(), Texts{});
}

// A named line with no value and bare lines of one character: three characters of the reply become four.
TEST_P(SerialTest, CanBeLongerThanItsReply)
{
    const std::string closing = "\r\nOK\r\n";
    const std::string opening = "\r\n+CGSN: ";
    const size_t room = kLongestReply - opening.size() - 2 - closing.size();
    const auto lines = static_cast<int>(room / 3);
    const std::string value = filled(room % 3);
    const std::string reply = opening + value + "\r\n" + repeated("7\r\n", lines) + closing;
    ASSERT_EQ(reply.size(), kLongestReply);
    expectValue(reply, value + repeated(",\"7\"", lines), "short lines");

    const std::string shortest = "\r\nN: \r\n" + repeated("7\r\n", 3408) + closing;
    ASSERT_EQ(shortest.size(), kLongestReply - 2);
    expectValue(shortest, repeated(",\"7\"", 3408), "the shortest name");
}

TEST_P(SerialTest, IsReadFromAReplyThatFillsTheBuffer)
{
    const std::string lines = repeated(filled(1000) + "\r\n", 10);
    const std::string closing = "\r\n\r\nOK\r\n";
    const std::string filler = filled(kLongestReply - 2 - lines.size() - closing.size());
    const std::string reply = "\r\n" + lines + filler + closing;
    ASSERT_EQ(reply.size(), kLongestReply);
    expectValue(reply, repeated(filled(1000), 10) + filler, "to its terminator");
}

TEST_P(SerialTest, IsReadFromABufferWithoutATerminator)
{
    const std::string reply = "\r\n8612\r\n\r\nOK\r\n";
    Host host;
    host.expect(GetParam().command, 5000, reply + std::string(kReplyRoom - reply.size(), 'x'));
    const GuardedText serial("----");
    EXPECT_EQ(GetParam().read(serial), UNI_ERROR_SUCCESS);
    EXPECT_EQ(serial.str(), "8612");
}

TEST_P(SerialTest, IsNotReadBehindABufferWithoutATerminator)
{
    for (const std::string &reply :
         {std::string(kReplyRoom, 'x'), std::string(kReplyRoom, '\n'), repeated("\r\n", kReplyRoom / 2),
          "\r\n" + std::string(kReplyRoom - 2, '"'), "\r\n+CME ERROR: " + std::string(kReplyRoom - 14, '1')}) {
        ASSERT_EQ(reply.size(), kReplyRoom);
        Host host;
        host.expect(GetParam().command, 5000, reply);
        char serial = kUntouched;
        EXPECT_EQ(GetParam().read(&serial), UNI_ERROR_FALSE);
        EXPECT_EQ(serial, kUntouched);
        EXPECT_EQ(host.texts(), host.texts(scripted::kParserModule));
    }
}

INSTANTIATE_TEST_SUITE_P(Device, SerialTest,
                         testing::Values(Reader{"cgsnExec", cgsnExec, "AT+CGSN"},
                                         Reader{"zmsnRead", zmsnRead, "AT+ZMSN?"}),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace

// Codes that a modem refuses: what takes one, what became of it, and how long its user waits.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/at_server/code_tries.h"

using host::at_server::CodeIs;
using host::at_server::CodeTries;
using host::at_server::codeTryIn;
using host::at_server::judged;
using host::at_server::Outcome;
using host::protocol::Cause;
using namespace std::chrono_literals;

namespace {

TEST(Codes, AreNamedWithoutTheCode)
{
    const struct {
        const char *line;
        const char *what; ///< nullptr: it takes none
        bool isProvenByOk = true;
    } rows[] = {
        {"AT", nullptr},
        {"AT+CPIN?", nullptr},
        {"AT+CPIN=?", nullptr},
        {"AT+CLCK=\"SC\",2", nullptr},
        {"AT+CMGR=1", nullptr},
        {"AT+CPIN=1234", "+CPIN;"},
        {"at + cpin = \"1234\"", "+CPIN;"},
        {"AT+CPIN=\"12345678\",\"1234\"", "+CPIN;"},
        {"AT+CLCK=\"SC\",1,\"1234\"", "+CLCK \"SC\" 1;"},
        {"AT+CLCK=\"SC\",2,\"1234\"", "+CLCK \"SC\" 2;"},
        {"AT+CPWD=\"SC\",\"1234\",\"4321\"", "+CPWD \"SC\";"},
        {"AT+ZNCK=\"12345678\"", "+ZNCK;"},
        {"AT+CSQ;+CPIN=1234", "+CSQ;+CPIN;"},
        {"AT+CSIM=26,\"0020000108313233340000000\"", "+CSIM;", false},
        {"AT+CGLA=1,26,\"0020000108313233340000000\"", "+CGLA;", false},
        {"AT+CPIN=1234;+CSIM=14,\"00A40004022FE2\"", "+CPIN;+CSIM;", false},
        {"ATD**04*1234*4321*4321#;", "D;", false},
        {"AT+CUSD=1,\"**04*1234*4321*4321#\"", "+CUSD;", false},
    };
    for (const auto &row : rows) {
        const auto code = codeTryIn(row.line);
        ASSERT_EQ(code.has_value(), row.what != nullptr) << row.line;
        if (!code) continue;
        EXPECT_EQ(code->what, row.what) << row.line;
        EXPECT_EQ(code->isProvenByOk, row.isProvenByOk) << row.line;
    }
}

TEST(Codes, AreJudgedByTheAnswer)
{
    const struct {
        Outcome outcome;
        CodeIs proven;   ///< where OK says that it is right
        CodeIs handedOn; ///< where it does not
    } rows[] = {
        {{Cause::None, "\r\nOK\r\n"}, CodeIs::Right, CodeIs::NotTold},
        {{Cause::None, "\r\n+CSQ: 20,99\r\n\r\nOK\r\n"}, CodeIs::Right, CodeIs::NotTold},
        {{Cause::None, "\r\nERROR\r\n"}, CodeIs::Wrong, CodeIs::Wrong},
        {{Cause::None, "\r\n+CME ERROR: 16\r\n"}, CodeIs::Wrong, CodeIs::Wrong},
        {{Cause::None, "\r\n+CME ERROR: incorrect password\r\n"}, CodeIs::Wrong, CodeIs::Wrong},
        {{Cause::None, "\r\n+CME ERROR: SIM PUK required\r\n"}, CodeIs::Wrong, CodeIs::Wrong},
        {{Cause::None, "\r\n+CME ERROR: 3\r\n"}, CodeIs::Wrong, CodeIs::Wrong},
        {{Cause::None, "\r\n+CME ERROR: 140\r\n"}, CodeIs::Wrong, CodeIs::Wrong},
        {{Cause::None, "\r\n+CMS ERROR: 300\r\n"}, CodeIs::Wrong, CodeIs::Wrong},
        {{Cause::None, "\r\nNO CARRIER\r\n\r\nERROR\r\n"}, CodeIs::Wrong, CodeIs::Wrong},
        {{Cause::None, ""}, CodeIs::Wrong, CodeIs::Wrong},
        // nobody has looked at it
        {{Cause::None, "\r\n+CME ERROR: 14\r\n"}, CodeIs::NotTold, CodeIs::NotTold},
        {{Cause::None, "\r\n+CME ERROR: SIM busy\r\n"}, CodeIs::NotTold, CodeIs::NotTold},
        {{Cause::None, "\r\n+CME ERROR: 4\r\n"}, CodeIs::NotTold, CodeIs::NotTold},
        {{Cause::None, "\r\n+CME ERROR: Operation not supported\r\n"}, CodeIs::NotTold, CodeIs::NotTold},
        {{Cause::None, "\r\n+CME ERROR: 10\r\n"}, CodeIs::NotTold, CodeIs::NotTold},
        {{Cause::None, "\r\nnot support\r\n"}, CodeIs::NotTold, CodeIs::NotTold},
        {{Cause::PortDown, "gone"}, CodeIs::NotTold, CodeIs::NotTold},
        {{Cause::QueueFull, "full"}, CodeIs::NotTold, CodeIs::NotTold},
        {{Cause::Stopping, "ends"}, CodeIs::NotTold, CodeIs::NotTold},
        // the answer did not come
        {{Cause::TimedOut, "late"}, CodeIs::Wrong, CodeIs::Wrong},
        {{Cause::ReplyTooLong, "long"}, CodeIs::Wrong, CodeIs::Wrong},
        // the card's own words
        {{Cause::None, "\r\n+CSIM: 4,\"9000\"\r\n\r\nOK\r\n"}, CodeIs::Right, CodeIs::NotTold},
        {{Cause::None, "\r\n+CSIM: 4,\"63C2\"\r\n\r\nOK\r\n"}, CodeIs::Wrong, CodeIs::Wrong},
        {{Cause::None, "\r\n+CSIM: 4,\"6983\"\r\n\r\nOK\r\n"}, CodeIs::Wrong, CodeIs::Wrong},
        {{Cause::None, "\r\n+CSIM: 4,9804\r\n\r\nOK\r\n"}, CodeIs::Wrong, CodeIs::Wrong},
        {{Cause::None, "\r\n+CGLA: 4,\"63c1\"\r\n\r\nOK\r\n"}, CodeIs::Wrong, CodeIs::Wrong},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(judged({"+CPIN;", true}, row.outcome), row.proven) << row.outcome.text;
        EXPECT_EQ(judged({"+CSIM;", false}, row.outcome), row.handedOn) << row.outcome.text;
    }
}

constexpr uid_t kUser = 1000;
constexpr uid_t kOther = 1001;

class Tries : public testing::Test {
  protected:
    /** @return how long the user waits then */
    int64_t add(const char *what, CodeIs verdict, uid_t user = kUser)
    {
        tries.add(user, what, verdict, now);
        return wait(user);
    }
    int64_t wait(uid_t user = kUser) const { return tries.waitOf(user, now).count(); }

    CodeTries tries{1s};
    CodeTries::Clock::time_point now{};
};

TEST_F(Tries, DoubleTheWaitUpToAMinute)
{
    EXPECT_EQ(wait(), 0);
    for (const int64_t wait : {1000, 2000, 4000, 8000, 16000, 32000, 60000, 60000}) {
        EXPECT_EQ(add("+CPIN;", CodeIs::Wrong), wait);
        now += 1ms;
    }
}

TEST_F(Tries, CountHoweverLongAgoTheyWere)
{
    EXPECT_EQ(add("+CPIN;", CodeIs::Wrong), 1000);
    now += 999ms;
    EXPECT_EQ(wait(), 1);
    now += 1ms;
    EXPECT_EQ(wait(), 0);
    now += 24h;
    EXPECT_EQ(wait(), 0);
    EXPECT_EQ(add("+CPIN;", CodeIs::Wrong), 2000);
}

TEST_F(Tries, AreEachUsersOwn)
{
    EXPECT_EQ(add("+CPIN;", CodeIs::Wrong), 1000);
    EXPECT_EQ(wait(kOther), 0);
    EXPECT_EQ(wait(0), 0);
    EXPECT_EQ(add("+CPIN;", CodeIs::Right, kOther), 0);
    EXPECT_EQ(wait(), 1000);
    EXPECT_EQ(add("+CPIN;", CodeIs::Wrong, 0), 1000) << "root waits as well";
}

TEST_F(Tries, EndWithTheRightCodeForWhatWasTried)
{
    EXPECT_EQ(add("+CPIN;", CodeIs::Wrong), 1000);
    EXPECT_EQ(add("+CPIN;", CodeIs::NotTold), 1000);
    EXPECT_EQ(add("+CLCK \"CS\" 0;", CodeIs::Right), 1000) << "which says nothing of the PIN";
    EXPECT_EQ(add("+CPIN;", CodeIs::Right), 0);
    EXPECT_EQ(add("+CPIN;", CodeIs::Wrong), 1000) << "from the start";

    EXPECT_EQ(add("+CLCK \"CS\" 0;", CodeIs::Wrong), 2000);
    EXPECT_EQ(add("+CLCK \"CS\" 0;", CodeIs::Right), 2000);
    EXPECT_EQ(add("+CPIN;", CodeIs::Right), 0) << "then all that was wrong has been right";
}

} // namespace

// What krctl says to a user who may not do everything.
#include <fstream>
#include <sstream>

#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/krctl/bench.h"
#include "tests/krctl/json_check.h"
#include "tests/krctl/terminal_child.h"

namespace {

class Member : public testing::Test {
  protected:
    void SetUp() override
    {
        if (geteuid() != 0) GTEST_SKIP() << "only root can become others";
    }
};

/** Without the breaks of its lines. */
std::string joined(const std::string &text)
{
    std::istringstream words(text);
    std::string line;
    for (std::string word; words >> word;)
        line.append(line.empty() ? "" : " ").append(word);
    return line;
}

TEST_F(Member, IsToldWhoMayAndWhatToDo)
{
    const Bench bench("default", "{}", "0", {"--group", processes::kOneGroup});
    EXPECT_EQ(bench.krctlAsMember({"power", "status"}).output, "Radio  on\n");
    const Result refused = bench.krctlAsMember({"at", "AT+CFUN=1,1"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.output, "");
    EXPECT_EQ(
        joined(refused.errors),
        "krctl: Could not run the command: this user lacks the right device, which root and the server's own user "
        "have. where krctl at, family default, socket " +
            bench.path("at.sock") +
            " next Run krctl as one of these, or have the right given to a group of yours (--allow of "
            "kr-at-server).");
    const Result json = bench.krctlAsMember({"-J", "at", "AT+NONSENSE"});
    EXPECT_EQ(json.status, 1);
    EXPECT_EQ(violationOf(json.errors), "");
    EXPECT_EQ(valueAt(json.errors, "/error/code"), "not_allowed");
}

TEST_F(Member, CannotOpenTheLockOfTheDevice)
{
    const std::string scenario = R"({"network_lock": {"active": true}})";
    const Bench bench("qualcomm", scenario, "0", {"--group", processes::kOneGroup});
    const Result refused = bench.krctlAsMember({"-J", "lock", "unlock", "--pin-stdin"}, "12345678\n");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(valueAt(refused.errors, "/error/code"), "not_allowed") << refused.errors;
    EXPECT_EQ(valueAt(bench.krctlAsMember({"-J", "lock", "status"}).output, "/data/state"), "locked");
}

TEST_F(Member, WithLessIsToldByWhateverItAsksFor)
{
    const Bench bench("qualcomm", "{}", "0", {"--allow", std::string(processes::kOneGroup) + "=settings"});
    for (const std::vector<std::string> &words : {std::vector<std::string>{"status"}, {"signal"}, {"sim", "status"}}) {
        const Result refused = bench.krctlAsMember(words);
        EXPECT_EQ(refused.status, 1);
        EXPECT_NE(joined(refused.errors).find("lacks the right read, which root and the server's own user have."),
                  std::string::npos)
            << refused.errors;
    }
}

TEST_F(Member, DoesNotHearTheTranscriptAndKeepsTheOldOne)
{
    const Bench bench("default", "{}", "0", {"--group", processes::kOneGroup});
    const std::string old = bench.path("old");
    std::ofstream(old) << "old\n";
    const Result refused = bench.krctlAsMember({"trace", "record", old, "--", "status"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(
        joined(refused.errors)
            .starts_with("krctl: Could not hear what goes over the port: this user lacks the right trace, which "
                         "root and the server's own user have."))
        << refused.errors;
    EXPECT_EQ(processes::contents(old), "old\n");
}

TEST(WrongPin, TellsWhyTheNextOneWaits)
{
    const Bench bench("default", R"({"sim": {"pin_enabled": true}})", "0", {"--code-wait-ms", "60000"});
    EXPECT_EQ(bench.krctl({"sim", "unlock", "--pin-stdin"}, "9999\n").status, 3);
    TerminalChild waiting({KRCTL, "at", "--force", "AT+CPIN=1234"}, bench.environment(), 120);
    EXPECT_TRUE(waiting.shows("s: a code of this user was refused, after which the next one waits."))
        << waiting.screen();
    waiting.type("\003"); // Ctrl-C
    EXPECT_EQ(waiting.wait(), 130);
}

} // namespace

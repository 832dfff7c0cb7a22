// The way of codes to the modem, as scripts of what happens in a time of their own.
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "host/at_server/code_gate.h"

using host::at_server::CodeGate;
using host::at_server::codeTryIn;
using host::at_server::Command;
using host::at_server::Outcome;
using host::at_server::Ticket;
using host::protocol::Cause;
using namespace std::chrono_literals;

namespace {

using Lines = std::vector<std::string>;

constexpr uid_t kUser = 1000;
constexpr uid_t kOther = 1001;
constexpr uint32_t kTimeoutMs = 5000;
const Outcome kRight{Cause::None, "\r\nOK\r\n"};
const Outcome kWrong{Cause::None, "\r\n+CME ERROR: 16\r\n"};

/** Commands are known by the last character of their code. */
char tagOf(const Command &command)
{
    return command.text.back();
}

class Gate : public testing::Test {
  protected:
    Ticket ask(char tag, uid_t user = kUser)
    {
        Command command;
        command.text = std::string("AT+CPIN=123") + tag;
        command.timeoutMs = kTimeoutMs;
        command.done = [this, tag](const Outcome &outcome) {
            note(tag, outcome.cause == Cause::None ? "done" : "failed");
        };
        command.waits = [this, tag](uint32_t atMostMs) { note(tag, "queued " + std::to_string(atMostMs)); };
        auto code = codeTryIn(command.text);
        return gate.submit(user, std::move(command), std::move(*code), [this, tag](uint32_t ms, std::string_view why) {
            note(tag, "held " + std::to_string(ms) + (why.find("refused") != why.npos ? " refused" : " behind"));
        });
    }
    void answer(char tag, const Outcome &outcome)
    {
        const Command command = std::move(outside.extract(tag).mapped());
        command.done(outcome);
    }
    /** Time passes, and the gate is woken when it wants to be. */
    void pass(std::chrono::milliseconds time)
    {
        const auto end = now + time;
        while (wakeAt && *wakeAt <= end) {
            now = *std::exchange(wakeAt, std::nullopt);
            gate.goOn();
        }
        now = end;
    }
    /** What has happened since it was last asked for. */
    Lines happened() { return std::exchange(lines, {}); }

    void note(char tag, const std::string &what) { lines.push_back(std::string(1, tag) + ' ' + what); }

    CodeGate::Calls calls()
    {
        CodeGate::Calls calls;
        calls.submit = [this](Command command) {
            const char tag = tagOf(command);
            note(tag, "out");
            if (isDown) {
                command.done({Cause::PortDown, "gone"});
                return Ticket{0};
            }
            outside[tag] = std::move(command);
            return static_cast<Ticket>(tag);
        };
        calls.withdraw = [this](Ticket ticket) { note(static_cast<char>(ticket), "withdrawn"); };
        calls.now = [this] { return now; };
        calls.wakeIn = [this](std::chrono::milliseconds time) { wakeAt = now + time; };
        calls.refused = [this](uid_t user, std::chrono::milliseconds wait) {
            lines.push_back(std::to_string(user) + " refused " + std::to_string(wait.count()));
        };
        return calls;
    }

    Lines lines;
    std::map<char, Command> outside; ///< what the modem has to answer
    CodeGate::Clock::time_point now{};
    std::optional<CodeGate::Clock::time_point> wakeAt;
    bool isDown = false;
    CodeGate gate{1s, calls()};
};

TEST_F(Gate, LetsRightCodesPass)
{
    ask('a');
    EXPECT_EQ(happened(), (Lines{"a out"}));
    answer('a', kRight);
    ask('b');
    EXPECT_EQ(happened(), (Lines{"a done", "b out"}));
    EXPECT_EQ(gate.waiting(), 0U);
}

TEST_F(Gate, HoldsAUserBackWhoseCodeWasWrong)
{
    ask('a');
    answer('a', kWrong);
    EXPECT_EQ(happened(), (Lines{"a out", "1000 refused 1000", "a done"}));
    pass(400ms);
    ask('b');
    ask('c', kOther);
    EXPECT_EQ(happened(), (Lines{"b held 600 refused", "c out"}));
    EXPECT_EQ(gate.waiting(), 1U);
    pass(599ms);
    EXPECT_EQ(happened(), Lines{});
    pass(1ms);
    EXPECT_EQ(happened(), (Lines{"b out"}));
    answer('b', kWrong);
    EXPECT_EQ(happened(), (Lines{"1000 refused 2000", "b done"}));
}

TEST_F(Gate, SendsAUsersCodesOneAfterTheOther)
{
    ask('a');
    pass(1s);
    ask('b');
    ask('c');
    EXPECT_EQ(happened(), (Lines{"a out", "b held 4000 behind", "b held 4000 behind", "c held 9000 behind"}));
    answer('a', kWrong);
    EXPECT_EQ(happened(), (Lines{"1000 refused 1000", "b held 1000 refused", "c held 6000 behind", "a done"}));
    pass(1s);
    EXPECT_EQ(happened(), (Lines{"b out"}));
    answer('b', kRight);
    pass(0s);
    EXPECT_EQ(happened(), (Lines{"b done", "c out"}));
}

TEST_F(Gate, TellsOnWhatTheDialogueTells)
{
    ask('a');
    ask('b');
    (void)happened();
    outside['a'].waits(2000);
    EXPECT_EQ(happened(), (Lines{"a queued 2000", "b held 7000 behind"}));
}

TEST_F(Gate, CountsACodeWhoseAnswerNobodyAwaits)
{
    const Ticket a = ask('a');
    EXPECT_TRUE(gate.withdraw(a));
    EXPECT_EQ(happened(), (Lines{"a out", "a withdrawn", "1000 refused 1000"}));
    const Ticket b = ask('b');
    EXPECT_TRUE(gate.withdraw(b)) << "which was not sent, and counts for nothing";
    ask('c');
    EXPECT_EQ(happened(), (Lines{"b held 1000 refused", "c held 1000 refused"}));
    pass(1s);
    EXPECT_EQ(happened(), (Lines{"c out"}));
    EXPECT_TRUE(gate.withdraw(a)) << "long gone";
    EXPECT_EQ(happened(), Lines{});
}

TEST_F(Gate, LeavesOtherTicketsAlone)
{
    EXPECT_FALSE(gate.withdraw(0));
    EXPECT_FALSE(gate.withdraw(1));
}

TEST_F(Gate, FailsWhatItHoldsAndNoMore)
{
    ask('a');
    ask('b');
    ask('c', kOther);
    ask('d', kOther);
    (void)happened();
    gate.failAll(Cause::PortDown, "gone");
    EXPECT_EQ(happened(), (Lines{"b failed", "d failed"})) << "the dialogue fails the others";
    EXPECT_EQ(gate.waiting(), 0U);
}

TEST_F(Gate, GoesOnBehindCommandsThatFailAtOnce)
{
    ask('a');
    ask('b');
    ask('c');
    (void)happened();
    isDown = true;
    answer('a', kRight);
    pass(0s);
    EXPECT_EQ(happened(), (Lines{"a done", "b out", "b failed", "c out", "c failed"}));
    ask('d');
    EXPECT_EQ(happened(), (Lines{"d out", "d failed"})) << "no try was spent";
}

} // namespace

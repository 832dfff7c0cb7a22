// What question and answer look like when a reply comes late, as scripts of happenings.
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "host/at_server/command_queue.h"
#include "host/at_server/resync.h"

using host::at_server::Command;
using host::at_server::CommandQueue;
using host::at_server::Resync;
using namespace std::chrono_literals;

namespace {

/** Plays happenings: 't' the timer has run out, 'r' a result has come, 'l' a line, 'b' bytes, 'i' noise has delayed it for
 *  long enough, 'd' the line carries data.
 *  @return what follows from each: '-' nothing, 'q' await quiet, 'A' ask, 'H' hang up, '+' escape, 'D' done */
std::string played(Resync &resync, std::string_view happenings)
{
    std::string steps;
    for (const char what : happenings) {
        Resync::Next next = Resync::Next::Stay;
        if (what == 't') next = resync.timeIsUp();
        if (what == 'r') next = resync.heardResult();
        if (what == 'l') next = resync.heardLine();
        if (what == 'b') next = resync.heardBytes();
        if (what == 'd') next = resync.leaveData();
        if (what == 'i') resync.insist();
        steps += "-qAH+D"[static_cast<int>(next)];
    }
    return steps;
}

TEST(Resync, IsDoneAfterTwoGoodRounds)
{
    Resync resync;
    EXPECT_EQ(resync.begin(), Resync::Next::AwaitQuiet);
    EXPECT_EQ(played(resync, "trtrt"), "AqAqD");
}

struct Row {
    const char *name;
    std::string_view happenings;
    std::string_view steps;
};

TEST(Resync, CountsOnlyRoundsWithOneResult)
{
    const Row rows[] = {
        {"the late result and the own one", "trrtrtrt", "AqqAqAqD"},
        {"the late reply before the question", "blrtrtrt", "q--AqAqD"},
        {"the late reply's line behind the answer", "trltrtrt", "AqqAqAqD"},
        {"one question unanswered: three rounds", "tttrtrtrt", "AqAqAqAqD"},
        {"a burst of answers to three questions", "tttttrrrtrtrt", "AqAqAqq-AqAqD"},
        {"quiet is disturbed and starts anew", "trbbtrt", "AqqqAqD"},
        {"bytes of the answer do not matter", "tbbrtrt", "A--qAqD"},
        {"noise delays it no longer", "bbibbtbrbltrblt", "qq---A-q--Aq--D"},
        {"a stray result counts all the same", "itrrtrtrt", "-AqqAqAqD"},
        {"a line that carries data is left first", "dtttrtrt", "H+qAqAqD"},
        {"what comes meanwhile does not matter", "dbrltbrlttrtrt", "H---+---qAqAqD"},
        {"silence may be such a line", "ttttttttrtrtrt", "AqAqA+qAqAqAqD"},
    };
    for (const Row &row : rows) {
        Resync resync;
        resync.begin();
        EXPECT_EQ(played(resync, row.happenings), row.steps) << row.name;
    }
}

TEST(Resync, CountsQuestionsWithoutAnswer)
{
    Resync resync;
    resync.begin();
    played(resync, "tttttt");
    EXPECT_EQ(resync.failedTries(), 3U);
    played(resync, "ttr");
    EXPECT_EQ(resync.failedTries(), 0U);
}

class Queue : public testing::Test {
  protected:
    host::at_server::Ticket push(uint32_t timeoutMs, uint64_t session = 1)
    {
        Command command;
        command.timeoutMs = timeoutMs;
        command.session = session;
        const size_t place = told.size();
        told.emplace_back();
        command.waits = [this, place](uint32_t atMostMs) { told[place].push_back(atMostMs); };
        return queue.push(std::move(command));
    }

    CommandQueue queue;
    std::vector<std::vector<uint32_t>> told;
    const CommandQueue::Clock::time_point start = CommandQueue::Clock::now();
};

using Times = std::vector<uint32_t>;

TEST_F(Queue, TellsEachClientWhatComesBeforeIt)
{
    push(1000);
    push(5000);
    push(20000);
    queue.tellWaits(300, start);
    EXPECT_EQ(told[0], Times{300});
    EXPECT_EQ(told[1], Times{1300});
    EXPECT_EQ(told[2], Times{6300});
}

TEST_F(Queue, TellsAgainWhatHasChangedOnceASecond)
{
    const auto first = push(10000);
    push(1000);
    queue.tellWaits(5000, start);
    queue.tellWaits(4000, start + 1000ms);
    EXPECT_EQ(told[1], Times{15000}) << "as everybody could reckon";
    EXPECT_TRUE(queue.remove(first));
    queue.tellWaits(3900, start + 999ms);
    EXPECT_EQ(told[1], Times{15000}) << "too soon";
    queue.tellWaits(3000, start + 2000ms);
    EXPECT_EQ(told[1], (Times{15000, 3000}));
    EXPECT_FALSE(queue.remove(first));
}

/** Plays happenings: a letter is a command of that session, '.' the next one's turn, '!' and a letter a charge.
 *  @return whose turns there were */
std::string turns(std::string_view happenings)
{
    CommandQueue queue;
    std::string order;
    for (size_t i = 0; i < happenings.size(); ++i) {
        const char what = happenings[i];
        Command command;
        command.session = static_cast<unsigned char>(what);
        if (what == '.')
            order += static_cast<char>(queue.pop().command.session);
        else if (what == '!')
            queue.charge(static_cast<unsigned char>(happenings[++i]));
        else
            queue.push(std::move(command));
    }
    EXPECT_TRUE(queue.isEmpty()) << happenings;
    EXPECT_EQ(queue.size(), 0U) << happenings;
    return order;
}

struct TurnsRow {
    const char *name;
    std::string_view happenings;
    std::string_view order;
};

TEST_F(Queue, GivesClientsTheirTurns)
{
    const TurnsRow rows[] = {
        {"one alone", "aaa...", "aaa"},
        {"first come first served", "abc...", "abc"},
        {"one with many does not hold up the others", "aaaabc......", "abcaaa"},
        {"who comes later waits for one command of each", "aaa.b...", "aaba"},
        {"who was charged waits behind the others", "ab!a..", "ba"},
        {"and behind those who come before the next turn", "a!abc...", "bca"},
        {"but not behind those who come later", "a!ab.b..", "bab"},
        {"one turn pays", "aa!ab.b...", "baba"},
        {"who has nothing waiting is charged for what it sends next", "!aab..", "ba"},
        {"alone it does not matter", "a!a.a.", "aa"},
    };
    for (const TurnsRow &row : rows)
        EXPECT_EQ(turns(row.happenings), row.order) << row.name;
}

TEST_F(Queue, KeepsAClientsOwnOrderWhenOneIsTakenBack)
{
    const auto first = push(1);
    const auto second = push(2);
    const auto third = push(3);
    EXPECT_NE(first, 0U);
    EXPECT_TRUE(queue.remove(second));
    EXPECT_EQ(queue.size(), 2U);
    EXPECT_EQ(queue.pop().ticket, first);
    EXPECT_EQ(queue.pop().ticket, third);
    EXPECT_FALSE(queue.remove(third));
    EXPECT_TRUE(queue.isEmpty());
}

TEST_F(Queue, TellsWaitsInTheOrderOfTurns)
{
    push(1000, 1);
    push(5000, 1);
    push(20000, 2);
    queue.tellWaits(0, start);
    EXPECT_EQ(told, (std::vector<Times>{{0}, {21000}, {1000}}));
}

TEST_F(Queue, CountsTheTimeUntilACommandEnds)
{
    constexpr uid_t kAnna = 1000;
    constexpr uid_t kBert = 1001;
    constexpr int kTurns = 10;
    for (int i = 0; i < kTurns; ++i) {
        for (const uid_t user : {kAnna, kBert}) {
            Command command;
            command.session = command.user = user;
            queue.push(std::move(command));
        }
    }
    {
        const auto running = queue.pop();
        EXPECT_EQ(running.command.user, kAnna);
        const auto since = CommandQueue::Clock::now();
        while (CommandQueue::Clock::now() - since < 50ms) {
        }
    }
    std::vector<CommandQueue::Entry> endless; // of which no time counts
    for (int i = 0; i < kTurns; ++i) {
        endless.push_back(queue.pop());
        EXPECT_EQ(endless.back().command.user, kBert) << i;
    }
}

TEST_F(Queue, TellsNoMoreThanANumberHolds)
{
    push(UINT32_MAX);
    push(1);
    queue.tellWaits(UINT32_MAX, start);
    EXPECT_EQ(told[1], Times{UINT32_MAX});
}

} // namespace

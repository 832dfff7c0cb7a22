// What question and answer look like when a reply comes late, as scripts of happenings.
#include "host/at_server/command_queue.h"
#include "host/at_server/resync.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

using host::at_server::Command;
using host::at_server::CommandQueue;
using host::at_server::Resync;
using namespace std::chrono_literals;

namespace {

/** Plays happenings: 't' the timer has run out, 'k' an OK has come, 'e' another result, 'l' a line, 'b' bytes.
 *  @return what follows from each: '-' nothing, 'q' await quiet, 'A' ask, 'D' done */
std::string played(Resync &resync, std::string_view happenings)
{
    std::string steps;
    for (const char what : happenings) {
        Resync::Next next = Resync::Next::Stay;
        if (what == 't') next = resync.timeIsUp();
        if (what == 'k' || what == 'e') next = resync.heardResult(what == 'k');
        if (what == 'l') next = resync.heardLine();
        if (what == 'b') next = resync.heardBytes();
        steps += "-qAD"[static_cast<int>(next)];
    }
    return steps;
}

TEST(Resync, IsDoneAfterTwoGoodRounds)
{
    Resync resync;
    EXPECT_EQ(resync.begin(), Resync::Next::AwaitQuiet);
    EXPECT_EQ(played(resync, "tktkt"), "AqAqD");
}

struct Row {
    const char *name;
    std::string_view happenings;
    std::string_view steps;
};

TEST(Resync, CountsOnlyRoundsWithOneOk)
{
    const Row rows[] = {
        {"the late OK and the own one", "tkktktkt", "AqqAqAqD"},
        {"the late reply before the question", "blktktkt", "q--AqAqD"},
        {"the late reply's line behind the answer", "tkltktkt", "AqqAqAqD"},
        {"an error as the answer", "tetktkt", "AqAqAqD"},
        {"one question unanswered: three rounds", "tttktktkt", "AqAqAqAqD"},
        {"a burst of answers to three questions", "tttttkkktktkt", "AqAqAqq-AqAqD"},
        {"quiet is disturbed and starts anew", "tkbbtkt", "AqqqAqD"},
        {"bytes of the answer do not matter", "tbbktkt", "A--qAqD"},
    };
    for (const Row &row : rows) {
        Resync resync;
        resync.begin();
        EXPECT_EQ(played(resync, row.happenings), row.steps) << row.name;
    }
}

TEST(Resync, GoesOnOnALineThatIsNeverQuiet)
{
    Resync resync;
    resync.begin();
    const std::string steps = played(resync, std::string(200, 'b'));
    EXPECT_EQ(steps.find('-'), 50U);
    EXPECT_EQ(steps.find('q', 50), std::string::npos) << "the timer is left to run out";
    EXPECT_EQ(played(resync, "t"), "A");
}

TEST(Resync, CountsQuestionsWithoutAnswer)
{
    Resync resync;
    resync.begin();
    played(resync, "tttttt");
    EXPECT_EQ(resync.failedTries(), 3U);
    played(resync, "tk");
    EXPECT_EQ(resync.failedTries(), 0U);
}

class Queue : public testing::Test {
  protected:
    host::at_server::Ticket push(uint32_t timeoutMs)
    {
        Command command;
        command.timeoutMs = timeoutMs;
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

TEST_F(Queue, IsFirstComeFirstServed)
{
    const auto first = push(1);
    const auto second = push(2);
    EXPECT_NE(first, 0U);
    EXPECT_EQ(queue.pop().ticket, first);
    EXPECT_EQ(queue.pop().ticket, second);
    EXPECT_TRUE(queue.isEmpty());
}

TEST_F(Queue, TellsNoMoreThanANumberHolds)
{
    push(UINT32_MAX);
    push(1);
    queue.tellWaits(UINT32_MAX, start);
    EXPECT_EQ(told[1], Times{UINT32_MAX});
}

} // namespace

#include <array>
#include <csignal>
#include <string>
#include <vector>

#include <unistd.h>

#include <gtest/gtest.h>

#include "host/event_loop/event_loop.h"

using namespace std::chrono_literals;

namespace {

struct Pipe {
    Pipe() { EXPECT_EQ(pipe(ends.data()), 0); }
    ~Pipe()
    {
        close(ends[0]);
        close(ends[1]);
    }
    Pipe(const Pipe &) = delete;
    Pipe &operator=(const Pipe &) = delete;
    void put(char byte) const { EXPECT_EQ(write(ends[1], &byte, 1), 1); }
    char take() const
    {
        char byte = 0;
        EXPECT_EQ(read(ends[0], &byte, 1), 1);
        return byte;
    }
    std::array<int, 2> ends{};
};

TEST(EventLoop, ReturnsWhenNothingIsLeftToWaitFor)
{
    host::EventLoop loop;
    loop.run();
}

TEST(EventLoop, FiresTimersInOrderOfTheirTime)
{
    host::EventLoop loop;
    std::string order;
    host::Timer later(loop, [&] { order += 'b'; });
    host::Timer sooner(loop, [&] { order += 'a'; });
    host::Timer never(loop, [&] { order += 'x'; });
    later.start(20ms);
    sooner.start(1ms);
    never.start(10ms);
    never.cancel();
    loop.run();
    EXPECT_EQ(order, "ab");
}

TEST(EventLoop, ReadsUntilAWatchEndsItself)
{
    host::EventLoop loop;
    const Pipe pipe;
    for (const char byte : {'1', '2', '3'})
        pipe.put(byte);
    std::string taken;
    host::ReadWatch watch;
    watch = host::ReadWatch(loop, pipe.ends[0], [&] {
        taken += pipe.take();
        if (taken.size() == 2) watch.reset();
    });
    EXPECT_TRUE(watch);
    loop.run();
    EXPECT_EQ(taken, "12");
    EXPECT_FALSE(watch);
}

TEST(EventLoop, GoesOnWithAWatchThatWasMoved)
{
    host::EventLoop loop;
    const Pipe pipe;
    pipe.put('1');
    host::ReadWatch first(loop, pipe.ends[0], [&] { loop.stop(); });
    const host::ReadWatch second = std::move(first);
    loop.run();
    EXPECT_TRUE(second);
    EXPECT_EQ(pipe.take(), '1');
}

TEST(EventLoop, TellsWhenAFileCanBeWritten)
{
    host::EventLoop loop;
    const Pipe pipe;
    int calls = 0;
    const host::WriteWatch watch(loop, pipe.ends[1], [&] {
        ++calls;
        loop.stop();
    });
    loop.run();
    EXPECT_EQ(calls, 1);
}

TEST(EventLoop, HearsSignals)
{
    host::EventLoop loop;
    int calls = 0;
    const host::SignalWatch watch(loop, SIGUSR1, [&] {
        ++calls;
        loop.stop();
    });
    raise(SIGUSR1);
    loop.run();
    EXPECT_EQ(calls, 1);
}

} // namespace

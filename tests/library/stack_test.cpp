// How deep each exported function goes, measured on a painted thread stack with a host that uses next to none of it.

#include <algorithm>
#include <cstdio>
#include <string>

#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/mman.h>

#include <mainControl/mainControl.h>

#include "every_function.h"
#include "worst_replies.h"

namespace {

constexpr std::size_t kKiB = 1024;
constexpr std::size_t kRoomyStack = 512 * kKiB;
constexpr std::size_t kSmallStack = 128 * kKiB; // what musl gives a thread
constexpr unsigned char kPaint = 0xA5;

/// Runs functions on threads of their own and says how far down each of them has written.
class PaintedStack {
  public:
    explicit PaintedStack(std::size_t size)
        : size_(size), memory_(static_cast<unsigned char *>(
                           mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)))
    {
    }
    ~PaintedStack() { munmap(memory_, size_); }
    PaintedStack(const PaintedStack &) = delete;
    PaintedStack &operator=(const PaintedStack &) = delete;

    std::size_t depthOf(std::uint32_t (*call)())
    {
        call_ = call;
        pthread_attr_t attributes;
        pthread_attr_init(&attributes);
        EXPECT_EQ(pthread_attr_setstack(&attributes, memory_, size_), 0);
        pthread_t thread{};
        EXPECT_EQ(pthread_create(&thread, &attributes, run, this), 0);
        pthread_join(thread, nullptr);
        pthread_attr_destroy(&attributes);
        return depth_;
    }

  private:
    static void *run(void *self)
    {
        static_cast<PaintedStack *>(self)->measure();
        return nullptr;
    }

    void measure()
    {
        // What this function itself keeps on the stack lies above the paint and counts as used.
        constexpr std::size_t kOwn = 256;
        auto *const here = static_cast<unsigned char *>(__builtin_frame_address(0));
        std::fill(memory_, here - kOwn, kPaint);
        call_();
        depth_ = static_cast<std::size_t>(
            here - std::find_if(memory_, here, [](unsigned char byte) { return byte != kPaint; }));
    }

    std::size_t size_;
    unsigned char *memory_;
    std::uint32_t (*call_)() = nullptr;
    std::size_t depth_ = 0;
};

/// The deepest that a function goes on any platform with any of the worst replies.
std::size_t deepest(const EveryFunction &function, PaintedStack &stack)
{
    std::size_t depth = 0;
    for (const std::string &worst : worstReplies()) {
        setEveryReply(worst);
        for (g_currentPlatform = 0; g_currentPlatform <= PF_SPEADTRUM; ++g_currentPlatform)
            depth = std::max(depth, stack.depthOf(function.call));
    }
    g_currentPlatform = 0;
    return depth;
}

std::uint32_t writeTwentyKiB()
{
    volatile char room[20 * kKiB];
    for (volatile char &byte : room)
        byte = 1;
    return 0;
}

TEST(Stack, IsMeasured)
{
    PaintedStack stack(kRoomyStack);
    const std::size_t idle = stack.depthOf([] { return std::uint32_t{0}; });
    const std::size_t used = stack.depthOf(writeTwentyKiB);
    EXPECT_LE(idle, kKiB);
    EXPECT_GE(used, 20 * kKiB);
    EXPECT_LE(used, 21 * kKiB);
}

TEST(Stack, EveryFunctionStaysWithinItsLimit)
{
    PaintedStack stack(kRoomyStack);
    for (const EveryFunction &function : everyFunction()) {
        const std::size_t depth = deepest(function, stack);
        EXPECT_LE(depth, function.stackLimit) << function.name;
        std::printf("%-40s %6zu bytes\n", function.name, depth);
    }
}

TEST(Stack, EveryFunctionRunsOnASmallThread)
{
    PaintedStack stack(kSmallStack);
    for (const EveryFunction &function : everyFunction())
        EXPECT_LE(deepest(function, stack), function.stackLimit) << function.name;
}

} // namespace

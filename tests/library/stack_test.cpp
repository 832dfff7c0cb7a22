// How deep each exported function goes, measured on a painted thread stack with a host that uses next to none of it.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <mainControl/mainControl.h>

#include "tests/library/thread_on_stack.h"
#include "tests/library/worst_replies.h"
#include "tests/support/every_function.h"
#include "tests/support/filled.h"
#include "tests/support/guarded_text.h"

namespace {

constexpr size_t kKiB = 1024;
constexpr size_t kSmallStack = 128 * kKiB; // what musl gives a thread
constexpr unsigned char kPaint = 0xA5;

/** What a function finds when it is called. */
struct Setting {
    std::string reply;
    int32_t platform;
};

/** Each of the worst replies on each platform. */
std::vector<Setting> worstSettings()
{
    std::vector<Setting> settings;
    for (const std::string &reply : worstReplies())
        for (int32_t platform = 0; platform <= PF_SPEADTRUM; ++platform)
            settings.push_back({reply, platform});
    return settings;
}

/** Runs functions on threads of their own and says how far down they have written. */
class PaintedStack {
  public:
    /** The deepest that a function goes in any of the settings. */
    size_t deepest(uint32_t (*call)(), const std::vector<Setting> &settings)
    {
        size_t deepest = 0;
        runOnStack(memory_, [&] {
            for (const Setting &setting : settings) {
                setEveryReply(setting.reply);
                g_currentPlatform = setting.platform;
                deepest = std::max(deepest, depthOf(call));
            }
            g_currentPlatform = 0;
        });
        return deepest;
    }

  private:
    [[gnu::noinline]] size_t depthOf(uint32_t (*call)()) const
    {
        // What this function itself keeps on the stack lies above the paint and counts as used.
        constexpr size_t kOwn = 256;
        const char *const here = static_cast<const char *>(__builtin_frame_address(0));
        std::memset(memory_.data(), kPaint, static_cast<size_t>(here - kOwn - memory_.data()));
        call();
        const char *lowest = memory_.data();
        while (lowest + kKiB <= here && isFilledWith(kPaint, lowest, kKiB))
            lowest += kKiB;
        while (lowest < here && *lowest == static_cast<char>(kPaint))
            ++lowest;
        return static_cast<size_t>(here - lowest);
    }

    GuardedMemory memory_{kSmallStack};
};

uint32_t writeTwentyKiB()
{
    volatile char room[20 * kKiB];
    for (volatile char &byte : room)
        byte = 1;
    return 0;
}

TEST(Stack, IsMeasured)
{
    const std::vector<Setting> settings = {{"", 0}};
    PaintedStack stack;
    const size_t idle = stack.deepest([] { return uint32_t{0}; }, settings);
    const size_t used = stack.deepest(writeTwentyKiB, settings);
    EXPECT_LE(idle, kKiB);
    EXPECT_GE(used, 20 * kKiB);
    EXPECT_LE(used, 21 * kKiB);
}

TEST(Stack, EveryFunctionStaysWithinItsLimitOnASmallThread)
{
    const std::vector<Setting> settings = worstSettings();
    PaintedStack stack;
    for (const EveryFunction &function : everyFunction()) {
        const size_t depth = stack.deepest(function.call, settings);
        EXPECT_LE(depth, function.stackLimit) << function.name;
        std::printf("%-40s %6zu bytes\n", function.name, depth);
    }
}

} // namespace

// What a call takes besides the stack: few fresh pages.

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <string>

#include <sys/resource.h>

#include <gtest/gtest.h>

#include <mainControl/mainControl.h>

#include "tests/library/thread_on_stack.h"
#include "tests/library/worst_replies.h"
#include "tests/support/every_function.h"
#include "tests/support/guarded_text.h"

namespace {

long pageFaults()
{
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_minflt;
}

/** Of a first call on a fresh thread, in a process that has made the call before. The thread has a stack of its own, as
 *  libc gives a new one the pages that the last one has touched. */
long pageFaultsOf(uint32_t (*call)())
{
    call();
    const GuardedMemory stack(128 * 1024);
    long faults = -1;
    runOnStack(stack, [&] {
        const long before = pageFaults();
        call();
        faults = pageFaults() - before;
    });
    return faults;
}

uint32_t touchTwentyPages()
{
    volatile char pages[20 * 4096];
    for (size_t i = 0; i < sizeof pages; i += 4096)
        pages[i] = 1;
    return 0;
}

TEST(Footprint, IsMeasured)
{
    EXPECT_GE(pageFaultsOf(touchTwentyPages), 18);
    EXPECT_LE(pageFaultsOf([] { return uint32_t{0}; }), 1);
}

TEST(Footprint, AFirstCallOnAThreadTakesFewPages)
{
    for (const EveryFunction &function : everyFunction()) {
        if (function.stackLimit > 28 * 1024) continue; // holds the list of an operator scan
        long most = 0;
        for (const std::string &worst : worstReplies()) {
            setEveryReply(worst);
            most = std::max(most, pageFaultsOf(function.call));
        }
        EXPECT_LE(most, 8) << function.name;
        std::printf("%-40s %2ld page faults\n", function.name, most);
    }
}

} // namespace

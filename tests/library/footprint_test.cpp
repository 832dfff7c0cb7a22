// What a call takes besides the stack: few fresh pages.

#include <cstddef>
#include <cstdio>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <mainControl/mainControl.h>

#include "every_function.h"
#include "worst_replies.h"

namespace {

long pageFaults()
{
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_minflt;
}

/// Of a first call on a fresh thread, in a process that has made the call before.
long pageFaultsOf(std::uint32_t (*call)())
{
    call();
    long faults = -1;
    std::thread([&] {
        const long before = pageFaults();
        call();
        faults = pageFaults() - before;
    }).join();
    return faults;
}

std::uint32_t touchTwentyPages()
{
    volatile char pages[20 * 4096];
    for (std::size_t i = 0; i < sizeof pages; i += 4096)
        pages[i] = 1;
    return 0;
}

TEST(Footprint, IsMeasured)
{
    EXPECT_GE(pageFaultsOf(touchTwentyPages), 18);
}

TEST(Footprint, AFirstCallOnAThreadTakesFewPages)
{
    setEveryReply("\r\n460001234567890\r\n\r\nOK\r\n");
    for (const EveryFunction &function : everyFunction()) {
        if (function.stackLimit > 28 * 1024) continue; // holds the list of an operator scan
        const long faults = pageFaultsOf(function.call);
        EXPECT_LE(faults, 8) << function.name;
        std::printf("%-40s %2ld page faults\n", function.name, faults);
    }
}

} // namespace

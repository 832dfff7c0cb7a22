// What a call takes besides the stack: nothing from the heap, and few fresh pages.

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <mainControl/mainControl.h>

#include "every_function.h"
#include "worst_replies.h"

namespace {

/// Calls of the allocator while a function of the library runs, whose host makes none.
std::size_t allocations = 0;
bool isCounting = false;

void count()
{
    if (isCounting) ++allocations;
}

} // namespace

extern "C" {

// glibc's own names for what stands behind the interposed ones.
void *__libc_malloc(std::size_t);
void *__libc_calloc(std::size_t, std::size_t);
void *__libc_realloc(void *, std::size_t);
void *__libc_memalign(std::size_t, std::size_t);

void *malloc(std::size_t size)
{
    count();
    return __libc_malloc(size);
}

void *calloc(std::size_t number, std::size_t size)
{
    count();
    return __libc_calloc(number, size);
}

void *realloc(void *memory, std::size_t size)
{
    count();
    return __libc_realloc(memory, size);
}

void *aligned_alloc(std::size_t alignment, std::size_t size)
{
    count();
    return __libc_memalign(alignment, size);
}

int posix_memalign(void **memory, std::size_t alignment, std::size_t size)
{
    count();
    *memory = __libc_memalign(alignment, size);
    return *memory == nullptr ? 12 : 0;
}
}

namespace {

std::size_t allocationsOf(std::uint32_t (*call)())
{
    allocations = 0;
    isCounting = true;
    call();
    isCounting = false;
    return allocations;
}

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

std::uint32_t takeFromTheHeap()
{
    std::free(std::malloc(10000));
    return 0;
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
    EXPECT_EQ(allocationsOf([] { return std::uint32_t{0}; }), 0U);
    EXPECT_EQ(allocationsOf(takeFromTheHeap), 1U);
    EXPECT_GE(pageFaultsOf(touchTwentyPages), 18);
}

TEST(Footprint, NothingComesFromTheHeap)
{
    for (const std::string &worst : worstReplies()) {
        setEveryReply(worst);
        for (g_currentPlatform = 0; g_currentPlatform <= PF_SPEADTRUM; ++g_currentPlatform)
            for (const EveryFunction &function : everyFunction())
                EXPECT_EQ(allocationsOf(function.call), 0U) << function.name;
    }
    g_currentPlatform = 0;
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

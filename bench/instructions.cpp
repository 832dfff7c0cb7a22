// Under callgrind: one dump for each workload, of one call once everything is warm.

#include <pthread.h>
#include <valgrind/callgrind.h>

#include "bench/host.h"
#include "bench/workloads.h"

namespace {

void *countAll(void * /*nothing*/)
{
    bench::prepareLibrary();
    for (const bench::Workload &workload : bench::workloads()) {
        bench::answerWith(workload.reply);
        for (int i = 0; i < 3; ++i)
            workload.call();
        CALLGRIND_DUMP_STATS; // which begins anew
        workload.call();
        CALLGRIND_DUMP_STATS_AT(workload.name);
    }
    return nullptr;
}

} // namespace

/** On a stack of its own: what libc does with a record depends on its alignment, and that of the main thread's stack on
 *  the environment. */
int main()
{
    alignas(4096) static char stack[256 * 1024];
    pthread_attr_t attributes;
    pthread_t thread = {};
    if (pthread_attr_init(&attributes) != 0 || pthread_attr_setstack(&attributes, stack, sizeof stack) != 0) return 1;
    if (pthread_create(&thread, &attributes, countAll, nullptr) != 0) return 1;
    return pthread_join(thread, nullptr);
}

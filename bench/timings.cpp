// Every workload through the library and through the plain port, and what nobody can do without, in one process.

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include <malloc.h>

#include <benchmark/benchmark.h>

#include <mainControl/mainControl.h>

#include "bench/host.h"
#include "bench/port.h"
#include "bench/workloads.h"

namespace {

void timeLibrary(benchmark::State &state, const bench::Workload &workload)
{
    bench::answerWith(workload.reply);
    for (auto _ : state)
        workload.call();
    state.counters["bytes"] = static_cast<double>(workload.reply.size());
}

void timePort(benchmark::State &state, const bench::Workload &workload)
{
    bench::answerWith(workload.reply);
    plain::World world = bench::portWorld();
    const bench::PortCall call = bench::portCall(workload.name);
    for (auto _ : state)
        call(world);
}

/** What no call can cost less than: the raw record zeroed, the reply copied into it, and its end found. */
void timeFloor(benchmark::State &state, const bench::Workload &workload)
{
    bench::answerWith(workload.reply);
    AtClientRes raw;
    for (auto _ : state) {
        std::memset(&raw, 0, sizeof raw);
        benchmark::ClobberMemory();
        bench::copyReply(raw);
        benchmark::ClobberMemory();
        size_t length = std::strlen(raw.aucDataBuf);
        benchmark::DoNotOptimize(length);
    }
}

void timeParser(benchmark::State &state, const bench::Workload &workload)
{
    static AtRes parsed;
    std::string text(workload.reply);
    for (auto _ : state) {
        std::memcpy(text.data(), workload.reply.c_str(), workload.reply.size() + 1);
        Bk_Parse_At_Res(text.data(), &parsed);
    }
}

void timeClearing(benchmark::State &state)
{
    static AtRes parsed;
    for (auto _ : state) {
        std::memset(parsed.Paras, 0, sizeof parsed.Paras);
        benchmark::ClobberMemory();
    }
}

void registerCalls()
{
    for (const bench::Workload &workload : bench::workloads()) {
        const std::string name = workload.name;
        benchmark::RegisterBenchmark((name + "/library").c_str(), timeLibrary, workload);
        benchmark::RegisterBenchmark((name + "/port").c_str(), timePort, workload);
        benchmark::RegisterBenchmark((name + "/floor").c_str(), timeFloor, workload);
        if (name == "b" || name == "c") benchmark::RegisterBenchmark((name + "/parser").c_str(), timeParser, workload);
    }
    benchmark::RegisterBenchmark("clearing", timeClearing);
}

/** The long reply with fewer and more lines, each with a name and without. */
void registerLongReplies()
{
    static char serial[20480];
    for (const std::string kind : {"named", "bare"}) {
        for (const size_t length : {12, 16, 24, 32, 48, 64, 128, 512}) {
            const std::string reply = bench::linesOf(kind == "named" ? "+CPBR: " : "", length, 10000);
            benchmark::RegisterBenchmark((kind + '/' + std::to_string(length)).c_str(), timeLibrary,
                                         bench::Workload{"", "", reply, [] { cgsnExec(serial); }});
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    // The port's strings of 100 KB shall not cost it system calls.
    mallopt(M_MMAP_THRESHOLD, 64 << 20);
    mallopt(M_TRIM_THRESHOLD, 64 << 20);
    bench::prepareLibrary();
    registerCalls();
    registerLongReplies();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

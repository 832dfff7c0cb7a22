// Every workload through the library and through the plain port, and what nobody can do without, in one process.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include <malloc.h>

#include <mainControl/mainControl.h>

#include "host.h"
#include "port.h"
#include "workloads.h"

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

/// What no call can cost less than: the raw record zeroed, the reply copied into it, and its end found.
void timeFloor(benchmark::State &state, const bench::Workload &workload)
{
    bench::answerWith(workload.reply);
    AtClientRes raw;
    for (auto _ : state) {
        std::memset(&raw, 0, sizeof raw);
        benchmark::ClobberMemory();
        bench::copyReply(raw);
        benchmark::ClobberMemory();
        std::size_t length = std::strlen(raw.aucDataBuf);
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

void registerAll(const std::vector<bench::Workload> &lines)
{
    for (const bench::Workload &workload : bench::workloads()) {
        const std::string name = workload.name;
        benchmark::RegisterBenchmark((name + "/library").c_str(), timeLibrary, workload);
        benchmark::RegisterBenchmark((name + "/port").c_str(), timePort, workload);
        benchmark::RegisterBenchmark((name + "/floor").c_str(), timeFloor, workload);
        if (name == "b" || name == "c") benchmark::RegisterBenchmark((name + "/parser").c_str(), timeParser, workload);
    }
    benchmark::RegisterBenchmark("clearing", timeClearing);
    for (const bench::Workload &workload : lines)
        benchmark::RegisterBenchmark((std::string(workload.name) + "/lines").c_str(), timeLibrary, workload);
}

/// The long reply with fewer and more lines.
std::vector<bench::Workload> longReplies()
{
    static char serial[20480];
    std::vector<bench::Workload> replies;
    for (const char *const lineLength : {"16", "24", "32", "48", "64", "128", "512"})
        replies.push_back({lineLength, "", bench::linesOf(std::stoul(lineLength), 10000), [] { cgsnExec(serial); }});
    return replies;
}

} // namespace

int main(int argc, char **argv)
{
    // The port's strings of 100 KB shall not cost it system calls.
    mallopt(M_MMAP_THRESHOLD, 64 << 20);
    mallopt(M_TRIM_THRESHOLD, 64 << 20);
    bench::prepareLibrary();
    registerAll(longReplies());
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

#include "bench/port.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "bench/host.h"
#include "bench/outputs.h"
#include "tests/support/plain_port/api.h"
#include "tests/support/plain_port/wrappers.h"

namespace bench {
namespace {

constexpr struct {
    const char *workload;
    PortCall call;
} kCalls[] = {
    {"a", [](plain::World &world) { plain::atStart(world); }},
    {"b", [](plain::World &world) { plain::KR_getIMSI(world, sizeof text - 1, text); }},
    {"c", [](plain::World &world) { plain::cregRead(world, &creg); }},
    {"d", [](plain::World &world) { plain::cgsnExec(world, text); }},
    {"e", [](plain::World &world) { plain::cgdcontRead(world, &contexts); }},
    {"f", [](plain::World &world) { plain::copsTest(world, &networks); }},
    {"g", [](plain::World &world) { plain::cgsnExec(world, text); }},
    {"h",
     [](plain::World &world) {
         copyReply(report);
         plain::ProcessMainControlAtCallback(world, &report);
     }},
};

} // namespace

PortCall portCall(const char *workload)
{
    for (const auto &row : kCalls) {
        if (std::strcmp(row.workload, workload) == 0) return row.call;
    }
    std::abort();
}

plain::World portWorld()
{
    plain::Globals start;
    start.cereg = hear;
    return {start, nullptr};
}

} // namespace bench

namespace plain {

std::string format(const char *pattern, ...)
{
    char formatted[1024];
    std::va_list arguments;
    va_start(arguments, pattern);
    std::vsnprintf(formatted, sizeof formatted, pattern, arguments);
    va_end(arguments);
    return formatted;
}

int World::send(const std::string & /*command*/, AtClientRes *response, int32_t /*timeoutMs*/)
{
    bench::copyReply(*response);
    return 0;
}

int World::clientInit(const std::string & /*queueName*/)
{
    return 0;
}

int World::installCallback()
{
    return 0;
}

int World::decode(const std::string & /*source*/, char * /*destination*/, int32_t /*zero*/)
{
    return 0;
}

int World::invert(const std::string & /*source*/, char * /*destination*/, int32_t /*sourceLength*/)
{
    return 0;
}

void World::log(const char * /*module*/, const char * /*pattern*/, ...) {}

void World::leaveOpen(const void * /*begin*/, size_t /*size*/) {}

} // namespace plain

#ifndef BENCH_PORT_H
#define BENCH_PORT_H

#include "tests/support/plain_port/world.h"

namespace bench {

/** What the plain port does for a workload. */
using PortCall = void (*)(plain::World &world);
PortCall portCall(const char *workload);

/** The world that the port's calls run in: its host is the one of the library. */
plain::World portWorld();

} // namespace bench

#endif

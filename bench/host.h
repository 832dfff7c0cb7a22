#ifndef BENCH_HOST_H
#define BENCH_HOST_H

#include <string_view>

#include <mainControl/records.h>

/** The host of the benchmarks: it answers every command with one reply, logs nothing, and does nothing else. */
namespace bench {

/** The reply to all commands from now on; the characters stay the caller's. */
void answerWith(std::string_view reply);

/** Copies the reply into a zeroed record, as the AT-client library does. */
void copyReply(AtClientRes &response);

} // namespace bench

#endif

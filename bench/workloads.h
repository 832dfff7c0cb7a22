#ifndef BENCH_WORKLOADS_H
#define BENCH_WORKLOADS_H

#include <string>
#include <string_view>
#include <vector>

namespace bench {

/** One whole call of the library, from the caller's arguments to the caller's outputs, with the reply that it gets. */
struct Workload {
    const char *name;
    const char *what;
    std::string reply;
    void (*call)();
};

/** The calls that figures are promised for. */
const std::vector<Workload> &workloads();

/** So many characters, or a little less, of lines and an OK.
 *  @param head        what each line begins with
 *  @param lineLength  characters of a line, its line break included; more than those of the head */
std::string linesOf(std::string_view head, size_t lineLength, size_t characters);

/** Sets the callback that hears of reports. */
void prepareLibrary();

} // namespace bench

#endif

// Every wrapper and every function of the API, with any arguments and any answers of the host, against the plain port.

#include <cstdio>
#include <cstdlib>
#include <iterator>

#include "fuzz/fuzz.h"
#include "tests/support/choices.h"
#include "tests/support/plain_port/rows.h"

namespace {

std::vector<plain::Row> allCalls()
{
    std::vector<plain::Row> all;
    for (const auto rows : {plain::setWrappers, plain::networkWrappers, plain::identityCalls, plain::notificationCalls,
                            plain::networkCalls, plain::radioCalls, plain::pinAndLockCalls}) {
        std::vector<plain::Row> some = rows();
        std::move(some.begin(), some.end(), std::back_inserter(all));
    }
    return all;
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const std::vector<plain::Row> kCalls = allCalls();
    Choices choices({data, size});
    const plain::Row &call = kCalls[choices.below(kCalls.size())];
    plain::Round round(choices);
    call.run(round);
    if (round.difference.empty()) return 0;
    std::fprintf(stderr, "%s: %s\n%s\n", call.name, plain::escaped(round.difference).c_str(),
                 plain::escaped(round.script()).c_str());
    std::abort();
}

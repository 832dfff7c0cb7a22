#ifndef TESTS_SUPPORT_EVERY_WRAPPER_H
#define TESTS_SUPPORT_EVERY_WRAPPER_H

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include "tests/support/failures.h"

/** Every wrapper, in a form in which one test can run them all. */
namespace wrappers {

using Failure = scripted::FailureKind;

/** A failure that a wrapper answers with a code of its own. */
struct Exception {
    Failure failure;
    uint32_t code;
};

struct Wrapper {
    const char *name;
    /** Calls it with outputs that hold a pattern, and expects the pattern to stand if the call fails. */
    std::function<uint32_t()> call;
    std::string command;
    int32_t timeoutMs;
    std::vector<Exception> exceptions = {}; ///< every other failure is 1, and SIM busy is as +CME ERROR
    int32_t platform = 0;

    [[nodiscard]] uint32_t codeOf(Failure failure) const;
};

std::ostream &operator<<(std::ostream &out, const Wrapper &wrapper);

/** One row for each wrapper, and for each command or platform that it chooses by; the names differ. */
const std::vector<Wrapper> &all();

} // namespace wrappers

#endif

/** How a command ends when it does not do what it was asked for. */
#ifndef KRCTL_OUTPUT_FAILURE_H
#define KRCTL_OUTPUT_FAILURE_H

#include <cstdint>
#include <string>
#include <string_view>

#include "krctl/output/report.h"

namespace krctl {

/** Exit statuses of krctl. */
enum Exit : int {
    kDone = 0,
    kRefused = 1,       ///< the modem said no, or the server did to this user
    kUsage = 2,         ///< the command line, or what was typed in
    kLocked = 3,        ///< a PIN, a PUK or a lock is in the way
    kTimedOut = 4,      ///< no answer in time
    kNoServer = 5,      ///< no server, or no port
    kNotOnPlatform = 6, ///< the family has no such thing
    kInterrupted = 130,
};

/** Thrown by commands; main() shows it. */
struct Failure {
    int exitStatus = kRefused;
    std::string code;  ///< for programs: "refused", "usage", "locked", "timed_out", "no_server", "no_port", ...
    std::string what;  ///< what happened: a sentence
    std::string where; ///< where: the function of the library, the socket, the file
    std::string next;  ///< what to do next: a sentence
    Report known{};    ///< what there is to show all the same
};

Failure usageFailure(std::string what, std::string where, std::string next);
Failure interruptedFailure();

/** The family has no such thing; nothing was sent. */
Failure notOnPlatform(std::string what, std::string where, std::string next);

} // namespace krctl

#endif

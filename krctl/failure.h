/** How a command ends when it does not do what it was asked for. */
#ifndef KRCTL_FAILURE_H
#define KRCTL_FAILURE_H

#include <cstdint>
#include <string>
#include <string_view>

#include "krctl/output/report.h"

namespace krctl {

/** Exit statuses of krctl. */
enum Exit : int {
    kDone = 0,
    kRefused = 1,       ///< the modem said no
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

/** A function of the library that did not succeed, and why: from the client's last result, and if the modem answered from
 *  its answer.
 *  @param purpose      what the function was called for, behind "to": "switch the radio on"
 *  @param where        the function and the server
 *  @param finalResult  last line of the modem's last answer, such as "+CME ERROR: SIM PIN required" */
Failure failureOf(const std::string &purpose, const std::string &where, std::string_view finalResult);

/** The server or its port cannot be reached.
 *  @param result  a CLIENT_... result that is not CLIENT_OK */
Failure connectionFailure(int result, const std::string &purpose, const std::string &where);

/** A SIM that asks for something before it works, by KoraMtsSimState.
 *  @return whether it does, and then the failure has its next step */
bool isInTheWay(int32_t simState, Failure &failure);

} // namespace krctl

#endif

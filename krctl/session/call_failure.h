/** Why a call of the library did not succeed, and what to do about it. */
#ifndef KRCTL_SESSION_CALL_FAILURE_H
#define KRCTL_SESSION_CALL_FAILURE_H

#include <cstdint>
#include <string>
#include <string_view>

#include "krctl/output/failure.h"
#include "krctl/values/sim_states.h"

namespace krctl {

/** A function of the library that did not succeed, and why: from the client's last result, and if the modem answered from
 *  its answer.
 *  @param purpose      what the function was called for, behind "to": "switch the radio on"
 *  @param where        the function and the server
 *  @param finalResult  last line of the modem's last answer, such as "+CME ERROR: SIM PIN required" */
Failure failureOf(const std::string &purpose, const std::string &where, std::string_view finalResult);

/** The server or its port cannot be reached.
 *  @param result  a CLIENT_... result that is not CLIENT_OK */
Failure connectionFailure(int result, const std::string &purpose, const std::string &where);

/** A SIM that asks for something before it works.
 *  @return whether it does, and then the failure has its next step */
bool isInTheWay(SimState state, Failure &failure);

} // namespace krctl

#endif

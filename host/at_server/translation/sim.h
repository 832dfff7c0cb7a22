/** What a modem tells of its SIM: the state (3GPP TS 27.007 8.3), the tries that are left (8.65), locks (7.4). */
#ifndef HOST_AT_SERVER_TRANSLATION_SIM_H
#define HOST_AT_SERVER_TRANSLATION_SIM_H

#include "host/at/command_line.h"
#include "host/at_server/reply.h"

namespace host::at_server {

/** A state without quotes and in capitals. Words for a SIM that has no state, such as NOT INSERTED, are what 27.007 makes
 *  an error of; the library would take them for READY. */
void simState(Reply &reply, const at::Command &command);

/** A line a code, its name without quotes. */
void triesACodeALine(Reply &reply, const at::Command &command);

/** A line a class, which begins with the state. A lock that is on for some class is on: the library reads the first line,
 *  so those that are on come first. */
void facilityState(Reply &reply, const at::Command &command);

} // namespace host::at_server

#endif

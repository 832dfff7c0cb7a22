/** Final results: errors by number as the texts that the library reads, refusals in a modem's own words, calls. */
#ifndef HOST_AT_SERVER_TRANSLATION_ERRORS_H
#define HOST_AT_SERVER_TRANSLATION_ERRORS_H

#include <string_view>

#include "host/at/command_line.h"
#include "host/at_server/reply.h"

namespace host::at_server {

/** Whether the errors of a command are those of the SIM, which the library tells apart by their texts. */
bool asksForSim(const at::Command &command);

/** A +CME ERROR with a number, or a text in any case, as the text of 3GPP TS 27.007 9.2; one that is not there stays. */
void errorAsText(Reply &reply);

/** Refusals in words of the modem's own as the library knows them, and a call's result as a line with OK (CONNECT) or
 *  ERROR (the others) behind it. What the library has no word for becomes a line before ERROR, so that nothing is lost. */
void resultAsKnown(Reply &reply, std::string_view command);

} // namespace host::at_server

#endif

/** Modems say one thing in many words, and the library reads one form of each. Here a reply or a report takes that form.
 *
 *  Its meaning never changes: nothing is invented, what the modem has not told stays empty, and a line that is not
 *  understood goes out as it came.
 *
 *  | command                       | what is done                                                          | where         |
 *  |-------------------------------|-----------------------------------------------------------------------|---------------|
 *  | +CREG?, +CGREG?, +CEREG?,     | codes in quotes, numbers without them, a routing area in its place;   | registration  |
 *  | and their reports             | +CREG in five fields or more, the others without their name           |               |
 *  | +COPS=?, +COPS=5              | an operator a line, without brackets; no lists of modes and formats   | operators     |
 *  | +COPS?                        | the name in quotes                                                    | operators     |
 *  | both                          | hexadecimal UCS-2 as text, where the modem's alphabet is that         | operators     |
 *  | +CPIN?                        | the state in the words of 3GPP TS 27.007; what is none as the error   | sim           |
 *  | +CPINR, +CLCK query           | a line a code; a line a class, those that are on first                | sim           |
 *  | what asks for the SIM         | the number of an error as its text                                    | errors        |
 *  | any                           | refusals in a modem's own words as errors; a call's result as a line  | errors        |
 *  | identities                    | without quotes, on one line                                           | values        |
 *  | +CSQ, +CESQ, +CFUN? and such  | numbers without quotes and blanks                                     | values        |
 *  | +CGDCONT?                     | six fields                                                            | values        |
 *  | ^SYSINFO                      | no blank behind the name's colon, but on TSP                          | values        |
 */
#ifndef HOST_AT_SERVER_TRANSLATION_TRANSLATION_H
#define HOST_AT_SERVER_TRANSLATION_TRANSLATION_H

#include <string>
#include <string_view>
#include <vector>

#include "host/at_server/reply.h"
#include "host/at_server/translation/operators.h"
#include "host/family/family.h"

namespace host::at_server {

using family::Family;

/** A modem's reply as the library reads it, form and framing. */
std::string asLibraryReads(Reply reply, std::string_view command, Family family, Alphabet alphabet = Alphabet::Plain);

/** A report and the lines that belong to it, as the library reads them. */
std::string reportAsLibraryReads(std::vector<std::string> lines);

} // namespace host::at_server

#endif

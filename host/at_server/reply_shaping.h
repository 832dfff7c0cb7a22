/** What the library reads differently from what modems send: the few replies that are rewritten, by command and family.
 *
 *  | command                   | family        | what is done                                                       |
 *  |---------------------------|---------------|--------------------------------------------------------------------|
 *  | +CEREG, +CGREG, no set    | all           | lines lose their name, with which they would pass for reports      |
 *  | +COPS=?, +COPS=5          | all           | an operator a line, without brackets; the lists of modes and       |
 *  |                           |               | formats at the end are left out                                    |
 *  | ^SYSINFO                  | all but TSP   | no blank behind the name's colon                                   |
 *  | any with a call's result  | all           | the result becomes a line, and behind it comes OK (CONNECT) or     |
 *  |                           |               | ERROR (the others)                                                 |
 */
#ifndef HOST_AT_SERVER_REPLY_SHAPING_H
#define HOST_AT_SERVER_REPLY_SHAPING_H

#include <string_view>

#include "host/at_server/reply.h"
#include "host/family/family.h"

namespace host::at_server {

using family::Family;

/** @param reply  its lines with a blank behind each name's colon */
void shape(Reply &reply, std::string_view command, Family family);

/** A modem's reply as the library reads it: blanks, shape and framing. */
std::string asLibraryReads(Reply reply, std::string_view command, Family family);

} // namespace host::at_server

#endif

#ifndef TESTS_LIBRARY_WORST_REPLIES_H
#define TESTS_LIBRARY_WORST_REPLIES_H

#include <string>
#include <vector>

/** A host that answers every command alike, uses next to no stack and nothing of the heap: for tests of what the library
 *  itself takes. */

/** The bodies that make the parser work hardest within the longest reply, and short ones. */
std::vector<std::string> worstReplies();

/** What every command is answered with from now on, and what the parser and the codec are called with. */
void setEveryReply(const std::string &reply);

#endif

/** What a command can be answered by: under which names, and with which numbers that stand alone on their line. Only what
 *  is known is held against a modem; of other commands nothing is said. */
#ifndef HOST_AT_ANSWERS_H
#define HOST_AT_ANSWERS_H

#include <string_view>
#include <vector>

#include "host/at/command_line.h"

namespace host::at {

/** A command of the line that is answered under this name; nullptr if there is none. */
const Command *answeredUnder(std::string_view name, const std::vector<Command> &commands);

/** Whether lines of any look may stand in the answer, such as the text of a message. */
bool tellsTexts(const std::vector<Command> &commands);

/** Whether a line is nothing but digits, and as many as the number of a subscriber, a device or a card has. */
bool isIdentity(std::string_view line);

/** Whether a line that is an identity may stand in the answer; identities are told apart by their length. */
bool canAnswerIdentity(std::string_view identity, const std::vector<Command> &commands);

} // namespace host::at

#endif

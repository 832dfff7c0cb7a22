/** Raw commands and their replies. */
#ifndef KRCTL_COMMANDS_RAW_COMMAND_H
#define KRCTL_COMMANDS_RAW_COMMAND_H

#include <string>
#include <string_view>
#include <vector>

namespace krctl {

/** Whether a command enters or changes a PIN, a PUK, a password or a lock, alone or among others on its line. A query of a
 *  facility lock does not. */
bool changesSecrets(std::string_view command);

/** The lines of a reply in standard framing, without the empty ones. */
std::vector<std::string> linesOf(std::string_view reply);

} // namespace krctl

#endif

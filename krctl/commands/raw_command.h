/** Replies to raw commands. */
#ifndef KRCTL_COMMANDS_RAW_COMMAND_H
#define KRCTL_COMMANDS_RAW_COMMAND_H

#include <string>
#include <string_view>
#include <vector>

namespace krctl {

/** The lines of a reply in standard framing, without the empty ones. */
std::vector<std::string> linesOf(std::string_view reply);

} // namespace krctl

#endif

/** What a shell offers to complete a command line with, from the tables of commands and of options. */
#ifndef KRCTL_COMMAND_LINE_COMPLETION_H
#define KRCTL_COMMAND_LINE_COMPLETION_H

#include <string>
#include <vector>

namespace krctl {

/** @param words  the command line without the program's name; the last is the one to be completed, perhaps empty
 *  @return what it may become; nothing where a file name or a free text stands */
std::vector<std::string> completionsOf(const std::vector<std::string> &words);

} // namespace krctl

#endif

/** Help texts, all from the tables of commands and of options. */
#ifndef KRCTL_COMMAND_LINE_HELP_H
#define KRCTL_COMMAND_LINE_HELP_H

#include <string>

#include "krctl/commands/command.h"

namespace krctl {

std::string versionText();
/** What "krctl" alone says. */
std::string shortHelp();
/** Help for a command, for a word with commands below it, or for all of krctl if the path is empty. */
std::string helpFor(const std::string &path);

/** A parameter as it is typed: "CODE", "--force", "--act ACT", "-J, --json", "--socket PATH". */
std::string synopsisOf(const Parameter &parameter);

/** What a parameter is, with its possible values if they are words. */
std::string helpOf(const Parameter &parameter);

/** Of a parameter, for sentences: "one of on, off", "a number from 0 to 22". */
std::string possibleValues(const Parameter &parameter);

} // namespace krctl

#endif

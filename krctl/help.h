/** Help texts and what is said about a command line that cannot be understood, all from the table of commands. */
#ifndef KRCTL_HELP_H
#define KRCTL_HELP_H

#include <string>
#include <string_view>
#include <vector>

#include "krctl/command.h"
#include "krctl/failure.h"

namespace krctl {

/** @return the command of exactly these words, or NULL */
const Command *commandAt(std::string_view path);

std::string versionText();
/** What "krctl" alone says. */
std::string shortHelp();
/** Help for a command, for a word with commands below it, or for all of krctl if the path is empty. */
std::string helpFor(std::string_view path);

/** Of a parameter, for sentences: "one of on, off", "a number from 0 to 22". */
std::string possibleValues(const Parameter &parameter);

/** The word of the list that was probably meant.
 *  @return empty if none is close */
std::string closestWord(std::string_view word, const std::vector<std::string> &known);

Failure unexpectedWord(const std::string &path, const std::string &word);
Failure missingVerb(const std::string &path);

} // namespace krctl

#endif

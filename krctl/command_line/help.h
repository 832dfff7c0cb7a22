/** Help texts and what is said about a command line that cannot be understood, all from the table of commands. */
#ifndef KRCTL_COMMAND_LINE_HELP_H
#define KRCTL_COMMAND_LINE_HELP_H

#include <string>
#include <string_view>
#include <vector>

#include "krctl/commands/command.h"
#include "krctl/output/failure.h"

namespace krctl {

/** @return the command of exactly these words, or NULL */
const Command *commandAt(std::string_view path);

/** @return the words of the command that a command line begins with, options left out; empty if there is none */
std::string commandPathIn(const std::vector<std::string> &words);

/** The words that may follow a path. */
std::vector<std::string> wordsBelow(const std::string &path);
/** The long options of a command, those of every command among them. */
std::vector<std::string> optionsOf(const Command *command);

std::string versionText();
/** What "krctl" alone says. */
std::string shortHelp();
/** Help for a command, for a word with commands below it, or for all of krctl if the path is empty. */
std::string helpFor(std::string_view path);

/** What a parameter is, with its possible values if they are words. */
std::string helpOf(const Parameter &parameter);

/** Of a parameter, for sentences: "one of on, off", "a number from 0 to 22". */
std::string possibleValues(const Parameter &parameter);

/** The word of the list that was probably meant.
 *  @return empty if none is close */
std::string closestWord(std::string_view word, const std::vector<std::string> &known);

Failure unexpectedWord(const std::string &path, const std::string &word);
Failure missingVerb(const std::string &path);

} // namespace krctl

#endif

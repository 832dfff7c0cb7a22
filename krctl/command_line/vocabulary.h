/** Which words a command line may have, looked up in the tables of commands and of options. */
#ifndef KRCTL_COMMAND_LINE_VOCABULARY_H
#define KRCTL_COMMAND_LINE_VOCABULARY_H

#include <string>
#include <string_view>
#include <vector>

#include "krctl/commands/command.h"

namespace krctl {

/** @return the command of exactly these words, or NULL */
const Command *commandAt(std::string_view path);

/** The commands whose words go on behind a path; all of them if it is empty. */
std::vector<const Command *> commandsBelow(std::string_view path);

/** The words that may follow a path. */
std::vector<std::string> wordsBelow(std::string_view path);

/** A path and a word more. */
std::string joinedPath(const std::string &path, std::string_view word);

/** The long names of the options of every command, and of those of one.
 *  @param command  may be NULL */
std::vector<std::string> optionsOf(const Command *command);

/** An option of every command, or of one, by its long name.
 *  @param command  may be NULL
 *  @return NULL if there is none */
const Parameter *optionNamed(std::string_view name, const Command *command);

} // namespace krctl

#endif

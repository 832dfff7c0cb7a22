/** What is said of a command line that cannot be carried out: what is wrong with it, and what was probably meant.
 *  The path is that of the words that were understood, perhaps empty. */
#ifndef KRCTL_COMMAND_LINE_MISTAKES_H
#define KRCTL_COMMAND_LINE_MISTAKES_H

#include <string>

#include "krctl/commands/command.h"
#include "krctl/output/failure.h"

namespace krctl {

/** A word or an option that cannot stand there. */
Failure unexpectedWord(const std::string &path, const std::string &word);

/** The words of a command are not complete. */
Failure missingVerb(const std::string &path);

Failure missingArgument(const std::string &path, const Parameter &parameter);
Failure impossibleValue(const std::string &path, const Parameter &parameter, const std::string &text);

/** Something stands behind "--" for which the command has no use. */
Failure unexpectedRest(const std::string &path);

/** @param what  a sentence without its full stop */
Failure malformedLine(const std::string &path, const std::string &what);

} // namespace krctl

#endif

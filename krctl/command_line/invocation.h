/** The command line. */
#ifndef KRCTL_COMMAND_LINE_INVOCATION_H
#define KRCTL_COMMAND_LINE_INVOCATION_H

#include <string>
#include <vector>

#include "krctl/commands/command.h"
#include "krctl/output/output.h"
#include "krctl/session/session.h"

namespace krctl {

struct Invocation {
    const Command *command = nullptr; ///< NULL if a text is asked for instead
    std::string text;                 ///< help or version
    Arguments arguments;
    SessionOptions session;
};

/** What stands in front of "--" decides on the form and the colour also of failures of the command line itself. */
struct Appearance {
    Form form = Form::Table;
    bool wantsColour = true;
};
Appearance appearanceOf(const std::vector<std::string> &words);

/** @param words  the arguments without the program's name
 *  @return what to do; throws a Failure if that cannot be told */
Invocation invocationOf(const std::vector<std::string> &words);

} // namespace krctl

#endif

/** The command line. */
#ifndef KRCTL_COMMAND_LINE_INVOCATION_H
#define KRCTL_COMMAND_LINE_INVOCATION_H

#include <optional>
#include <string>
#include <vector>

#include "krctl/commands/command.h"
#include "krctl/output/failure.h"
#include "krctl/output/output.h"
#include "krctl/session/session.h"

namespace krctl {

/** What a command line asks for, and how: either a failure, a command or a text. */
struct Invocation {
    std::optional<Failure> failure{}; ///< why there is nothing to do
    const Command *command = nullptr; ///< NULL if a text is asked for instead
    std::string text;                 ///< help, version, completions
    Arguments arguments;
    SessionOptions session;

    // What is told also of a command line that fails.
    std::string path; ///< of its command, as far as it was understood
    Form form = Form::Table;
    bool wantsColour = true;
};

/** @param words  the arguments without the program's name */
Invocation invocationOf(const std::vector<std::string> &words);

} // namespace krctl

#endif

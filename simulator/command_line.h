/** The commands of a line with their arguments, for those that answer them. */
#ifndef SIMULATOR_COMMAND_LINE_H
#define SIMULATOR_COMMAND_LINE_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/at/command_line.h"

namespace simulator {

using host::at::Form;

struct Argument {
    std::string text; ///< without its quotes
    bool isQuoted = false;
};

struct Command {
    std::string name; ///< in capitals, with its sign; of a basic command its letter; empty if none
    Form form = Form::Execute;
    std::vector<Argument> arguments; ///< of Form::Set

    /** An argument that is not there is empty. */
    std::string_view text(size_t index) const;
    /** The argument as a whole number, quoted or not; nothing if it is empty or is none. */
    std::optional<int> number(size_t index) const;
    /** The same within limits. */
    std::optional<int> number(size_t index, int lowest, int highest) const;
};

/** @param line  without its carriage return
 *  @return nothing if the line does not begin with AT: a modem does not answer it. Text that is no command is one
 *          that nobody knows. */
std::optional<std::vector<Command>> parseCommandLine(std::string_view line);

} // namespace simulator

#endif

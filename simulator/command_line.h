/** An AT command line and the commands in it (V.250 5.2 and 5.4): "AT+CMEE=2;+CREG?". */
#ifndef SIMULATOR_COMMAND_LINE_H
#define SIMULATOR_COMMAND_LINE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

enum class Form : uint8_t { Execute, Read, Test, Set };

struct Argument {
    std::string text; ///< without its quotes
    bool isQuoted = false;
};

struct Command {
    std::string name; ///< upper case with its sign: "+CREG", "*CGDFLT"; of a basic command its letter: "E", "&F"
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
 *  @return nothing if the line does not begin with AT: a modem does not answer it. Text that is no command becomes a
 *          command without a name, or with the name that it has. */
std::optional<std::vector<Command>> parseCommandLine(std::string_view line);

} // namespace simulator

#endif

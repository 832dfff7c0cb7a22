/** The anatomy of AT texts: what a command asks for, and how a line of a modem is made up. Pure functions over views. */
#ifndef HOST_AT_SERVER_AT_TEXT_H
#define HOST_AT_SERVER_AT_TEXT_H

#include <optional>
#include <string_view>
#include <vector>

namespace host::at_server {

/** A line that begins with a name, such as "+CREG: 2,1" or "^MODE:5,4". */
struct NamedLine {
    std::string_view name;       ///< with its sign, without its colon
    std::string_view parameters; ///< behind the colon and the blanks that follow it
    bool hasBlank = false;       ///< behind the colon
};

/** @return nothing for a line without a sign, a name and a colon */
std::optional<NamedLine> namedLine(std::string_view line);

enum class Form { Execute, Read, Test, Set };

/** One command of a command line: "AT+CREG?;+CSQ" has two. */
struct CommandPart {
    std::string_view name; ///< "+CREG"; of a basic command its letter
    Form form = Form::Execute;
    std::string_view parameters; ///< of a set command
};

std::vector<CommandPart> commandParts(std::string_view command);

/** Whether names agree in all but case and sign: "+HVER" is answered by "^HVER". */
bool isSameName(std::string_view one, std::string_view other);

/** Fields between commas outside quotes, blanks around them taken off; an empty text has one, which is empty. */
std::vector<std::string_view> fields(std::string_view parameters);

std::string_view withoutBlanksBehind(std::string_view line);
bool isSameWithoutCase(std::string_view one, std::string_view other);

} // namespace host::at_server

#endif

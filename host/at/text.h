/** What AT texts are made of: signs, names, fields, and lines that begin with a name. Pure functions over views. */
#ifndef HOST_AT_TEXT_H
#define HOST_AT_TEXT_H

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace host::at {

/** Whether a character stands in front of the names of extended commands, and of what they are answered by. */
constexpr bool isSign(char character)
{
    return std::string_view("+^$%*#!_@").find(character) != std::string_view::npos;
}

/** Of a name behind its sign. */
bool isNameCharacter(char character);

/** Where what is none of these characters begins, or the end. */
size_t skip(std::string_view text, std::string_view characters, size_t at);

std::string_view withoutBlanksBehind(std::string_view text);
std::string_view withoutBlanksAround(std::string_view text);

bool isSameWithoutCase(std::string_view one, std::string_view other);
/** Whether names agree in all but case and sign: "+HVER" is answered by "^HVER". */
bool isSameName(std::string_view one, std::string_view other);

/** Where a separator stands outside quotes, or the end. */
size_t findOutsideQuotes(std::string_view text, char separator, size_t at = 0);
/** Fields between commas outside quotes, blanks around them taken off; an empty text has one, which is empty. */
std::vector<std::string_view> fields(std::string_view parameters);

/** A line that begins with a name, such as "+CREG: 2,1", "+CREG : 2,1" or "^MODE:5,4". */
struct NamedLine {
    std::string_view name;       ///< with its sign, without its colon
    std::string_view parameters; ///< behind the colon and the blanks that follow it
};

/** @return nothing for a line without a sign, a name and a colon */
std::optional<NamedLine> namedLine(std::string_view line);

} // namespace host::at

#endif

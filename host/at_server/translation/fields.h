/** Fields of a line, as modems write them and as the library reads them. */
#ifndef HOST_AT_SERVER_TRANSLATION_FIELDS_H
#define HOST_AT_SERVER_TRANSLATION_FIELDS_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/at/command_line.h"

namespace host::at_server {

/** What a line tells in reply to a command: what stands behind its name, or all of a line that has none.
 *  @return nothing for a line under another name */
std::optional<std::string_view> parametersOf(std::string_view line, const at::Command &command);

/** Whether each quote of a text is closed; where one is not, nobody knows what belongs to which field. */
bool isWhole(std::string_view text);

/** A field without the quotes around it. */
std::string_view unquoted(std::string_view field);
/** A text in quotes. */
std::string inQuotes(std::string_view text);
bool isQuoted(std::string_view field);

bool isDigits(std::string_view text);
bool isHexadecimal(std::string_view text);

/** The number that a field is, in quotes or not, with or without zeros in front; nothing for one of more than 9 digits. */
std::optional<int> numberIn(std::string_view field);

/** Fields with commas between them. */
std::string joined(const std::vector<std::string> &fields);

std::string inCapitals(std::string_view text);

} // namespace host::at_server

#endif

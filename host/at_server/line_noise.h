/** Bytes of a line that no text has: a bad cable, another speed or a modem that starts puts them around what is said. */
#ifndef HOST_AT_SERVER_LINE_NOISE_H
#define HOST_AT_SERVER_LINE_NOISE_H

#include <string_view>

namespace host::at_server {

/** A control character other than the tab; it is passed over wherever it stands. */
bool isNoText(char byte);

/** Whether a line has bytes of eight bits only, and is no UTF-8. */
bool isNoise(std::string_view line);

/** A line without the bytes of eight bits around a final result, or in front of a name. Those of other lines may be a text
 *  in the modem's alphabet, and stay.
 *  @param command  that runs */
std::string_view withoutNoise(std::string_view line, std::string_view command);

} // namespace host::at_server

#endif

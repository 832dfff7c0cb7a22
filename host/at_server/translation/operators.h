/** Operators (3GPP TS 27.007 7.3): those that a search has found, and the one in use. */
#ifndef HOST_AT_SERVER_TRANSLATION_OPERATORS_H
#define HOST_AT_SERVER_TRANSLATION_OPERATORS_H

#include <cstdint>
#include <string_view>

#include "host/at/command_line.h"
#include "host/at_server/reply.h"

namespace host::at_server {

/** How a modem writes names: as they are, or in hexadecimal digits of UCS-2, which it says when it is asked AT+CSCS?. */
enum class Alphabet : uint8_t { Plain, Ucs2 };

/** Whether a reply has names that may be UCS-2, so that the modem has to be asked for its alphabet. */
bool mayHaveUcs2(const Reply &reply, std::string_view command);
/** What a modem answers to AT+CSCS?. */
Alphabet alphabetIn(const Reply &reply);
/** Texts in quotes that can be UCS-2 as what they then say, in UTF-8; others stay. Behind the functions below all names are
 *  in quotes. */
void ucs2AsText(Reply &reply);

/** "2,"Long","Short","46000",7" of each operator of a scan, whatever the brackets, in one line or in many; fields that are
 *  missing are empty, and without an access technology there is none. */
void anOperatorALine(Reply &reply, const at::Command &command);

/** "mode,format,"Name",AcT" as far as they are told. */
void operatorInUse(Reply &reply, const at::Command &command);

} // namespace host::at_server

#endif

/** Registration (3GPP TS 27.007 7.2, 10.1.20, 10.1.22): "n,stat[,area,cell[,AcT,...]]" in a reply, the same without n in a
 *  report. Modems write codes with and without quotes and "0x", numbers with zeros in front, a routing area between area
 *  and cell, and n in front of reports, too. */
#ifndef HOST_AT_SERVER_TRANSLATION_REGISTRATION_H
#define HOST_AT_SERVER_TRANSLATION_REGISTRATION_H

#include <string>
#include <string_view>

#include "host/at/command_line.h"
#include "host/at_server/reply.h"

namespace host::at_server {

/** Whether parameters begin with mode and state, two small numbers, as those of a reply do; behind the state of a report
 *  stands a code in quotes or of more digits, or nothing. */
bool hasModeAndState(std::string_view parameters);

/** The library's reader of +CREG passes over lines of fewer fields. */
void registrationInFiveFields(Reply &reply, const at::Command &command);
/** With their names lines of +CEREG and +CGREG would pass for reports. */
void registrationWithoutName(Reply &reply, const at::Command &command);

/** Any report: one of registration is written as 27.007 has it, others stay. */
void registrationReport(std::string &line);

} // namespace host::at_server

#endif

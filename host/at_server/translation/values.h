/** Plain values: identities (3GPP TS 27.007 5.1 to 5.6), numbers, profiles (10.1.1), system information. */
#ifndef HOST_AT_SERVER_TRANSLATION_VALUES_H
#define HOST_AT_SERVER_TRANSLATION_VALUES_H

#include "host/at/command_line.h"
#include "host/at_server/reply.h"

namespace host::at_server {

/** Manufacturer, model, revision, serial number, IMSI. */
bool isIdentity(const at::Command &command);
/** Without quotes, and lines as one with a blank between them: the library would join them without. */
void identityOnOneLine(Reply &reply, const at::Command &command);

/** Whether a reply to a command is a line of numbers. */
bool hasOnlyNumbers(const at::Command &command);
/** Numbers without quotes and blanks; one that +CESQ does not tell is the code that says so. */
void plainNumbers(Reply &reply, const at::Command &command);

/** "cid,"type","apn","address",0,0" and what follows: of fields that are missing the library would take those of the line
 *  before. The texts are then empty, the numbers 0, which is what they are by 27.007 if they are omitted. */
void profilesInSixFields(Reply &reply, const at::Command &command);

void withoutBlankBehindName(Reply &reply, const at::Command &command);

} // namespace host::at_server

#endif

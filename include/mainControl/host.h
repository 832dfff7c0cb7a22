/** The six functions that a host process supplies. The library calls them and nothing else outside libc.
 *
 *  Their symbols are left undefined in the library; the host defines them itself or links libraries that do. */
#ifndef MAINCONTROL_HOST_H
#define MAINCONTROL_HOST_H

#include <stdint.h>

#include <mainControl/records.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Sends one AT command and waits for its whole reply.
 *  @param command    NUL-terminated, without the closing carriage return, at most 1023 characters
 *  @param response   arrives zeroed whole; the reply goes to aucDataBuf as a NUL-terminated text of at most 10239
 *                    characters in standard framing: "\r\n" around each line, an empty line before the final result
 *  @param timeoutMs  how long to wait, in milliseconds
 *  @return 0 when a reply was received, anything else when not */
int ClientSendCmd(const char *command, AtClientRes *response, int32_t timeoutMs);

/** Connects the AT-client library to the message queue of the AT server.
 *  @return 0 on success */
int ClientInit(const char *queueName);

/** Installs the function that the AT-client library calls with each unsolicited report. Calls of it must not overlap
 *  with each other or with calls of the API.
 *  @return 0 on success */
int SetClientProcRecvCallback(uint32_t (*callback)(AtClientRes *report));

/** Decodes hexadecimal UCS-2 or GSM 7-bit text.
 *  @param zero  always 0
 *  @return 1 on success */
int CODE_Usc2orGsm7ToAscDecode(const char *sourceHex, char *destination, int32_t zero);

/** Swaps the two digits of each pair of a BCD text.
 *  @return -1 on failure */
int CODE_InvertNumbers(const char *source, char *destination, int32_t sourceLength);

/** Appends one line to a log.
 *  @param sourceModule  module that logs, such as "lib_mainControl"
 *  @param line          line of its source
 *  @param logFile       "kora_t9lb.log"
 *  @param format        printf format of what follows; texts are never NULL */
void kora_log_append(const char *sourceModule, int32_t line, const char *logFile, const char *format, ...)
    __attribute__((format(printf, 4, 5)));

#ifdef __cplusplus
}
#endif

#endif

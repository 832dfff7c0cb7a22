/** AT command wrappers: one function for each form of a command.
 *
 *  Rules for callers:
 *  1. 0 is success. 1 is any failure: the command could not be sent, its reply not parsed, or its final result was not
 *     OK. A function that can return more says so.
 *  2. Outputs are written on success only, and only those that the reply supplies.
 *  3. Text outputs are terminated. Where no size is stated, the caller's buffer is as large as the value can be: a reply
 *     has at most 10239 characters.
 *  4. A command is sent whole or not at all: one of more than 1023 characters counts as a failed send.
 *  5. Calls block for up to the stated time-out and are serialised by the caller.
 *  6. A call needs at most 32 KiB of stack, the host's ClientSendCmd() not counted. */
#ifndef MAINCONTROL_WRAPPERS_H
#define MAINCONTROL_WRAPPERS_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Asks whether the modem answers. AT (5000 ms), ITU-T V.250.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t atStart(void);

/** Command echo. ATE (5000 ms), ITU-T V.250 6.2.4.
 *  @param mode  0 off, 1 on; passed on as it is
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t ateExec(int32_t mode);

/** Form of error reports. AT+CMEE= (5000 ms), 3GPP TS 27.007 9.1.
 *  @param mode  0 ERROR alone, 1 +CME ERROR with a number, 2 +CME ERROR with a text; passed on as it is
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t cmeeSet(int32_t mode);

/** Serial number of the device, its IMEI. AT+CGSN (5000 ms), 3GPP TS 27.007 5.4.
 *  @param serial  out, the whole parameter text
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t cgsnExec(char *serial);

/** Serial number that the maker gave the device. AT+ZMSN? (5000 ms), a vendor command.
 *  @param serial  out, the whole parameter text
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t zmsnRead(char *serial);

#ifdef __cplusplus
}
#endif

#endif

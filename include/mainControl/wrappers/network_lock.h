/** The network (SIM) lock of the modem. Rules for callers: mainControl/wrappers.h. */
#ifndef MAINCONTROL_WRAPPERS_NETWORK_LOCK_H
#define MAINCONTROL_WRAPPERS_NETWORK_LOCK_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Lock status and lock items. AT+ZSEC? (5000 ms), a vendor command.
 *  @param status  out
 *  @param items   out
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t zsecRead(int32_t *status, int32_t *items);

/** Authorisation of hard lock and IMSI. AT+ZLOCK? (5000 ms), a vendor command.
 *  @param hardAuth  out
 *  @param imsiAuth  out
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t zlcokRead(int32_t *hardAuth, int32_t *imsiAuth);

/** Enters the unlock code. AT+ZNCK= (10000 ms), a vendor command.
 *  @param code  sent in quotes as it is
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t znckSet(const char *code);

/** Attempts left for the unlock code. AT+ZNCK? (5000 ms), a vendor command.
 *  @param attemptsLeft  out
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t znckRead(int32_t *attemptsLeft);

/** Asks a Spreadtrum modem for its lock. AT+SPSIMLOCKINFO (5000 ms), a vendor command.
 *  @param attemptsLeft  never written: the reply only decides success
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t spsimlockinfoExec(int32_t *attemptsLeft);

/** Locks or unlocks a category on MediaTek. AT+ESMLCK= (10000 ms), a vendor command.
 *  @param code  sent in quotes as it is
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t esmlckSet(int32_t category, int32_t operation, const char *code);

/** State of one category on MediaTek. AT+ESMLCK? (5000 ms), a vendor command whose reply holds groups of four numbers.
 *  @param groupIndex  0 and below select the first group
 *  @param third       out, the third number: attempts left
 *  @param fourth      out, the fourth number, 0 if the reply lacks it: unlock attempts left; may be NULL
 *  @param second      out, the second number, 0 if the reply lacks it: the state; may be NULL
 *  @return 0; 1 also if fewer separators than groupIndex stand in the reply, and then nothing is written */
MAINCONTROL_EXPORT uint32_t esmlckRead(int32_t groupIndex, int32_t *third, int32_t *fourth, int32_t *second);

#ifdef __cplusplus
}
#endif

#endif

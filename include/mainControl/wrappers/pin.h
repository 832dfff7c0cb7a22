/** SIM PIN, facility locks, and the attempts left. Rules for callers: mainControl/wrappers.h. */
#ifndef MAINCONTROL_WRAPPERS_PIN_H
#define MAINCONTROL_WRAPPERS_PIN_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The SIM state that cpinRead() reports. */
typedef enum SimPinState {
    SETTING_PIN_UNREQUIRED = 0,
    SETTING_PIN_REQUIRED = 1,      /**< PIN or PIN2 */
    SETTING_PUK_REQUIRED = 2,      /**< PUK or PUK2 */
    SETTING_PHNET_PIN_REQUIRED = 6 /**< network personalisation PIN */
} SimPinState;

/** Facility lock: query, lock or unlock. AT+CLCK= (query 10000 ms, else 5000 ms), 3GPP TS 27.007 7.4.
 *  @param facility  such as "SC" (SIM PIN) or "PN" (network personalisation)
 *  @param mode      2 query; 0 unlock, 1 lock; any other number is passed on
 *  @param password  not looked at in a query
 *  @param class_    sent only if it is 1, and not in a query
 *  @param status    out, written by a successful query only: 0 not active, 1 active
 *  @return 0 or 1; from a lock change also 24 wrong password (the modem says so, or plain ERROR), 25 PUK required, 29 any
 *          other +CME ERROR */
MAINCONTROL_EXPORT uint32_t clckSet(const char *facility, int32_t mode, const char *password, int32_t class_,
                                    int32_t *status);

/** Attempts left on Spreadtrum. AT+XX= (5000 ms), a vendor command.
 *  @param selector  0 PIN, 2 PUK
 *  @param count     out
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t xxSet(int32_t selector, int32_t *count);

/** Attempts left on MediaTek. AT+EPINC? (5000 ms), a vendor command.
 *  @param counts  out, as many as the modem reports: the first is PIN, the third PUK
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t epincRead(int32_t counts[4]);

/** Kind of card on TSP. AT+CARDMODE (5000 ms), a vendor command.
 *  @param mode  out: 1 USIM, others SIM
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t cardmodeExec(int32_t *mode);

/** Attempts left on TSP. AT+ZRAP? (5000 ms), a vendor command.
 *  @param cardType  ignored: the command is the same for SIM and USIM
 *  @param pinLeft   out, the first number of the reply
 *  @param pukLeft   out, the third
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t zrapRead(int32_t cardType, int32_t *pinLeft, int32_t *pukLeft);

/** Attempts left on all other platforms. AT+ZPINPUK=? (10000 ms), a vendor command.
 *  @param pinLeft  out
 *  @param pukLeft  out
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t zpinpukTest(int32_t *pinLeft, int32_t *pukLeft);

/** SIM state. AT+CPIN? (5000 ms), 3GPP TS 27.007 8.3.
 *  @param state  out, a SimPinState, written only on OK
 *  @return 0; 1 no reply or another final result; on +CME ERROR 26 SIM failure, 27 SIM busy, 28 no SIM, 29 any other
 *          (PF_TSP: always 28) */
MAINCONTROL_EXPORT uint32_t cpinRead(int32_t *state);

/** Enters a PIN, or a PUK with a new PIN. AT+CPIN= (10000 ms), 3GPP TS 27.007 8.3. The secrets are sent in quotes on
 *  PF_SPEADTRUM, PF_MTK and PF_TSP.
 *  @param pair  code: PIN or PUK, which runs on into newCode if it fills its array; newCode: empty, or the new PIN
 *  @return 0 or 1; on +CME ERROR also 24 "incorrect password" (this spelling only), 25 "SIM PUK required" or a text with
 *          "12" in it */
MAINCONTROL_EXPORT uint32_t cpinSet(PinCodePair pair);

/** Changes the PIN of facility "SC". AT+CPWD= (10000 ms), 3GPP TS 27.007 7.5.
 *  @param pair  code: old PIN, which runs on into newCode if it fills its array; newCode: new PIN
 *  @return 0 or 1; on +CME ERROR also 24 wrong password, 25 PUK required */
MAINCONTROL_EXPORT uint32_t cpwdSet(PinCodePair pair);

#ifdef __cplusplus
}
#endif

#endif

/** The network lock of the modem, its control key. Rules for callers: mainControl/api.h. */
#ifndef MAINCONTROL_API_NETWORK_LOCK_H
#define MAINCONTROL_API_NETWORK_LOCK_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** State of the control key. */
typedef enum ControlKeyState {
    CONTROL_KEY_UNKNOWN = 0,
    CONTROL_KEY_LOCKED = 1,
    CONTROL_KEY_NOT_LOCKED = 2
} ControlKeyState;

/** Lock status and lock items. AT+ZSEC? (5000 ms), a vendor command. What the reply lacks stays.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getLockStatus(int32_t *pstatus, int32_t *pitems);

/** Enters the unlock code. AT+ZNCK= (10000 ms), a vendor command.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_setLockCode(const char *strcode);

/** Attempts left for the unlock code. AT+ESMLCK? on PF_MTK, AT+ZNCK? on the others but PF_SPEADTRUM, which only answers
 *  AT+SPSIMLOCKINFO (5000 ms), vendor commands.
 *  @param pLefttimes  in/out; untouched on PF_SPEADTRUM
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getLockLefttimes(int32_t *pLefttimes);

/** Authorisation of hard lock and IMSI. AT+ZLOCK? (5000 ms), a vendor command. What the reply lacks stays.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getHardLockStatus(int32_t *pHardAuth, int32_t *pImsiAuth);

/** Unlocks with a code. AT+ESMLCK= (10000 ms) on PF_MTK; AT+CLCK="PN",0 (5000 ms, 3GPP TS 27.007 7.4) on PF_SPEADTRUM;
 *  AT+ZNCK= (10000 ms) on all others.
 *  @param controlKeyID, opID  category and operation on PF_MTK; not used on the others
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_setControlKeyLock(int32_t controlKeyID, int32_t opID, const char *strcode);

/** State of the control key and attempts left. AT+ESMLCK? on PF_MTK; on PF_SPEADTRUM the facility "PN" and the SIM's state;
 *  AT+ZSEC? on all others; then the attempts left as in KR_getLockLefttimes(). Steps that fail count as not locked.
 *  @param controlKeyID      category on PF_MTK; not used on the others
 *  @param pState            out: a ControlKeyState; on PF_MTK the modem's own number
 *  @param pLefttimes        in/out
 *  @param pUnlockLefttimes  out; 0 on all but PF_MTK
 *  @return 0; 1 on PF_MTK only */
MAINCONTROL_EXPORT uint32_t KR_getControlKeyStatus(int32_t controlKeyID, int32_t *pState, int32_t *pLefttimes,
                                                   int32_t *pUnlockLefttimes);

/** Lock mode by KR_getLockStatus().
 *  @param mode  out, untouched on failure
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t getNetLockMode_Qualcomm(int32_t *mode);

/** Lock mode by the facility "PN" and KR_getPINStatus().
 *  @param mode  out: 2 the SIM asks for the network PIN, else 1
 *  @return 0 */
MAINCONTROL_EXPORT uint32_t getNetLockMode_Icera(int32_t *mode);

/** Turns the numbers of KR_getLockStatus() into a lock mode, 0 to 5. */
MAINCONTROL_EXPORT int32_t translateLockStatusToMode(int32_t status, int32_t items);

#ifdef __cplusplus
}
#endif

#endif

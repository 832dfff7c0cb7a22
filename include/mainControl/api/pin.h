/** SIM PIN, facility locks, and the attempts left. Rules for callers: mainControl/api.h. */
#ifndef MAINCONTROL_API_PIN_H
#define MAINCONTROL_API_PIN_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The SIM's state as KR_getPINStatus() reports it. */
typedef enum KoraMtsSimState {
    KORA_MTS_SIM_UNKNOWN = 0,
    KORA_MTS_SIM_PIN_ENABLED = 1,  /**< ready, PIN protection on */
    KORA_MTS_SIM_PIN_DISABLED = 2, /**< ready, PIN protection off */
    KORA_MTS_SIM_NOT_INSERTED = 3,
    KORA_MTS_SIM_PIN_REQUIRED = 4,
    KORA_MTS_SIM_PUK_REQUIRED = 5,
    KORA_MTS_SIM_FAILURE = 6,
    KORA_MTS_SIM_BUSY = 7,
    KORA_MTS_SIM_ICERA_LOCKNET = 10 /**< network personalisation PIN required */
} KoraMtsSimState;

/** The PIN that the modem accepted last, 19 characters of it at most. Nothing in the library reads it. */
extern MAINCONTROL_EXPORT char g_lastPin[40];
/** Card type of a TSP modem: 1 SIM, 2 USIM. 1 at load. */
extern MAINCONTROL_EXPORT int32_t g_cardType;
/** A host that sets this saves isUSimTsp() its question. 0 at load; the library never sets it. */
extern MAINCONTROL_EXPORT int32_t g_cardTypeKnown;

/* The attempts left are asked for with AT+XX=0 and AT+XX=2 on PF_SPEADTRUM, AT+EPINC? on PF_MTK, AT+CARDMODE and AT+ZRAP?
 * on PF_TSP (5000 ms each) and AT+ZPINPUK=? on all others (10000 ms), vendor commands. An operation that has changed
 * something but cannot read them returns 1, and leaves both outputs as they were; on PF_TSP they come as 0. */

/** Queries or changes a facility lock. AT+CLCK= (query 10000 ms, else 5000 ms), 3GPP TS 27.007 7.4.
 *  @param iMode    2 query; 0 unlock, 1 lock
 *  @param iClass   sent only if it is 1
 *  @param iStatus  out, written by a query only: 0 not active, 1 active
 *  @return 0 or 1, whatever the reason */
MAINCONTROL_EXPORT uint32_t KR_setFacilityLock(const char *strFac, int32_t iMode, const char *strPasswd, int32_t iClass,
                                               int32_t *iStatus);

/** Switches the PIN protection of the SIM. AT+CLCK="SC" (5000 ms), 3GPP TS 27.007 7.4, then the attempts left.
 *  @param id       any number
 *  @param bEnable  1 on, 0 off
 *  @param pValue   the PIN
 *  @param iClass, iStatus  as in KR_setFacilityLock()
 *  @return 0; 1; 13 pValue is empty or an output is NULL; 24 wrong PIN; 25 PUK required; 29 another +CME ERROR */
MAINCONTROL_EXPORT uint32_t KR_setPINProtection(int32_t id, int32_t bEnable, const char *pValue, int32_t iClass,
                                                int32_t *iStatus, int32_t *pVerifyRetriesLeft,
                                                int32_t *pUnblockRetriesLeft);

/** Enters the PIN. AT+CPIN= (10000 ms), 3GPP TS 27.007 8.3, then the attempts left.
 *  @param id      any number
 *  @param pValue  up to 39 characters; what is behind the 20th goes out as a new PIN as well. A longer one is not sent
 *  @return 0; 1; 13 pValue is empty or an output is NULL; 24 wrong PIN; 25 PUK required */
MAINCONTROL_EXPORT uint32_t KR_verifyPIN(int32_t id, const char *pValue, int32_t *pVerifyRetriesLeft,
                                         int32_t *pUnblockRetriesLeft);

/** Unblocks the PIN. AT+CPIN= (10000 ms), 3GPP TS 27.007 8.3, then the attempts left.
 *  @param id                    any number
 *  @param pPUKValue, pNewValue  up to 19 characters each; longer ones are not sent
 *  @return 0; 1; 13 a text is empty or an output is NULL; 24 wrong PUK; 25 PUK required */
MAINCONTROL_EXPORT uint32_t KR_unblockPIN(int32_t id, const char *pPUKValue, const char *pNewValue,
                                          int32_t *pVerifyRetriesLeft, int32_t *pUnblockRetriesLeft);

/** Changes the PIN. AT+CPWD="SC" (10000 ms), 3GPP TS 27.007 7.5, then the attempts left.
 *  @param id                    any number
 *  @param pOldValue, pNewValue  up to 19 characters each; longer ones are not sent
 *  @return 0; 1; 13 a text is empty or an output is NULL; 24 wrong PIN; 25 PUK required */
MAINCONTROL_EXPORT uint32_t KR_changePIN(int32_t id, const char *pOldValue, const char *pNewValue,
                                         int32_t *pVerifyRetriesLeft, int32_t *pUnblockRetriesLeft);

/** The SIM's state and the attempts left. AT+CPIN? (5000 ms), 3GPP TS 27.007 8.3; where no PIN is asked for AT+CLCK="SC",2
 *  (10000 ms), 3GPP TS 27.007 7.4; then the attempts left, which are 0 without a SIM that could be asked.
 *  @param id       any number
 *  @param pStatus  out, a KoraMtsSimState
 *  @return 0; 13 an output is NULL; 32 the modem could not be asked, and then nothing is written */
MAINCONTROL_EXPORT uint32_t KR_getPINStatus(int32_t id, int32_t *pStatus, int32_t *pVerifyRetriesLeft,
                                            int32_t *pUnblockRetriesLeft);

/** Card type of a TSP modem. AT+CARDMODE (5000 ms), a vendor command, unless g_cardTypeKnown is set.
 *  @return 2 USIM; 1 SIM, or the modem did not tell */
MAINCONTROL_EXPORT int32_t isUSimTsp(void);

/** Turns what cpinRead() came to into a KoraMtsSimState.
 *  @param state       a SimPinState
 *  @param result      the code of cpinRead()
 *  @param lockStatus  whether PIN protection is on
 *  @return the state */
MAINCONTROL_EXPORT int32_t translatePinStateFromSettingToMts(int32_t state, uint32_t result, int32_t lockStatus);

#ifdef __cplusplus
}
#endif

#endif

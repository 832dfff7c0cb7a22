/** Registration state and its report modes. Rules for callers: mainControl/api.h. */
#ifndef MAINCONTROL_API_REGISTRATION_H
#define MAINCONTROL_API_REGISTRATION_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Sets the report mode of circuit-switched registration. AT+CREG= (5000 ms), 3GPP TS 27.007 7.2.
 *  @param cregType  0 off, 1 status, 2 status and location
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_setCregMode(int32_t cregType);

/** Circuit-switched registration with its location: reports are switched to mode 2, read, and switched off. AT+CREG (5000
 *  ms each), 3GPP TS 27.007 7.2. A read that fails leaves them in mode 2.
 *  @param cregPara  in/out, zeroed by the caller: untouched if the modem does not send the access technology; filled even
 *                   if the last step fails
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getCregMode(CregPara *cregPara);

/** Attaches to the packet domain or detaches from it. AT+CGATT= (10000 ms), 3GPP TS 27.007 10.1.9.
 *  @param mode  1 attach, 0 detach
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_setDomainAttachMode(int32_t mode);

/** EPS registration. AT+CEREG? (5000 ms), 3GPP TS 27.007 10.1.22. What the reply lacks stays.
 *  @param pCount  out, report mode
 *  @param pStat   out: 1 registered at home, 5 roaming, others not registered
 *  @param cLac    in/out, terminated: tracking area code, hexadecimal
 *  @param cCi     in/out, terminated: cell identity, hexadecimal
 *  @param pAct    out, access technology: 7 is E-UTRAN
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getEPSRegisterState(int32_t *pCount, int32_t *pStat, char *cLac, char *cCi,
                                                   int32_t *pAct);

/** Sets the report mode of EPS registration. AT+CEREG= (5000 ms), 3GPP TS 27.007 10.1.22.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_setEPSRegisterState(int32_t mode);

/** Packet registration. AT+CGREG? (5000 ms), 3GPP TS 27.007 10.1.20. What the reply lacks stays.
 *  @param pMode  out, report mode
 *  @param pStat  out, as in KR_getEPSRegisterState()
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getGPRSRegisterState(int32_t *pMode, int32_t *pStat);

/** Sets the report mode of packet registration. AT+CGREG= (5000 ms), 3GPP TS 27.007 10.1.20.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_setGPRSRegisterState(int32_t mode);

#ifdef __cplusplus
}
#endif

#endif

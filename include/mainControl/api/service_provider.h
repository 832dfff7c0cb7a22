/** The service provider name of the SIM and its friendly operators. Rules for callers: mainControl/api.h. */
#ifndef MAINCONTROL_API_SERVICE_PROVIDER_H
#define MAINCONTROL_API_SERVICE_PROVIDER_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** One restricted SIM access. AT+CRSM= (5000 ms), 3GPP TS 27.007 8.18.
 *  @param pCrsmres  in/out, zeroed by the caller: status words and response as the SIM gave them, not judged
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getSPNInfo(CrsmCmd tCrsmcmd, CrsmRes *pCrsmres);

/** Turns the hexadecimal name of the SIM file into a text, with the host's text codec.
 *  @return 0; 1 the codec failed */
MAINCONTROL_EXPORT uint32_t KR_parseSPNName(const char *pSrcSpnInfo, char *pDest);

/** Turns a list of operator codes in the SIM's digit order into plain digits, with the host's text codec.
 *  @return 0; 1 the codec failed */
MAINCONTROL_EXPORT uint32_t KR_spnFriendOperlistInvert(const char *pSrcSpnFriendOperlist, char *pDestFriendOperlist);

#ifdef __cplusplus
}
#endif

#endif

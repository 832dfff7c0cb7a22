/** The default packet-data profile. Rules for callers: mainControl/api.h. */
#ifndef MAINCONTROL_API_PDP_PROFILE_H
#define MAINCONTROL_API_PDP_PROFILE_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Addresses of a context, as the API numbers them. */
typedef enum PdpType { PDP_TYPE_IP = 0, PDP_TYPE_IPV6 = 2, PDP_TYPE_IPV4V6 = 3 } PdpType;

/** Defines the default profile: the default bearer of context 1, then the profile's context. AT*CGDFLT= (a vendor command)
 *  and AT+CGDCONT= (3GPP TS 27.007 10.1.1), 5000 ms each. Arguments that are logged only are logged as they are, the
 *  password included.
 *  @param profileCid       context of the profile
 *  @param pPDPType         a PdpType; any other number sends an empty type
 *  @param pIPAddress       up to 29 characters; NULL counts as empty; if it is longer nothing is sent
 *  @param pPrimaryDNS, pSecondaryDNS, pAuthentication, pName  logged only
 *  @param pAPNName         up to 100 characters; NULL counts as empty; if it is longer nothing is sent
 *  @param pDialNum, pUsername, pPassword  logged only
 *  @return 0, also if only the default bearer failed; 1 */
MAINCONTROL_EXPORT uint32_t KR_setDefaultProfile(int32_t profileCid, int32_t pPDPType, const char *pIPAddress,
                                                 const char *pPrimaryDNS, const char *pSecondaryDNS,
                                                 int32_t pAuthentication, const char *pName, const char *pAPNName,
                                                 const char *pDialNum, const char *pUsername, const char *pPassword);

#ifdef __cplusplus
}
#endif

#endif

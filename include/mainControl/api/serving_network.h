/** Serving and home network, operator scan and operator selection. Rules for callers: mainControl/api.h. */
#ifndef MAINCONTROL_API_SERVING_NETWORK_H
#define MAINCONTROL_API_SERVING_NETWORK_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Outputs written before a step that fails stay written. A code that the modem does not report leaves its output as it
 * was. */

/** Whether a domain is served. */
typedef enum DomainService {
    DOMAIN_NO_SERVICE = 0, /**< neither domain is */
    DOMAIN_SERVED = 1,
    DOMAIN_NOT_SERVED = 2 /**< the other one is */
} DomainService;

/** Whether the serving network is another one than the home network. */
typedef enum RoamingState { ROAMING_STATE_ROAMING = 0, ROAMING_STATE_HOME = 1, ROAMING_STATE_UNKNOWN = 2 } RoamingState;

/** The serving network, by the vendor commands AT+ZPAS? and AT+ZDON? (5000 ms each).
 *  @param pCSDomain, pPSDomain  out, a DomainService each
 *  @param pRoaming     out, a RoamingState
 *  @param pMCC, pMNC   out, decimal
 *  @param nNameLen     size of pName in bytes, terminator included
 *  @param pName        out, network type as a text
 *  @param nRplmnLen    size of pRplmnName in bytes, terminator included
 *  @param pRplmnName   out, name of the network
 *  @param pPCDomain    out, service domain as a text of up to 67 characters
 *  @return 0; 1; 18 a text does not fit */
MAINCONTROL_EXPORT uint32_t KR_getServingNetwork(int32_t *pCSDomain, int32_t *pPSDomain, int32_t *pRoaming,
                                                 int32_t *pMCC, int32_t *pMNC, int32_t nNameLen, char *pName,
                                                 int32_t nRplmnLen, char *pRplmnName, char *pPCDomain);

/** The serving network, by AT+ZPAS? (5000 ms, a vendor command), AT+CREG? (5000 ms, 3GPP TS 27.007 7.2) and AT+COPS
 *  (3GPP TS 27.007 7.3), which leaves the modem naming operators with their long names. Arguments as in
 *  KR_getServingNetwork(); a codeless operator gives 0 and 0, and a name that does not fit is dropped.
 *  @return 0; 1; 18 the network type does not fit */
MAINCONTROL_EXPORT uint32_t KR_getServingNetworkC(int32_t *pCSDomain, int32_t *pPSDomain, int32_t *pRoaming,
                                                  int32_t *pMCC, int32_t *pMNC, int32_t nNameLen, char *pName,
                                                  int32_t nRplmnLen, char *pRplmnName, char *pPCDomain);

/** The home network. AT+ZDON? (5000 ms), a vendor command.
 *  @param pMCC, pMNC  out, decimal
 *  @param nNameLen    size of pName in bytes, terminator included
 *  @param pName       out; untouched if the name does not fit
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getHomeNetwork(int32_t *pMCC, int32_t *pMNC, int32_t nNameLen, char *pName);

/** Scans for operators. AT+COPS=? (180000 ms), 3GPP TS 27.007 7.3. Needs at most 40 KiB of stack.
 *  @param pNetworks   out: an operator stands at its place in the scan; the places of those of unknown status or without a
 *                     code are not written
 *  @param pArraySize  in: entries of pNetworks; out: entries written
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_scanNetwork(NetworkInfo *pNetworks, int32_t *pArraySize);

/** Selects an operator. AT+COPS= (180000 ms), 3GPP TS 27.007 7.3.
 *  @param cOper  up to 63 characters; a longer one is not sent
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_setCops(int32_t nMode, int32_t nformat, const char *cOper, int32_t nAct);

/** The selected operator. AT+COPS? (5000 ms), 3GPP TS 27.007 7.3. What the reply lacks comes as 0 or empty.
 *  @param cOper  out, 64 bytes
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getCops(int32_t *pMode, int32_t *pformat, char *cOper, int32_t *pAct);

/** Turns a domain code into the two domains.
 *  @param code  0 none; bit 0 circuit-switched, bit 1 packet
 *  @return 0 */
MAINCONTROL_EXPORT uint32_t translateDomain(int32_t code, int32_t *pCSDomain, int32_t *pPSDomain);

/** Network type and domains. AT+ZPAS? (5000 ms), a vendor command. Arguments as in KR_getServingNetwork().
 *  @return 0; 1; 18 the network type does not fit, and then pName alone is untouched */
MAINCONTROL_EXPORT uint32_t getZpasInfo(int32_t *pCSDomain, int32_t *pPSDomain, int32_t nNameLen, char *pName,
                                        char *pPCDomain);

/** Codes and name of the operator, which is asked for in two formats. AT+COPS= (180000 ms) and AT+COPS? (5000 ms), 3GPP TS
 *  27.007 7.3.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t getNetworkInfoByCops(int32_t *pMCC, int32_t *pMNC, int32_t nNameLen, char *pName);

#ifdef __cplusplus
}
#endif

#endif

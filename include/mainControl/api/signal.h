/** Signal, serving cell, transmit power and system information. Rules for callers: mainControl/api.h. */
#ifndef MAINCONTROL_API_SIGNAL_H
#define MAINCONTROL_API_SIGNAL_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/* What the reply lacks stays as the caller had it. */

/** Extended signal quality. AT+CESQ (10000 ms), 3GPP TS 27.007 8.69. All values are the coded ones of the command.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_get4GSignalStrength(int32_t *rxlev, int32_t *ber, int32_t *rscp, int32_t *ecno,
                                                   int32_t *rsrq, int32_t *rsrp);

/** Signal quality. AT+CSQ (5000 ms), 3GPP TS 27.007 8.5.
 *  @param pSignalStrength  out, coded: 0 is -113 dBm or less, 31 is -51 dBm or more, in steps of 2 dBm; 99 unknown
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getSignalStrength(int32_t *pSignalStrength);

/** Signal in the modem's own units. AT+ZRSSI? on PF_QC_LTE, else AT+ZRSSI (5000 ms), vendor commands.
 *  @param pZrssiPara  out: what zrssiLteRead() and zrssiExec() write
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getZRSSIInfo(ZrssiPara *pZrssiPara);

/** The serving cell. AT+ZCELLINFO? (5000 ms), a vendor command.
 *  @param pCellInfo  out, in the modem's own units; dlEarfcn is 0 if the reply lacks it. The text in it is terminated
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getCellInfo(CellInfo *pCellInfo);

/** Transmit power. AT*ZAIRINFO? (5000 ms), a vendor command.
 *  @param pZairInfo  out, in the modem's own units
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getTxPowerInfo(ZairInfo *pZairInfo);

/** System information. AT^SYSINFO (5000 ms), a vendor command. All outputs are codes of the modem.
 *  @param nReserve, nSysSubmode  logged only
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getSysinfo(int32_t *nSrvstatus, int32_t *nSrvdomain, int32_t *nRoamstatus,
                                          int32_t *nSysmode, int32_t *nSimstate, int32_t nReserve, int32_t nSysSubmode);

/** LTE cell lock. AT+ZLTELC? (5000 ms), a vendor command.
 *  @param nUarfcn  out, channel number
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getZltelcInfo(int32_t *nAction, int32_t *nUarfcn, int32_t *nCellParald);

#ifdef __cplusplus
}
#endif

#endif

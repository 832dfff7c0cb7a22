/** System information, signal and cell. Rules for callers: mainControl/wrappers.h. */
#ifndef MAINCONTROL_WRAPPERS_SIGNAL_H
#define MAINCONTROL_WRAPPERS_SIGNAL_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** System information. AT^SYSINFO (5000 ms), a vendor command. All outputs are codes as the modem reports them.
 *  @param nSrvstatus  out, service status: 2 is full service
 *  @param nReserve    not used
 *  @param nSysSubmode not used
 *  @return 0, also if the reply has another form than the platform's, when nothing is written; 1 */
MAINCONTROL_EXPORT uint32_t sysinfoExec(int32_t *nSrvstatus, int32_t *nSrvdomain, int32_t *nRoamstatus,
                                        int32_t *nSysmode, int32_t *nSimstate, int32_t nReserve, int32_t nSysSubmode);

/** Signal, three values. AT+ZRSSI (5000 ms), a vendor command.
 *  @param values  out: Rssi, ecValue and Rscp, in the modem's own units
 *  @return 0, whatever the number of values in the reply; 1 */
MAINCONTROL_EXPORT uint32_t zrssiExec(ZrssiPara *values);

/** Signal in the form of the network in use. AT+ZRSSI? (5000 ms), a vendor command.
 *  @param values  out, in the modem's own units: networkType 0 with Rssi; 1 with Rscp and ecValue; 2, for any number of
 *                 values but one and two, with rsrp, rsrq, Rssi and sinr
 *  @return 0, whatever the number of values in the reply; 1 */
MAINCONTROL_EXPORT uint32_t zrssiLteRead(ZrssiPara *values);

/** Counts the values of a parameter text: its commas and one more, also for an empty text and NULL. */
MAINCONTROL_EXPORT int32_t getZrssiResParasCount(const char *text);

/** LTE cell lock. AT+ZLTELC? (5000 ms), a vendor command.
 *  @param nUarfcn  out, channel number
 *  @return 0, whatever the number of values in the reply; 1 */
MAINCONTROL_EXPORT uint32_t zltelcRead(int32_t *nAction, int32_t *nUarfcn, int32_t *nCellParald);

#ifdef __cplusplus
}
#endif

#endif

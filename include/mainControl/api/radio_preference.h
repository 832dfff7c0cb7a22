/** The preference of radio technologies, and registration with one operator. Rules for callers: mainControl/api.h. */
#ifndef MAINCONTROL_API_RADIO_PREFERENCE_H
#define MAINCONTROL_API_RADIO_PREFERENCE_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A preference mode is a number of the API; 0 to 22 have meanings of their own, 5 is manual selection. Each chipset has its
 * own command for it: AT+ZSNT (set 10000 ms, read 5000 ms), AT^SYSCONFIG on PF_TSP and PF_SPEADTRUM, AT+ERAT on PF_MTK
 * (5000 ms each), all vendor commands. Not every mode that can be written reads back as itself. */

/** Sets the preference mode. PF_TSP is detached, set, set to automatic selection, polled and attached again; PF_MTK is
 *  first set to automatic selection if it was in manual.
 *  @param technologyPref  any mode but 5; unknown ones are set like 2 (AT+ZSNT, AT+ERAT) or 0 (AT^SYSCONFIG)
 *  @param supportBandSet  1 on PF_QC_LTE first resets the preferred band (AT+ZPREFBAND)
 *  @return 0; 1; 13 technologyPref is 5 */
MAINCONTROL_EXPORT uint32_t KR_setNetworkPreferMode(int32_t technologyPref, int32_t supportBandSet);

/** The preference mode.
 *  @param pTechnologyPref  out; 0 also for values of AT^SYSCONFIG that no mode is read back from
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getNetworkPreferMode(int32_t *pTechnologyPref);

/** Registers automatically or with one operator. AT+COPS= (180000 ms), 3GPP TS 27.007 7.3; on PF_MTK AT+ERAT= first.
 *  @param mode            0 automatic, which only sets preference mode 0; 1 manual; 2 deregister; 3 and 4 are not carried
 *                         out; any other number registers in mode 0
 *  @param pCode           numeric operator, up to 63 characters; a longer one is not sent
 *  @param Status          not used
 *  @param dwAct           access technology
 *  @param supportBandSet  as in KR_setNetworkPreferMode()
 *  @return 0; 1; 13 pCode is empty or NULL; 30 mode is 3 or 4 */
MAINCONTROL_EXPORT uint32_t KR_setNetworkRegistrationMode(int32_t mode, const char *pCode, int32_t Status,
                                                          int32_t dwAct, int32_t supportBandSet);

/** Sets the LTE preference. AT+ZEACT= (5000 ms), a vendor command.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_setLteNetworkPreference(int32_t technologyPref);

/** Sends a host's own command (5000 ms), such as one that selects bands.
 *  @param str  the whole command, up to 1023 characters
 *  @return 0; 1; 13 str is empty or NULL */
MAINCONTROL_EXPORT uint32_t SetbandByBand(const char *str);

/** Scans for operators, the whole reply. AT+COPS=5 (360000 ms), a vendor command.
 *  @param destination  out: cleared, then the lines of the reply, the final OK among them
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getPlmnInfo(AtParasList *destination);

/** Turns a preference mode into the values of each command.
 *  @return 0 */
MAINCONTROL_EXPORT uint32_t translatePrefmodeToZsnt(int32_t mode, int32_t *p1, int32_t *p2, int32_t *p3);
MAINCONTROL_EXPORT uint32_t translatePrefmodeToSysconfig(int32_t mode, SysconfigPara *values);
MAINCONTROL_EXPORT uint32_t translatePrefmodeToErat(int32_t mode, int32_t *rat, int32_t *pref);

/** Turns the values of AT+ZSNT? into a preference mode.
 *  @param mode  out, untouched on failure
 *  @param flag  1 reports manual selection as mode 5
 *  @return 0; 1 the values have no mode */
MAINCONTROL_EXPORT uint32_t translateZsntToPrefmode(int32_t *mode, int32_t p1, int32_t p2, int32_t p3, int32_t flag);

/** Turns the third and fourth value of AT+ERAT? into a preference mode.
 *  @param mode  out, untouched on failure
 *  @param flag  any but 0 asks AT+COPS? (5000 ms) and reports manual selection as mode 5
 *  @return 0; 1 the values have no mode */
MAINCONTROL_EXPORT uint32_t translateEratToPrefmode(int32_t *mode, int32_t rat, int32_t pref, int32_t flag);

/** Turns the first two values of AT^SYSCONFIG? into a preference mode.
 *  @param mode  out, untouched on failure and where nMode is known but nAcqorder is not
 *  @return 0; 1 nMode is not known */
MAINCONTROL_EXPORT uint32_t translateSysconfigToPrefmode(int32_t *mode, int32_t nMode, int32_t nAcqorder);

/** What KR_setNetworkPreferMode() does for any mode, 5 included.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t setPrefMode(int32_t mode, int32_t supportBandSet);

/** What KR_getNetworkPreferMode() does.
 *  @param mode  out, untouched as in the translations
 *  @param flag  as in the translations
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t getPrefMode(int32_t *mode, int32_t flag);

/** Selects the operator automatically and asks for the service status up to ten times, until there is service. AT+COPS=
 *  (180000 ms), 3GPP TS 27.007 7.3, and AT^SYSINFO (5000 ms), a vendor command.
 *  @return 0, with service or without; 1 the selection failed */
MAINCONTROL_EXPORT uint32_t setAutoSearchCheckNetwork(void);

#ifdef __cplusplus
}
#endif

#endif

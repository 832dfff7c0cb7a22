/** Preference of radio technologies. Rules for callers: mainControl/wrappers.h. */
#ifndef MAINCONTROL_WRAPPERS_RADIO_MODE_H
#define MAINCONTROL_WRAPPERS_RADIO_MODE_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Sets the preference on the default platforms. AT+ZSNT= (10000 ms), a vendor command.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t zsntSet(int32_t p1, int32_t p2, int32_t p3);

/** Preference on the default platforms. AT+ZSNT? (5000 ms), a vendor command.
 *  @return 0, whatever the number of values in the reply; 1 */
MAINCONTROL_EXPORT uint32_t zsntRead(int32_t *p1, int32_t *p2, int32_t *p3);

/** Preference on TSP and Spreadtrum. AT^SYSCONFIG? (5000 ms), a vendor command.
 *  @param values  out
 *  @return 0, whatever the number of values in the reply; 1 */
MAINCONTROL_EXPORT uint32_t sysconfigRead(SysconfigPara *values);

/** Sets the preference on TSP and Spreadtrum. AT^SYSCONFIG= (5000 ms), a vendor command.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t sysconfigSet(int32_t nMode, int32_t nAcqorder, int32_t nRoam, int32_t nSrvdomain);

/** Preference on MediaTek. AT+ERAT? (5000 ms), a vendor command.
 *  @param e3  out, the technology
 *  @param e4  out, the preferred technology
 *  @return 0, whatever the number of values in the reply; 1 */
MAINCONTROL_EXPORT uint32_t eratRead(int32_t *e1, int32_t *e2, int32_t *e3, int32_t *e4);

/** Sets the preference on MediaTek. AT+ERAT= (5000 ms), a vendor command.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t eratSet(int32_t rat, int32_t preferredRat);

/** Sets the preferred band on Qualcomm LTE. AT+ZPREFBAND= (5000 ms), a vendor command that takes the number in quotes.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t zprefbandSet(int32_t band);

#ifdef __cplusplus
}
#endif

#endif

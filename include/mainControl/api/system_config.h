/** Chipset settings as they are. Rules for callers: mainControl/api.h. */
#ifndef MAINCONTROL_API_SYSTEM_CONFIG_H
#define MAINCONTROL_API_SYSTEM_CONFIG_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Sets automatic attach. AT+ZGAAT= (5000 ms), a vendor command.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_setZgaat(int32_t nState);

/** The values of AT^SYSCONFIG? (5000 ms), a vendor command. What the reply lacks comes as 0.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getSysconfig(int32_t *nMode, int32_t *nAcqorder, int32_t *nRoam, int32_t *nSrvdomain);

/** Sets the values of AT^SYSCONFIG= (5000 ms), a vendor command; passed on as they are.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_setSysconfig(int32_t nMode, int32_t nAcqorder, int32_t nRoam, int32_t nSrvdomain);

#ifdef __cplusplus
}
#endif

#endif

/** The platform in force, and the opening of the dialogue with the modem. Rules for callers: mainControl/api.h. */
#ifndef MAINCONTROL_API_FRAME_H
#define MAINCONTROL_API_FRAME_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Says which chipset platform the library runs on. Sends nothing.
 *  @param platform  a Platform; any other number takes the default branches
 *  @return 0 */
MAINCONTROL_EXPORT uint32_t KR_setCurrentPlatform(int32_t platform);

/** Asks whether the modem answers. AT (5000 ms), ITU-T V.250.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_startAT(void);

/** Switches command echo. ATE (5000 ms), ITU-T V.250 6.2.4.
 *  @param mode  0 off, 1 on; passed on as it is
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_echo(int32_t mode);

/** Sets the form of error reports. AT+CMEE= (5000 ms), 3GPP TS 27.007 9.1.
 *  @param mode  0 ERROR alone, 1 +CME ERROR with a number, 2 +CME ERROR with a text; passed on as it is
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_setCmee(int32_t mode);

#ifdef __cplusplus
}
#endif

#endif

/** Device basics. The rules for callers of all wrappers are in mainControl/wrappers.h. */
#ifndef MAINCONTROL_WRAPPERS_DEVICE_H
#define MAINCONTROL_WRAPPERS_DEVICE_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Asks whether the modem answers. AT (5000 ms), ITU-T V.250.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t atStart(void);

/** Command echo. ATE (5000 ms), ITU-T V.250 6.2.4.
 *  @param mode  0 off, 1 on; passed on as it is
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t ateExec(int32_t mode);

/** Form of error reports. AT+CMEE= (5000 ms), 3GPP TS 27.007 9.1.
 *  @param mode  0 ERROR alone, 1 +CME ERROR with a number, 2 +CME ERROR with a text; passed on as it is
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t cmeeSet(int32_t mode);

/** Serial number of the device, its IMEI. AT+CGSN (5000 ms), 3GPP TS 27.007 5.4.
 *  @param serial  out, the whole parameter text
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t cgsnExec(char *serial);

/** Serial number that the maker gave the device. AT+ZMSN? (5000 ms), a vendor command.
 *  @param serial  out, the whole parameter text
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t zmsnRead(char *serial);

#ifdef __cplusplus
}
#endif

#endif

/** Settings of the device. Rules for callers: mainControl/wrappers.h. */
#ifndef MAINCONTROL_WRAPPERS_SETTINGS_H
#define MAINCONTROL_WRAPPERS_SETTINGS_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Operation mode. AT+ZOPRT? (5000 ms), a vendor command.
 *  @param mode  out, as the modem reports it
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t zoprtRead(int32_t *mode);

/** Sets the operation mode. AT+ZOPRT= (5000 ms), a vendor command.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t zoprtSet(int32_t mode);

/** A named setting. AT+ZSET= (5000 ms), a vendor command.
 *  @param name      sent in quotes as it is
 *  @param outState  out, the text of the reply, without quotes
 *  @param outMode   out, the number of the reply
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t zsetSet(const char *name, int32_t value, char *outState, int32_t *outMode);

/** Firmware-over-the-air control. AT+FOTACTR= (5000 ms), a vendor command.
 *  @param outType    out
 *  @param outResult  out
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t FOTACTRSet(int32_t type, int32_t *outType, int32_t *outResult);

/** Static network address of a Marvell modem. AT*prop=net.static_ip (5000 ms), a vendor command.
 *  @param address  sent without quotes
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t AtNetstaticIp(const char *address);

/** Ramdump host address of a Marvell modem. AT*prop=ramdump.host_ip (5000 ms), a vendor command.
 *  @param address  sent without quotes
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t AtRamdumpHostIp(const char *address);

#ifdef __cplusplus
}
#endif

#endif

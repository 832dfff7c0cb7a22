/** Radio power, operation mode, selection mode, and settings of single chipsets. Rules for callers: mainControl/api.h. */
#ifndef MAINCONTROL_API_SETTINGS_H
#define MAINCONTROL_API_SETTINGS_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Switches the radio. AT+CFUN= (20000 ms on PF_TSP, else 5000 ms), 3GPP TS 27.007 8.2.
 *  @param powerMode  0 minimum, 1 full; passed on as it is
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_setPower(int32_t powerMode);

/** State of the radio. AT+CFUN? (5000 ms), 3GPP TS 27.007 8.2. On PF_TSP at full function the three registration reports are
 *  switched to mode 2, which that modem forgets while its radio is off.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getPower(int32_t *pPowerMode);

/** Operation mode. AT+ZOPRT? (5000 ms), a vendor command.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getOperationMode(int32_t *pOperMode);

/** Sets the operation mode. AT+ZOPRT= (5000 ms), a vendor command.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_setOperationMode(int32_t operMode);

/** How the operator is selected, as the API tells it. */
typedef enum SelectionMode { SELECTION_MODE_AUTOMATIC = 0, SELECTION_MODE_MANUAL = 5 } SelectionMode;

/** Whether operators are selected by hand. AT+COPS? (3GPP TS 27.007 7.3) on PF_SPEADTRUM and PF_MTK, AT+ZSNT? (a vendor
 *  command) on the others, 5000 ms.
 *  @param pSelectionMode  out, a SelectionMode
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_getNetworkSelectionMode(int32_t *pSelectionMode);

/** What KR_getNetworkSelectionMode() does, without a log.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t getSlelectMode(int32_t *selectionMode);

/** A named setting. AT+ZSET= (5000 ms), a vendor command.
 *  @param iState  name, sent in quotes as it is
 *  @param oState  in/out, terminated, as large as a reply can be: text of the reply
 *  @param oMode   out, number of the reply
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_setZSET(const char *iState, int32_t iMode, char *oState, int32_t *oMode);

/** Firmware-over-the-air control. AT+FOTACTR= (5000 ms), a vendor command.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_setFOTACTR(int32_t iType, int32_t *oType, int32_t *oResult);

/** Hands the address of the USB interface to a Marvell modem, as its ramdump host. AT*prop=ramdump.host_ip (5000 ms).
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_Sendusb0IPtoMarvell(const char *address);

/** Hands the address of the network gate to a Marvell modem, as its static address. AT*prop=net.static_ip (5000 ms).
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t KR_SendNetgateIPtoMarvell(const char *address);

#ifdef __cplusplus
}
#endif

#endif

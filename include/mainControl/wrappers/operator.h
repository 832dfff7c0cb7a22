/** SIM access, network names, and operator selection. Rules for callers: mainControl/wrappers.h. */
#ifndef MAINCONTROL_WRAPPERS_OPERATOR_H
#define MAINCONTROL_WRAPPERS_OPERATOR_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Restricted SIM access. AT+CRSM= (5000 ms), 3GPP TS 27.007 8.18. A command without data ends in a comma, except on
 *  PF_MTK.
 *  @param response  out: sw1 and sw2 as the SIM answered, not judged; response: hexadecimal, as long as the SIM's answer
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t crsmSet(CrsmCmd command, CrsmRes *response);

/** Names and codes of serving and home network. AT+ZDON? (5000 ms), a vendor command.
 *  @param info  out; without a serving network its fields and roamStatus become empty
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t zdonRead(ZdonInfo *info);

/** Network type and service domain. AT+ZPAS? (5000 ms), a vendor command.
 *  @param info  out
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t zpasRead(ZpasInfo *info);

/** Selects an operator. AT+COPS= (180000 ms), 3GPP TS 27.007 7.3. The operator is sent in quotes on PF_MTK, PF_SPEADTRUM
 *  and PF_TSP, where mode 3 sends mode and format only.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t copsSet(CopsPara operator_);

/** Selected operator. AT+COPS? (5000 ms), 3GPP TS 27.007 7.3.
 *  @param operator_  out
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t copsRead(CopsPara *operator_);

/** Scans for operators. AT+COPS=? (180000 ms), 3GPP TS 27.007 7.3.
 *  @param list  out, cleared first once the modem has said OK: one entry for each operator, at most 100. A scan whose
 *               parameters come to 1024 characters or more in brackets cannot be taken apart
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t copsTest(ScanNetworkList *list);

/** Scans for operators, the whole reply. AT+COPS=5 (360000 ms), a vendor command.
 *  @param destination  the address of a pointer to a list, which is cleared first once the modem has said OK and gets
 *                      the lines of the reply, the final OK among them
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t copsSet5(AtParasList **destination);

#ifdef __cplusplus
}
#endif

#endif

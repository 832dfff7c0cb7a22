/** PDP contexts. Rules for callers: mainControl/wrappers.h. */
#ifndef MAINCONTROL_WRAPPERS_PDP_H
#define MAINCONTROL_WRAPPERS_PDP_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** PDP context definitions. AT+CGDCONT? (5000 ms), 3GPP TS 27.007 10.1.1.
 *  @param list  out: up to 16 contexts; untouched on failure
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t cgdcontRead(PdpContextList *list);

/** Takes the contexts out of a parsed reply to AT+CGDCONT?. Lines behind the sixteenth are not looked at. A line with
 *  fewer than six values takes the missing ones from the line before.
 *  @param parsed  not edited
 *  @param list    out: its count, its first entry, and as many as there are lines
 *  @return 0 */
MAINCONTROL_EXPORT uint32_t CGDCONT_ReadATResProcess(AtRes *parsed, PdpContextList *list);

/** Defines a context. AT+CGDCONT= (5000 ms), 3GPP TS 27.007 10.1.1.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t cgdcontSet(PdpContext context);

/** Sets the default bearer. AT*CGDFLT= (5000 ms), a vendor command.
 *  @param context  its cid, pdpType and apn are sent
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t cgdfltSet(PdpContext context);

#ifdef __cplusplus
}
#endif

#endif

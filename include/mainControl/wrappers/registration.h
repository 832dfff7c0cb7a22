/** Radio power, registration and attach. Rules for callers: mainControl/wrappers.h. */
#ifndef MAINCONTROL_WRAPPERS_REGISTRATION_H
#define MAINCONTROL_WRAPPERS_REGISTRATION_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Sets the function level of the phone. AT+CFUN= (20000 ms on PF_TSP, else 5000 ms), 3GPP TS 27.007 8.2.
 *  @param level  0 minimum, 1 full; passed on as it is
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t cfunSet(int32_t level);

/** Function level of the phone. AT+CFUN? (5000 ms), 3GPP TS 27.007 8.2.
 *  @param level  out
 *  @return 0; 1 also if the parameters do not begin with a digit */
MAINCONTROL_EXPORT uint32_t cfunRead(int32_t *level);

/** Report mode of circuit-switched registration. AT+CREG= (5000 ms), 3GPP TS 27.007 7.2.
 *  @param mode  0 off, 1 status, 2 status and location
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t cregSet(int32_t mode);

/** Report mode of packet registration. AT+CGREG= (5000 ms), 3GPP TS 27.007 10.1.20.
 *  @param mode  as in cregSet()
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t cgregSet(int32_t mode);

/** Report mode of EPS registration. AT+CEREG= (5000 ms), 3GPP TS 27.007 10.1.22.
 *  @param mode  as in cregSet()
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t ceregSet(int32_t mode);

/** Automatic attach. AT+ZGAAT= (5000 ms), a vendor command.
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t zgaatSet(int32_t setting);

/** Attaches to the packet domain or detaches from it. AT+CGATT= (10000 ms), 3GPP TS 27.007 10.1.9.
 *  @param state  1 attach, 0 detach
 *  @return 0 or 1 */
MAINCONTROL_EXPORT uint32_t cgattSet(int32_t state);

/** EPS registration. AT+CEREG? (5000 ms), 3GPP TS 27.007 10.1.22.
 *  @param mode    out, report mode
 *  @param status  out: 1 registered at home, 5 roaming, others not registered
 *  @param tac     in/out, tracking area code, hexadecimal; a text that the reply lacks keeps its letters
 *  @param cellId  in/out, cell identity, hexadecimal; likewise
 *  @param act     out, access technology: 7 is E-UTRAN
 *  @return 0, whatever the number of values in the reply; 1 */
MAINCONTROL_EXPORT uint32_t ceregRead(int32_t *mode, int32_t *status, char *tac, char *cellId, int32_t *act);

/** Packet registration. AT+CGREG? (5000 ms), 3GPP TS 27.007 10.1.20.
 *  @param mode    out, report mode
 *  @param status  out, as in ceregRead()
 *  @return 0, whatever the number of values in the reply; 1 */
MAINCONTROL_EXPORT uint32_t cgregRead(int32_t *mode, int32_t *status);

/** Circuit-switched registration. AT+CREG? (5000 ms), 3GPP TS 27.007 7.2.
 *  @param record  in/out, terminated texts: written by lines of five values or more, as report mode 2 with access
 *                 technology gives them; the last such line counts
 *  @return 0, also if no line was long enough; 1 */
MAINCONTROL_EXPORT uint32_t cregRead(CregPara *record);

#ifdef __cplusplus
}
#endif

#endif

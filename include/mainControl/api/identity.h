/** The fixed data of the modem and of its SIM. Rules for callers: mainControl/api.h. */
#ifndef MAINCONTROL_API_IDENTITY_H
#define MAINCONTROL_API_IDENTITY_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/* All functions here take the size of the buffer in bytes and the buffer. A value of exactly that size fits. Unless a
 * comment says otherwise the value is copied without a terminator, so pass a zeroed buffer of one byte more. */

/** Manufacturer. AT+CGMI (5000 ms), 3GPP TS 27.007 5.1.
 *  @return 0; 1 also if the value does not fit */
MAINCONTROL_EXPORT uint32_t KR_getManufacturer(int32_t size, char *pString);

/** Model. AT+CGMM (5000 ms), 3GPP TS 27.007 5.2.
 *  @return 0; 1 also if the value does not fit */
MAINCONTROL_EXPORT uint32_t KR_getModelID(int32_t size, char *pString);

/** Firmware revision. AT+CGMR (5000 ms), 3GPP TS 27.007 5.3.
 *  @return 0; 1 also if the value does not fit */
MAINCONTROL_EXPORT uint32_t KR_getFirmwareRevision(int32_t size, char *pString);

/** Hardware revision. AT+HVER on PF_TSP and PF_SPEADTRUM, else AT+ZPCB? (5000 ms), vendor commands.
 *  @return 0; 1 also if the value does not fit */
MAINCONTROL_EXPORT uint32_t KR_getHardwareRevision(int32_t size, char *pString);

/** IMSI of the SIM. AT+CIMI (5000 ms), 3GPP TS 27.007 5.6.
 *  @return 0; 1 also if the value does not fit */
MAINCONTROL_EXPORT uint32_t KR_getIMSI(int32_t size, char *pString);

/** IMEI of the device. AT+CGSN (5000 ms), 3GPP TS 27.007 5.4.
 *  @return 0; 1 also if the value does not fit */
MAINCONTROL_EXPORT uint32_t KR_getIMEI(int32_t size, char *pIMEIString);

/** Serial number. On PF_QC_LTE the six digits behind the type allocation code of the IMEI, with a terminator, in a buffer
 *  for the whole IMEI: AT+CGSN (5000 ms), 3GPP TS 27.007 5.4. On all others but PF_TSP AT+ZMSN? (5000 ms), a vendor
 *  command, of whose value at most 254 characters count.
 *  @return 0; 1 also on PF_TSP, which has none, and if the value does not fit */
MAINCONTROL_EXPORT uint32_t KR_getSerialNumber(int32_t size, char *pSerialNumber);

/** ICCID of the SIM as its file holds it, the digits of each pair swapped. AT+CRSM=176,12258 (5000 ms), 3GPP TS 27.007
 *  8.18; the file is EF ICCID, 3GPP TS 31.102. A terminator is written if there is room for it.
 *  @return 0; 1; 18 the value does not fit */
MAINCONTROL_EXPORT uint32_t KR_getICCID(int32_t size, char *pString);

/** The subscriber's own number, from the first entry. AT+CNUM (5000 ms), 3GPP TS 27.007 7.1.
 *  @param size  room for the number and its two quotes
 *  @return 0; 1 also if there is no entry or the number does not fit */
MAINCONTROL_EXPORT uint32_t KR_getVoiceNumber(int32_t size, char *pString);

/** Takes the own number out of a parsed +CNUM reply.
 *  @return 0; 1 its result is not OK, or as in KR_getVoiceNumber() */
MAINCONTROL_EXPORT uint32_t disposeVoiceNumber_1(AtRes *parsed, int32_t size, char *pString);

#ifdef __cplusplus
}
#endif

#endif

#ifndef LIB_PUBLIC_ATCODEC_PRIVATE_WRAPPERS_H
#define LIB_PUBLIC_ATCODEC_PRIVATE_WRAPPERS_H

#include <cstddef>
#include <cstdint>

#include <mainControl/records.h>

#include "lib_public/support/outcome.h"
#include "lib_public/support/scan.h"
#include "lib_public/support/span.h"

/** Wrappers that the library keeps to itself. They tell how their exchange has ended, since what the API logs depends on
 *  it. */
namespace mainControl {

/** Gets a parameter text as it came, terminated and valid only during the call. Texts of a reply are too long to be handed
 *  up: the caller's frame would have to hold them beside the exchange's own. */
using TextHeard = void (*)(const char *text);

// Identity

/** Room for a number or a serial number, with its terminator. */
constexpr size_t kIdentityRoom = 255;

/** Whether a caller's buffer has room for a value, which nothing terminates there. */
inline bool fitsInto(int32_t size, Span value)
{
    return size >= static_cast<int32_t>(value.size());
}

/** A command whose whole parameter text is the answer. Nothing terminates the output: callers pass a zeroed buffer.
 *  @return Refused also if the text does not fit, and then nothing is copied nor heard */
Ending textExec(const char *command, int32_t size, char *output, TextHeard heard);
/** A command whose whole parameter text is the answer, cut to the room of the output. */
bool cutTextExec(const char *command, char (&output)[kIdentityRoom]);
/** The device's own number. AT+CNUM.
 *  @param size  what the caller has room for, quotes included
 *  @return Refused also if there is none, or none that fits */
Ending cnumExec(int32_t size, char (&number)[kIdentityRoom]);
/** Takes the number out of the parameters of a +CNUM reply: what stands in quotes in its second field. */
bool takeOwnNumber(Span paras, int32_t size, char (&number)[kIdentityRoom]);

// SIM

/** What crsmSet() does, with a response of stated room. */
uint32_t accessSim(const CrsmCmd &command, int32_t &sw1, int32_t &sw2, TextTarget response);

// Radio

/** LTE preference. AT+ZEACT=. */
Ending zeactSet(int32_t preference);
/** A command of the host's own. */
Ending hostCommand(const char *command);

// Signal

/** Extended signal quality. AT+CESQ, 3GPP TS 27.007 8.69. */
Ending cesqExec(int32_t *rxlev, int32_t *ber, int32_t *rscp, int32_t *ecno, int32_t *rsrq, int32_t *rsrp,
                TextHeard heard);
/** Signal quality. AT+CSQ, 3GPP TS 27.007 8.5. */
Ending csqExec(int32_t *rssi);
/** The serving cell. AT+ZCELLINFO?. */
Ending zcellinfoRead(CellInfo *info);
/** Transmit power. AT*ZAIRINFO?. */
Ending zairinfoRead(ZairInfo *info);

} // namespace mainControl

#endif

/** Hiding numbers that tell by themselves what they are. */
#ifndef HOST_MASKING_NUMBERS_H
#define HOST_MASKING_NUMBERS_H

#include "host/masking/masked_text.h"

namespace host::masking {

/** What is dialled to change a secret, and the digits of all else that is dialled. */
void hideDialledCodes(MaskedText &masked);

/** Runs of digits as long as an IMSI, IMEI or ICCID are such numbers wherever they stand, also with their digits swapped
 *  in pairs and filled up as in the files of the SIM. */
void hideLongNumbers(MaskedText &masked);

/** A number in quotes and the type of number behind it, from 128 to 255, are a telephone number. */
void hidePhoneNumbers(MaskedText &masked);

} // namespace host::masking

#endif

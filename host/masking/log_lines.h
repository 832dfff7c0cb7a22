/** Hiding what only log lines say. */
#ifndef HOST_MASKING_LOG_LINES_H
#define HOST_MASKING_LOG_LINES_H

#include "host/masking/masked_text.h"

namespace host::masking {

/** Commands with AT before them, and their arguments as far as they look like a code or a text. */
void hideLoggedCommands(MaskedText &masked);

/** Values behind a name that says what they are: "newPin:1234". */
void hideNamedValues(MaskedText &masked);

/** What the library logs of replies and reports without their name. */
void hideNamelessValues(MaskedText &masked);

} // namespace host::masking

#endif

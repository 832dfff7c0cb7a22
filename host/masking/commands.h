/** Hiding what commands carry. */
#ifndef HOST_MASKING_COMMANDS_H
#define HOST_MASKING_COMMANDS_H

#include "host/masking/masked_text.h"

namespace host::masking {

enum class Words : uint8_t {
    Hidden, ///< where nothing but a command stands
    Spared, ///< where other text may follow it
};

/** Hides each argument of a command line that the vocabulary does not call harmless, but for numbers of three digits, and
 *  whatever is not a command. */
void hideCommandLine(MaskedText &masked, Stretch line, Words words);

/** Hides by the table of secrets the arguments of all commands and replies that stand in the text with their names.
 *  @param harmless   what it tells about need not be hidden; nullptr if there is no such rule
 *  @param isOneLine  the text is one command, to its end */
void hideMentions(MaskedText &masked, const at::CommandRule *harmless, bool isOneLine);

/** Hides a name that nobody knows if it may be a secret, or end in one.
 *  @param name  with its sign */
void hideStrangeName(MaskedText &masked, Stretch name);

/** Hides arguments of what nobody knows: all but numbers of three digits. */
void hideUnknownArguments(MaskedText &masked, Kind kind, Stretch arguments);

} // namespace host::masking

#endif

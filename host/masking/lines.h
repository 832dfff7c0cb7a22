/** Hiding what modems say, line by line. */
#ifndef HOST_MASKING_LINES_H
#define HOST_MASKING_LINES_H

#include "host/masking/masked_text.h"

namespace host::masking {

/** What a line was taken for. */
enum class Line : uint8_t { Reply, Report };

/** Whether a line says how a command ended. */
bool isFinalResult(std::string_view line);

/** Hides lines that nobody asked for by a name that is known: texts of messages, and what unknown names tell. A line without
 *  a name stays in the reply to a command that asks for a text.
 *  @param command  the command that ran; empty if none did */
void hideLines(MaskedText &masked, std::string_view command, Line line);

/** Hides the lines that follow the name of a message, wherever it stands. */
void hideTextsOfMessages(MaskedText &masked);

/** Hides the secrets of a command wherever the modem says them again: whole, in other quotes or digits, or in lines that are
 *  pieces of an echo.
 *  @param maskedCommand  the command without its secrets */
void hideRepeats(MaskedText &masked, std::string_view command, std::string_view maskedCommand);

} // namespace host::masking

#endif

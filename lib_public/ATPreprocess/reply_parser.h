#ifndef LIB_PUBLIC_ATPREPROCESS_REPLY_PARSER_H
#define LIB_PUBLIC_ATPREPROCESS_REPLY_PARSER_H

#include <cstddef>
#include <cstdint>

#include "lib_public/support/log.h"
#include "lib_public/support/span.h"

namespace mainControl {

struct EndFlagHit;

using ParserLog = ModuleLog<"../lib_public/ATPreprocess/ATPreprocess">;

/** Where a parse puts the parameter text. */
struct ParasDestination {
    enum class Kind : uint8_t {
        OwnText,    ///< the text is terminated, and nothing behind it is touched
        HostsRecord ///< zeroed by the host: texts come unterminated, and behind an OK body the rest is cleared
    };

    char *text;
    size_t size;
    Kind kind;
};

/** What a parse found, and what it leaves of the text. */
struct ParsedReply {
    uint16_t cmdId = 0;
    uint8_t result = 0;
    bool hasLength = false;   ///< the row has parameters, and they were taken
    uint16_t parasLength = 0; ///< their length
    size_t parasSize = 0;     ///< characters that were put into the destination; 0 if it was left alone

    size_t dropped = 0;  ///< characters of the text in front of its first line break
    size_t kept = 0;     ///< characters from there on
    size_t cutAt = 0;    ///< of these, those in front of what was consumed
    size_t consumed = 0; ///< those that were
};

/** Parses a reply as Bk_Parse_At_Res() does, log lines and globals included, and leaves the text alone.
 *  @param text  may be nullptr, as may the destination's
 *  @return 0, 19 or 20 */
uint32_t parseReply(const char *text, const ParasDestination &paras, ParsedReply &reply);

/** Notes how a text is left by a parse that has found nothing but the end flag. */
void leaveOff(Span text, const EndFlagHit &hit, ParsedReply &reply);

/** Edits a text as the parse of it left off: without its head, without what was consumed; only its last character
 *  where it holds no line break. */
void leaveText(char *text, const ParsedReply &reply);

/** Copies parameters as they stand.
 *  @return their number that the destination has taken */
size_t keepParameters(Span parameters, const ParasDestination &paras);

} // namespace mainControl

#endif

#pragma once

#include <cstddef>
#include <cstdint>

#include "../support/log.h"
#include "../support/span.h"

namespace mainControl {

using ParserLog = ModuleLog<"../lib_public/ATPreprocess/ATPreprocess">;

/// Where a parse puts the parameter text.
struct ParasRoom {
    char *text;
    std::size_t size;
    /// Room in a record that a caller handed over: texts are copied in unterminated, and behind an OK body the rest is
    /// cleared. Otherwise the text is terminated and nothing behind it is touched.
    bool isCallersRecord;
};

/// What a parse found. The fields from `cmdId` on are only set if it succeeded.
struct ParsedReply {
    Span kept;             ///< what is left of the text before the cut: it begins at the first line break
    Span cut;              ///< the part of `kept` that was consumed
    std::size_t parasSize; ///< characters that were put into the room; 0 if it was left alone
    std::uint16_t cmdId;
    std::uint8_t result;
    bool hasLength;            ///< the row has parameters, and they were taken
    std::uint16_t parasLength; ///< their length
};

/// Parses a reply as Bk_Parse_At_Res() does, log lines and globals included, and leaves the text alone.
/// @param text  may be nullptr, as may the room's
/// @return 0, 19 or 20
std::uint32_t parseReply(const char *text, const ParasRoom &paras, ParsedReply &reply);

/// Edits a text as the parse of it left off: without its head, without what was consumed; only its last character
/// where it holds no line break.
void leaveText(char *text, const ParsedReply &reply);

/// The parameters behind the prefix of a report or error.
struct ReportParameters {
    Span text;
    bool isClosed; ///< they end at a line break, or run to the end of the text by right
    bool isMultiLine;
};
ReportParameters parametersAt(Span reply, const char *start);

/// Whether the parameters of a reply run on to its end, over line breaks: texts and calls from the SIM do.
bool isMultiLine(Span reply);

/// Adds to g_iProcDataLen.
void countConsumed(std::size_t characters);

/// Counts parameters as consumed, with the line break that closes them.
void countParameters(Span parameters, bool isMultiLine);

/// Copies parameters as they stand.
/// @return their number that the room has taken
std::size_t keepParameters(Span parameters, const ParasRoom &paras);

/// What AtRes::ParasLen says of parameters.
inline std::uint16_t parasLength(Span parameters)
{
    return static_cast<std::uint16_t>(parameters.size());
}

/// Whether the parameters of a +CLIP report are those of an OK reply; if so, counts them and the final result.
bool takeClipReply(Span parameters, const char *end);

} // namespace mainControl

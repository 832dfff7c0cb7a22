#include "reply_parser.h"

#include <mainControl/parser.h>

#include "../support/quoted_search.h"
#include "closed_lines.h"
#include "end_flag_search.h"
#include "ok_body.h"
#include "report_ids.h"

namespace mainControl {
namespace {

/// Assembles the lines of the body in front of an OK.
/// @return characters of the parameter text
std::size_t keepBody(Span body, ClosedLines &lines, const ParasRoom &paras)
{
    char name[sizeof(AtCmdLine::CmdName)] = "";
    AssembledLine line(name, paras.text, paras.size, 0);
    assembleBody(body.atMost(paras.size - 1).from(2), lines, line);
    if (paras.isCallersRecord) std::memset(paras.text + line.length(), 0, paras.size - line.length());
    return line.length();
}

/// The parameter text for the log. A record that its caller did not clear may hold no terminator at all.
const char *printable(const ParasRoom &paras)
{
    return !paras.isCallersRecord || strnlen(paras.text, paras.size) < paras.size ? paras.text : "";
}

void takeBody(Span body, ClosedLines &lines, const ParasRoom &paras, ParsedReply &reply)
{
    if (reply.result != AT_RES_RESULT_OK || body.empty()) return;
    countConsumed(body.size());
    reply.parasSize = keepBody(body, lines, paras);
    reply.cut.begin = body.begin;
}

void takeParameters(Span text, const char *start, const ParasRoom &paras, ParsedReply &reply)
{
    const ReportParameters parameters = parametersAt(text, start);
    if (!parameters.isClosed) return;
    if (reply.cmdId == kClipReport && takeClipReply(parameters.text, text.end)) {
        reply.result = AT_RES_RESULT_OK;
        return;
    }
    countParameters(parameters.text, parameters.isMultiLine);
    reply.parasSize = keepParameters(parameters.text, paras);
    reply.hasLength = true;
    reply.parasLength = parasLength(parameters.text);
}

} // namespace

void countConsumed(std::size_t characters)
{
    // A host may have left any number there.
    g_iProcDataLen = static_cast<std::int32_t>(static_cast<std::uint32_t>(g_iProcDataLen) + characters);
}

bool isMultiLine(Span reply)
{
    // All four names end in a colon, so one walk over the colons finds any of them.
    const char *at = reply.begin;
    while ((at = static_cast<const char *>(std::memchr(at, ':', Span{at, reply.end}.size()))) != nullptr) {
        const Span before{reply.begin, at};
        if (before.endsWith("CBM") || before.endsWith("CMT") || before.endsWith("CDS") || before.endsWith("ZCLAS"))
            return true;
        ++at;
    }
    return false;
}

ReportParameters parametersAt(Span reply, const char *start)
{
    if (isMultiLine(reply)) return {{start, reply.end}, true, true};
    const char *const lineBreak = findOutsideQuotes({start, reply.end}, "\r\n");
    if (lineBreak == nullptr) return {{start, reply.end}, false, false};
    return {{start, lineBreak}, true, false};
}

void countParameters(Span parameters, bool isMultiLine)
{
    countConsumed(parameters.size() + (isMultiLine ? 0 : 2));
}

std::size_t keepParameters(Span parameters, const ParasRoom &paras)
{
    const Span kept = parameters.atMost(paras.size - 1);
    std::memcpy(paras.text, kept.begin, kept.size());
    if (!paras.isCallersRecord) paras.text[kept.size()] = '\0';
    return kept.size();
}

bool takeClipReply(Span parameters, const char *end)
{
    constexpr Span kEnd = spanOfLiteral("\r\n\r\nOK\r\n");
    const Span rest{parameters.end, end};
    if (rest.size() != kEnd.size() || !rest.startsWith(kEnd)) return false;
    const char *const comma = findOutsideQuotes(parameters, ",");
    if (comma == nullptr || findOutsideQuotes({comma + 1, parameters.end}, ",") != nullptr) return false;
    countConsumed(parameters.size() + kEnd.size());
    return true;
}

std::uint32_t parseReply(const char *text, const ParasRoom &paras, ParsedReply &reply)
{
    ParserLog::line("Bk_Parse_At_Res-in-%s", text);
    if (text == nullptr || paras.text == nullptr) {
        ParserLog::line("UNI_ERROR_BK_INVALID_ARG");
        return UNI_ERROR_BK_INVALID_ARG;
    }

    const Span whole = spanOf(text);
    ClosedLines lines;
    const EndFlagHit hit = findEndFlag(whole, lines);
    reply.kept = {hit.start, whole.end};
    reply.cut = {hit.flag, hit.flag};
    reply.parasSize = 0;
    if (hit.row < 0) {
        ParserLog::line("UNI_ERROR_BK_FAIL1");
        return UNI_ERROR_BK_FAIL1;
    }

    const AtEndFlagRow &row = KoraWcdma_AtEndFlgTable[hit.row];
    reply.cmdId = static_cast<std::uint16_t>(row.identifier);
    reply.result = static_cast<std::uint8_t>(row.result);
    reply.hasLength = false;
    const std::size_t flagLength = flagOf(hit.row).size();
    g_iProcDataLen = static_cast<std::int32_t>(flagLength);
    g_bWaitingRes = 1;
    if (row.hasParas == 0)
        takeBody({hit.start, hit.flag}, lines, paras, reply);
    else if (row.hasParas == 1)
        takeParameters(reply.kept, hit.flag + flagLength, paras, reply);
    reply.cut.end = reply.cut.begin + g_iProcDataLen;

    ParserLog::line("Bk_Parse_At_Res-out-%s", printable(paras));
    ParserLog::line("Bk_Parse_At_Res-out-%d", std::int32_t{reply.cmdId});
    return UNI_ERROR_SUCCESS;
}

void leaveText(char *text, const ParsedReply &reply)
{
    if (reply.kept.begin == nullptr) {
        const std::size_t length = std::strlen(text);
        if (length > 1) std::memmove(text, text + length - 1, 2);
        return;
    }
    // First the head goes, then what was consumed: a host may look at the bytes that the moves leave behind the end.
    std::memmove(text, reply.kept.begin, reply.kept.size() + 1);
    char *const cut = text + Span{reply.kept.begin, reply.cut.begin}.size();
    std::memmove(cut, cut + reply.cut.size(), Span{reply.cut.end, reply.kept.end}.size() + 1);
}

} // namespace mainControl

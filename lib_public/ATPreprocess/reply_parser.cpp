#include "lib_public/ATPreprocess/reply_parser.h"

#include <mainControl/parser.h>

#include "lib_public/ATPreprocess/end_flag_search.h"
#include "lib_public/ATPreprocess/ok_body.h"
#include "lib_public/ATPreprocess/report_ids.h"
#include "lib_public/ATPreprocess/report_parameters.h"

namespace mainControl {
namespace {

using Kind = ParasDestination::Kind;

/** Assembles the lines of the body in front of an OK.
 *  @return characters that are consumed */
size_t takeBody(Span body, NotedLines &lines, const ParasDestination &paras, ParsedReply &reply)
{
    if (reply.result != AT_RES_RESULT_OK || body.empty()) return 0;
    char name[sizeof(AtCmdLine::CmdName)] = "";
    AssembledLine line(name, paras.text, paras.size, 0);
    assembleBody(body.atMost(paras.size - 1).from(2), lines, line);
    reply.parasSize = line.length();
    if (paras.kind == Kind::HostsRecord) std::memset(paras.text + line.length(), 0, paras.size - line.length());
    return body.size();
}

/** Takes the parameters of a report or error, or of an OK reply that looks like a report.
 *  @return characters that are consumed */
size_t takeParameters(Span text, const char *start, const ParasDestination &paras, ParsedReply &reply)
{
    const ReportParameters parameters = parametersAt(text, start);
    if (!parameters.isClosed) return 0;
    if (reply.cmdId == kClipReport && isClipReply(parameters.text, text.end)) {
        reply.result = AT_RES_RESULT_OK;
        return parameters.text.size() + kClipEnd.size();
    }
    reply.parasSize = keepParameters(parameters.text, paras);
    reply.hasLength = true;
    reply.parasLength = static_cast<uint16_t>(parameters.text.size());
    return parameters.consumed;
}

/** The parameter text for the log. A record that its host did not zero may hold no terminator at all. */
const char *printable(const ParasDestination &paras)
{
    return paras.kind == Kind::OwnText || strnlen(paras.text, paras.size) < paras.size ? paras.text : "";
}

} // namespace

uint32_t parseReply(const char *text, const ParasDestination &paras, ParsedReply &reply)
{
    ParserLog::line("Bk_Parse_At_Res-in-%s", text);
    if (text == nullptr || paras.text == nullptr) {
        ParserLog::line("UNI_ERROR_BK_INVALID_ARG");
        return UNI_ERROR_BK_INVALID_ARG;
    }

    const Span whole = spanOf(text);
    NotedLines lines;
    const EndFlagHit hit = findEndFlag(whole, lines);
    leaveOff(whole, hit, reply);
    if (hit.row == kNoRow) {
        ParserLog::line("UNI_ERROR_BK_FAIL1");
        return UNI_ERROR_BK_FAIL1;
    }

    const AtEndFlagRow &row = KoraWcdma_AtEndFlgTable[hit.row];
    reply.cmdId = static_cast<uint16_t>(row.identifier);
    reply.result = static_cast<uint8_t>(row.result);
    const Span flag{hit.flag, hit.flag + flagOf(hit.row).size()};
    const size_t inFront = row.hasParas == 0 ? takeBody({hit.start, flag.begin}, lines, paras, reply) : 0;
    const size_t behind = row.hasParas == 1 ? takeParameters({hit.start, whole.end}, flag.end, paras, reply) : 0;
    reply.cutAt -= inFront;
    reply.consumed = inFront + flag.size() + behind;

    g_iProcDataLen = static_cast<int32_t>(reply.consumed);
    g_bWaitingRes = 1;
    ParserLog::line("Bk_Parse_At_Res-out-%s", printable(paras));
    ParserLog::line("Bk_Parse_At_Res-out-%d", int32_t{reply.cmdId});
    return UNI_ERROR_SUCCESS;
}

void leaveOff(Span text, const EndFlagHit &hit, ParsedReply &reply)
{
    if (hit.start == nullptr) {
        reply.kept = text.atMost(1).size();
        reply.dropped = text.size() - reply.kept;
        reply.cutAt = reply.kept;
    } else {
        reply.kept = Span{hit.start, text.end}.size();
        reply.dropped = Span{text.begin, hit.start}.size();
        reply.cutAt = Span{hit.start, hit.flag}.size();
    }
}

void leaveText(char *text, const ParsedReply &reply)
{
    // First the head goes, then what was consumed: a host may look at the bytes that the moves leave behind the end.
    if (reply.dropped != 0) std::memmove(text, text + reply.dropped, reply.kept + 1);
    char *const cut = text + reply.cutAt;
    if (reply.consumed != 0) std::memmove(cut, cut + reply.consumed, reply.kept - reply.cutAt - reply.consumed + 1);
}

size_t keepParameters(Span parameters, const ParasDestination &paras)
{
    const Span kept = parameters.atMost(paras.size - 1);
    std::memcpy(paras.text, kept.begin, kept.size());
    if (paras.kind == Kind::OwnText) paras.text[kept.size()] = '\0';
    return kept.size();
}

} // namespace mainControl

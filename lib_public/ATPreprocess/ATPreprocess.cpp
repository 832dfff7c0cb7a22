// The exported parser: thin shapes over the parsing core, each of which also works when a host calls it alone.

#include <mainControl/parser.h>

#include "../support/quoted_search.h"
#include "closed_lines.h"
#include "end_flag_search.h"
#include "ok_body.h"
#include "reply_parser.h"
#include "report_ids.h"

using namespace mainControl;

int32_t g_iProcDataLen = 0;
int32_t g_bWaitingRes = 1;
int32_t g_SingleReport = 0;

namespace {

ParasRoom roomIn(AtRes *parsed)
{
    if (parsed == nullptr) return {nullptr, 0, true};
    return {parsed->Paras, sizeof parsed->Paras, true};
}

AssembledLine assembledIn(AtCmdLine *work)
{
    return {work->CmdName, work->Line, sizeof work->Line, spanOf(work->Line, sizeof work->Line).size()};
}

/// Where a host says that parameters begin, held to the text.
const char *startOfParameters(Span text, const char *flag)
{
    const std::ptrdiff_t offset = flag - text.begin + g_iProcDataLen;
    return text.from(offset < 0 ? 0 : static_cast<std::size_t>(offset)).begin;
}

} // namespace

uint32_t Bk_Parse_At_Res(char *text, AtRes *parsed)
{
    ParsedReply reply;
    const uint32_t code = parseReply(text, roomIn(parsed), reply);
    if (code == UNI_ERROR_BK_INVALID_ARG) return code;
    leaveText(text, reply);
    if (code != UNI_ERROR_SUCCESS) return code;
    parsed->CmdId = reply.cmdId;
    parsed->Result = reply.result;
    if (reply.hasLength) parsed->ParasLen = reply.parasLength;
    return code;
}

uint32_t Bk_Parse_At_COPS5_Res(char *text, AtRes *parsed)
{
    if (text == nullptr || parsed == nullptr) {
        ParserLog::line("UNI_ERROR_BK_INVALID_ARG");
        return UNI_ERROR_BK_INVALID_ARG;
    }
    const Span whole = spanOf(text);
    if (findOutsideQuotes(whole, "\r\nOK\r\n") == nullptr) return UNI_ERROR_BK_FAIL1;
    parsed->Result = AT_RES_RESULT_OK;
    parsed->CmdId = kOkResult;
    keepParameters(whole, roomIn(parsed));
    return UNI_ERROR_SUCCESS;
}

char *_Find_Sub_Str(const char *text, const char *needle)
{
    if (text == nullptr || needle == nullptr) return nullptr;
    return const_cast<char *>(findOutsideQuotes(spanOf(text), spanOf(needle)));
}

uint32_t _Parse_At_PreProcess(char *text, char **endPosition, int32_t *rowIndex)
{
    if (text == nullptr || endPosition == nullptr || rowIndex == nullptr) return UNI_ERROR_BK_FAIL1;
    const Span whole = spanOf(text);
    ClosedLines dropped;
    const EndFlagHit hit = findEndFlag(whole, dropped);
    ParsedReply reply{};
    reply.kept = {hit.start, whole.end};
    reply.cut = {hit.flag, hit.flag};
    leaveText(text, reply);
    if (hit.start == nullptr) return UNI_ERROR_BK_FAIL1;
    *endPosition = text + (hit.flag - hit.start);
    *rowIndex = hit.row;
    return hit.row < 0 ? UNI_ERROR_BK_FAIL1 : UNI_ERROR_SUCCESS;
}

uint32_t _Parse_At_End_Flag(char *text, AtRes *parsed, char **endPosition, AtCmdLine *work, int32_t hasParas)
{
    switch (hasParas) {
    case 0:
        return _Parse_At_End_Flag_NoPara(text, parsed, endPosition, work);
    case 1:
        return _Parse_At_End_Flag_HavePara(text, parsed, endPosition, work);
    default:
        return UNI_ERROR_BK_FAIL1;
    }
}

uint32_t _Parse_At_End_Flag_NoPara(char *text, AtRes *parsed, char **endPosition, AtCmdLine *work)
{
    if (text == nullptr || parsed == nullptr || endPosition == nullptr || work == nullptr) return UNI_ERROR_BK_FAIL1;
    if (parsed->Result != AT_RES_RESULT_OK || *endPosition <= text) return UNI_ERROR_BK_FAIL1;
    const Span body = spanOf(text, static_cast<std::size_t>(*endPosition - text));
    countConsumed(body.size());
    *endPosition = text;
    if (g_bWaitingRes == 0) return UNI_ERROR_BK_FAIL1;

    keepParameters(body, roomIn(parsed));
    const uint32_t code = _Parse_At_Ok_Res(parsed, work);
    std::memset(parsed->Paras, 0, sizeof parsed->Paras);
    keepParameters(spanOf(work->Line, sizeof work->Line), roomIn(parsed));
    return code;
}

uint32_t _Parse_At_End_Flag_HavePara(char *text, AtRes *parsed, char **endPosition, AtCmdLine *work)
{
    if (text == nullptr || parsed == nullptr || endPosition == nullptr || work == nullptr) return UNI_ERROR_BK_FAIL1;
    if (*endPosition < text) return UNI_ERROR_BK_FAIL1;
    const Span whole = spanOf(text);
    const ReportParameters parameters = parametersAt(whole, startOfParameters(whole, *endPosition));
    if (!parameters.isClosed) return UNI_ERROR_BK_FAIL1;
    // The parameters lie in the text, which is the caller's to write.
    char *const start = text + (parameters.text.begin - text);
    char *const end = start + parameters.text.size();
    if (parsed->CmdId == kClipReport && ProcessClipCmd(start, end, 0, parsed, work) != 0) return UNI_ERROR_SUCCESS;
    return _Parse_At_ParaOfTheEndColon(text, start, end, parsed);
}

uint32_t _Parse_At_Ok_Res(AtRes *parsed, AtCmdLine *work)
{
    if (parsed == nullptr || work == nullptr) {
        ParserLog::line("UNI_ERROR_BK_INVALID_ARG");
        return UNI_ERROR_BK_INVALID_ARG;
    }
    AssembledLine line = assembledIn(work);
    Span lastLine{};
    assembleBody(spanOf(parsed->Paras, sizeof parsed->Paras).from(2), line, lastLine);
    return UNI_ERROR_SUCCESS;
}

uint32_t _First_Parse_At_OK_Res(char *body, char *lineBuffer, AtCmdLine *work)
{
    constexpr std::size_t kLineBuffer = 1024;
    if (body == nullptr || lineBuffer == nullptr || work == nullptr) return UNI_ERROR_BK_FAIL1;
    AssembledLine line = assembledIn(work);
    Span lastLine{};
    const bool all = assembleBody(spanOf(body), line, lastLine);
    if (!lastLine.empty()) {
        const Span kept = lastLine.atMost(kLineBuffer);
        std::memcpy(lineBuffer, kept.begin, kept.size());
        std::memset(lineBuffer + kept.size(), 0, kLineBuffer - kept.size());
    }
    return all ? UNI_ERROR_SUCCESS : UNI_ERROR_BK_FAIL1;
}

int32_t ParseCmdLineWithCmdName(AtCmdLine *work, char *line, char *colonPosition)
{
    if (work == nullptr || line == nullptr || colonPosition < line) return 0;
    const Span value = spanOf(colonPosition).from(2);
    return assembledIn(work).takeNamed({line, colonPosition}, value) ? 1 : 0;
}

void ParseCmdLineWithoutCmdName(AtCmdLine *work, char *line, char *restOfBody)
{
    if (work == nullptr || line == nullptr || restOfBody == nullptr) return;
    assembledIn(work).takeBare(spanOf(line), std::strstr(restOfBody, ": ") != nullptr);
}

int32_t ProcessClipCmd(char *paraStart, char *paraEnd, int32_t /*ignored*/, AtRes *parsed, AtCmdLine *work)
{
    if (paraStart == nullptr || paraEnd < paraStart || parsed == nullptr || work == nullptr) return 0;
    const Span parameters{paraStart, paraEnd};
    if (!takeClipReply(parameters, spanOf(paraEnd).end)) return 0;
    parsed->Result = AT_RES_RESULT_OK;
    keepParameters(parameters, {work->Line, sizeof work->Line, true});
    return 1;
}

uint32_t _Parse_At_ParaOfTheEndColon(char *text, char *paraStart, char *paraEnd, AtRes *parsed)
{
    if (text == nullptr || paraStart == nullptr || paraEnd < paraStart || parsed == nullptr) return UNI_ERROR_SUCCESS;
    const Span parameters{paraStart, paraEnd};
    countParameters(parameters, isMultiLine(spanOf(text)));
    keepParameters(parameters, roomIn(parsed));
    parsed->ParasLen = parasLength(parameters);
    return UNI_ERROR_SUCCESS;
}

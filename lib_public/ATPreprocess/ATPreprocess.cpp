// The exported parser: thin shapes over the parsing core, each of which also works when a host calls it alone.

#include <mainControl/parser.h>

#include "lib_public/ATPreprocess/end_flag_search.h"
#include "lib_public/ATPreprocess/ok_body.h"
#include "lib_public/ATPreprocess/reply_parser.h"
#include "lib_public/ATPreprocess/report_ids.h"
#include "lib_public/ATPreprocess/report_parameters.h"
#include "lib_public/support/fast_search.h"

using namespace mainControl;

int32_t g_iProcDataLen = 0;
int32_t g_bWaitingRes = 1;
int32_t g_SingleReport = 0;

namespace {

using Kind = ParasDestination::Kind;

ParasDestination parasOf(AtRes *parsed)
{
    if (parsed == nullptr) return {nullptr, 0, Kind::HostsRecord};
    return {parsed->Paras, sizeof parsed->Paras, Kind::HostsRecord};
}

AssembledLine assembledIn(AtCmdLine *work)
{
    return {work->CmdName, work->Line, sizeof work->Line, spanOf(work->Line, sizeof work->Line).size()};
}

void countConsumed(size_t characters)
{
    // A host may have left any number there.
    g_iProcDataLen = static_cast<int32_t>(static_cast<uint32_t>(g_iProcDataLen) + characters);
}

/** The lines of a body as one. */
BodyEnd assemble(Span body, AtCmdLine *work)
{
    AssembledLine line = assembledIn(work);
    NotedLines lines;
    return assembleBody(body, lines, line);
}

void takeParameters(Span parameters, Span text, AtRes *parsed)
{
    countConsumed(consumedBy(parameters, text));
    keepParameters(parameters, parasOf(parsed));
    parsed->ParasLen = static_cast<uint16_t>(parameters.size());
}

/** Takes the parameters of a +CLIP report if they are those of an OK reply. */
bool takeClipReply(Span parameters, const char *textEnd, AtRes *parsed, AtCmdLine *work)
{
    if (!isClipReply(parameters, textEnd)) return false;
    countConsumed(parameters.size() + kClipEnd.size());
    parsed->Result = AT_RES_RESULT_OK;
    keepParameters(parameters, {work->Line, sizeof work->Line, Kind::HostsRecord});
    return true;
}

/** Where a host says that parameters begin, held to the text. */
const char *startOfParameters(Span text, const char *flag)
{
    const ptrdiff_t offset = flag - text.begin + g_iProcDataLen;
    return text.from(offset < 0 ? 0 : static_cast<size_t>(offset)).begin;
}

} // namespace

uint32_t Bk_Parse_At_Res(char *text, AtRes *parsed)
{
    ParsedReply reply;
    const uint32_t code = parseReply(text, parasOf(parsed), reply);
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
    keepParameters(whole, parasOf(parsed));
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
    NotedLines lines;
    const EndFlagHit hit = findEndFlag(whole, lines);
    ParsedReply reply;
    leaveOff(whole, hit, reply);
    leaveText(text, reply);
    if (hit.start == nullptr) return UNI_ERROR_BK_FAIL1;
    *endPosition = text + reply.cutAt;
    *rowIndex = hit.row;
    return hit.row == kNoRow ? UNI_ERROR_BK_FAIL1 : UNI_ERROR_SUCCESS;
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
    const Span body = spanOf(text, Span{text, *endPosition}.size());
    countConsumed(body.size());
    *endPosition = text;
    if (g_bWaitingRes == 0) return UNI_ERROR_BK_FAIL1;

    keepParameters(body, parasOf(parsed));
    const uint32_t code = _Parse_At_Ok_Res(parsed, work);
    std::memset(parsed->Paras, 0, sizeof parsed->Paras);
    keepParameters(spanOf(work->Line, sizeof work->Line), parasOf(parsed));
    return code;
}

uint32_t _Parse_At_End_Flag_HavePara(char *text, AtRes *parsed, char **endPosition, AtCmdLine *work)
{
    if (text == nullptr || parsed == nullptr || endPosition == nullptr || work == nullptr) return UNI_ERROR_BK_FAIL1;
    if (*endPosition < text) return UNI_ERROR_BK_FAIL1;
    const Span whole = spanOf(text);
    const ReportParameters parameters = parametersAt(whole, startOfParameters(whole, *endPosition));
    if (!parameters.isClosed) return UNI_ERROR_BK_FAIL1;
    if (parsed->CmdId == kClipReport && takeClipReply(parameters.text, whole.end, parsed, work))
        return UNI_ERROR_SUCCESS;
    takeParameters(parameters.text, whole, parsed);
    return UNI_ERROR_SUCCESS;
}

uint32_t _Parse_At_Ok_Res(AtRes *parsed, AtCmdLine *work)
{
    if (parsed == nullptr || work == nullptr) {
        ParserLog::line("UNI_ERROR_BK_INVALID_ARG");
        return UNI_ERROR_BK_INVALID_ARG;
    }
    assemble(spanOf(parsed->Paras, sizeof parsed->Paras).from(2), work);
    return UNI_ERROR_SUCCESS;
}

uint32_t _First_Parse_At_OK_Res(char *body, char *lineBuffer, AtCmdLine *work)
{
    constexpr size_t kLineBuffer = 1024;
    if (body == nullptr || lineBuffer == nullptr || work == nullptr) return UNI_ERROR_BK_FAIL1;
    const BodyEnd end = assemble(spanOf(body), work);
    if (!end.lastLine.empty()) {
        const Span kept = end.lastLine.atMost(kLineBuffer);
        std::memcpy(lineBuffer, kept.begin, kept.size());
        std::memset(lineBuffer + kept.size(), 0, kLineBuffer - kept.size());
    }
    return end.hasOtherName ? UNI_ERROR_BK_FAIL1 : UNI_ERROR_SUCCESS;
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
    return takeClipReply({paraStart, paraEnd}, spanOf(paraEnd).end, parsed, work) ? 1 : 0;
}

uint32_t _Parse_At_ParaOfTheEndColon(char *text, char *paraStart, char *paraEnd, AtRes *parsed)
{
    if (text == nullptr || paraStart == nullptr || paraEnd < paraStart || parsed == nullptr) return UNI_ERROR_SUCCESS;
    takeParameters({paraStart, paraEnd}, spanOf(text), parsed);
    return UNI_ERROR_SUCCESS;
}

#include <mainControl/parser.h>

#include "lib_public/ATPreprocess/end_flag_search.h"
#include "lib_public/ATPreprocess/reply_parser.h"

using namespace mainControl;

namespace {

/** The first row with an identifier that holds a handler, or -1. */
int32_t rowWithHandler(uint16_t identifier)
{
    for (int32_t row = 0; row < endFlagRows(); ++row) {
        const AtEndFlagRow &candidate = KoraWcdma_AtEndFlgTable[row];
        if (candidate.identifier == identifier && candidate.handler != nullptr) return row;
    }
    return -1;
}

} // namespace

uint32_t unsolicitedATProcess(char *text)
{
    // A handler gets a whole record, too large for the stack of a thread. It is all zero between calls, so that a
    // report without a handler, which leaves only its parameters in it, does not cost the clearing of the whole.
    static AtRes report;

    ParsedReply reply;
    const uint32_t code = parseReply(text, {report.Paras, sizeof report.Paras, ParasDestination::Kind::OwnText}, reply);
    if (code == UNI_ERROR_BK_INVALID_ARG) return UNI_ERROR_FALSE;
    leaveText(text, reply);
    if (code != UNI_ERROR_SUCCESS) return UNI_ERROR_FALSE;

    const int32_t row = rowWithHandler(reply.cmdId);
    if (row < 0) {
        std::memset(report.Paras, 0, spanOf(report.Paras).size());
        return UNI_ERROR_SUCCESS;
    }
    report.CmdId = reply.cmdId;
    report.Result = reply.result;
    report.ParasLen = reply.hasLength ? reply.parasLength : 0;
    KoraWcdma_AtEndFlgTable[row].handler(&report, row + 1, KoraWcdma_AtEndFlgTableSize, reply.cmdId);
    std::memset(&report, 0, sizeof report);
    return UNI_ERROR_SUCCESS;
}

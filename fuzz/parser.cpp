// Replies, parsed to their end: the exported parser, and the road of reports to handlers in the table.

#include <cstring>

#include <mainControl/parser.h>

#include "fuzz/fuzz.h"
#include "tests/support/choices.h"

namespace {

size_t heard;

uint32_t hear(AtRes *report, int32_t /*rowFromOne*/, int32_t /*tableSize*/, int32_t /*identifier*/)
{
    heard += std::strlen(report->Paras);
    return 0;
}

void parseToTheEnd(char *text)
{
    static AtRes parsed;
    for (size_t left = std::strlen(text);; left = std::strlen(text)) {
        parsed = {};
        const uint32_t code = Bk_Parse_At_Res(text, &parsed);
        require(code == 0 || code == 19, "a reply is parsed or is not");
        if (code != 0) return;
        require(std::strlen(text) < left, "what was parsed is cut out");
        require(parsed.ParasLen <= static_cast<int32_t>(left), "parameters are no longer than the reply");
    }
}

void handToHandlers(char *text)
{
    for (AtEndFlagRow &row : KoraWcdma_AtEndFlgTable)
        row.handler = hear;
    size_t left = std::strlen(text) + 1;
    while (std::strlen(text) < left) {
        left = std::strlen(text);
        if (unsolicitedATProcess(text) != 0) return;
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Choices choices({data, size});
    const bool isReply = choices.below(2) == 0;
    const OwnText text(choices.text());
    isReply ? parseToTheEnd(text) : handToHandlers(text);
    return 0;
}

// Reports, as the AT-client library hands them over: whole records, whatever is in them.

#include <algorithm>
#include <cstring>

#include <mainControl/mainControl.h>
#include <mainControl/parser.h>

#include "fuzz/fuzz.h"
#include "tests/support/choices.h"

namespace {

size_t heard;

void hear(int32_t /*status*/, char *areaCode, char *cellId)
{
    heard += std::strlen(areaCode) + std::strlen(cellId);
}

void addCregRow()
{
    AtEndFlagRow &row = KoraWcdma_AtEndFlgTable[49];
    row = {};
    std::strcpy(row.flag, "\r\n+CREG: ");
    row.result = AT_RES_RESULT_REPORT;
    row.identifier = 71;
    row.hasParas = 1;
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static AtClientRes report;
    static const AtEndFlagRow kLastRow = KoraWcdma_AtEndFlgTable[49];
    Choices choices({data, size});
    KoraWcdma_AtEndFlgTable[49] = kLastRow;
    if (choices.oneIn(2)) addCregRow();
    KR_setCregNotifyCallback(choices.oneIn(8) ? nullptr : hear);
    KR_setCeregNotifyCallback(choices.oneIn(8) ? nullptr : hear);
    KR_setCgregNotifyCallback(choices.oneIn(8) ? nullptr : hear);

    const char filling = choices.oneIn(8) ? 'x' : '\0'; // now and then a record without a terminator
    const std::string text = choices.text();
    std::memset(report.aucDataBuf, filling, sizeof report.aucDataBuf);
    text.copy(report.aucDataBuf, sizeof report.aucDataBuf);
    for (int i = 0; i < 4; ++i)
        ProcessMainControlAtCallback(&report);
    return 0;
}

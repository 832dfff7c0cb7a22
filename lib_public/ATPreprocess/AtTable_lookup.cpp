#include <mainControl/parser.h>

#include "lib_public/support/array_size.h"
#include "lib_public/support/span.h"

using namespace mainControl;

namespace {

template <typename Matches>
uint32_t findRow(int32_t *rowIndex, Matches matches)
{
    if (rowIndex == nullptr) return UNI_ERROR_BK_FAIL1;
    const int32_t rows = inTable(KoraWcdma_AtCmdTableSize, KoraWcdma_AtCmdTable);
    for (int32_t row = 0; row < rows; ++row) {
        if (!matches(KoraWcdma_AtCmdTable[row])) continue;
        *rowIndex = row;
        return UNI_ERROR_SUCCESS;
    }
    return UNI_ERROR_BK_FAIL1;
}

} // namespace

uint32_t _Find_Cmd_By_ID(int32_t *rowIndex, uint32_t identifier)
{
    const auto wanted = static_cast<uint16_t>(identifier);
    return findRow(rowIndex, [wanted](const AtCmdRow &row) { return row.identifier == wanted; });
}

uint32_t _Find_Cmd_By_Name(int32_t *rowIndex, const char *name)
{
    if (name == nullptr) return UNI_ERROR_BK_FAIL1;
    const Span wanted = spanOf(name);
    return findRow(rowIndex, [wanted](const AtCmdRow &row) {
        const Span stored = spanOf(row.name, sizeof row.name);
        return stored.size() == wanted.size() && stored.startsWith(wanted);
    });
}

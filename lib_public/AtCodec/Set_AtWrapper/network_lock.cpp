#include <mainControl/wrappers.h>

#include "lib_public/AtCodec/wrapper_support.h"

using namespace mainControl;

namespace {

constexpr int32_t kUnlockTimeoutMs = 10000;

/** The group with an index among groups separated by ";"; the first one for 0 and below, nullptr if there are fewer. */
const char *groupAt(const char *groups, int32_t index)
{
    for (; index > 0 && groups != nullptr; --index) {
        const char *const separator = ATCodec_Find_Sub_Str(groups, ";");
        groups = separator != nullptr ? separator + 1 : nullptr;
    }
    return groups;
}

} // namespace

uint32_t zsecRead(int32_t *status, int32_t *items)
{
    AtExchange at;
    if (!at.ok("AT+ZSEC?")) return UNI_ERROR_FALSE;
    at.readLine("%d %d", status, items);
    return UNI_ERROR_SUCCESS;
}

uint32_t zlcokRead(int32_t *hardAuth, int32_t *imsiAuth)
{
    AtExchange at;
    if (!at.ok("AT+ZLOCK?")) return UNI_ERROR_FALSE;
    at.readLine("%d %d", hardAuth, imsiAuth);
    return UNI_ERROR_SUCCESS;
}

uint32_t znckSet(const char *code)
{
    AtExchange at;
    return toCode(at.okWithin(kUnlockTimeoutMs, "AT+ZNCK=\"%s\"", code));
}

uint32_t znckRead(int32_t *attemptsLeft)
{
    AtExchange at;
    if (!at.ok("AT+ZNCK?")) return UNI_ERROR_FALSE;
    at.read("%d", attemptsLeft);
    return UNI_ERROR_SUCCESS;
}

uint32_t spsimlockinfoExec(int32_t * /*attemptsLeft*/)
{
    AtExchange at;
    return toCode(at.ok("AT+SPSIMLOCKINFO"));
}

uint32_t esmlckSet(int32_t category, int32_t operation, const char *code)
{
    AtExchange at;
    return toCode(at.okWithin(kUnlockTimeoutMs, "AT+ESMLCK=%d,%d,\"%s\"", category, operation, code));
}

uint32_t esmlckRead(int32_t groupIndex, int32_t *third, int32_t *fourth, int32_t *second)
{
    AtExchange at;
    if (!at.ok("AT+ESMLCK?")) return UNI_ERROR_FALSE;
    ATCodec_ProcRes_ParaLineEx(at.paras());
    ATCodec_PreProc_Res_ParaLine(at.paras());
    const char *const group = groupAt(at.paras(), groupIndex);
    if (group == nullptr) return UNI_ERROR_FALSE;

    int32_t secondRead = 0;
    int32_t fourthRead = 0;
    scan(group, "%d %d %d %d", kDropped, &secondRead, third, &fourthRead);
    if (second != nullptr) *second = secondRead;
    if (fourth != nullptr) *fourth = fourthRead;
    return UNI_ERROR_SUCCESS;
}

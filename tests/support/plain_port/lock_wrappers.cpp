#include "tests/support/plain_codec.h"
#include "tests/support/plain_port/exchange.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

constexpr int32_t kLong = 10000;

uint32_t readTwo(World &world, const char *command, int32_t *first, int32_t *second)
{
    Exchange exchange(world);
    if (!exchange.succeeds(command)) return kFalse;
    scan(exchange.rewritten(), "%d %d", first, second);
    return kSuccess;
}

} // namespace

uint32_t zsecRead(World &world, int32_t *status, int32_t *items)
{
    return readTwo(world, "AT+ZSEC?", status, items);
}

uint32_t zlcokRead(World &world, int32_t *hardAuth, int32_t *imsiAuth)
{
    return readTwo(world, "AT+ZLOCK?", hardAuth, imsiAuth);
}

uint32_t znckSet(World &world, const char *code)
{
    return Exchange(world).succeeds(format("AT+ZNCK=\"%s\"", code), kLong) ? kSuccess : kFalse;
}

uint32_t znckRead(World &world, int32_t *attemptsLeft)
{
    Exchange exchange(world);
    if (!exchange.succeeds("AT+ZNCK?")) return kFalse;
    scan(exchange.paras(), "%d, %*d", attemptsLeft);
    return kSuccess;
}

uint32_t spsimlockinfoExec(World &world, int32_t * /*attemptsLeft*/)
{
    return Exchange(world).succeeds("AT+SPSIMLOCKINFO") ? kSuccess : kFalse;
}

uint32_t esmlckSet(World &world, int32_t category, int32_t operation, const char *code)
{
    const std::string command = format("AT+ESMLCK=%d,%d,\"%s\"", category, operation, code);
    return Exchange(world).succeeds(command, kLong) ? kSuccess : kFalse;
}

uint32_t esmlckRead(World &world, int32_t groupIndex, int32_t *third, int32_t *fourth, int32_t *second)
{
    int32_t first = 0;
    int32_t localSecond = 0;
    int32_t localFourth = 0;
    Exchange exchange(world);
    if (!exchange.succeeds("AT+ESMLCK?")) return kFalse;
    const std::string groups = rewritten(ended(rewriteGroups(exchange.paras())));
    size_t position = 0;
    for (int32_t i = 0; i < groupIndex; ++i) {
        const size_t separator = find(groups, ";", position);
        if (separator == kNone) return kFalse;
        position = separator + 1;
    }
    scan(groups.substr(position), "%d %d %d %d", &first, &localSecond, third, &localFourth);
    if (second != nullptr) *second = localSecond;
    if (fourth != nullptr) *fourth = localFourth;
    return kSuccess;
}

} // namespace plain

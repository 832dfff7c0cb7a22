#include "tests/support/plain_codec.h"
#include "tests/support/plain_port/exchange.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

uint32_t set(World &world, const std::string &command, int32_t timeoutMs = kDefault)
{
    return Exchange(world).succeeds(command, timeoutMs) ? kSuccess : kFalse;
}

void readCreg(const std::string &line, CregPara *record)
{
    Token lac(line);
    Token cellid(line);
    const int count = scan(line, "%d %d %s %s", &record->mode, &record->status, static_cast<char *>(lac),
                           static_cast<char *>(cellid));
    if (count >= 3) keep(record->lac, lac);
    if (count >= 4) keep(record->cellid, cellid);
    restoreIn(record->lac);
    restoreIn(record->cellid);
}

} // namespace

uint32_t cfunSet(World &world, int32_t level)
{
    return set(world, format("at+cfun=%d", level), world.globals.platform == 4 ? 20000 : 5000);
}

uint32_t cfunRead(World &world, int32_t *level)
{
    Exchange exchange(world);
    if (!exchange.succeeds("at+cfun?")) return kFalse;
    const char first = exchange.record.Paras[0];
    if (first < '0' || first > '9') return kFalse;
    scan(exchange.paras(), "%d", level);
    return kSuccess;
}

uint32_t cregSet(World &world, int32_t mode)
{
    return set(world, format("AT+CREG=%d", mode));
}

uint32_t cgregSet(World &world, int32_t mode)
{
    return set(world, format("AT+CGREG=%d", mode));
}

uint32_t ceregSet(World &world, int32_t mode)
{
    return set(world, format("AT+CEREG=%d", mode));
}

uint32_t zgaatSet(World &world, int32_t setting)
{
    return set(world, format("AT+ZGAAT=%d", setting));
}

uint32_t cgattSet(World &world, int32_t state)
{
    return set(world, format("AT+CGATT=%d", state), 10000);
}

uint32_t ceregRead(World &world, int32_t *mode, int32_t *status, char *tac, char *cellId, int32_t *act)
{
    Exchange exchange(world);
    if (!exchange.succeeds("at+CEREG?")) return kFalse;
    scan(exchange.rewritten(), "%d %d %s %s %d", mode, status, tac, cellId, act);
    restoreIn(tac);
    restoreIn(cellId);
    return kSuccess;
}

uint32_t cgregRead(World &world, int32_t *mode, int32_t *status)
{
    Exchange exchange(world);
    if (!exchange.succeeds("at+CGREG?")) return kFalse;
    scan(exchange.rewritten(), "%d %d ", mode, status);
    return kSuccess;
}

uint32_t cregRead(World &world, CregPara *record)
{
    Exchange exchange(world);
    if (!exchange.succeeds("AT+CREG?")) return kFalse;
    world.log(kNetwork, "cregRead-outtAtRes.Paras:%s", exchange.record.Paras);
    ListImage lines;
    splitAt(lines, exchange.paras(), ";");
    if (lines.nCount < 1) return kSuccess;
    for (int32_t i = 0; i < lines.nCount; ++i) {
        const std::string line = lines.textOf(i);
        const int32_t commas = countCommas(line).value_or(0);
        world.log(kNetwork, "cregRead-tParasList.strParasLine[i]:%s", line.c_str());
        world.log(kNetwork, "cregRead-out-num:%d", commas);
        if (commas >= 4) readCreg(rewritten(line), record);
        world.log(kNetwork, "cregRead-out-pCregPara->cellid:%s", record->cellid);
        world.log(kNetwork, "cregRead-out-pCregPara->lac:%s", record->lac);
        world.log(kNetwork, "cregRead-out-pCregPara->mode:%d", record->mode);
        world.log(kNetwork, "cregRead-out-pCregPara->status:%d", record->status);
    }
    return kSuccess;
}

} // namespace plain

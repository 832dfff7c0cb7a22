#include <mainControl/wrappers.h>

#include "lib_public/AtCodec/pieces.h"
#include "lib_public/AtCodec/wrapper_support.h"

using namespace mainControl;

namespace {

constexpr int32_t kAttachTimeoutMs = 10000;
constexpr int32_t kCommasWithTechnology = 4;

/** Takes one line of a +CREG reply, if it is one with the access technology. */
void readCregLine(char *line, int32_t commas, CregPara &record)
{
    NetworkLog::line("cregRead-tParasList.strParasLine[i]:%s", line);
    NetworkLog::line("cregRead-out-num:%d", commas);
    if (commas >= kCommasWithTechnology)
        scanLine(line, "%d %d %s %s", &record.mode, &record.status, into(record.lac), into(record.cellid));
    NetworkLog::line("cregRead-out-pCregPara->cellid:%s", record.cellid);
    NetworkLog::line("cregRead-out-pCregPara->lac:%s", record.lac);
    NetworkLog::line("cregRead-out-pCregPara->mode:%d", record.mode);
    NetworkLog::line("cregRead-out-pCregPara->status:%d", record.status);
}

} // namespace

uint32_t cfunSet(int32_t level)
{
    AtExchange at;
    return toCode(at.okWithin(traits().powerTimeoutMs, "at+cfun=%d", level));
}

uint32_t cfunRead(int32_t *level)
{
    AtExchange at;
    if (!at.ok("at+cfun?")) return UNI_ERROR_FALSE;
    if (*at.paras() < '0' || *at.paras() > '9') return UNI_ERROR_FALSE;
    at.read("%d", level);
    return UNI_ERROR_SUCCESS;
}

uint32_t cregSet(int32_t mode)
{
    AtExchange at;
    return toCode(at.okFormatted("AT+CREG=%d", mode));
}

uint32_t cgregSet(int32_t mode)
{
    AtExchange at;
    return toCode(at.okFormatted("AT+CGREG=%d", mode));
}

uint32_t ceregSet(int32_t mode)
{
    AtExchange at;
    return toCode(at.okFormatted("AT+CEREG=%d", mode));
}

uint32_t zgaatSet(int32_t setting)
{
    AtExchange at;
    return toCode(at.okFormatted("AT+ZGAAT=%d", setting));
}

uint32_t cgattSet(int32_t state)
{
    AtExchange at;
    return toCode(at.okWithin(kAttachTimeoutMs, "AT+CGATT=%d", state));
}

uint32_t ceregRead(int32_t *mode, int32_t *status, char *tac, char *cellId, int32_t *act)
{
    AtExchange at;
    if (!at.ok("at+CEREG?")) return UNI_ERROR_FALSE;
    at.readLine("%d %d %s %s %d", mode, status, intoWhole(tac), intoWhole(cellId), act);
    return UNI_ERROR_SUCCESS;
}

uint32_t cgregRead(int32_t *mode, int32_t *status)
{
    AtExchange at;
    if (!at.ok("at+CGREG?")) return UNI_ERROR_FALSE;
    at.readLine("%d %d", mode, status);
    return UNI_ERROR_SUCCESS;
}

uint32_t cregRead(CregPara *record)
{
    AtExchange at;
    if (!at.ok("AT+CREG?")) return UNI_ERROR_FALSE;
    NetworkLog::line("cregRead-outtAtRes.Paras:%s", at.paras()); // hosts match on the doubled "t"
    Pieces lines(at.parasText(), spanOfLiteral(";"));
    for (Span line{}; lines.next(line);) {
        int32_t commas = 0;
        countCommas(line, commas);
        char *const text = at.paras() + (line.begin - at.paras()); // read where it stands, since nothing reads it again
        text[line.size()] = '\0';
        readCregLine(text, commas, *record);
    }
    return UNI_ERROR_SUCCESS;
}

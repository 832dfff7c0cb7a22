#include <mainControl/at_values.h>
#include <mainControl/wrappers.h>

#include "lib_public/AtCodec/pieces.h"
#include "lib_public/AtCodec/private_wrappers.h"
#include "lib_public/AtCodec/wrapper_support.h"
#include "lib_public/support/fast_search.h"

using namespace mainControl;

namespace {

constexpr int32_t kSelectionTimeoutMs = 180000;
constexpr int32_t kScanTimeoutMs = 180000;
constexpr int32_t kLongScanTimeoutMs = 360000;

bool sendCrsm(AtExchange &at, const CrsmCmd &command)
{
    if (!traits().endsSimReadInComma && command.data[0] == '\0')
        return at.sendFormatted(kDefaultTimeoutMs, "AT+CRSM=%d,%d,%d,%d,%d", command.command, command.fileid,
                                command.p1, command.p2, command.p3);
    return at.sendFormatted(kDefaultTimeoutMs, "AT+CRSM=%d,%d,%d,%d,%d,%.*s", command.command, command.fileid,
                            command.p1, command.p2, command.p3, lengthIn(command.data), command.data);
}

/** The short name of a scan entry. It takes up to 32 characters and runs on into the fields behind it, which the later
 *  values of the same line overwrite. */
TextTarget intoShortName(ScanNetworkInfo &entry)
{
    constexpr size_t kAt = offsetof(ScanNetworkInfo, strName);
    return {reinterpret_cast<char *>(&entry) + kAt, sizeof entry - kAt};
}

void readScanLine(const char *line, ScanNetworkInfo &entry)
{
    const TextTarget shortName = intoShortName(entry);
    scan(line, "%d %64s %32s %10s %d", &entry.nStatus, into(entry.strLongName), shortName, into(entry.strCode),
         &entry.nAcT);
    restore(into(entry.strLongName), shortName, into(entry.strCode));
}

} // namespace

uint32_t mainControl::accessSim(const CrsmCmd &command, int32_t &sw1, int32_t &sw2, TextTarget response)
{
    NetworkLog::line("###T9LB### crsmSet begin");
    AtExchange at;
    if (!sendCrsm(at, command)) {
        NetworkLog::line("###T9LB### ClientSendCmd != UNI_ERROR_SUCCESS");
        return UNI_ERROR_FALSE;
    }
    if (!at.parseOk()) {
        NetworkLog::line("###T9LB### crsmSet return UNI_ERROR_FALSE");
        return UNI_ERROR_FALSE;
    }
    at.readLine("%d %d %s", &sw1, &sw2, response);
    NetworkLog::line("###T9LB### crsmSet return UNI_ERROR_SUCCESS");
    return UNI_ERROR_SUCCESS;
}

uint32_t crsmSet(CrsmCmd command, CrsmRes *response)
{
    return accessSim(command, response->sw1, response->sw2, intoWhole(response->response));
}

uint32_t zdonRead(ZdonInfo *info)
{
    constexpr Span kNotRegistered = spanOfLiteral(",,,");
    AtExchange at;
    if (!at.ok("AT+ZDON?")) return UNI_ERROR_FALSE;
    if (at.parasText().startsWith(kNotRegistered)) {
        char *const home = at.paras() + kNotRegistered.size();
        scanLine(home, "%s %s %s", into(info->homeName), into(info->homeMcc), into(info->homeMnc));
        info->servName[0] = '\0';
        info->servMcc[0] = '\0';
        info->servMnc[0] = '\0';
        info->roamStatus[0] = '\0';
    } else {
        at.readLine("%s %s %s %s %s %s %s", into(info->servName), into(info->servMcc), into(info->servMnc),
                    into(info->homeName), into(info->homeMcc), into(info->homeMnc), into(info->roamStatus));
    }
    return UNI_ERROR_SUCCESS;
}

uint32_t zpasRead(ZpasInfo *info)
{
    AtExchange at;
    if (!at.ok("AT+ZPAS?")) return UNI_ERROR_FALSE;
    at.readLine("%s %s", into(info->netType), into(info->srvDomain));
    return UNI_ERROR_SUCCESS;
}

uint32_t copsSet(CopsPara operator_)
{
    AtExchange at;
    if (operator_.nMode == AT_COPS_FORMAT_ONLY && traits().setsOperatorFormatAlone)
        return toCode(at.okWithin(kSelectionTimeoutMs, "AT+COPS=%d,%d", AT_COPS_FORMAT_ONLY, operator_.nformat));
    const bool isQuoted = traits().quotesOperators;
    return toCode(at.okWithin(kSelectionTimeoutMs, isQuoted ? "AT+COPS=%d,%d,\"%.*s\",%d" : "AT+COPS=%d,%d,%.*s,%d",
                              operator_.nMode, operator_.nformat, lengthIn(operator_.cOper), operator_.cOper,
                              operator_.nAct));
}

uint32_t copsRead(CopsPara *operator_)
{
    AtExchange at;
    if (!at.ok("AT+COPS?")) return UNI_ERROR_FALSE;
    at.readLine("%d %d %s %d", &operator_->nMode, &operator_->nformat, into(operator_->cOper), &operator_->nAct);
    return UNI_ERROR_SUCCESS;
}

uint32_t copsTest(ScanNetworkList *list)
{
    NetworkLog::line("copsTest in");
    AtExchange at;
    if (!at.send(kScanTimeoutMs, "AT+COPS=?")) {
        NetworkLog::line("copsTest in-sendcmd failed");
        return UNI_ERROR_FALSE;
    }
    if (!at.parse()) {
        NetworkLog::line("copsTest in-parse atres failed");
        return UNI_ERROR_FALSE;
    }
    NetworkLog::line("copsTest in-after parse tAtRes.Paras:%s", at.paras());
    if (!at.isOk()) {
        NetworkLog::line("copsTest return false");
        return UNI_ERROR_FALSE;
    }
    clear(*list);
    ATCodec_ProcRes_ParaLineEx(at.paras());
    NetworkLog::line("copsTest in-afterATCodec_ProcRes_ParaLineEx:%s", at.paras());
    Lines lines(spanOf(at.paras()));
    while (const char *const line = lines.next()) {
        NetworkLog::line("copsTest in-tParasList.nCount copy");
        readScanLine(line, list->entry[lines.taken() - 1]);
    }
    list->nCount = lines.taken();
    NetworkLog::line("copsTest return success");
    return UNI_ERROR_SUCCESS;
}

uint32_t copsSet5(AtParasList **destination)
{
    NetworkLog::line("at+cops=5 in");
    AtExchange at;
    if (!at.send(kLongScanTimeoutMs, "AT+COPS=5")) {
        NetworkLog::line("at+cops=5 in-sendcmd failed");
        return UNI_ERROR_FALSE;
    }
    // What is taken whole is taken as OK, so no other final result is left to refuse.
    if (!at.takeScan()) {
        NetworkLog::line("at+cops=5 in-parse atres failed");
        return UNI_ERROR_FALSE;
    }
    std::memset(*destination, 0, sizeof **destination);
    ATCodec_PreProc_Res_COPS5_ParaList(*destination, at.reply());
    NetworkLog::line("at+cops=5 return success");
    return UNI_ERROR_SUCCESS;
}

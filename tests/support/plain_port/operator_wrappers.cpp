#include "tests/support/plain_port/operator_wrappers.h"

#include "tests/support/plain_codec.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

constexpr int32_t kMtk = 3;
constexpr int32_t kTsp = 4;
constexpr int32_t kSpreadtrum = 5;
constexpr int32_t kVeryLong = 180000;

std::string crsmCommand(const World &world, const CrsmCmd &command)
{
    if (world.globals.platform == kMtk && command.data[0] == '\0')
        return format("AT+CRSM=%d,%d,%d,%d,%d", command.command, command.fileid, command.p1, command.p2, command.p3);
    return format("AT+CRSM=%d,%d,%d,%d,%d,%s", command.command, command.fileid, command.p1, command.p2, command.p3,
                  command.data);
}

void readServed(const std::string &line, ZdonInfo *info)
{
    Token tokens[7] = {Token(line), Token(line), Token(line), Token(line), Token(line), Token(line), Token(line)};
    const int count =
        scan(line, "%s %s %s %s %s %s %s", static_cast<char *>(tokens[0]), static_cast<char *>(tokens[1]),
             static_cast<char *>(tokens[2]), static_cast<char *>(tokens[3]), static_cast<char *>(tokens[4]),
             static_cast<char *>(tokens[5]), static_cast<char *>(tokens[6]));
    if (count >= 1) keep(info->servName, tokens[0]);
    if (count >= 2) keep(info->servMcc, tokens[1]);
    if (count >= 3) keep(info->servMnc, tokens[2]);
    if (count >= 4) keep(info->homeName, tokens[3]);
    if (count >= 5) keep(info->homeMcc, tokens[4]);
    if (count >= 6) keep(info->homeMnc, tokens[5]);
    if (count >= 7) keep(info->roamStatus, tokens[6]);
    restoreIn(info->servName);
    restoreIn(info->servMcc);
    restoreIn(info->servMnc);
    restoreIn(info->roamStatus);
}

void readUnserved(const std::string &line, ZdonInfo *info)
{
    Token name(line);
    Token mcc(line);
    Token mnc(line);
    const int count =
        scan(line, "%s %s %s", static_cast<char *>(name), static_cast<char *>(mcc), static_cast<char *>(mnc));
    if (count >= 1) keep(info->homeName, name);
    if (count >= 2) keep(info->homeMcc, mcc);
    if (count >= 3) keep(info->homeMnc, mnc);
    info->servName[0] = '\0';
    info->servMcc[0] = '\0';
    info->servMnc[0] = '\0';
    info->roamStatus[0] = '\0';
}

/** The short name may run on into the fields behind it. */
void readScanned(const std::string &line, ScanNetworkInfo &entry)
{
    auto *const bytes = reinterpret_cast<char *>(&entry);
    char *const longName = bytes + offsetof(ScanNetworkInfo, strLongName);
    char *const name = bytes + offsetof(ScanNetworkInfo, strName);
    char *const code = bytes + offsetof(ScanNetworkInfo, strCode);
    scan(line, "%d %64s %32s %10s %d", &entry.nStatus, longName, name, code, &entry.nAcT);
    restoreIn(longName);
    restoreIn(name);
    restoreIn(code);
}

} // namespace

uint32_t crsmExchange(World &world, const CrsmCmd &command, CrsmReply &reply)
{
    world.log(kNetwork, "###T9LB### crsmSet begin");
    Exchange exchange(world);
    if (!exchange.send(crsmCommand(world, command))) {
        world.log(kNetwork, "###T9LB### ClientSendCmd != UNI_ERROR_SUCCESS");
        return kFalse;
    }
    if (!exchange.parse() || !exchange.isOk()) {
        world.log(kNetwork, "###T9LB### crsmSet return UNI_ERROR_FALSE");
        return kFalse;
    }
    const std::string line = exchange.rewritten();
    Token response(line);
    reply.count = scan(line, "%d %d %s", &reply.sw1, &reply.sw2, static_cast<char *>(response));
    if (reply.count >= 3) reply.response = static_cast<char *>(response);
    world.log(kNetwork, "###T9LB### crsmSet return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t crsmSet(World &world, CrsmCmd command, CrsmRes *response)
{
    CrsmReply reply;
    if (crsmExchange(world, command, reply) != kSuccess) return kFalse;
    if (reply.count >= 1) response->sw1 = reply.sw1;
    if (reply.count >= 2) response->sw2 = reply.sw2;
    if (reply.count >= 3) std::strcpy(response->response, reply.response.c_str());
    restoreIn(response->response);
    return kSuccess;
}

uint32_t zdonRead(World &world, ZdonInfo *info)
{
    Exchange exchange(world);
    if (!exchange.succeeds("AT+ZDON?")) return kFalse;
    const std::string paras = exchange.paras();
    if (paras.compare(0, 3, ",,,") != 0)
        readServed(rewritten(paras), info);
    else
        readUnserved(rewritten(paras.substr(3)), info);
    restoreIn(info->homeName);
    restoreIn(info->homeMcc);
    restoreIn(info->homeMnc);
    return kSuccess;
}

uint32_t zpasRead(World &world, ZpasInfo *info)
{
    Exchange exchange(world);
    if (!exchange.succeeds("AT+ZPAS?")) return kFalse;
    const std::string line = exchange.rewritten();
    Token netType(line);
    Token srvDomain(line);
    const int count = scan(line, "%s %s", static_cast<char *>(netType), static_cast<char *>(srvDomain));
    if (count >= 1) keep(info->netType, netType);
    if (count >= 2) keep(info->srvDomain, srvDomain);
    restoreIn(info->netType);
    restoreIn(info->srvDomain);
    return kSuccess;
}

uint32_t copsSet(World &world, CopsPara operator_)
{
    const int32_t platform = world.globals.platform;
    std::string command;
    if (platform != kMtk && platform != kSpreadtrum && platform != kTsp)
        command = format("AT+COPS=%d,%d,%s,%d", operator_.nMode, operator_.nformat, operator_.cOper, operator_.nAct);
    else if (operator_.nMode == 3)
        command = format("AT+COPS=%d,%d", 3, operator_.nformat);
    else
        command =
            format("AT+COPS=%d,%d,\"%s\",%d", operator_.nMode, operator_.nformat, operator_.cOper, operator_.nAct);
    return Exchange(world).succeeds(command, kVeryLong) ? kSuccess : kFalse;
}

uint32_t copsRead(World &world, CopsPara *operator_)
{
    Exchange exchange(world);
    if (!exchange.succeeds("AT+COPS?")) return kFalse;
    const std::string line = exchange.rewritten();
    Token name(line);
    const int count =
        scan(line, "%d %d %s %d", &operator_->nMode, &operator_->nformat, static_cast<char *>(name), &operator_->nAct);
    if (count >= 3) keep(operator_->cOper, name);
    restoreIn(operator_->cOper);
    return kSuccess;
}

uint32_t copsTest(World &world, ScanNetworkList *list)
{
    world.log(kNetwork, "copsTest in");
    Exchange exchange(world);
    if (!exchange.send("AT+COPS=?", kVeryLong)) {
        world.log(kNetwork, "copsTest in-sendcmd failed");
        return kFalse;
    }
    if (!exchange.parse()) {
        world.log(kNetwork, "copsTest in-parse atres failed");
        return kFalse;
    }
    world.log(kNetwork, "copsTest in-after parse tAtRes.Paras:%s", exchange.record.Paras);
    if (!exchange.isOk()) {
        world.log(kNetwork, "copsTest return false");
        return kFalse;
    }
    std::memset(list, 0, sizeof *list);
    const std::string groups = ended(rewriteGroups(exchange.paras()));
    world.log(kNetwork, "copsTest in-afterATCodec_ProcRes_ParaLineEx:%s", groups.c_str());
    ListImage lines;
    splitAt(lines, groups, ";");
    for (int32_t i = 0; i < lines.nCount; ++i) {
        world.log(kNetwork, "copsTest in-tParasList.nCount copy");
        const char *const line = lines.bytes.data() + static_cast<size_t>(i) * ListImage::kEntrySize;
        readScanned(rewritten(line), list->entry[i]);
    }
    list->nCount = lines.nCount;
    world.log(kNetwork, "copsTest return success");
    return kSuccess;
}

uint32_t copsSet5(World &world, AtParasList **destination)
{
    world.log(kNetwork, "at+cops=5 in");
    Exchange exchange(world);
    if (!exchange.send("AT+COPS=5", 360000)) {
        world.log(kNetwork, "at+cops=5 in-sendcmd failed");
        return kFalse;
    }
    if (!exchange.parseOperatorScan()) {
        world.log(kNetwork, "at+cops=5 in-parse atres failed");
        return kFalse;
    }
    if (!exchange.isOk()) {
        world.log(kNetwork, "at+cops=5 return false");
        return kFalse;
    }
    ListImage lines;
    splitScan(lines, exchange.paras());
    AtParasList *const list = *destination;
    list->nCount = lines.nCount;
    std::memcpy(list->strParasLine, lines.bytes.data(), sizeof list->strParasLine);
    world.leaveOpen(&list->strParasLine[0][0] + lines.openBegin, lines.openEnd - lines.openBegin);
    world.log(kNetwork, "at+cops=5 return success");
    return kSuccess;
}

} // namespace plain

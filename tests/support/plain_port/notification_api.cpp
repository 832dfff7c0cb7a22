#include "tests/support/plain_codec.h"
#include "tests/support/plain_parser.h"
#include "tests/support/plain_port/api.h"
#include "tests/support/plain_port/exchange.h"

namespace plain {
namespace {

struct Place {
    int32_t status = 0;
    char areaCode[36] = {};
    char cellId[36] = {};
};

std::string rewriteIn(AtRes *report)
{
    const std::string line = rewriteLine(report->Paras);
    std::memcpy(report->Paras, line.data(), line.size());
    return report->Paras;
}

void tell(const World &world, RegistrationCallback callback, Place &place)
{
    if (callback == nullptr) return;
    const bool isNowhere = place.areaCode[0] == '\0' && place.cellId[0] == '\0';
    if (world.globals.platform == 4 && isNowhere) return;
    callback(place.status, place.areaCode, place.cellId);
}

uint32_t takeThree(const World &world, AtRes *report, RegistrationCallback callback)
{
    if (report == nullptr) return kFalse;
    const std::string line = rewriteIn(report);
    Place place;
    Token areaCode(line);
    Token cellId(line);
    const int count = scan(line, "%d %s %s", &place.status, static_cast<char *>(areaCode), static_cast<char *>(cellId));
    if (count >= 2) keep(place.areaCode, areaCode);
    if (count >= 3) keep(place.cellId, cellId);
    restoreIn(place.areaCode);
    restoreIn(place.cellId);
    tell(world, callback, place);
    return kSuccess;
}

uint32_t setCallback(World &world, const char *name, RegistrationCallback &stored, RegistrationCallback callback)
{
    world.log(kApi, "%s-in", name);
    if (callback == nullptr) {
        world.log(kApi, "%s-return UNI_ERROR_FALSE-pCallback == NULL", name);
        return kFalse;
    }
    stored = callback;
    if (setAtCallbackRegist(world) != kSuccess) {
        world.log(kApi, "%s-return UNI_ERROR_FALSE-setAtCallbackRegist failed", name);
        return kFalse;
    }
    world.log(kApi, "%s-return UNI_ERROR_SUCCESS", name);
    return kSuccess;
}

} // namespace

uint32_t KR_setCregNotifyCallback(World &world, RegistrationCallback pCallback)
{
    return setCallback(world, "KR_setCregNotifyCallback", world.globals.creg, pCallback);
}

uint32_t KR_setCeregNotifyCallback(World &world, RegistrationCallback pCallback)
{
    return setCallback(world, "KR_setCeregNotifyCallback", world.globals.cereg, pCallback);
}

uint32_t KR_setCgregNotifyCallback(World &world, RegistrationCallback pCallback)
{
    return setCallback(world, "KR_setCgregNotifyCallback", world.globals.cgreg, pCallback);
}

uint32_t setAtCallbackRegist(World &world)
{
    if (!world.globals.isClientInitialised) {
        if (world.clientInit("/tmp/AT_SERVER_MSG_ID_MC") != 0) return kFalse;
        world.globals.isClientInitialised = true;
    }
    if (world.globals.isCallbackInstalled) return kSuccess;
    if (world.installCallback() != 0) return kFalse;
    world.globals.isCallbackInstalled = true;
    return kSuccess;
}

uint32_t CREG_Notify(World &world, AtRes *report)
{
    return takeThree(world, report, world.globals.creg);
}

uint32_t CEREG_Notify(World &world, AtRes *report)
{
    return takeThree(world, report, world.globals.cereg);
}

uint32_t CGREG_Notify(World &world, AtRes *report)
{
    if (report == nullptr) return kFalse;
    const std::string line = rewriteIn(report);
    Place place;
    int32_t accessTechnology = 0;
    Token areaCode(line);
    Token cellId(line);
    Token routingArea(line);
    const int count = scan(line, "%d %s %s %d %s", &place.status, static_cast<char *>(areaCode),
                           static_cast<char *>(cellId), &accessTechnology, static_cast<char *>(routingArea));
    if (count >= 2) keep(place.areaCode, areaCode);
    if (count >= 3) keep(place.cellId, cellId);
    restoreIn(place.cellId);
    tell(world, world.globals.cgreg, place);
    return kSuccess;
}

uint32_t CGEV_Notify(World &world, AtRes * /*report*/)
{
    world.log(kApi, "%s", "CGEV_Notify");
    return kSuccess;
}

uint32_t emptyNotify(World & /*world*/, AtRes * /*report*/)
{
    return kSuccess;
}

uint32_t ProcessMainControlAtCallback(World &world, AtClientRes *pRes)
{
    world.log(kApi, "ProcessMainControlAtCallback-pRes->aucDataBuf = %s", pRes->aucDataBuf);
    Exchange exchange(world);
    exchange.raw = *pRes;
    const bool isParsed = exchange.parse();
    *pRes = exchange.raw;
    if (!isParsed) return 19;
    switch (exchange.record.CmdId) {
    case 71:
        return CREG_Notify(world, &exchange.record);
    case 12304:
        return CEREG_Notify(world, &exchange.record);
    case 12305:
        return CGREG_Notify(world, &exchange.record);
    case 4193:
        return CGEV_Notify(world, &exchange.record);
    case 4157:
    case 4158:
    case 4169:
    case 4177:
    case 4181:
    case 4182:
    case 4183:
    case 4184:
    case 4185:
    case 4186:
    case 4187:
    case 4188:
    case 4189:
    case 4190:
    case 4191:
    case 12307:
        return kSuccess;
    default:
        return kFalse;
    }
}

} // namespace plain

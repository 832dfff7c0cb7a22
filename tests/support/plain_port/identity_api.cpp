#include <algorithm>

#include "tests/support/plain_codec.h"
#include "tests/support/plain_port/api.h"
#include "tests/support/plain_port/exchange.h"
#include "tests/support/plain_port/operator_wrappers.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

constexpr size_t kLocalText = 254;
constexpr size_t kLongestSimFile = 512;

bool fits(const std::string &value, int32_t size)
{
    return size >= static_cast<int32_t>(value.size());
}

uint32_t get(World &world, const char *name, const char *command, const char *argument, int32_t size, char *output)
{
    world.log(kApi, "%s-in", name);
    Exchange exchange(world);
    if (!exchange.send(command)) {
        world.log(kApi, "%s-return UNI_ERROR_FALSE-send at failed", name);
        return kFalse;
    }
    if (!exchange.parse()) {
        world.log(kApi, "%s-return UNI_ERROR_FALSE-parse at failed", name);
        return kFalse;
    }
    const std::string value = exchange.paras();
    if (!exchange.isOk() || !fits(value, size)) {
        world.log(kApi, "%s-return UNI_ERROR_FALSE", name);
        return kFalse;
    }
    value.copy(output, value.size());
    world.log(kApi, "%s-out-%s:%s", name, argument, value.c_str());
    world.log(kApi, "%s-return UNI_ERROR_SUCCESS", name);
    return kSuccess;
}

/** A text that a wrapper writes without a limit, as a local of 255 characters keeps it. */
bool readLocal(World &world, uint32_t (*wrapper)(World &, char *), std::string &value)
{
    std::string room(sizeof(AtRes::Paras), '\0');
    if (wrapper(world, room.data()) != kSuccess) return false;
    value = ended(room).substr(0, kLocalText);
    return true;
}

/** The second piece of a text split at double quotes; the last one where there are fewer. */
std::string withoutQuotes(const std::string &text)
{
    return ended(field(text, 2, "\""));
}

bool extractNumber(const AtRes &parsed, int32_t size, char *output, std::string &number)
{
    if (parsed.Result != AT_RES_RESULT_OK || countFields(parsed.Paras, ",") < 1) return false;
    const std::string second = ended(field(parsed.Paras, 2, ",")).substr(0, kLocalText);
    if (!fits(second, size)) return false;
    number = withoutQuotes(second);
    number.copy(output, number.size());
    return true;
}

} // namespace

uint32_t KR_getManufacturer(World &world, int32_t size, char *pString)
{
    return get(world, "KR_getManufacturer", "AT+CGMI", "pString", size, pString);
}

uint32_t KR_getModelID(World &world, int32_t size, char *pString)
{
    return get(world, "KR_getModelID", "AT+CGMM", "pString", size, pString);
}

uint32_t KR_getFirmwareRevision(World &world, int32_t size, char *pString)
{
    return get(world, "KR_getFirmwareRevision", "AT+CGMR", "pString", size, pString);
}

uint32_t KR_getHardwareRevision(World &world, int32_t size, char *pString)
{
    const bool isVersion = world.globals.platform == 4 || world.globals.platform == 5;
    return get(world, "KR_getHardwareRevision", isVersion ? "AT+HVER" : "AT+ZPCB?", "pString", size, pString);
}

uint32_t KR_getIMSI(World &world, int32_t size, char *pString)
{
    return get(world, "KR_getIMSI", "AT+CIMI", "pString", size, pString);
}

uint32_t KR_getIMEI(World &world, int32_t size, char *pIMEIString)
{
    return get(world, "KR_getIMEI", "AT+CGSN", "pIMEIString", size, pIMEIString);
}

uint32_t KR_getSerialNumber(World &world, int32_t size, char *pSerialNumber)
{
    world.log(kApi, "KR_getSerialNumber-in");
    if (world.globals.platform == 4) {
        world.log(kApi, "KR_getSerialNumber-return UNI_ERROR_FALSE-g_currentPlatform == PF_TSP");
        return kFalse;
    }
    const bool isQualcomm = world.globals.platform == 1;
    if (isQualcomm) world.log(kApi, "KR_getSerialNumber-in-g_currentPlatform == PF_QC_LTE");
    std::string value;
    if (!readLocal(world, isQualcomm ? cgsnExec : zmsnRead, value) || !fits(value, size)) {
        world.log(kApi, "KR_getSerialNumber-return UNI_ERROR_FALSE");
        return kFalse;
    }
    std::string written = value;
    if (isQualcomm) {
        value.resize(8 + 6);
        value = value.substr(8, 6);
        written = value + '\0';
    }
    written.copy(pSerialNumber, static_cast<size_t>(size));
    world.log(kApi, "KR_getSerialNumber-out-pSerialNumber:%s", value.c_str());
    world.log(kApi, "KR_getSerialNumber-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_getICCID(World &world, int32_t size, char *pString)
{
    world.log(kApi, "KR_getICCID-in");
    CrsmCmd command{};
    command.command = 176;
    command.fileid = 12258;
    command.p3 = 10;
    CrsmReply reply;
    if (crsmExchange(world, command, reply) != kSuccess) {
        world.log(kApi, "KR_getICCID-return UNI_ERROR_FALSE");
        return kFalse;
    }
    const std::string value = ended(restore(reply.response.substr(0, kLongestSimFile)));
    if (!fits(value, size)) {
        world.log(kApi, "KR_getICCID-return UNI_ERROR_STRING_SIZE_TOO_SMALL");
        return 18;
    }
    const size_t written = std::min(value.size() + 1, static_cast<size_t>(size));
    std::memcpy(pString, value.c_str(), written);
    world.log(kApi, "KR_getICCID-out-pString:%s", value.c_str());
    world.log(kApi, "KR_getICCID-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_getVoiceNumber(World &world, int32_t size, char *pString)
{
    world.log(kApi, "KR_getVoiceNumber-in");
    Exchange exchange(world);
    if (!exchange.send("AT+CNUM")) {
        world.log(kApi, "KR_getVoiceNumber-return UNI_ERROR_FALSE-send at failed");
        return kFalse;
    }
    if (!exchange.parse()) return kFalse;
    std::string number;
    if (!extractNumber(exchange.record, size, pString, number)) {
        world.log(kApi, "KR_getVoiceNumber-return UNI_ERROR_FALSE");
        return kFalse;
    }
    world.log(kApi, "KR_getVoiceNumber return OK:%s", number.c_str());
    return kSuccess;
}

uint32_t disposeVoiceNumber_1(World & /*world*/, AtRes *parsed, int32_t size, char *pString)
{
    std::string number;
    return extractNumber(*parsed, size, pString, number) ? kSuccess : kFalse;
}

} // namespace plain

// The modem's fixed data: who made it, what it is, and whose SIM is in it.

#include <mainControl/api.h>
#include <mainControl/at_values.h>

#include <algorithm>

#include "../lib_public/AtCodec/AtExchange.h"
#include "../lib_public/AtCodec/Network_AtWrapper/sim_access.h"
#include "../lib_public/AtCodec/pieces.h"
#include "../lib_public/support/log.h"
#include "../lib_public/support/platform_traits.h"
#include "../lib_public/support/record_text.h"

using namespace mainControl;

namespace {

constexpr std::size_t kValueRoom = 255;

void copyUnterminated(char *output, Span value)
{
    std::memcpy(output, value.begin, value.size());
}

bool fitsInto(int32_t size, Span value)
{
    return size >= static_cast<int32_t>(value.size());
}

/// One command and its whole parameter text. Nothing terminates the copy: callers pass a zeroed buffer.
template <Literal Function, Literal Output>
uint32_t readIdentity(const char *command, int32_t size, char *output)
{
    using Log = ApiLog<Function>;
    Log::in();
    AtExchange at;
    if (!at.send(kDefaultTimeoutMs, command)) return Log::template ret<UNI_ERROR_FALSE, "send at failed">();
    if (!at.parse()) return Log::template ret<UNI_ERROR_FALSE, "parse at failed">();
    const Span value = at.parasText();
    if (!at.isOk() || !fitsInto(size, value)) return Log::template ret<UNI_ERROR_FALSE>();
    copyUnterminated(output, value);
    Log::template out<Output>(at.paras());
    return Log::template ret<UNI_ERROR_SUCCESS>();
}

/// A serial number as it is read, cut to the room it is kept in.
struct Serial {
    char text[kValueRoom] = "";

    bool read(const char *command)
    {
        AtExchange at;
        if (!at.ok(command)) return false;
        const Span value = at.parasText();
        copyFitting(text, value.begin, value.size());
        return true;
    }
};

/// Takes the serial part out of an IMEI: the six digits behind the type allocation code.
uint32_t serialOfImei(int32_t size, char *output)
{
    constexpr std::size_t kSerialAt = 8;
    constexpr std::size_t kSerialLength = 6;
    Serial imei;
    if (!imei.read("AT+CGSN") || !fitsInto(size, spanOf(imei.text))) return UNI_ERROR_FALSE;
    char serial[kSerialLength + 1] = "";
    std::memcpy(serial, imei.text + kSerialAt, kSerialLength);
    std::memcpy(output, serial, std::min(sizeof serial, static_cast<std::size_t>(size)));
    ApiLog<"KR_getSerialNumber">::out<"pSerialNumber">(serial);
    return UNI_ERROR_SUCCESS;
}

uint32_t serialOfMaker(int32_t size, char *output)
{
    Serial serial;
    if (!serial.read("AT+ZMSN?")) return UNI_ERROR_FALSE;
    const Span value = spanOf(serial.text);
    if (!fitsInto(size, value)) return UNI_ERROR_FALSE;
    copyUnterminated(output, value);
    ApiLog<"KR_getSerialNumber">::out<"pSerialNumber">(serial.text);
    return UNI_ERROR_SUCCESS;
}

/// The field with an index, or nothing.
Span fieldOrNothing(Span text, int32_t indexFromOne, Span separator)
{
    Field field{};
    return findField(text, indexFromOne, separator, field) ? field.text : Span{text.end, text.end};
}

/// Takes the number out of a +CNUM reply: what stands in quotes in its second field.
bool ownNumber(Span paras, int32_t size, char (&number)[kValueRoom])
{
    if (paras.empty()) return false;
    const Span quoted = fieldOrNothing(paras, 2, spanOfLiteral(",")).atMost(kValueRoom - 1);
    if (!fitsInto(size, quoted)) return false;
    const Span digits = fieldOrNothing(quoted, 2, spanOfLiteral("\""));
    copyFitting(number, digits.begin, digits.size());
    return true;
}

} // namespace

uint32_t KR_getManufacturer(int32_t size, char *pString)
{
    return readIdentity<"KR_getManufacturer", "pString">("AT+CGMI", size, pString);
}

uint32_t KR_getModelID(int32_t size, char *pString)
{
    return readIdentity<"KR_getModelID", "pString">("AT+CGMM", size, pString);
}

uint32_t KR_getFirmwareRevision(int32_t size, char *pString)
{
    return readIdentity<"KR_getFirmwareRevision", "pString">("AT+CGMR", size, pString);
}

uint32_t KR_getHardwareRevision(int32_t size, char *pString)
{
    return readIdentity<"KR_getHardwareRevision", "pString">(traits().hardwareRevisionCommand, size, pString);
}

uint32_t KR_getIMSI(int32_t size, char *pString)
{
    return readIdentity<"KR_getIMSI", "pString">("AT+CIMI", size, pString);
}

uint32_t KR_getIMEI(int32_t size, char *pIMEIString)
{
    return readIdentity<"KR_getIMEI", "pIMEIString">("AT+CGSN", size, pIMEIString);
}

uint32_t KR_getSerialNumber(int32_t size, char *pSerialNumber)
{
    constexpr ApiLog<"KR_getSerialNumber"> log;
    log.in();
    switch (traits().serialNumber) {
    case SerialNumberFrom::Nowhere:
        return log.ret<UNI_ERROR_FALSE, "g_currentPlatform == PF_TSP">();
    case SerialNumberFrom::Imei:
        log.line("KR_getSerialNumber-in-g_currentPlatform == PF_QC_LTE");
        return log.outcome(serialOfImei(size, pSerialNumber));
    case SerialNumberFrom::Maker:
        break;
    }
    return log.outcome(serialOfMaker(size, pSerialNumber));
}

uint32_t KR_getICCID(int32_t size, char *pString)
{
    constexpr ApiLog<"KR_getICCID"> log;
    constexpr CrsmCmd kReadIccid = {
        .command = AT_CRSM_READ_BINARY, .fileid = AT_SIM_FILE_ICCID, .p1 = 0, .p2 = 0, .p3 = 10, .data = ""};
    constexpr std::size_t kLongestRead = 512;
    log.in();
    int32_t sw1 = 0;
    int32_t sw2 = 0;
    char response[kLongestRead + 1] = "";
    if (accessSim(kReadIccid, sw1, sw2, into(response)) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE>();
    const Span value = spanOf(response);
    if (!fitsInto(size, value)) return log.ret<UNI_ERROR_STRING_SIZE_TOO_SMALL>();
    std::memcpy(pString, value.begin, std::min(value.size() + 1, static_cast<std::size_t>(size)));
    log.out<"pString">(response);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t disposeVoiceNumber_1(AtRes *parsed, int32_t size, char *pString)
{
    char number[kValueRoom];
    if (parsed == nullptr || parsed->Result != AT_RES_RESULT_OK) return UNI_ERROR_FALSE;
    if (!ownNumber(spanOf(parsed->Paras, sizeof parsed->Paras), size, number)) return UNI_ERROR_FALSE;
    copyUnterminated(pString, spanOf(number));
    return UNI_ERROR_SUCCESS;
}

uint32_t KR_getVoiceNumber(int32_t size, char *pString)
{
    constexpr ApiLog<"KR_getVoiceNumber"> log;
    log.in();
    AtExchange at;
    if (!at.send(kDefaultTimeoutMs, "AT+CNUM")) return log.ret<UNI_ERROR_FALSE, "send at failed">();
    if (!at.parse()) return UNI_ERROR_FALSE;
    char number[kValueRoom];
    if (!at.isOk() || !ownNumber(at.parasText(), size, number)) return log.ret<UNI_ERROR_FALSE>();
    copyUnterminated(pString, spanOf(number));
    log.line("KR_getVoiceNumber return OK:%s", number); // without the dash and the code of the other exits
    return UNI_ERROR_SUCCESS;
}

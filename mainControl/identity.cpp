// The modem's fixed data: who made it, what it is, and whose SIM is in it.

#include <algorithm>

#include <mainControl/api.h>
#include <mainControl/at_values.h>

#include "lib_public/AtCodec/private_wrappers.h"
#include "lib_public/support/log.h"
#include "lib_public/support/platform_traits.h"

using namespace mainControl;

namespace {

void copyUnterminated(char *output, Span value)
{
    std::memcpy(output, value.begin, value.size());
}

/** Logs a text while it is there. */
template <Literal Format>
void logText(const char *text)
{
    ModuleLog<"lib_mainControl">::line(Format.text, text);
}

/** Takes the serial part out of an IMEI: the six digits behind the type allocation code. */
uint32_t serialOfImei(int32_t size, char *output)
{
    constexpr size_t kSerialAt = 8;
    constexpr size_t kSerialLength = 6;
    char imei[kIdentityRoom] = "";
    if (!cutTextExec("AT+CGSN", imei) || !fitsInto(size, spanOf(imei))) return UNI_ERROR_FALSE;
    char serial[kSerialLength + 1] = "";
    std::memcpy(serial, imei + kSerialAt, kSerialLength);
    std::memcpy(output, serial, std::min(sizeof serial, static_cast<size_t>(size)));
    ApiLog<"KR_getSerialNumber">::out<"pSerialNumber">(serial);
    return UNI_ERROR_SUCCESS;
}

uint32_t serialOfMaker(int32_t size, char *output)
{
    char serial[kIdentityRoom];
    if (!cutTextExec("AT+ZMSN?", serial) || !fitsInto(size, spanOf(serial))) return UNI_ERROR_FALSE;
    copyUnterminated(output, spanOf(serial));
    ApiLog<"KR_getSerialNumber">::out<"pSerialNumber">(serial);
    return UNI_ERROR_SUCCESS;
}

} // namespace

uint32_t KR_getManufacturer(int32_t size, char *pString)
{
    constexpr ApiLog<"KR_getManufacturer"> log;
    log.in();
    return log.outcomeOfSteps(textExec("AT+CGMI", size, pString, logText<"KR_getManufacturer-out-pString:%s">));
}

uint32_t KR_getModelID(int32_t size, char *pString)
{
    constexpr ApiLog<"KR_getModelID"> log;
    log.in();
    return log.outcomeOfSteps(textExec("AT+CGMM", size, pString, logText<"KR_getModelID-out-pString:%s">));
}

uint32_t KR_getFirmwareRevision(int32_t size, char *pString)
{
    constexpr ApiLog<"KR_getFirmwareRevision"> log;
    log.in();
    return log.outcomeOfSteps(textExec("AT+CGMR", size, pString, logText<"KR_getFirmwareRevision-out-pString:%s">));
}

uint32_t KR_getHardwareRevision(int32_t size, char *pString)
{
    constexpr ApiLog<"KR_getHardwareRevision"> log;
    log.in();
    return log.outcomeOfSteps(
        textExec(traits().hardwareRevisionCommand, size, pString, logText<"KR_getHardwareRevision-out-pString:%s">));
}

uint32_t KR_getIMSI(int32_t size, char *pString)
{
    constexpr ApiLog<"KR_getIMSI"> log;
    log.in();
    return log.outcomeOfSteps(textExec("AT+CIMI", size, pString, logText<"KR_getIMSI-out-pString:%s">));
}

uint32_t KR_getIMEI(int32_t size, char *pIMEIString)
{
    constexpr ApiLog<"KR_getIMEI"> log;
    log.in();
    return log.outcomeOfSteps(textExec("AT+CGSN", size, pIMEIString, logText<"KR_getIMEI-out-pIMEIString:%s">));
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
    constexpr size_t kLongestRead = 512;
    log.in();
    int32_t sw1 = 0;
    int32_t sw2 = 0;
    char response[kLongestRead + 1] = "";
    if (accessSim(kReadIccid, sw1, sw2, into(response)) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE>();
    const Span value = spanOf(response);
    if (!fitsInto(size, value)) return log.ret<UNI_ERROR_STRING_SIZE_TOO_SMALL>();
    std::memcpy(pString, value.begin, std::min(value.size() + 1, static_cast<size_t>(size)));
    log.out<"pString">(response);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t disposeVoiceNumber_1(AtRes *parsed, int32_t size, char *pString)
{
    char number[kIdentityRoom];
    if (parsed == nullptr || parsed->Result != AT_RES_RESULT_OK) return UNI_ERROR_FALSE;
    if (!takeOwnNumber(spanOf(parsed->Paras, sizeof parsed->Paras), size, number)) return UNI_ERROR_FALSE;
    copyUnterminated(pString, spanOf(number));
    return UNI_ERROR_SUCCESS;
}

uint32_t KR_getVoiceNumber(int32_t size, char *pString)
{
    constexpr ApiLog<"KR_getVoiceNumber"> log;
    log.in();
    char number[kIdentityRoom];
    const Ending ending = cnumExec(size, number);
    if (ending == Ending::NotParsed) return UNI_ERROR_FALSE; // without a line
    if (ending != Ending::Ok) return log.outcome(ending);
    copyUnterminated(pString, spanOf(number));
    log.line("KR_getVoiceNumber return OK:%s", number); // without the dash and the code of the other exits
    return UNI_ERROR_SUCCESS;
}

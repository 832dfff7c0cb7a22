// Which network serves the device, which one is home, what a scan finds, and selecting an operator.

#include <mainControl/api.h>
#include <mainControl/at_values.h>
#include <mainControl/wrappers.h>

#include "lib_public/support/log.h"
#include "lib_public/support/record_text.h"
#include "lib_public/support/scan.h"

using namespace mainControl;

namespace {

/** A text of the modem and what it stands for. */
struct TextCode {
    const char *text;
    int32_t code;
};

template <size_t Size>
int32_t codeOf(const char *text, const TextCode (&codes)[Size], int32_t other)
{
    for (const TextCode &candidate : codes) {
        if (std::strcmp(text, candidate.text) == 0) return candidate.code;
    }
    return other;
}

enum Domain : int32_t { kDomainNone = 0, kDomainCs = 1, kDomainPs = 2 };
constexpr TextCode kDomains[] = {{"CS_ONLY", kDomainCs}, {"PS_ONLY", kDomainPs}, {"CS_PS", kDomainCs | kDomainPs}};

constexpr TextCode kRoamStates[] = {
    {"ROAM_OFF", ROAMING_STATE_HOME}, {"ROAM_ON", ROAMING_STATE_ROAMING}, {"ROAM_NONE", ROAMING_STATE_HOME}};

RoamingState roamingOf(int32_t registrationStatus)
{
    switch (registrationStatus) {
    case AT_REGISTRATION_HOME:
        return ROAMING_STATE_HOME;
    case AT_REGISTRATION_ROAMING:
        return ROAMING_STATE_ROAMING;
    default:
        return ROAMING_STATE_UNKNOWN;
    }
}

/** Copies a text with its terminator into a buffer of a stated size; false, and nothing copied, if it does not fit. */
bool copyWithin(char *buffer, int32_t size, const char *text)
{
    const size_t length = std::strlen(text);
    if (static_cast<int32_t>(length) >= size) return false;
    std::memcpy(buffer, text, length + 1);
    return true;
}

/** Has the modem name operators in a format, and reads the one it is registered with. */
bool readOperator(int32_t format, CopsPara &operator_)
{
    operator_ = {};
    if (copsSet({.nMode = AT_COPS_FORMAT_ONLY, .nformat = format, .cOper = "", .nAct = 0}) != UNI_ERROR_SUCCESS)
        return false;
    return copsRead(&operator_) == UNI_ERROR_SUCCESS;
}

/** The class of an access technology: 0 GSM family, 2 UMTS family, others as they are. */
int32_t technologyClass(int32_t technology)
{
    switch (technology) {
    case AT_ACT_GSM:
    case AT_ACT_GSM_COMPACT:
    case AT_ACT_GSM_EGPRS:
        return AT_ACT_GSM;
    case AT_ACT_UTRAN:
    case AT_ACT_UTRAN_HSDPA:
    case AT_ACT_UTRAN_HSUPA:
    case AT_ACT_UTRAN_HSPA:
        return AT_ACT_UTRAN;
    default:
        return technology;
    }
}

/** Copies an operator of a scan over the one before: behind a shorter text the longer one's end stays. */
void takeOperator(const ScanNetworkInfo &found, NetworkInfo &info)
{
    // A long short name runs on into the fields behind it.
    const auto *const end = reinterpret_cast<const char *>(&found) + sizeof found;
    const auto length = [end](const char *text) { return strnlen(text, static_cast<size_t>(end - text)); };
    copyFitting(info.strLongName, found.strLongName, length(found.strLongName));
    copyFitting(info.strName, found.strName, length(found.strName));
    copyFitting(info.strCode, found.strCode, length(found.strCode));
    info.nAcT = technologyClass(found.nAcT);
    info.nStatus = found.nStatus;
}

void logOperator(int32_t index, const NetworkInfo &info)
{
    using Log = ApiLog<"KR_scanNetwork">;
    Log::line("KR_scanNetwork-out-info%d.strLongName:%s", index, info.strLongName);
    Log::line("KR_scanNetwork-out-info%d.strName:%s", index, info.strName);
    Log::line("KR_scanNetwork-out-info%d.strCode:%s", index, info.strCode);
    Log::line("KR_scanNetwork-out-info%d.nAcT:%d", index, info.nAcT);
    Log::line("KR_scanNetwork-out-info%d.nStatus:%d", index, info.nStatus);
}

} // namespace

uint32_t translateDomain(int32_t code, int32_t *pCSDomain, int32_t *pPSDomain)
{
    const auto domain = [code](Domain bit) {
        if (code == kDomainNone) return DOMAIN_NO_SERVICE;
        return (code & bit) != 0 ? DOMAIN_SERVED : DOMAIN_NOT_SERVED;
    };
    *pCSDomain = domain(kDomainCs);
    *pPSDomain = domain(kDomainPs);
    return UNI_ERROR_SUCCESS;
}

uint32_t getZpasInfo(int32_t *pCSDomain, int32_t *pPSDomain, int32_t nNameLen, char *pName, char *pPCDomain)
{
    ZpasInfo info{};
    if (zpasRead(&info) != UNI_ERROR_SUCCESS) return UNI_ERROR_FALSE;
    std::memcpy(pPCDomain, info.srvDomain, std::strlen(info.srvDomain) + 1);
    translateDomain(codeOf(info.srvDomain, kDomains, kDomainNone), pCSDomain, pPSDomain);
    return copyWithin(pName, nNameLen, info.netType) ? UNI_ERROR_SUCCESS : UNI_ERROR_STRING_SIZE_TOO_SMALL;
}

uint32_t getNetworkInfoByCops(int32_t *pMCC, int32_t *pMNC, int32_t nNameLen, char *pName)
{
    CopsPara operator_;
    if (!readOperator(AT_COPS_NUMERIC, operator_)) return UNI_ERROR_FALSE;
    char country[4] = "";
    char network[sizeof operator_.cOper] = "";
    scan(operator_.cOper, "%3s%s", into(country), into(network));
    *pMCC = 0;
    *pMNC = 0;
    scan(country, "%d", pMCC);
    scan(network, "%d", pMNC);

    if (!readOperator(AT_COPS_LONG_NAME, operator_)) return UNI_ERROR_FALSE;
    copyWithin(pName, nNameLen, operator_.cOper); // a name that does not fit is dropped
    return UNI_ERROR_SUCCESS;
}

uint32_t KR_getServingNetwork(int32_t *pCSDomain, int32_t *pPSDomain, int32_t *pRoaming, int32_t *pMCC, int32_t *pMNC,
                              int32_t nNameLen, char *pName, int32_t nRplmnLen, char *pRplmnName, char *pPCDomain)
{
    constexpr ApiLog<"KR_getServingNetwork"> log;
    log.in();
    const uint32_t code = getZpasInfo(pCSDomain, pPSDomain, nNameLen, pName, pPCDomain);
    if (code != UNI_ERROR_SUCCESS) return log.failure<"getZpasInfo failed">(code);
    ZdonInfo info{};
    if (zdonRead(&info) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE, "zdonRead failed">();
    *pRoaming = codeOf(info.roamStatus, kRoamStates, ROAMING_STATE_UNKNOWN);
    scan(info.servMcc, "%d", pMCC);
    scan(info.servMnc, "%d", pMNC);
    if (!copyWithin(pRplmnName, nRplmnLen, info.servName)) return UNI_ERROR_STRING_SIZE_TOO_SMALL;
    // Hosts match on this line as it stands, with the two colons that it lacks.
    log.line("%s OK:pCSDomain:%d,pPSDomain%d,pRoaming%d,pMCC:%d,pMNC:%d,pName:%s,pRplmnName:%s,pPCDomain:%s",
             "KR_getServingNetwork", *pCSDomain, *pPSDomain, *pRoaming, *pMCC, *pMNC, pName, pRplmnName, pPCDomain);
    return UNI_ERROR_SUCCESS;
}

uint32_t KR_getServingNetworkC(int32_t *pCSDomain, int32_t *pPSDomain, int32_t *pRoaming, int32_t *pMCC, int32_t *pMNC,
                               int32_t nNameLen, char *pName, int32_t nRplmnLen, char *pRplmnName, char *pPCDomain)
{
    constexpr ApiLog<"KR_getServingNetworkC"> log;
    log.in();
    const uint32_t code = getZpasInfo(pCSDomain, pPSDomain, nNameLen, pName, pPCDomain);
    if (code != UNI_ERROR_SUCCESS) return log.failure<"getZpasInfo failed">(code);
    CregPara registration{};
    if (cregRead(&registration) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE, "cregRead failed">();
    *pRoaming = roamingOf(registration.status);
    if (getNetworkInfoByCops(pMCC, pMNC, nRplmnLen, pRplmnName) != UNI_ERROR_SUCCESS)
        return log.ret<UNI_ERROR_FALSE, "getNetworkInfoByCops failed">();
    // The addresses, not the values: these five lines have always been written so.
    log.out<"*pCSDomain">(pCSDomain);
    log.out<"*pPSDomain">(pPSDomain);
    log.out<"*pRoaming">(pRoaming);
    log.out<"*pMCC">(pMCC);
    log.out<"*pMNC">(pMNC);
    log.out<"pName">(pName);
    log.out<"pRplmnName">(pRplmnName);
    log.out<"pPCDomain">(pPCDomain);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_getHomeNetwork(int32_t *pMCC, int32_t *pMNC, int32_t nNameLen, char *pName)
{
    constexpr ApiLog<"KR_getHomeNetwork"> log;
    log.in();
    ZdonInfo info{};
    if (zdonRead(&info) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE, "zdonRead failed">();
    copyWithin(pName, nNameLen, info.homeName); // a name that does not fit is dropped
    scan(info.homeMcc, "%d", pMCC);
    scan(info.homeMnc, "%d", pMNC);
    log.out<"*pMCC">(*pMCC);
    log.out<"*pMNC">(*pMNC);
    log.out<"pName">(pName);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_scanNetwork(NetworkInfo *pNetworks, int32_t *pArraySize)
{
    constexpr ApiLog<"KR_scanNetwork"> log;
    log.in();
    ScanNetworkList list; // cleared by a scan that succeeds
    if (copsTest(&list) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE, "copsTest failed">();
    NetworkInfo info{};
    int32_t taken = 0;
    // An operator keeps its place in the scan: one that is passed over leaves a gap that is not written.
    for (int32_t i = 0; i < list.nCount && i < *pArraySize; ++i) {
        const ScanNetworkInfo &found = list.entry[i];
        if (found.nStatus == AT_OPERATOR_UNKNOWN || found.strCode[0] == '\0') continue;
        takeOperator(found, info);
        logOperator(taken, info);
        pNetworks[i] = info;
        ++taken;
    }
    *pArraySize = taken;
    log.line("KR_scanNetwork-out-*pArraySize = %d", taken);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_setCops(int32_t nMode, int32_t nformat, const char *cOper, int32_t nAct)
{
    constexpr ApiLog<"KR_setCops"> log;
    log.in();
    log.in<"nMode">(nMode);
    log.in<"nformat">(nformat);
    log.in<"cOper">(cOper);
    log.in<"nAct">(nAct);
    CopsPara operator_{.nMode = nMode, .nformat = nformat, .cOper = "", .nAct = nAct};
    if (!copyWhole(operator_.cOper, cOper)) return log.ret<UNI_ERROR_FALSE>();
    return log.outcome(copsSet(operator_));
}

uint32_t KR_getCops(int32_t *pMode, int32_t *pformat, char *cOper, int32_t *pAct)
{
    constexpr ApiLog<"KR_getCops"> log;
    log.in();
    CopsPara operator_{};
    if (copsRead(&operator_) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE, "copsRead failed">();
    *pMode = operator_.nMode;
    *pformat = operator_.nformat;
    std::memcpy(cOper, operator_.cOper, std::strlen(operator_.cOper) + 1);
    *pAct = operator_.nAct;
    log.out<"*pMode">(*pMode);
    log.out<"*pformat">(*pformat);
    log.out<"cOper">(cOper);
    log.out<"*pAct">(*pAct);
    log.line("KR_getCops--return UNI_ERROR_SUCCESS"); // with both dashes
    return UNI_ERROR_SUCCESS;
}

#include <algorithm>

#include "tests/support/plain_port/api.h"
#include "tests/support/plain_port/exchange.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

bool isShorter(const char *text, int32_t size)
{
    return static_cast<int32_t>(std::strlen(text)) < size;
}

int32_t domainCode(const std::string &text)
{
    if (text == "CS_ONLY") return 1;
    if (text == "PS_ONLY") return 2;
    if (text == "CS_PS") return 3;
    return 0;
}

int32_t roamingOf(const std::string &text)
{
    if (text == "ROAM_OFF" || text == "ROAM_NONE") return 1;
    if (text == "ROAM_ON") return 0;
    return 2;
}

int32_t integerOf(const char *text)
{
    int32_t number = 0;
    scan(text, "%d", &number);
    return number;
}

/** Switches the modem to a format and reads the operator in it. */
bool readOperator(World &world, int32_t format, CopsPara &current)
{
    CopsPara selected{};
    selected.nMode = 3;
    selected.nformat = format;
    if (copsSet(world, selected) != kSuccess) return false;
    current = CopsPara{};
    return copsRead(world, &current) == kSuccess;
}

int32_t technologyClass(int32_t technology)
{
    switch (technology) {
    case 0:
    case 1:
    case 3:
        return 0;
    case 2:
    case 4:
    case 5:
    case 6:
        return 2;
    default:
        return technology;
    }
}

void logEntry(World &world, int index, const NetworkInfo &entry)
{
    world.log(kApi, "KR_scanNetwork-out-info%d.strLongName:%s", index, entry.strLongName);
    world.log(kApi, "KR_scanNetwork-out-info%d.strName:%s", index, entry.strName);
    world.log(kApi, "KR_scanNetwork-out-info%d.strCode:%s", index, entry.strCode);
    world.log(kApi, "KR_scanNetwork-out-info%d.nAcT:%d", index, entry.nAcT);
    world.log(kApi, "KR_scanNetwork-out-info%d.nStatus:%d", index, entry.nStatus);
}

} // namespace

uint32_t translateDomain(World & /*world*/, int32_t code, int32_t *pCSDomain, int32_t *pPSDomain)
{
    if (code == 0) {
        *pCSDomain = 0;
        *pPSDomain = 0;
        return kSuccess;
    }
    *pCSDomain = (code & 1) != 0 ? 1 : 2;
    *pPSDomain = (code & 2) != 0 ? 1 : 2;
    return kSuccess;
}

uint32_t getZpasInfo(World &world, int32_t *pCSDomain, int32_t *pPSDomain, int32_t nNameLen, char *pName,
                     char *pPCDomain)
{
    ZpasInfo info{};
    if (zpasRead(world, &info) != kSuccess) return kFalse;
    std::strcpy(pPCDomain, info.srvDomain);
    translateDomain(world, domainCode(info.srvDomain), pCSDomain, pPSDomain);
    if (!isShorter(info.netType, nNameLen)) return 18;
    std::strcpy(pName, info.netType);
    return kSuccess;
}

uint32_t getNetworkInfoByCops(World &world, int32_t *pMCC, int32_t *pMNC, int32_t nNameLen, char *pName)
{
    CopsPara current{};
    if (!readOperator(world, 2, current)) return kFalse;
    char country[4] = {};
    char network[sizeof current.cOper] = {};
    scan(current.cOper, "%3s%s", country, network);
    *pMCC = integerOf(country);
    *pMNC = integerOf(network);
    if (!readOperator(world, 0, current)) return kFalse;
    if (isShorter(current.cOper, nNameLen)) std::strcpy(pName, current.cOper);
    return kSuccess;
}

uint32_t KR_getServingNetwork(World &world, int32_t *pCSDomain, int32_t *pPSDomain, int32_t *pRoaming, int32_t *pMCC,
                              int32_t *pMNC, int32_t nNameLen, char *pName, int32_t nRplmnLen, char *pRplmnName,
                              char *pPCDomain)
{
    world.log(kApi, "KR_getServingNetwork-in");
    const uint32_t result = getZpasInfo(world, pCSDomain, pPSDomain, nNameLen, pName, pPCDomain);
    if (result != kSuccess) {
        world.log(kApi, "KR_getServingNetwork-return UNI_ERROR_FALSE-getZpasInfo failed");
        return result;
    }
    ZdonInfo info{};
    if (zdonRead(world, &info) != kSuccess) {
        world.log(kApi, "KR_getServingNetwork-return UNI_ERROR_FALSE-zdonRead failed");
        return kFalse;
    }
    *pRoaming = roamingOf(info.roamStatus);
    scan(info.servMcc, "%d", pMCC);
    scan(info.servMnc, "%d", pMNC);
    if (!isShorter(info.servName, nRplmnLen)) return 18;
    std::strcpy(pRplmnName, info.servName);
    world.log(kApi, "%s OK:pCSDomain:%d,pPSDomain%d,pRoaming%d,pMCC:%d,pMNC:%d,pName:%s,pRplmnName:%s,pPCDomain:%s",
              "KR_getServingNetwork", *pCSDomain, *pPSDomain, *pRoaming, *pMCC, *pMNC, pName, pRplmnName, pPCDomain);
    return kSuccess;
}

uint32_t KR_getServingNetworkC(World &world, int32_t *pCSDomain, int32_t *pPSDomain, int32_t *pRoaming, int32_t *pMCC,
                               int32_t *pMNC, int32_t nNameLen, char *pName, int32_t nRplmnLen, char *pRplmnName,
                               char *pPCDomain)
{
    world.log(kApi, "KR_getServingNetworkC-in");
    CregPara creg{};
    uint32_t result = getZpasInfo(world, pCSDomain, pPSDomain, nNameLen, pName, pPCDomain);
    if (result != kSuccess) {
        world.log(kApi, "KR_getServingNetworkC-return UNI_ERROR_FALSE-getZpasInfo failed");
        return result;
    }
    if (cregRead(world, &creg) != kSuccess) {
        world.log(kApi, "KR_getServingNetworkC-return UNI_ERROR_FALSE-cregRead failed");
        return kFalse;
    }
    *pRoaming = creg.status == 5 ? 0 : creg.status == 1 ? 1 : 2;
    result = getNetworkInfoByCops(world, pMCC, pMNC, nRplmnLen, pRplmnName);
    if (result != kSuccess) {
        world.log(kApi, "KR_getServingNetworkC-return UNI_ERROR_FALSE-getNetworkInfoByCops failed");
        return result;
    }
    world.log(kApi, "KR_getServingNetworkC-out-*pCSDomain:%d", address(pCSDomain));
    world.log(kApi, "KR_getServingNetworkC-out-*pPSDomain:%d", address(pPSDomain));
    world.log(kApi, "KR_getServingNetworkC-out-*pRoaming:%d", address(pRoaming));
    world.log(kApi, "KR_getServingNetworkC-out-*pMCC:%d", address(pMCC));
    world.log(kApi, "KR_getServingNetworkC-out-*pMNC:%d", address(pMNC));
    world.log(kApi, "KR_getServingNetworkC-out-pName:%s", pName);
    world.log(kApi, "KR_getServingNetworkC-out-pRplmnName:%s", pRplmnName);
    world.log(kApi, "KR_getServingNetworkC-out-pPCDomain:%s", pPCDomain);
    world.log(kApi, "KR_getServingNetworkC-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_getHomeNetwork(World &world, int32_t *pMCC, int32_t *pMNC, int32_t nNameLen, char *pName)
{
    world.log(kApi, "KR_getHomeNetwork-in");
    ZdonInfo info{};
    if (zdonRead(world, &info) != kSuccess) {
        world.log(kApi, "KR_getHomeNetwork-return UNI_ERROR_FALSE-zdonRead failed");
        return kFalse;
    }
    if (isShorter(info.homeName, nNameLen)) std::strcpy(pName, info.homeName);
    scan(info.homeMcc, "%d", pMCC);
    scan(info.homeMnc, "%d", pMNC);
    world.log(kApi, "KR_getHomeNetwork-out-*pMCC:%d", *pMCC);
    world.log(kApi, "KR_getHomeNetwork-out-*pMNC:%d", *pMNC);
    world.log(kApi, "KR_getHomeNetwork-out-pName:%s", pName);
    world.log(kApi, "KR_getHomeNetwork-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_scanNetwork(World &world, NetworkInfo *pNetworks, int32_t *pArraySize)
{
    world.log(kApi, "KR_scanNetwork-in");
    ScanNetworkList list{};
    NetworkInfo entry{};
    if (copsTest(world, &list) != kSuccess) {
        world.log(kApi, "KR_scanNetwork-return UNI_ERROR_FALSE-copsTest failed");
        return kFalse;
    }
    int taken = 0;
    const int32_t examined = std::min(list.nCount, *pArraySize);
    for (int32_t i = 0; i < examined; ++i) {
        const auto *const found = reinterpret_cast<const char *>(&list.entry[i]);
        const char *const code = found + offsetof(ScanNetworkInfo, strCode);
        if (list.entry[i].nStatus == 0 || code[0] == '\0') continue;
        keep(entry.strLongName, list.entry[i].strLongName);
        keep(entry.strName, found + offsetof(ScanNetworkInfo, strName)); // may run on
        keep(entry.strCode, code);
        entry.nAcT = technologyClass(list.entry[i].nAcT);
        entry.nStatus = list.entry[i].nStatus;
        logEntry(world, taken, entry);
        pNetworks[i] = entry;
        ++taken;
    }
    *pArraySize = taken;
    world.log(kApi, "KR_scanNetwork-out-*pArraySize = %d", *pArraySize);
    world.log(kApi, "KR_scanNetwork-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_setCops(World &world, int32_t nMode, int32_t nformat, const char *cOper, int32_t nAct)
{
    world.log(kApi, "KR_setCops-in");
    world.log(kApi, "KR_setCops-in-nMode:%d", nMode);
    world.log(kApi, "KR_setCops-in-nformat:%d", nformat);
    world.log(kApi, "KR_setCops-in-cOper:%s", cOper);
    world.log(kApi, "KR_setCops-in-nAct:%d", nAct);
    CopsPara selected{nMode, nformat, {}, nAct};
    const bool isTooLong = std::strlen(cOper) >= sizeof selected.cOper;
    keep(selected.cOper, cOper);
    if (isTooLong || copsSet(world, selected) != kSuccess) {
        world.log(kApi, "KR_setCops-return UNI_ERROR_FALSE");
        return kFalse;
    }
    world.log(kApi, "KR_setCops-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_getCops(World &world, int32_t *pMode, int32_t *pformat, char *cOper, int32_t *pAct)
{
    world.log(kApi, "KR_getCops-in");
    CopsPara current{};
    if (copsRead(world, &current) != kSuccess) {
        world.log(kApi, "KR_getCops-return UNI_ERROR_FALSE-copsRead failed");
        return kFalse;
    }
    *pMode = current.nMode;
    *pformat = current.nformat;
    std::strcpy(cOper, current.cOper);
    *pAct = current.nAct;
    world.log(kApi, "KR_getCops-out-*pMode:%d", *pMode);
    world.log(kApi, "KR_getCops-out-*pformat:%d", *pformat);
    world.log(kApi, "KR_getCops-out-cOper:%s", cOper);
    world.log(kApi, "KR_getCops-out-*pAct:%d", *pAct);
    world.log(kApi, "KR_getCops--return UNI_ERROR_SUCCESS");
    return kSuccess;
}

} // namespace plain

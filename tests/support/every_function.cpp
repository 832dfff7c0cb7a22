#include "tests/support/every_function.h"

#include <cstdint>
#include <cstring>

#include <mainControl/mainControl.h>

namespace {

constexpr size_t kKiB = 1024;
constexpr size_t kExchangeLimit = 28 * kKiB;
constexpr size_t kScanLimit = 40 * kKiB; // holds the scan list
constexpr size_t kShapeLimit = 8 * kKiB; // works in what its caller owns

constexpr int32_t kBufferSize = 20000; // more than any reply can become
constexpr CrsmCmd kReadIccid = {176, 12258, 0, 0, 10, ""};

char sourceRoom[kBufferSize];
char *source = nullptr; // the text at hand
char textRoom[kBufferSize];
char output[kBufferSize];
char secondOutput[kBufferSize];
char thirdOutput[kBufferSize];
int32_t number[8];
char *position = nullptr;
AtRes record;
AtCmdLine work;
AtParasList list;
AtParasList *listPointer = &list;
AtClientRes rawRecord;
uint32_t simRoom[kBufferSize / 4];
PdpContextList contexts;
CregPara creg;
ZdonInfo zdon;
ZpasInfo zpas;
CopsPara cops;
ScanNetworkList scan;
NetworkInfo networks[100];
SysconfigPara sysconfig;
ZrssiPara zrssi;
CellInfo cell;
ZairInfo zair;

char *text()
{
    std::strcpy(textRoom, sourceRoom);
    work = {};
    source = textRoom;
    return textRoom;
}

char *shortText()
{
    constexpr size_t kLongestLine = 1023;
    text()[kLongestLine] = '\0';
    return textRoom;
}

/** Positions in the text at hand: where a final result ends a body, and where a flag begins. */
char **end()
{
    char *const found = std::strstr(textRoom, "\r\nOK\r\n");
    position = found != nullptr ? found : textRoom;
    return &position;
}
char **begin()
{
    position = text();
    return &position;
}

AtRes *parsed(uint8_t result = 0)
{
    record = {};
    record.Result = result;
    text();
    return &record;
}

AtRes *parsedText()
{
    parsed(AT_RES_RESULT_OK);
    std::memcpy(record.Paras, textRoom, std::strlen(sourceRoom));
    return &record;
}

AtRes *voiceNumber()
{
    parsed(AT_RES_RESULT_OK);
    std::strcpy(record.Paras, "\"own\",\"13800000000\",129");
    return &record;
}

AtRes *report()
{
    parsed(AT_RES_RESULT_REPORT);
    std::strcpy(record.Paras, "1,\"00A1\",\"0001B2C3\",7,\"01\"");
    return &record;
}

AtClientRes *rawReport()
{
    rawRecord = {};
    std::strcpy(rawRecord.aucDataBuf, "\r\n+CEREG: 1,\"00A1\",\"0001B2C3\",7\r\n");
    return &rawRecord;
}

CrsmRes *simResponse()
{
    return reinterpret_cast<CrsmRes *>(simRoom);
}

void hear(int32_t /*status*/, char * /*areaCode*/, char * /*cellId*/) {}

uint32_t scanForAll()
{
    int32_t size = 100;
    return KR_scanNetwork(networks, &size);
}

#define MAINCONTROL_WITH_CODE(limit, function, ...)                                                                    \
    {                                                                                                                  \
#function, [] { return function(__VA_ARGS__); }, limit                                                         \
    }
#define EXCHANGE(...) MAINCONTROL_WITH_CODE(kExchangeLimit, __VA_ARGS__)
#define SHAPE(...) MAINCONTROL_WITH_CODE(kShapeLimit, __VA_ARGS__)
#define WITHOUT_CODE(function, ...)                                                                                    \
    {                                                                                                                  \
#function,                                                                                                     \
            [] {                                                                                                       \
                (void)function(__VA_ARGS__);                                                                           \
                return uint32_t{0};                                                                               \
            },                                                                                                         \
            kShapeLimit       \
    }

} // namespace

void setEveryText(const char *text)
{
    std::strncpy(sourceRoom, text, sizeof sourceRoom - 1);
}

// clang-format off
const EveryFunction *everyFunction(size_t *count)
{
    static constexpr EveryFunction kRows[] = {
        SHAPE(_Find_Cmd_By_ID, &number[0], 12306),
        SHAPE(_Find_Cmd_By_Name, &number[0], "^ZPCUIVERSION"),
        SHAPE(Bk_Parse_At_Res, text(), parsed()),
        SHAPE(Bk_Parse_At_COPS5_Res, text(), parsed()),
        SHAPE(_Parse_At_PreProcess, text(), &position, &number[0]),
        SHAPE(_Parse_At_End_Flag, text(), parsed(AT_RES_RESULT_OK), end(), &work, 0),
        SHAPE(_Parse_At_End_Flag_NoPara, text(), parsed(AT_RES_RESULT_OK), end(), &work),
        SHAPE(_Parse_At_End_Flag_HavePara, text(), parsed(AT_RES_RESULT_REPORT), begin(), &work),
        SHAPE(_Parse_At_Ok_Res, parsedText(), &work),
        SHAPE(_First_Parse_At_OK_Res, text(), output, &work),
        SHAPE(_Parse_At_ParaOfTheEndColon, text(), source, source + 1, parsed()),
        SHAPE(unsolicitedATProcess, text()),
        SHAPE(CGDCONT_ReadATResProcess, parsedText(), &contexts),
        SHAPE(translateDomain, 3, &number[0], &number[1]),
        SHAPE(disposeVoiceNumber_1, voiceNumber(), 100, output),
        SHAPE(translatePrefmodeToZsnt, 2, &number[0], &number[1], &number[2]),
        SHAPE(translatePrefmodeToSysconfig, 2, &sysconfig),
        SHAPE(translatePrefmodeToErat, 2, &number[0], &number[1]),
        SHAPE(translateZsntToPrefmode, &number[0], 0, 0, 2, 0),
        SHAPE(translateSysconfigToPrefmode, &number[0], 2, 2),
        SHAPE(KR_setCurrentPlatform, g_currentPlatform),
        SHAPE(KR_setCregNotifyCallback, hear),
        SHAPE(KR_setCeregNotifyCallback, hear),
        SHAPE(KR_setCgregNotifyCallback, hear),
        SHAPE(setAtCallbackRegist),
        SHAPE(CREG_Notify, report()),
        SHAPE(CEREG_Notify, report()),
        SHAPE(CGREG_Notify, report()),
        SHAPE(CGEV_Notify, report()),
        SHAPE(ZPASR_Notify, report()),
        SHAPE(ZDONR_Notify, report()),
        SHAPE(ZOPERTER_Notify, report()),
        SHAPE(PSBEARER_Notify, report()),
        SHAPE(EUSIM_Notify, report()),
        SHAPE(ECSQ_Notify, report()),
        SHAPE(ESMLA_Notify, report()),
        SHAPE(ECFU_Notify, report()),
        SHAPE(ESPEECH_Notify, report()),
        SHAPE(ESCRI_Notify, report()),
        SHAPE(ESIMS_Notify, report()),
        SHAPE(ETESTSIM_Notify, report()),
        SHAPE(ECIPH_Notify, report()),
        SHAPE(ECELLINFO_Notify, report()),
        SHAPE(ENWINFO_Notify, report()),
        SHAPE(ZPBIC_Notify, report()),
        SHAPE(KR_parseSPNName, "414243", output),
        SHAPE(KR_spnFriendOperlistInvert, "6400", output),
        WITHOUT_CODE(_Find_Sub_Str, text(), "\r\nOK"),
        WITHOUT_CODE(ParseCmdLineWithCmdName, &work, text(), source),
        WITHOUT_CODE(ParseCmdLineWithoutCmdName, &work, text(), source),
        WITHOUT_CODE(ProcessClipCmd, text(), source, 0, parsed(), &work),
        WITHOUT_CODE(ATCodec_Find_Sub_Str, text(), ";"),
        WITHOUT_CODE(ATCodec_GetSubStrCountByToken, text(), ","),
        WITHOUT_CODE(ATCodec_FindSubStrByIndex, text(), output, 7, ","),
        WITHOUT_CODE(ATCodec_PreProc_Res_ParaList, &list, text()),
        WITHOUT_CODE(ATCodec_PreProc_Res_ParaList_Special, &list, text()),
        WITHOUT_CODE(ATCodec_PreProc_Res_Icera_ParaList, &list, text()),
        WITHOUT_CODE(ATCodec_PreProc_Res_COPS5_ParaList, &list, text()),
        WITHOUT_CODE(ATCodec_PreProc_Res_ParaList_Entend, text(), &number[0]),
        WITHOUT_CODE(ATCodec_PreProc_Res_ParaLine, shortText()),
        WITHOUT_CODE(ATCodec_ProcRes_ParaLineEx, shortText()),
        WITHOUT_CODE(ATCodec_Restore_String_Para, text()),
        WITHOUT_CODE(ATCodec_TranslateToCmdPara, output, "AT+CMEE=%d,%s", 2, text()),
        WITHOUT_CODE(getZrssiResParasCount, text()),
        WITHOUT_CODE(translatePinStateFromSettingToMts, 0, 0, 1),
        WITHOUT_CODE(translateLockStatusToMode, 2, 1),
        EXCHANGE(atStart),
        EXCHANGE(ateExec, 1),
        EXCHANGE(cmeeSet, 2),
        EXCHANGE(cgsnExec, output),
        EXCHANGE(zmsnRead, output),
        EXCHANGE(clckSet, "SC", 2, nullptr, 7, &number[0]),
        EXCHANGE(clckSet, "SC", 1, "1234", 1, &number[0]),
        EXCHANGE(xxSet, 0, &number[0]),
        EXCHANGE(epincRead, number),
        EXCHANGE(cardmodeExec, &number[0]),
        EXCHANGE(zrapRead, 1, &number[0], &number[1]),
        EXCHANGE(zpinpukTest, &number[0], &number[1]),
        EXCHANGE(cpinRead, &number[0]),
        EXCHANGE(cpinSet, {"1234", "5678"}),
        EXCHANGE(cpwdSet, {"1234", "5678"}),
        EXCHANGE(zsecRead, &number[0], &number[1]),
        EXCHANGE(zlcokRead, &number[0], &number[1]),
        EXCHANGE(znckSet, "12345678"),
        EXCHANGE(znckRead, &number[0]),
        EXCHANGE(spsimlockinfoExec, &number[0]),
        EXCHANGE(esmlckSet, 0, 1, "12345678"),
        EXCHANGE(esmlckRead, 0, &number[0], &number[1], &number[2]),
        EXCHANGE(cgdcontRead, &contexts),
        EXCHANGE(cgdcontSet, {1, "IP", "internet", "", 0, 0}),
        EXCHANGE(cgdfltSet, {1, "IP", "internet", "", 0, 0}),
        EXCHANGE(zoprtRead, &number[0]),
        EXCHANGE(zoprtSet, 1),
        EXCHANGE(zsetSet, "NAME", 1, output, &number[0]),
        EXCHANGE(FOTACTRSet, 1, &number[0], &number[1]),
        EXCHANGE(AtNetstaticIp, "192.168.0.1"),
        EXCHANGE(AtRamdumpHostIp, "192.168.0.1"),
        EXCHANGE(cfunSet, 1),
        EXCHANGE(cfunRead, &number[0]),
        EXCHANGE(cregSet, 2),
        EXCHANGE(cgregSet, 2),
        EXCHANGE(ceregSet, 2),
        EXCHANGE(zgaatSet, 1),
        EXCHANGE(cgattSet, 1),
        EXCHANGE(ceregRead, &number[0], &number[1], output, secondOutput, &number[2]),
        EXCHANGE(cgregRead, &number[0], &number[1]),
        EXCHANGE(cregRead, &creg),
        EXCHANGE(crsmSet, kReadIccid, simResponse()),
        EXCHANGE(zdonRead, &zdon),
        EXCHANGE(zpasRead, &zpas),
        EXCHANGE(copsSet, {1, 2, "46000", 7}),
        EXCHANGE(copsRead, &cops),
        EXCHANGE(copsTest, &scan),
        EXCHANGE(copsSet5, &listPointer),
        EXCHANGE(zsntSet, 0, 0, 2),
        EXCHANGE(zsntRead, &number[0], &number[1], &number[2]),
        EXCHANGE(sysconfigRead, &sysconfig),
        EXCHANGE(sysconfigSet, 2, 0, 1, 3),
        EXCHANGE(eratRead, &number[0], &number[1], &number[2], &number[3]),
        EXCHANGE(eratSet, 2, 2),
        EXCHANGE(zprefbandSet, 0),
        EXCHANGE(sysinfoExec, &number[0], &number[1], &number[2], &number[3], &number[4], 0, 0),
        EXCHANGE(zrssiExec, &zrssi),
        EXCHANGE(zrssiLteRead, &zrssi),
        EXCHANGE(zltelcRead, &number[0], &number[1], &number[2]),
        EXCHANGE(KR_startAT),
        EXCHANGE(KR_echo, 1),
        EXCHANGE(KR_setCmee, 2),
        EXCHANGE(KR_getManufacturer, kBufferSize, output),
        EXCHANGE(KR_getModelID, kBufferSize, output),
        EXCHANGE(KR_getFirmwareRevision, kBufferSize, output),
        EXCHANGE(KR_getHardwareRevision, kBufferSize, output),
        EXCHANGE(KR_getIMSI, kBufferSize, output),
        EXCHANGE(KR_getIMEI, kBufferSize, output),
        EXCHANGE(KR_getSerialNumber, kBufferSize, output),
        EXCHANGE(KR_getICCID, kBufferSize, output),
        EXCHANGE(KR_getVoiceNumber, kBufferSize, output),
        EXCHANGE(ProcessMainControlAtCallback, rawReport()),
        EXCHANGE(KR_getServingNetwork, &number[0], &number[1], &number[2], &number[3], &number[4], 68, output, 68, secondOutput, thirdOutput),
        EXCHANGE(KR_getServingNetworkC, &number[0], &number[1], &number[2], &number[3], &number[4], 68, output, 68, secondOutput, thirdOutput),
        EXCHANGE(KR_getHomeNetwork, &number[0], &number[1], 68, output),
        EXCHANGE(KR_setCops, 0, 2, "46000", 7),
        EXCHANGE(KR_getCops, &number[0], &number[1], output, &number[2]),
        EXCHANGE(getZpasInfo, &number[0], &number[1], 68, output, secondOutput),
        EXCHANGE(getNetworkInfoByCops, &number[0], &number[1], 68, output),
        EXCHANGE(KR_setCregMode, 2),
        EXCHANGE(KR_getCregMode, &creg),
        EXCHANGE(KR_setDomainAttachMode, 1),
        EXCHANGE(KR_getEPSRegisterState, &number[0], &number[1], output, secondOutput, &number[2]),
        EXCHANGE(KR_setEPSRegisterState, 2),
        EXCHANGE(KR_getGPRSRegisterState, &number[0], &number[1]),
        EXCHANGE(KR_setGPRSRegisterState, 2),
        EXCHANGE(KR_getSPNInfo, kReadIccid, simResponse()),
        EXCHANGE(KR_setNetworkPreferMode, 14, 1),
        EXCHANGE(KR_getNetworkPreferMode, &number[0]),
        EXCHANGE(KR_setNetworkRegistrationMode, 1, "46000", 0, 7, 0),
        EXCHANGE(KR_setNetworkRegistrationMode, 0, "", 0, 0, 1),
        EXCHANGE(KR_setLteNetworkPreference, 1),
        EXCHANGE(SetbandByBand, "AT+BAND=7"),
        EXCHANGE(KR_getPlmnInfo, &list),
        EXCHANGE(translateEratToPrefmode, &number[0], 2, 2, 1),
        EXCHANGE(setPrefMode, 2, 1),
        EXCHANGE(getPrefMode, &number[0], 1),
        EXCHANGE(setAutoSearchCheckNetwork),
        EXCHANGE(KR_get4GSignalStrength, &number[0], &number[1], &number[2], &number[3], &number[4], &number[5]),
        EXCHANGE(KR_getSignalStrength, &number[0]),
        EXCHANGE(KR_getZRSSIInfo, &zrssi),
        EXCHANGE(KR_getCellInfo, &cell),
        EXCHANGE(KR_getTxPowerInfo, &zair),
        EXCHANGE(KR_getSysinfo, &number[0], &number[1], &number[2], &number[3], &number[4], 0, 0),
        EXCHANGE(KR_getZltelcInfo, &number[0], &number[1], &number[2]),
        EXCHANGE(KR_setZgaat, 1),
        EXCHANGE(KR_getSysconfig, &number[0], &number[1], &number[2], &number[3]),
        EXCHANGE(KR_setSysconfig, 2, 6, 1, 3),
        EXCHANGE(KR_setDefaultProfile, 5, 3, "10.0.0.1", "", "", 0, "", "internet", "", "", ""),
        EXCHANGE(KR_setFacilityLock, "PN", 2, "", 0, &number[0]),
        EXCHANGE(KR_setPINProtection, 1, 1, "1234", 7, &number[0], &number[1], &number[2]),
        EXCHANGE(KR_verifyPIN, 1, "1234", &number[0], &number[1]),
        EXCHANGE(KR_unblockPIN, 1, "12345678", "1234", &number[0], &number[1]),
        EXCHANGE(KR_changePIN, 1, "1234", "5678", &number[0], &number[1]),
        EXCHANGE(KR_getPINStatus, 1, &number[0], &number[1], &number[2]),
        EXCHANGE(KR_getLockStatus, &number[0], &number[1]),
        EXCHANGE(KR_setLockCode, "12345678"),
        EXCHANGE(KR_getLockLefttimes, &number[0]),
        EXCHANGE(KR_getHardLockStatus, &number[0], &number[1]),
        EXCHANGE(KR_setControlKeyLock, 0, 0, "12345678"),
        EXCHANGE(KR_getControlKeyStatus, 0, &number[0], &number[1], &number[2]),
        EXCHANGE(getNetLockMode_Qualcomm, &number[0]),
        EXCHANGE(getNetLockMode_Icera, &number[0]),
        EXCHANGE(KR_setPower, 1),
        EXCHANGE(KR_getPower, &number[0]),
        EXCHANGE(KR_getOperationMode, &number[0]),
        EXCHANGE(KR_setOperationMode, 1),
        EXCHANGE(KR_getNetworkSelectionMode, &number[0]),
        EXCHANGE(getSlelectMode, &number[0]),
        EXCHANGE(KR_setZSET, "NAME", 1, output, &number[0]),
        EXCHANGE(KR_setFOTACTR, 1, &number[0], &number[1]),
        EXCHANGE(KR_Sendusb0IPtoMarvell, "192.168.0.1"),
        EXCHANGE(KR_SendNetgateIPtoMarvell, "192.168.0.1"),
        {"KR_scanNetwork", scanForAll, kScanLimit},
        {"isUSimTsp", [] { return static_cast<uint32_t>(isUSimTsp() - 1); }, kExchangeLimit},
    };
    *count = sizeof kRows / sizeof kRows[0];
    return kRows;
}
// clang-format on

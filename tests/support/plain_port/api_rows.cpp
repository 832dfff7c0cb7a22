#include <algorithm>
#include <cstring>

#include <mainControl/mainControl.h>

#include "tests/support/plain_port/api.h"
#include "tests/support/plain_port/rows.h"
#include "tests/support/saved_tables.h"

namespace plain {
namespace {

#define BOTH(function) #function, ::function, plain::function

int32_t *outIntegerOrNull(Round &round)
{
    return round.dice.oneIn(10) ? nullptr : outInteger(round);
}

const char *hostTextOrNull(Round &round)
{
    return round.dice.oneIn(10) ? nullptr : hostText(round);
}

const char *pinOrNull(Round &round)
{
    if (round.dice.oneIn(3)) return hostTextOrNull(round);
    return round.text(round.dice.of("0123456789", 1 + round.dice.below(round.dice.oneIn(3) ? 44 : 24)));
}

/** Often about as long as the field of a record. */
const char *operatorOrNull(Round &round)
{
    if (round.dice.oneIn(2)) return hostTextOrNull(round);
    return round.text(round.dice.of("0123456789", round.dice.oneIn(2) ? 5 : 61 + round.dice.below(5)));
}

const char *operatorText(Round &round)
{
    const char *const text = operatorOrNull(round);
    return text != nullptr ? text : hostText(round);
}

int32_t anyPlatform(Round &round)
{
    return anyInteger(round);
}

int32_t lockMode(Round &round)
{
    return static_cast<int32_t>(round.dice.below(4));
}

int32_t smallInteger(Round &round)
{
    return static_cast<int32_t>(round.dice.below(9)) - 1;
}

uint32_t simResult(Round &round)
{
    return round.dice.oneIn(2) ? 0 : 23 + static_cast<uint32_t>(round.dice.below(8));
}

int32_t groupIndex(Round &round)
{
    return round.dice.oneIn(4) ? anyInteger(round) : static_cast<int32_t>(round.dice.below(3));
}

RegistrationCallback callbackOrNull(Round &round)
{
    static constexpr RegistrationCallback kHears = [](int32_t, char *, char *) {};
    return round.dice.oneIn(4) ? nullptr : kHears;
}

AtClientRes *rawReport(Round &round)
{
    AtClientRes raw;
    std::memset(&raw, 0x5A, sizeof raw);
    const std::string report = round.replies.report();
    const size_t length = std::min(report.size(), sizeof raw.aucDataBuf - 1);
    std::memcpy(raw.aucDataBuf, report.data(), length);
    raw.aucDataBuf[length] = '\0';
    return recordAt<AtClientRes>(round.memory(std::string(reinterpret_cast<const char *>(&raw), sizeof raw)));
}

AtRes *parsedReportOrNull(Round &round)
{
    return round.dice.oneIn(30) ? nullptr : parsedReply(round, "at+CEREG?");
}

AtRes *parsedNumbers(Round &round)
{
    return parsedReply(round, "AT+CNUM");
}

/** As many as arraySize() then says, a hundred at most. */
NetworkInfo *outNetworks(Round &round)
{
    const int32_t size = round.dice.oneIn(4) ? anyInteger(round) : static_cast<int32_t>(round.dice.below(8));
    round.statedSize = static_cast<size_t>(size);
    const auto entries = static_cast<size_t>(std::clamp(size, 0, 100));
    return recordAt<NetworkInfo>(round.memory(entries * sizeof(NetworkInfo)));
}

int32_t *arraySize(Round &round)
{
    const auto size = static_cast<int32_t>(round.statedSize);
    return recordAt<int32_t>(round.memory(std::string(reinterpret_cast<const char *>(&size), sizeof size)));
}

/** While it lives, the table has a row for +CREG, as a host may add one. */
class CregRow {
  public:
    CregRow() { row_ = endFlag("\r\n+CREG: ", AT_RES_RESULT_REPORT, 71, 1); }
    ~CregRow() { row_ = saved_; }
    CregRow(const CregRow &) = delete;
    CregRow &operator=(const CregRow &) = delete;

  private:
    AtEndFlagRow &row_ = KoraWcdma_AtEndFlgTable[49];
    AtEndFlagRow saved_ = row_;
};

uint32_t takeWithCregRow(AtClientRes *report)
{
    const CregRow row;
    return ::ProcessMainControlAtCallback(report);
}

uint32_t plainTakeWithCregRow(World &world, AtClientRes *report)
{
    const CregRow row;
    return plain::ProcessMainControlAtCallback(world, report);
}

} // namespace

std::vector<Row> identityCalls()
{
    return {
        row(BOTH(KR_setCurrentPlatform), anyPlatform),
        row(BOTH(KR_startAT)),
        row(BOTH(KR_echo), anyInteger),
        row(BOTH(KR_setCmee), anyInteger),
        row(BOTH(KR_getManufacturer), statedSize, sizedBytes),
        row(BOTH(KR_getModelID), statedSize, sizedBytes),
        row(BOTH(KR_getFirmwareRevision), statedSize, sizedBytes),
        row(BOTH(KR_getHardwareRevision), statedSize, sizedBytes),
        row(BOTH(KR_getIMSI), statedSize, sizedBytes),
        row(BOTH(KR_getIMEI), statedSize, sizedBytes),
        row(BOTH(KR_getSerialNumber), statedSize, sizedBytes),
        row(BOTH(KR_getICCID), statedSize, sizedBytes),
        row(BOTH(KR_getVoiceNumber), statedSize, sizedBytes),
        row(BOTH(disposeVoiceNumber_1), parsedNumbers, statedSize, sizedBytes),
        row(BOTH(KR_setZgaat), anyInteger),
        row(BOTH(KR_getSysconfig), outInteger, outInteger, outInteger, outInteger),
        row(BOTH(KR_setSysconfig), anyInteger, anyInteger, anyInteger, anyInteger),
        row(BOTH(KR_setDefaultProfile), anyInteger, anyInteger, hostTextOrNull, hostTextOrNull, hostTextOrNull,
            anyInteger, hostTextOrNull, hostTextOrNull, hostTextOrNull, hostTextOrNull, hostTextOrNull),
    };
}

std::vector<Row> notificationCalls()
{
    return {
        row(BOTH(KR_setCregNotifyCallback), callbackOrNull),
        row(BOTH(KR_setCeregNotifyCallback), callbackOrNull),
        row(BOTH(KR_setCgregNotifyCallback), callbackOrNull),
        row(BOTH(setAtCallbackRegist)),
        row(BOTH(ProcessMainControlAtCallback), rawReport),
        row("ProcessMainControlAtCallback with +CREG", takeWithCregRow, plainTakeWithCregRow, rawReport),
        row(BOTH(CREG_Notify), parsedReportOrNull),
        row(BOTH(CEREG_Notify), parsedReportOrNull),
        row(BOTH(CGREG_Notify), parsedReportOrNull),
        row(BOTH(CGEV_Notify), parsedReportOrNull),
        row("ZPASR_Notify", ::ZPASR_Notify, plain::emptyNotify, parsedReportOrNull),
        row("ZDONR_Notify", ::ZDONR_Notify, plain::emptyNotify, parsedReportOrNull),
        row("ZOPERTER_Notify", ::ZOPERTER_Notify, plain::emptyNotify, parsedReportOrNull),
        row("PSBEARER_Notify", ::PSBEARER_Notify, plain::emptyNotify, parsedReportOrNull),
        row("EUSIM_Notify", ::EUSIM_Notify, plain::emptyNotify, parsedReportOrNull),
        row("ECSQ_Notify", ::ECSQ_Notify, plain::emptyNotify, parsedReportOrNull),
        row("ESMLA_Notify", ::ESMLA_Notify, plain::emptyNotify, parsedReportOrNull),
        row("ECFU_Notify", ::ECFU_Notify, plain::emptyNotify, parsedReportOrNull),
        row("ESPEECH_Notify", ::ESPEECH_Notify, plain::emptyNotify, parsedReportOrNull),
        row("ESCRI_Notify", ::ESCRI_Notify, plain::emptyNotify, parsedReportOrNull),
        row("ESIMS_Notify", ::ESIMS_Notify, plain::emptyNotify, parsedReportOrNull),
        row("ETESTSIM_Notify", ::ETESTSIM_Notify, plain::emptyNotify, parsedReportOrNull),
        row("ECIPH_Notify", ::ECIPH_Notify, plain::emptyNotify, parsedReportOrNull),
        row("ECELLINFO_Notify", ::ECELLINFO_Notify, plain::emptyNotify, parsedReportOrNull),
        row("ENWINFO_Notify", ::ENWINFO_Notify, plain::emptyNotify, parsedReportOrNull),
        row("ZPBIC_Notify", ::ZPBIC_Notify, plain::emptyNotify, parsedReportOrNull),
    };
}

std::vector<Row> networkCalls()
{
    return {
        row(BOTH(KR_getServingNetwork), outInteger, outInteger, outInteger, outInteger, outInteger, statedSize,
            sizedText, statedSize, sizedText, outTextOf<68>),
        row(BOTH(KR_getServingNetworkC), outInteger, outInteger, outInteger, outInteger, outInteger, statedSize,
            sizedText, statedSize, sizedText, outTextOf<68>),
        row(BOTH(KR_getHomeNetwork), outInteger, outInteger, statedSize, sizedText),
        row(BOTH(KR_scanNetwork), outNetworks, arraySize),
        row(BOTH(KR_setCops), anyInteger, anyInteger, operatorText, anyInteger),
        row(BOTH(KR_getCops), outInteger, outInteger, outTextOf<64>, outInteger),
        row(BOTH(translateDomain), anyInteger, outInteger, outInteger),
        row(BOTH(getZpasInfo), outInteger, outInteger, statedSize, sizedText, outTextOf<68>),
        row(BOTH(getNetworkInfoByCops), outInteger, outInteger, statedSize, sizedText),
        row(BOTH(KR_setCregMode), anyInteger),
        row(BOTH(KR_getCregMode), outRecord<CregPara>),
        row(BOTH(KR_setDomainAttachMode), anyInteger),
        row(BOTH(KR_getEPSRegisterState), outInteger, outInteger, outText, outText, outInteger),
        row(BOTH(KR_setEPSRegisterState), anyInteger),
        row(BOTH(KR_getGPRSRegisterState), outInteger, outInteger),
        row(BOTH(KR_setGPRSRegisterState), anyInteger),
        row(BOTH(KR_getSPNInfo), anySimCommand, outSimResponse),
        row(BOTH(KR_parseSPNName), hostText, outText),
        row(BOTH(KR_spnFriendOperlistInvert), hostText, outText),
    };
}

std::vector<Row> radioCalls()
{
    return {
        row(BOTH(KR_setNetworkPreferMode), anyInteger, anyInteger),
        row(BOTH(KR_getNetworkPreferMode), outInteger),
        row(BOTH(KR_setNetworkRegistrationMode), anyInteger, operatorOrNull, anyInteger, anyInteger, anyInteger),
        row(BOTH(KR_setLteNetworkPreference), anyInteger),
        row(BOTH(SetbandByBand), hostTextOrNull),
        row(BOTH(KR_getPlmnInfo), outRecord<AtParasList>),
        row(BOTH(translatePrefmodeToZsnt), anyInteger, outInteger, outInteger, outInteger),
        row(BOTH(translatePrefmodeToSysconfig), anyInteger, outRecord<SysconfigPara>),
        row(BOTH(translatePrefmodeToErat), anyInteger, outInteger, outInteger),
        row(BOTH(translateZsntToPrefmode), outInteger, anyInteger, anyInteger, anyInteger, anyInteger),
        row(BOTH(translateEratToPrefmode), outInteger, anyInteger, anyInteger, anyInteger),
        row(BOTH(translateSysconfigToPrefmode), outInteger, anyInteger, anyInteger),
        row(BOTH(setPrefMode), anyInteger, anyInteger),
        row(BOTH(getPrefMode), outInteger, lockMode),
        row(BOTH(setAutoSearchCheckNetwork)),
        row(BOTH(KR_get4GSignalStrength), outInteger, outInteger, outInteger, outInteger, outInteger, outInteger),
        row(BOTH(KR_getSignalStrength), outInteger),
        row(BOTH(KR_getZRSSIInfo), outRecord<ZrssiPara>),
        row(BOTH(KR_getCellInfo), outRecord<CellInfo>),
        row(BOTH(KR_getTxPowerInfo), outRecord<ZairInfo>),
        row(BOTH(KR_getSysinfo), outInteger, outInteger, outInteger, outInteger, outInteger, anyInteger, anyInteger),
        row(BOTH(KR_getZltelcInfo), outInteger, outInteger, outInteger),
    };
}

std::vector<Row> pinAndLockCalls()
{
    return {
        row(BOTH(KR_setFacilityLock), hostText, lockMode, hostText, anyInteger, outInteger),
        row(BOTH(KR_setPINProtection), anyInteger, lockMode, pinOrNull, anyInteger, outInteger, outIntegerOrNull,
            outIntegerOrNull),
        row(BOTH(KR_verifyPIN), anyInteger, pinOrNull, outIntegerOrNull, outIntegerOrNull),
        row(BOTH(KR_unblockPIN), anyInteger, pinOrNull, pinOrNull, outIntegerOrNull, outIntegerOrNull),
        row(BOTH(KR_changePIN), anyInteger, pinOrNull, pinOrNull, outIntegerOrNull, outIntegerOrNull),
        row(BOTH(KR_getPINStatus), anyInteger, outIntegerOrNull, outIntegerOrNull, outIntegerOrNull),
        row(BOTH(isUSimTsp)),
        row(BOTH(translatePinStateFromSettingToMts), smallInteger, simResult, lockMode),
        row(BOTH(KR_getLockStatus), outInteger, outInteger),
        row(BOTH(KR_setLockCode), hostText),
        row(BOTH(KR_getLockLefttimes), outInteger),
        row(BOTH(KR_getHardLockStatus), outInteger, outInteger),
        row(BOTH(KR_setControlKeyLock), anyInteger, anyInteger, hostText),
        row(BOTH(KR_getControlKeyStatus), groupIndex, outInteger, outInteger, outInteger),
        row(BOTH(getNetLockMode_Qualcomm), outInteger),
        row(BOTH(getNetLockMode_Icera), outInteger),
        row(BOTH(translateLockStatusToMode), lockMode, anyInteger),
        row(BOTH(KR_setPower), anyInteger),
        row(BOTH(KR_getPower), outInteger),
        row(BOTH(KR_getOperationMode), outInteger),
        row(BOTH(KR_setOperationMode), anyInteger),
        row(BOTH(KR_getNetworkSelectionMode), outInteger),
        row(BOTH(getSlelectMode), outInteger),
        row(BOTH(KR_setZSET), hostText, anyInteger, outText, outInteger),
        row(BOTH(KR_setFOTACTR), anyInteger, outInteger, outInteger),
        row(BOTH(KR_Sendusb0IPtoMarvell), hostText),
        row(BOTH(KR_SendNetgateIPtoMarvell), hostText),
    };
}

} // namespace plain

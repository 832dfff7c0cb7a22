#include "lib_public/support/platform_traits.h"

#include <mainControl/platform.h>

#pragma GCC diagnostic error "-Wmissing-field-initializers"
#pragma GCC diagnostic error "-Wswitch"

namespace mainControl {

namespace {

/** Also the platform of every number without a name. */
constexpr PlatformTraits kDefault = {
    .quotesSecrets = false,
    .quotesOperators = false,
    .setsOperatorFormatAlone = false,
    .endsSimReadInComma = true,
    .keepsNameOfSysinfo = true,
    .refusesOnlyWithoutSim = false,
    .reportsWithoutPlace = false,
    .hardwareRevisionCommand = "AT+ZPCB?",
    .powerTimeoutMs = 5000,
    .preference = PreferenceBy::Zsnt,
    .pinAttempts = PinAttemptsBy::Zpinpuk,
    .networkLock = NetworkLockBy::Znck,
    .serialNumber = SerialNumberFrom::Maker,
    .resetsBandForPreference = false,
    .detachesForPreference = false,
    .setsTechnologyForRegistration = false,
    .tellsSelectionByOperator = false,
    .hasLteSignal = false,
    .forgetsReportsWithoutRadio = false,
};

constexpr PlatformTraits kQualcommLte = {
    .quotesSecrets = false,
    .quotesOperators = false,
    .setsOperatorFormatAlone = false,
    .endsSimReadInComma = true,
    .keepsNameOfSysinfo = true,
    .refusesOnlyWithoutSim = false,
    .reportsWithoutPlace = false,
    .hardwareRevisionCommand = "AT+ZPCB?",
    .powerTimeoutMs = 5000,
    .preference = PreferenceBy::Zsnt,
    .pinAttempts = PinAttemptsBy::Zpinpuk,
    .networkLock = NetworkLockBy::Znck,
    .serialNumber = SerialNumberFrom::Imei,
    .resetsBandForPreference = true,
    .detachesForPreference = false,
    .setsTechnologyForRegistration = false,
    .tellsSelectionByOperator = false,
    .hasLteSignal = true,
    .forgetsReportsWithoutRadio = false,
};

constexpr PlatformTraits kMediaTek = {
    .quotesSecrets = true,
    .quotesOperators = true,
    .setsOperatorFormatAlone = true,
    .endsSimReadInComma = false,
    .keepsNameOfSysinfo = true,
    .refusesOnlyWithoutSim = false,
    .reportsWithoutPlace = false,
    .hardwareRevisionCommand = "AT+ZPCB?",
    .powerTimeoutMs = 5000,
    .preference = PreferenceBy::Erat,
    .pinAttempts = PinAttemptsBy::Epinc,
    .networkLock = NetworkLockBy::Esmlck,
    .serialNumber = SerialNumberFrom::Maker,
    .resetsBandForPreference = false,
    .detachesForPreference = false,
    .setsTechnologyForRegistration = true,
    .tellsSelectionByOperator = true,
    .hasLteSignal = false,
    .forgetsReportsWithoutRadio = false,
};

constexpr PlatformTraits kTsp = {
    .quotesSecrets = true,
    .quotesOperators = true,
    .setsOperatorFormatAlone = true,
    .endsSimReadInComma = true,
    .keepsNameOfSysinfo = false,
    .refusesOnlyWithoutSim = true,
    .reportsWithoutPlace = true,
    .hardwareRevisionCommand = "AT+HVER",
    .powerTimeoutMs = 20000,
    .preference = PreferenceBy::Sysconfig,
    .pinAttempts = PinAttemptsBy::Zrap,
    .networkLock = NetworkLockBy::Znck,
    .serialNumber = SerialNumberFrom::Nowhere,
    .resetsBandForPreference = false,
    .detachesForPreference = true,
    .setsTechnologyForRegistration = false,
    .tellsSelectionByOperator = false,
    .hasLteSignal = false,
    .forgetsReportsWithoutRadio = true,
};

constexpr PlatformTraits kSpreadtrum = {
    .quotesSecrets = true,
    .quotesOperators = true,
    .setsOperatorFormatAlone = true,
    .endsSimReadInComma = true,
    .keepsNameOfSysinfo = true,
    .refusesOnlyWithoutSim = false,
    .reportsWithoutPlace = false,
    .hardwareRevisionCommand = "AT+HVER",
    .powerTimeoutMs = 5000,
    .preference = PreferenceBy::Sysconfig,
    .pinAttempts = PinAttemptsBy::Xx,
    .networkLock = NetworkLockBy::Facility,
    .serialNumber = SerialNumberFrom::Maker,
    .resetsBandForPreference = false,
    .detachesForPreference = false,
    .setsTechnologyForRegistration = false,
    .tellsSelectionByOperator = true,
    .hasLteSignal = false,
    .forgetsReportsWithoutRadio = false,
};

/** The row of a platform that has a name; one without a row does not compile. */
const PlatformTraits &rowOf(Platform platform)
{
    switch (platform) {
    case PF_QC_LTE:
        return kQualcommLte;
    case PF_MTK:
        return kMediaTek;
    case PF_TSP:
        return kTsp;
    case PF_SPEADTRUM:
        return kSpreadtrum;
    }
    return kDefault;
}

} // namespace

const PlatformTraits &traits()
{
    constexpr int32_t kHighestNumber = 7; // the enumeration has three bits, and a longer number is no value of it
    const int32_t number = g_currentPlatform;
    return number >= 0 && number <= kHighestNumber ? rowOf(static_cast<Platform>(number)) : kDefault;
}

} // namespace mainControl

#ifndef LIB_PUBLIC_SUPPORT_PLATFORM_TRAITS_H
#define LIB_PUBLIC_SUPPORT_PLATFORM_TRAITS_H

#include <cstdint>

/** What differs by chipset. Code asks for the trait, never for the platform. */
namespace mainControl {

/** How the preference of radio technologies is written and read. */
enum class PreferenceBy : uint8_t { Zsnt, Sysconfig, Erat };

/** Who tells the attempts left for PIN and PUK. */
enum class PinAttemptsBy : uint8_t { Zpinpuk, Xx, Epinc, Zrap };

/** How the network lock is read, opened and counted. */
enum class NetworkLockBy : uint8_t {
    Znck,     ///< AT+ZSEC?, AT+ZNCK= and AT+ZNCK?
    Facility, ///< the facility "PN", and AT+SPSIMLOCKINFO
    Esmlck    ///< AT+ESMLCK for all of it
};

/** Where the serial number comes from. */
enum class SerialNumberFrom : uint8_t { Maker, Imei, Nowhere };

/** Traits without a default: a row that leaves one out does not compile. */
struct PlatformTraits {
    // Forms of commands and replies
    bool quotesSecrets;               ///< AT+CPIN="1234" instead of AT+CPIN=1234
    bool quotesOperators;             ///< AT+COPS=1,2,"46000",7 instead of AT+COPS=1,2,46000,7
    bool setsOperatorFormatAlone;     ///< AT+COPS=3,2 instead of AT+COPS=3,2,,0
    bool endsSimReadInComma;          ///< AT+CRSM without data ends in the comma in front of it
    bool keepsNameOfSysinfo;          ///< no blank behind "^SYSINFO:", so that the name stays in the parameters
    bool refusesOnlyWithoutSim;       ///< a refusal of AT+CPIN? means that there is no SIM, whatever it says
    bool reportsWithoutPlace;         ///< registration reports without a place come too, and are nothing to tell
    char hardwareRevisionCommand[10]; ///< what asks for the hardware revision
    int32_t powerTimeoutMs;           ///< of AT+CFUN=

    // Ways of doing something
    PreferenceBy preference;
    PinAttemptsBy pinAttempts;
    NetworkLockBy networkLock;
    SerialNumberFrom serialNumber;
    bool resetsBandForPreference;       ///< AT+ZPREFBAND, if the caller says that bands can be set
    bool detachesForPreference;         ///< the preference changes only while the modem is detached
    bool setsTechnologyForRegistration; ///< AT+ERAT in front of AT+COPS
    bool tellsSelectionByOperator;      ///< AT+COPS? instead of AT+ZSNT?
    bool hasLteSignal;                  ///< AT+ZRSSI? instead of AT+ZRSSI
    bool forgetsReportsWithoutRadio;    ///< registration reports are switched on again once it is on
};

/** The traits of the platform in force, which is looked up anew each time. */
const PlatformTraits &traits();

} // namespace mainControl

#endif

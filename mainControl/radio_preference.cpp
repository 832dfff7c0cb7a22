// The preference of radio technologies, in the API's one number and in each chipset's own values.

#include <mainControl/api.h>
#include <mainControl/at_values.h>
#include <mainControl/wrappers.h>

#include "lib_public/AtCodec/private_wrappers.h"
#include "lib_public/support/log.h"
#include "lib_public/support/platform_traits.h"
#include "lib_public/support/record_text.h"
#include "mainControl/preference_tables.h"

using namespace mainControl;

namespace {

/** What registration modes 3 and 4 are answered with; it has no name. */
constexpr uint32_t kModeNotCarriedOut = 30;

const PreferenceRow &preference(int32_t mode)
{
    return kPreferences[mode >= 0 && mode < kPreferenceModes ? mode : kPreferenceModes];
}

template <size_t Size>
const ReadBack *readBack(const ReadBack (&rows)[Size], int32_t reported)
{
    for (const ReadBack &row : rows) {
        if (row.reported == reported) return &row;
    }
    return nullptr;
}

bool isOperatorManual()
{
    CopsPara operator_{};
    return copsRead(&operator_) == UNI_ERROR_SUCCESS && operator_.nMode == AT_COPS_MANUAL;
}

uint32_t selectAutomatically()
{
    return copsSet({.nMode = AT_COPS_AUTOMATIC, .nformat = AT_COPS_LONG_NAME, .cOper = {}, .nAct = AT_ACT_GSM});
}

bool setSysconfig(int32_t mode)
{
    SysconfigPara values;
    translatePrefmodeToSysconfig(mode, &values);
    return sysconfigSet(values.nMode, values.nAcqorder, values.nRoam, values.nSrvdomain) == UNI_ERROR_SUCCESS;
}

/** A modem with AT+ERAT changes its preference only while it selects the operator itself. */
uint32_t setErat(int32_t mode)
{
    if (isOperatorManual()) selectAutomatically();
    int32_t rat = 0;
    int32_t pref = 0;
    translatePrefmodeToErat(mode, &rat, &pref);
    return eratSet(rat, pref);
}

/** Where the preference changes only while the modem is detached, it is attached again whatever came of that. */
uint32_t setSysconfigDetached(int32_t mode)
{
    cgattSet(AT_CGATT_DETACHED);
    const bool isSet = setSysconfig(mode);
    setAutoSearchCheckNetwork();
    cgattSet(AT_CGATT_ATTACHED);
    return toCode(isSet);
}

uint32_t setZsnt(int32_t mode, int32_t supportBandSet)
{
    if (traits().resetsBandForPreference && supportBandSet == 1) zprefbandSet(0);
    const ZsntValues &values = preference(mode).zsnt;
    return zsntSet(values.p1, values.p2, values.p3);
}

/** The technology that AT+ERAT wants for an access technology of AT+COPS. */
int32_t ratOf(int32_t technology)
{
    switch (technology) {
    case AT_ACT_GSM:
        return 0;
    case AT_ACT_UTRAN:
        return 1;
    default:
        return 2;
    }
}

/** The operator mode for a registration mode. */
int32_t operatorMode(int32_t mode)
{
    return mode == AT_COPS_MANUAL || mode == AT_COPS_DEREGISTER ? mode : AT_COPS_AUTOMATIC;
}

/** Registers with one operator. */
bool registerWith(const CopsPara &operator_)
{
    if (traits().setsTechnologyForRegistration && eratSet(ratOf(operator_.nAct), 0) != UNI_ERROR_SUCCESS) return false;
    return copsSet(operator_) == UNI_ERROR_SUCCESS;
}

} // namespace

uint32_t translatePrefmodeToZsnt(int32_t mode, int32_t *p1, int32_t *p2, int32_t *p3)
{
    const ZsntValues &values = preference(mode).zsnt;
    *p1 = values.p1;
    *p2 = values.p2;
    *p3 = values.p3;
    return UNI_ERROR_SUCCESS;
}

uint32_t translatePrefmodeToSysconfig(int32_t mode, SysconfigPara *values)
{
    const SysconfigMode &row = preference(mode).sysconfig;
    *values = {.nMode = row.nMode, .nAcqorder = row.nAcqorder, .nRoam = 1, .nSrvdomain = 3};
    return UNI_ERROR_SUCCESS;
}

uint32_t translatePrefmodeToErat(int32_t mode, int32_t *rat, int32_t *pref)
{
    const EratValues &values = preference(mode).erat;
    *rat = values.rat;
    *pref = values.pref;
    return UNI_ERROR_SUCCESS;
}

uint32_t translateZsntToPrefmode(int32_t *mode, int32_t p1, int32_t p2, int32_t p3, int32_t flag)
{
    if (flag == 1 && p2 == 1) {
        *mode = SELECTION_MODE_MANUAL;
        return UNI_ERROR_SUCCESS;
    }
    if (p1 == 0) {
        const ReadBack *const row = readBack(kModeOfZsntOrder, p3);
        *mode = row != nullptr ? row->mode : kModeOfOtherZsntOrder;
        return UNI_ERROR_SUCCESS;
    }
    const ReadBack *const row = readBack(kModeOfZsnt, p1);
    if (row == nullptr) return UNI_ERROR_FALSE;
    *mode = row->mode;
    return UNI_ERROR_SUCCESS;
}

uint32_t translateEratToPrefmode(int32_t *mode, int32_t rat, int32_t pref, int32_t flag)
{
    if (flag != 0 && isOperatorManual()) {
        *mode = SELECTION_MODE_MANUAL;
        return UNI_ERROR_SUCCESS;
    }
    switch (rat) {
    case 0:
        *mode = 3;
        return UNI_ERROR_SUCCESS;
    case 1:
        *mode = 4;
        return UNI_ERROR_SUCCESS;
    case 2:
        *mode = pref == 2 ? 2 : 0;
        return UNI_ERROR_SUCCESS;
    default:
        return UNI_ERROR_FALSE;
    }
}

uint32_t translateSysconfigToPrefmode(int32_t *mode, int32_t nMode, int32_t nAcqorder)
{
    uint32_t code = UNI_ERROR_FALSE;
    for (const SysconfigReadBack &row : kModeOfSysconfig) {
        if (row.reported.nMode != nMode) continue;
        code = UNI_ERROR_SUCCESS;
        if (row.reported.nAcqorder == nAcqorder) *mode = row.mode;
    }
    return code;
}

uint32_t setPrefMode(int32_t mode, int32_t supportBandSet)
{
    switch (traits().preference) {
    case PreferenceBy::Sysconfig:
        return traits().detachesForPreference ? setSysconfigDetached(mode) : toCode(setSysconfig(mode));
    case PreferenceBy::Erat:
        return setErat(mode);
    case PreferenceBy::Zsnt:
        break;
    }
    return setZsnt(mode, supportBandSet);
}

uint32_t getPrefMode(int32_t *mode, int32_t flag)
{
    switch (traits().preference) {
    case PreferenceBy::Sysconfig: {
        SysconfigPara values{};
        if (sysconfigRead(&values) != UNI_ERROR_SUCCESS) return UNI_ERROR_FALSE;
        return translateSysconfigToPrefmode(mode, values.nMode, values.nAcqorder);
    }
    case PreferenceBy::Erat: {
        int32_t values[4] = {};
        if (eratRead(&values[0], &values[1], &values[2], &values[3]) != UNI_ERROR_SUCCESS) return UNI_ERROR_FALSE;
        return translateEratToPrefmode(mode, values[2], values[3], flag);
    }
    case PreferenceBy::Zsnt:
        break;
    }
    ZsntValues values{};
    if (zsntRead(&values.p1, &values.p2, &values.p3) != UNI_ERROR_SUCCESS) return UNI_ERROR_FALSE;
    return translateZsntToPrefmode(mode, values.p1, values.p2, values.p3, flag);
}

uint32_t setAutoSearchCheckNetwork(void)
{
    constexpr int kPolls = 10;
    if (selectAutomatically() != UNI_ERROR_SUCCESS) return UNI_ERROR_FALSE;
    int32_t values[5] = {}; // the first is the service status
    for (int poll = 0; poll < kPolls && values[0] != 1 && values[0] != 2; ++poll)
        sysinfoExec(&values[0], &values[1], &values[2], &values[3], &values[4], 0, 0);
    return UNI_ERROR_SUCCESS;
}

uint32_t KR_setNetworkPreferMode(int32_t technologyPref, int32_t supportBandSet)
{
    constexpr ApiLog<"KR_setNetworkPreferMode"> log;
    log.in();
    log.in<"technologyPref">(technologyPref);
    log.in<"supportBandSet">(supportBandSet);
    if (technologyPref == SELECTION_MODE_MANUAL) return log.ret<UNI_ERROR_INVALID_PARAMETER>();
    return log.outcome<"setPrefMode failed">(setPrefMode(technologyPref, supportBandSet));
}

uint32_t KR_getNetworkPreferMode(int32_t *pTechnologyPref)
{
    constexpr ApiLog<"KR_getNetworkPreferMode"> log;
    log.in();
    int32_t value = 0;
    if (getPrefMode(&value, 0) != UNI_ERROR_SUCCESS) {
        // Under the setter's name; hosts match on it.
        return ApiLog<"KR_setNetworkPreferMode">::ret<UNI_ERROR_FALSE, "getPrefMode failed">();
    }
    *pTechnologyPref = value;
    log.out<"*pTechnologyPref">(value);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_setNetworkRegistrationMode(int32_t mode, const char *pCode, int32_t Status, int32_t dwAct,
                                       int32_t supportBandSet)
{
    constexpr int32_t kAutomaticPreference = 0;
    constexpr ApiLog<"KR_setNetworkRegistrationMode"> log;
    log.in();
    log.in<"mode">(mode);
    log.in<"pCode">(pCode);
    log.in<"Status">(Status);
    log.in<"dwAct">(dwAct);
    log.in<"supportBandSet">(supportBandSet);
    if (mode == AT_COPS_AUTOMATIC)
        return log.outcome<"setPrefMode failed">(setPrefMode(kAutomaticPreference, supportBandSet));
    if (mode == AT_COPS_FORMAT_ONLY || mode == AT_COPS_MANUAL_THEN_AUTOMATIC) return kModeNotCarriedOut;
    if (isEmpty(pCode)) return log.ret<UNI_ERROR_INVALID_PARAMETER>();
    CopsPara operator_{.nMode = operatorMode(mode), .nformat = AT_COPS_NUMERIC, .cOper = "", .nAct = dwAct};
    return log.outcome(toCode(copyWhole(operator_.cOper, pCode) && registerWith(operator_)));
}

uint32_t KR_setLteNetworkPreference(int32_t technologyPref)
{
    constexpr ApiLog<"KR_setLteNetworkPreference"> log;
    log.in();
    log.in<"technologyPref">(technologyPref);
    return log.outcome(zeactSet(technologyPref));
}

uint32_t SetbandByBand(const char *str)
{
    constexpr ApiLog<"SetbandByBand"> log;
    if (isEmpty(str)) return log.ret<UNI_ERROR_INVALID_PARAMETER>();
    return log.outcome(hostCommand(str));
}

uint32_t KR_getPlmnInfo(AtParasList *destination)
{
    return copsSet5(&destination);
}

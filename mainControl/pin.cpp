// PIN and facility locks, the SIM's state, and the attempts left.

#include <mainControl/api.h>
#include <mainControl/at_values.h>
#include <mainControl/wrappers.h>

#include "lib_public/support/platform_traits.h"
#include "lib_public/support/record_text.h"
#include "mainControl/file_log.h"

using namespace mainControl;

char g_lastPin[40] = {};
int32_t g_cardType = 1;
int32_t g_cardTypeKnown = 0;

namespace {

constexpr size_t kRememberedLength = 19;

struct Attempts {
    int32_t pin = 0;
    int32_t puk = 0;
};

/** Asks the modem for the attempts left, each chipset with its own command. AT+ZRAP? never fails: what cannot be read
 *  counts as none. */
bool readAttempts(Attempts &left)
{
    switch (traits().pinAttempts) {
    case PinAttemptsBy::Xx: {
        constexpr int32_t kPinCount = 0;
        constexpr int32_t kPukCount = 2;
        return xxSet(kPinCount, &left.pin) == UNI_ERROR_SUCCESS && xxSet(kPukCount, &left.puk) == UNI_ERROR_SUCCESS;
    }
    case PinAttemptsBy::Epinc: {
        int32_t counts[4] = {};
        if (epincRead(counts) != UNI_ERROR_SUCCESS) return false;
        left = {counts[0], counts[2]};
        return true;
    }
    case PinAttemptsBy::Zrap:
        zrapRead(isUSimTsp(), &left.pin, &left.puk);
        return true;
    case PinAttemptsBy::Zpinpuk:
        break;
    }
    return zpinpukTest(&left.pin, &left.puk) == UNI_ERROR_SUCCESS;
}

/** Where a PIN operation puts the attempts left. */
struct AttemptsOut {
    int32_t *pin;
    int32_t *puk;

    [[nodiscard]] bool isUsable() const { return pin != nullptr && puk != nullptr; }
    void write(const Attempts &left) const
    {
        *pin = left.pin;
        *puk = left.puk;
    }
};

template <Literal Function>
void logAttemptsIn(FileLog<Function> log, const AttemptsOut &out)
{
    logIn<"pVerifyRetriesLeft">(log, out.pin);
    logIn<"pUnblockRetriesLeft">(log, out.puk);
}

template <Literal Function>
void logAttemptsOut(FileLog<Function> log, const AttemptsOut &out)
{
    logOut<"*pVerifyRetriesLeft">(log, *out.pin);
    logOut<"*pUnblockRetriesLeft">(log, *out.puk);
}

/** The end of every operation that changed something: reports the attempts left. They stay as they were if the modem does
 *  not tell them, and the operation fails. */
template <Literal Function>
uint32_t reportAttempts(FileLog<Function> log, bool isRead, const Attempts &left, const AttemptsOut &out)
{
    if (isRead) out.write(left);
    logAttemptsOut(log, out);
    return log.outcome(toCode(isRead));
}

/** Remembers a PIN that the modem has accepted; shorter ones are filled up with zeros. */
void remember(const char *pin)
{
    const size_t length = strnlen(pin, kRememberedLength);
    std::memcpy(g_lastPin, pin, length);
    std::memset(g_lastPin + length, 0, kRememberedLength - length);
}

int32_t valueOf(const int32_t *pointer)
{
    return pointer != nullptr ? *pointer : 0;
}

/** Sends two secrets, neither of which is cut. */
uint32_t sendSecrets(uint32_t (*wrapper)(PinCodePair), const char *code, const char *newCode)
{
    PinCodePair pair{};
    if (!copyWhole(pair.code, code) || !copyWhole(pair.newCode, newCode)) return UNI_ERROR_FALSE;
    return wrapper(pair);
}

/** The log of the query, which KR_getPINStatus() alone keeps. */
void logAttemptsQuery()
{
    using Log = FileLog<"KR_getPINStatus">;
    switch (traits().pinAttempts) {
    case PinAttemptsBy::Xx:
        break;
    case PinAttemptsBy::Epinc:
        Log::line("KR_getPINStatus-g_currentPlatform == PF_MTK");
        break;
    case PinAttemptsBy::Zrap:
        Log::line("KR_getPINStatus-g_currentPlatform == PF_TSP");
        break;
    case PinAttemptsBy::Zpinpuk:
        Log::line("KR_getPINStatus-zpinpukTest");
        break;
    }
}

/** The attempts left in a SIM state. Without a SIM that could be asked there are none. */
bool attemptsInState(int32_t simState, Attempts &left)
{
    using Log = FileLog<"KR_getPINStatus">;
    if (simState == KORA_MTS_SIM_ICERA_LOCKNET) {
        Log::line("KR_getPINStatus-KORA_MTS_SIM_ICERA_LOCKNET");
        return true;
    }
    if (simState == KORA_MTS_SIM_FAILURE || simState == KORA_MTS_SIM_NOT_INSERTED) {
        Log::line("KR_getPINStatus-|| KORA_MTS_SIM_NOT_INSERTED");
        return true;
    }
    logAttemptsQuery();
    return readAttempts(left);
}

} // namespace

uint32_t KR_setFacilityLock(const char *strFac, int32_t iMode, const char *strPasswd, int32_t iClass, int32_t *iStatus)
{
    constexpr FileLog<"KR_setFacilityLock"> log;
    log.in();
    log.in<"strFac">(strFac);
    log.in<"iMode">(iMode);
    log.in<"strPasswd">(strPasswd);
    log.in<"iClass">(iClass);
    log.in<"iStatus">(iStatus);
    if (clckSet(strFac, iMode, strPasswd, iClass, iStatus) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE>();
    log.out<"iStatus">(valueOf(iStatus));
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_setPINProtection(int32_t id, int32_t bEnable, const char *pValue, int32_t iClass, int32_t *iStatus,
                             int32_t *pVerifyRetriesLeft, int32_t *pUnblockRetriesLeft)
{
    constexpr FileLog<"KR_setPINProtection"> log;
    const AttemptsOut out{pVerifyRetriesLeft, pUnblockRetriesLeft};
    log.in();
    log.in<"id">(id);
    log.in<"bEnable">(bEnable);
    log.in<"pValue">(pValue);
    log.in<"iClass">(iClass);
    log.in<"iStatus">(iStatus);
    logAttemptsIn(log, out);
    if (isEmpty(pValue) || !out.isUsable()) return log.ret<UNI_ERROR_INVALID_PARAMETER>();
    const uint32_t code = clckSet(AT_FACILITY_SIM, bEnable, pValue, iClass, iStatus);
    if (code != UNI_ERROR_SUCCESS) return log.failure<"clckSet failed">(code);
    remember(pValue);
    Attempts left;
    const bool isRead = readAttempts(left);
    log.out<"*iStatus">(valueOf(iStatus));
    return reportAttempts(log, isRead, left, out);
}

uint32_t KR_verifyPIN(int32_t id, const char *pValue, int32_t *pVerifyRetriesLeft, int32_t *pUnblockRetriesLeft)
{
    constexpr FileLog<"KR_verifyPIN"> log;
    const AttemptsOut out{pVerifyRetriesLeft, pUnblockRetriesLeft};
    log.in();
    log.in<"id">(id);
    log.in<"pValue">(pValue);
    logAttemptsIn(log, out);
    if (isEmpty(pValue) || !out.isUsable()) return log.ret<UNI_ERROR_INVALID_PARAMETER>();

    // A PIN longer than its array runs on into the one behind it, as long as the record has room.
    PinCodePair pair{};
    const size_t length = std::strlen(pValue);
    const bool fits = length < sizeof pair;
    if (fits) std::memcpy(reinterpret_cast<char *>(&pair), pValue, length);
    std::memset(g_lastPin, 0, sizeof g_lastPin);
    uint32_t code = UNI_ERROR_FALSE;
    if (fits) code = cpinSet(pair);
    if (code != UNI_ERROR_SUCCESS) return log.failure<"cpinSet failed">(code);
    remember(pValue);
    Attempts left;
    const bool isRead = readAttempts(left);
    if (traits().pinAttempts == PinAttemptsBy::Zrap) log.line("PF_TSP:pinLeft=%d,pukLeft=%d", left.pin, left.puk);
    return reportAttempts(log, isRead, left, out);
}

uint32_t KR_unblockPIN(int32_t id, const char *pPUKValue, const char *pNewValue, int32_t *pVerifyRetriesLeft,
                       int32_t *pUnblockRetriesLeft)
{
    constexpr FileLog<"KR_unblockPIN"> log;
    const AttemptsOut out{pVerifyRetriesLeft, pUnblockRetriesLeft};
    log.in();
    log.in<"id">(id);
    log.in<"pPUKValue">(pPUKValue);
    log.in<"pNewValue">(pNewValue);
    logAttemptsIn(log, out);
    if (isEmpty(pPUKValue) || isEmpty(pNewValue) || !out.isUsable()) return log.ret<UNI_ERROR_INVALID_PARAMETER>();
    const uint32_t code = sendSecrets(cpinSet, pPUKValue, pNewValue);
    if (code != UNI_ERROR_SUCCESS) return log.failure<"cpinSet failed">(code);
    Attempts left;
    return reportAttempts(log, readAttempts(left), left, out);
}

uint32_t KR_changePIN(int32_t id, const char *pOldValue, const char *pNewValue, int32_t *pVerifyRetriesLeft,
                      int32_t *pUnblockRetriesLeft)
{
    constexpr FileLog<"KR_changePIN"> log;
    const AttemptsOut out{pVerifyRetriesLeft, pUnblockRetriesLeft};
    log.in();
    log.in<"id">(id);
    log.in<"pOldValue">(pOldValue);
    log.in<"pNewValue">(pNewValue);
    logAttemptsIn(log, out);
    if (isEmpty(pOldValue) || isEmpty(pNewValue) || !out.isUsable()) return log.ret<UNI_ERROR_INVALID_PARAMETER>();
    const uint32_t code = sendSecrets(cpwdSet, pOldValue, pNewValue);
    if (code != UNI_ERROR_SUCCESS) return log.failure<"cpwdSet failed">(code);
    remember(pNewValue);
    Attempts left;
    return reportAttempts(log, readAttempts(left), left, out);
}

uint32_t KR_getPINStatus(int32_t /*id*/, int32_t *pStatus, int32_t *pVerifyRetriesLeft, int32_t *pUnblockRetriesLeft)
{
    constexpr FileLog<"KR_getPINStatus"> log;
    const AttemptsOut out{pVerifyRetriesLeft, pUnblockRetriesLeft};
    log.in();
    log.in<"pStatus">(pStatus);
    logAttemptsIn(log, out);
    if (pStatus == nullptr || !out.isUsable()) return log.ret<UNI_ERROR_INVALID_PARAMETER>();

    log.line("KR_getPINStatus-before cpinRead");
    int32_t state = SETTING_PIN_UNREQUIRED;
    const uint32_t cpinCode = cpinRead(&state);
    if (cpinCode == UNI_ERROR_FALSE) return log.ret<UNI_ERROR_COMM_FAILURE, "UNI_ERROR_COMM_FAILURE 11111">();

    int32_t lockStatus = 0;
    if (cpinCode == UNI_ERROR_SUCCESS && state == SETTING_PIN_UNREQUIRED) {
        log.line("KR_getPINStatus-before clck");
        if (clckSet(AT_FACILITY_SIM, AT_CLCK_QUERY, nullptr, AT_CLCK_CLASS_ALL, &lockStatus) != UNI_ERROR_SUCCESS)
            return log.ret<UNI_ERROR_COMM_FAILURE, "UNI_ERROR_COMM_FAILURE 22222">();
    }

    const int32_t simState = translatePinStateFromSettingToMts(state, cpinCode, lockStatus);
    Attempts left;
    if (!attemptsInState(simState, left)) {
        log.line("KR_getPINStatus-return UNI_ERROR_COMM_FAILURE 33333"); // without the dash of the other two
        return UNI_ERROR_COMM_FAILURE;
    }
    *pStatus = simState;
    out.write(left);
    log.out<"*pStatus">(*pStatus);
    logAttemptsOut(log, out);
    return log.ret<UNI_ERROR_SUCCESS>();
}

int32_t isUSimTsp(void)
{
    constexpr int32_t kSim = 1;
    constexpr int32_t kUsim = 2;
    constexpr int32_t kUsimMode = 1;
    if (g_cardTypeKnown != 0) return g_cardType;
    int32_t mode = 0;
    if (cardmodeExec(&mode) != UNI_ERROR_SUCCESS) return kSim;
    g_cardType = mode == kUsimMode ? kUsim : kSim;
    return g_cardType;
}

int32_t translatePinStateFromSettingToMts(int32_t state, uint32_t result, int32_t lockStatus)
{
    switch (result) {
    case UNI_ERROR_SETTING_SIM_FAILURE:
        return KORA_MTS_SIM_FAILURE;
    case UNI_ERROR_SETTING_SIM_BUSY:
        return KORA_MTS_SIM_BUSY;
    case UNI_ERROR_SETTING_SIM_NOT_INSERTED:
        return KORA_MTS_SIM_NOT_INSERTED;
    case UNI_ERROR_SUCCESS:
        break;
    default:
        return KORA_MTS_SIM_UNKNOWN;
    }
    switch (state) {
    case SETTING_PIN_UNREQUIRED:
        return lockStatus != 0 ? KORA_MTS_SIM_PIN_ENABLED : KORA_MTS_SIM_PIN_DISABLED;
    case SETTING_PIN_REQUIRED:
        return KORA_MTS_SIM_PIN_REQUIRED;
    case SETTING_PUK_REQUIRED:
        return KORA_MTS_SIM_PUK_REQUIRED;
    case SETTING_PHNET_PIN_REQUIRED:
        return KORA_MTS_SIM_ICERA_LOCKNET;
    default:
        return KORA_MTS_SIM_UNKNOWN;
    }
}

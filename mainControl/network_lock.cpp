// The modem's network lock, the control key.

#include <mainControl/api.h>
#include <mainControl/at_values.h>
#include <mainControl/wrappers.h>

#include "lib_public/support/platform_traits.h"
#include "mainControl/file_log.h"

using namespace mainControl;

namespace {

constexpr int32_t kUnlocked = 1; // the lock mode that counts without better knowledge
constexpr int32_t kLocked = 2;

/** The state of the control key for a lock mode. */
ControlKeyState stateOf(int32_t lockMode)
{
    switch (lockMode) {
    case 1:
        return CONTROL_KEY_NOT_LOCKED;
    case 2:
    case 3:
    case 4:
        return CONTROL_KEY_LOCKED;
    default:
        return CONTROL_KEY_UNKNOWN;
    }
}

uint32_t readLefttimes(int32_t *pLefttimes)
{
    using Log = FileLog<"KR_getLockLefttimes">;
    switch (traits().networkLock) {
    case NetworkLockBy::Facility:
        Log::line("KR_getLockLefttimes-in-g_currentPlatform == PF_SPEADTRUM");
        return spsimlockinfoExec(pLefttimes);
    case NetworkLockBy::Esmlck:
        Log::line("KR_getLockLefttimes-in-g_currentPlatform == PF_MTK");
        return esmlckRead(0, pLefttimes, nullptr, nullptr);
    case NetworkLockBy::Znck:
        break;
    }
    return znckRead(pLefttimes);
}

uint32_t setControlKey(int32_t controlKeyID, int32_t opID, const char *strcode)
{
    int32_t status = 0;
    switch (traits().networkLock) {
    case NetworkLockBy::Esmlck:
        return esmlckSet(controlKeyID, opID, strcode);
    case NetworkLockBy::Facility:
        return KR_setFacilityLock(AT_FACILITY_NETWORK, AT_CLCK_UNLOCK, strcode, AT_CLCK_CLASS_ALL, &status);
    case NetworkLockBy::Znck:
        break;
    }
    return KR_setLockCode(strcode);
}

/** Reads state and attempts: with one command, or step by step where the chipset has none for all three. */
uint32_t readControlKey(int32_t controlKeyID, int32_t *pState, int32_t *pLefttimes, int32_t *pUnlockLefttimes)
{
    using Log = FileLog<"KR_getControlKeyStatus">;
    int32_t lockMode = kUnlocked;
    switch (traits().networkLock) {
    case NetworkLockBy::Esmlck:
        Log::line("KR_getControlKeyStatus-in-g_currentPlatform == PF_MTK");
        return esmlckRead(controlKeyID, pLefttimes, pUnlockLefttimes, pState);
    case NetworkLockBy::Facility:
        Log::line("KR_getControlKeyStatus-in-g_currentPlatform == PF_SPEADTRUM");
        getNetLockMode_Icera(&lockMode);
        break;
    case NetworkLockBy::Znck:
        getNetLockMode_Qualcomm(&lockMode);
        break;
    }
    KR_getLockLefttimes(pLefttimes);
    if (pUnlockLefttimes != nullptr) *pUnlockLefttimes = 0;
    *pState = stateOf(lockMode);
    return UNI_ERROR_SUCCESS;
}

} // namespace

uint32_t KR_getLockStatus(int32_t *pstatus, int32_t *pitems)
{
    constexpr FileLog<"KR_getLockStatus"> log;
    log.in();
    if (zsecRead(pstatus, pitems) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE>();
    log.out<"*pstatus">(*pstatus);
    log.out<"*pitems">(*pitems);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_setLockCode(const char *strcode)
{
    constexpr FileLog<"KR_setLockCode"> log;
    log.in();
    log.line("KR_setLockCode-in-strcode%s", strcode); // without the colon
    return log.outcome<"znckSet failed">(znckSet(strcode));
}

uint32_t KR_getLockLefttimes(int32_t *pLefttimes)
{
    constexpr FileLog<"KR_getLockLefttimes"> log;
    log.in();
    if (readLefttimes(pLefttimes) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE>();
    log.out<"pLefttimes">(*pLefttimes);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_getHardLockStatus(int32_t *pHardAuth, int32_t *pImsiAuth)
{
    constexpr FileLog<"KR_getHardLockStatus"> log;
    log.in();
    if (zlcokRead(pHardAuth, pImsiAuth) != UNI_ERROR_SUCCESS) return log.ret<UNI_ERROR_FALSE>();
    log.out<"*pHardAuth">(*pHardAuth);
    log.out<"*pImsiAuth">(*pImsiAuth);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t KR_setControlKeyLock(int32_t controlKeyID, int32_t opID, const char *strcode)
{
    constexpr FileLog<"KR_setControlKeyLock"> log;
    log.in();
    log.in<"controlKeyID">(controlKeyID);
    log.in<"opID">(opID);
    log.in<"strcode">(strcode);
    return log.outcome(setControlKey(controlKeyID, opID, strcode));
}

uint32_t KR_getControlKeyStatus(int32_t controlKeyID, int32_t *pState, int32_t *pLefttimes, int32_t *pUnlockLefttimes)
{
    constexpr FileLog<"KR_getControlKeyStatus"> log;
    log.in();
    if (readControlKey(controlKeyID, pState, pLefttimes, pUnlockLefttimes) != UNI_ERROR_SUCCESS)
        return log.ret<UNI_ERROR_FALSE>();
    log.out<"*pState">(*pState);
    log.out<"*pLefttimes">(*pLefttimes);
    log.out<"*pUnlockLefttimes">(pUnlockLefttimes != nullptr ? *pUnlockLefttimes : 0);
    return log.ret<UNI_ERROR_SUCCESS>();
}

uint32_t getNetLockMode_Qualcomm(int32_t *mode)
{
    int32_t status = 0;
    int32_t items = 0;
    if (KR_getLockStatus(&status, &items) != UNI_ERROR_SUCCESS) return UNI_ERROR_FALSE;
    *mode = translateLockStatusToMode(status, items);
    return UNI_ERROR_SUCCESS;
}

uint32_t getNetLockMode_Icera(int32_t *mode)
{
    constexpr int32_t kNoClass = 0;
    constexpr int32_t kSimPin = 1;
    *mode = kUnlocked;
    int32_t lockStatus = 0;
    if (KR_setFacilityLock(AT_FACILITY_NETWORK, AT_CLCK_QUERY, "", kNoClass, &lockStatus) != UNI_ERROR_SUCCESS ||
        lockStatus != AT_CLCK_ACTIVE)
        return UNI_ERROR_SUCCESS;
    int32_t simState = 0;
    int32_t pinLeft = 0;
    int32_t pukLeft = 0;
    if (KR_getPINStatus(kSimPin, &simState, &pinLeft, &pukLeft) == UNI_ERROR_SUCCESS &&
        simState == KORA_MTS_SIM_ICERA_LOCKNET)
        *mode = kLocked;
    return UNI_ERROR_SUCCESS;
}

int32_t translateLockStatusToMode(int32_t status, int32_t items)
{
    constexpr struct {
        int32_t status, items, mode;
    } kModes[] = {{2, 1, 2}, {2, 0, 1}, {2, 2, 3}, {2, 3, 4}, {0, 0, 5}};
    if (status == 3) return 1;
    for (const auto &row : kModes) {
        if (row.status == status && row.items == items) return row.mode;
    }
    return 0;
}

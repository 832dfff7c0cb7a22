#include "tests/support/plain_port/pin_api.h"

#include "tests/support/plain_port/api.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

constexpr int32_t kMtk = 3;
constexpr int32_t kTsp = 4;
constexpr int32_t kSpreadtrum = 5;

bool isEmpty(const char *text)
{
    return text == nullptr || text[0] == '\0';
}

/** An operation that ends with a question for the attempts left. */
struct Operation {
    World &world;
    const char *name;
    int32_t *pinLeft;
    int32_t *pukLeft;
    int32_t *status = nullptr; ///< logged as well, if there is one

    void in() const { world.log(kApiFile, "%s-in", name); }
    void in(const char *argument, int32_t value) const { world.log(kApiFile, "%s-in-%s:%d", name, argument, value); }
    void in(const char *argument, const char *text) const
    {
        world.log(kApiFile, "%s-in-%s:%s", name, argument, orNull(text));
    }
    void inCounts() const
    {
        in("pVerifyRetriesLeft", address(pinLeft));
        in("pUnblockRetriesLeft", address(pukLeft));
    }
    [[nodiscard]] uint32_t invalid() const
    {
        world.log(kApiFile, "%s-return UNI_ERROR_INVALID_PARAMETER", name);
        return 13;
    }
    [[nodiscard]] uint32_t failed(const char *wrapper, uint32_t code) const
    {
        world.log(kApiFile, "%s-return UNI_ERROR_FALSE-%s failed", name, wrapper);
        return code;
    }
    [[nodiscard]] uint32_t finish(bool isVerify = false) const;

  private:
    bool ask(bool isVerify, int32_t &pin, int32_t &puk) const;
};

bool Operation::ask(bool isVerify, int32_t &pin, int32_t &puk) const
{
    switch (world.globals.platform) {
    case kSpreadtrum:
        return xxSet(world, 0, &pin) == kSuccess && xxSet(world, 2, &puk) == kSuccess;
    case kMtk: {
        int32_t counts[4] = {};
        if (epincRead(world, counts) != kSuccess) return false;
        pin = counts[0];
        puk = counts[2];
        return true;
    }
    case kTsp:
        zrapRead(world, isUSimTsp(world), &pin, &puk);
        if (isVerify) world.log(kApiFile, "PF_TSP:pinLeft=%d,pukLeft=%d", pin, puk);
        return true;
    default:
        return zpinpukTest(world, &pin, &puk) == kSuccess;
    }
}

uint32_t Operation::finish(bool isVerify) const
{
    int32_t pin = 0;
    int32_t puk = 0;
    const bool isKnown = ask(isVerify, pin, puk);
    if (isKnown) {
        *pinLeft = pin;
        *pukLeft = puk;
    }
    if (status != nullptr) world.log(kApiFile, "%s-out-*iStatus:%d", name, *status);
    world.log(kApiFile, "%s-out-*pVerifyRetriesLeft:%d", name, *pinLeft);
    world.log(kApiFile, "%s-out-*pUnblockRetriesLeft:%d", name, *pukLeft);
    world.log(kApiFile, "%s-return %s", name, isKnown ? "UNI_ERROR_SUCCESS" : "UNI_ERROR_FALSE");
    return isKnown ? kSuccess : kFalse;
}

/** Nineteen bytes are written, zeros behind a shorter one. */
void remember(World &world, const std::string &pin)
{
    constexpr size_t kKept = 19;
    std::string kept = pin.substr(0, kKept);
    kept.resize(kKept);
    world.globals.lastPin.replace(0, kKept, kept);
}

bool fitsTwice(const char *first, const char *second, PinCodePair &pair)
{
    if (std::strlen(first) >= sizeof pair.code || std::strlen(second) >= sizeof pair.newCode) return false;
    keep(pair.code, first);
    keep(pair.newCode, second);
    return true;
}

} // namespace

uint32_t setFacilityLockInside(World &world, const char *strFac, int32_t iMode, const char *strPasswd, int32_t iClass,
                               int32_t *iStatus)
{
    if (clckSet(world, strFac, iMode, strPasswd, iClass, iStatus) != kSuccess) {
        world.log(kApiFile, "KR_setFacilityLock-return UNI_ERROR_FALSE");
        return kFalse;
    }
    world.log(kApiFile, "KR_setFacilityLock-out-iStatus:%d", *iStatus);
    world.log(kApiFile, "KR_setFacilityLock-return UNI_ERROR_SUCCESS");
    return kSuccess;
}

uint32_t KR_setFacilityLock(World &world, const char *strFac, int32_t iMode, const char *strPasswd, int32_t iClass,
                            int32_t *iStatus)
{
    const Operation operation{world, "KR_setFacilityLock", nullptr, nullptr};
    operation.in();
    operation.in("strFac", strFac);
    operation.in("iMode", iMode);
    operation.in("strPasswd", strPasswd);
    operation.in("iClass", iClass);
    operation.in("iStatus", address(iStatus));
    return setFacilityLockInside(world, strFac, iMode, strPasswd, iClass, iStatus);
}

uint32_t KR_setPINProtection(World &world, int32_t id, int32_t bEnable, const char *pValue, int32_t iClass,
                             int32_t *iStatus, int32_t *pVerifyRetriesLeft, int32_t *pUnblockRetriesLeft)
{
    const Operation operation{world, "KR_setPINProtection", pVerifyRetriesLeft, pUnblockRetriesLeft, iStatus};
    operation.in();
    operation.in("id", id);
    operation.in("bEnable", bEnable);
    operation.in("pValue", pValue);
    operation.in("iClass", iClass);
    operation.in("iStatus", address(iStatus));
    operation.inCounts();
    if (isEmpty(pValue) || pVerifyRetriesLeft == nullptr || pUnblockRetriesLeft == nullptr) return operation.invalid();
    const uint32_t result = clckSet(world, "SC", bEnable, pValue, iClass, iStatus);
    if (result != kSuccess) return operation.failed("clckSet", result);
    remember(world, pValue);
    return operation.finish();
}

uint32_t KR_verifyPIN(World &world, int32_t id, const char *pValue, int32_t *pVerifyRetriesLeft,
                      int32_t *pUnblockRetriesLeft)
{
    const Operation operation{world, "KR_verifyPIN", pVerifyRetriesLeft, pUnblockRetriesLeft};
    operation.in();
    operation.in("id", id);
    operation.in("pValue", pValue);
    operation.inCounts();
    if (isEmpty(pValue) || pVerifyRetriesLeft == nullptr || pUnblockRetriesLeft == nullptr) return operation.invalid();
    PinCodePair pair{};
    const bool fits = std::strlen(pValue) < sizeof pair;
    if (fits) std::memcpy(static_cast<void *>(&pair), pValue, std::strlen(pValue));
    world.globals.lastPin.assign(40, '\0');
    const uint32_t result = fits ? cpinSet(world, pair) : kFalse;
    if (result != kSuccess) return operation.failed("cpinSet", result);
    remember(world, pValue);
    return operation.finish(true);
}

uint32_t KR_unblockPIN(World &world, int32_t id, const char *pPUKValue, const char *pNewValue,
                       int32_t *pVerifyRetriesLeft, int32_t *pUnblockRetriesLeft)
{
    const Operation operation{world, "KR_unblockPIN", pVerifyRetriesLeft, pUnblockRetriesLeft};
    operation.in();
    operation.in("id", id);
    operation.in("pPUKValue", pPUKValue);
    operation.in("pNewValue", pNewValue);
    operation.inCounts();
    if (isEmpty(pPUKValue) || isEmpty(pNewValue)) return operation.invalid();
    if (pVerifyRetriesLeft == nullptr || pUnblockRetriesLeft == nullptr) return operation.invalid();
    PinCodePair pair{};
    const uint32_t result = fitsTwice(pPUKValue, pNewValue, pair) ? cpinSet(world, pair) : kFalse;
    if (result != kSuccess) return operation.failed("cpinSet", result);
    return operation.finish();
}

uint32_t KR_changePIN(World &world, int32_t id, const char *pOldValue, const char *pNewValue,
                      int32_t *pVerifyRetriesLeft, int32_t *pUnblockRetriesLeft)
{
    const Operation operation{world, "KR_changePIN", pVerifyRetriesLeft, pUnblockRetriesLeft};
    operation.in();
    operation.in("id", id);
    operation.in("pOldValue", pOldValue);
    operation.in("pNewValue", pNewValue);
    operation.inCounts();
    if (isEmpty(pOldValue) || isEmpty(pNewValue)) return operation.invalid();
    if (pVerifyRetriesLeft == nullptr || pUnblockRetriesLeft == nullptr) return operation.invalid();
    PinCodePair pair{};
    const uint32_t result = fitsTwice(pOldValue, pNewValue, pair) ? cpwdSet(world, pair) : kFalse;
    if (result != kSuccess) return operation.failed("cpwdSet", result);
    remember(world, pNewValue);
    return operation.finish();
}

} // namespace plain

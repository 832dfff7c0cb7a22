#ifndef TESTS_MAINCONTROL_PIN_OPERATIONS_H
#define TESTS_MAINCONTROL_PIN_OPERATIONS_H

#include <memory>
#include <string>
#include <vector>

#include "tests/mainControl/pin_dialogue.h"

/** The four operations that change something about the SIM's PIN and then tell the attempts left, in one form. */
namespace dialogue {

/** The arguments of an operation. A NULL text is told apart from an empty one. */
struct PinCall {
    int32_t id = 7;
    int32_t enable = 1;
    const char *first = "1234";
    const char *second = "5678";
    int32_t lockClass = 7;
    int32_t *status;
    int32_t *verify;
    int32_t *unblock;
};

inline std::string logged(const char *text)
{
    return text == nullptr ? "(null)" : text;
}

struct PinOperation {
    const char *name;
    uint32_t (*call)(const PinCall &);
    /** The arguments that are not shared by all, as they are logged behind the id. */
    Events (*arguments)(const PinCall &);
    std::string (*command)(int32_t platform, const PinCall &);
    Events (*step)(const std::string &command);
    std::vector<Step> (*failingSteps)(const std::string &command);
    const char *stepFailed; ///< the line behind a step that fails
    bool hasSecond;
    /** What g_lastPin becomes. */
    std::string (*rememberedAfterSuccess)(const PinCall &);
    std::string (*rememberedAfterFailure)();

    [[nodiscard]] Event says(const std::string &rest) const { return kApiFile(name + rest); }

    [[nodiscard]] Events entry(const PinCall &pinCall) const
    {
        const std::string function = name;
        return Events{kApiFile(function + "-in"), kApiFile(function + "-in-id:%d", pinCall.id)} + arguments(pinCall) +
               Events{kApiFile(function + "-in-pVerifyRetriesLeft:%d", pinCall.verify),
                      kApiFile(function + "-in-pUnblockRetriesLeft:%d", pinCall.unblock)};
    }

    /** What is logged once the attempts have been asked for. */
    [[nodiscard]] Events exit(int32_t platform, const Attempts &attempts) const
    {
        const std::string function = name;
        Events events;
        if (platform == PF_TSP && function == "KR_verifyPIN")
            events.push_back(kApiFile("PF_TSP:pinLeft=%d,pukLeft=%d", attempts.pin, attempts.puk));
        if (function == "KR_setPINProtection") events.push_back(kApiFile(function + "-out-*iStatus:%d", kKept));
        return events + Events{kApiFile(function + "-out-*pVerifyRetriesLeft:%d", attempts.pin),
                               kApiFile(function + "-out-*pUnblockRetriesLeft:%d", attempts.puk),
                               says(attempts.areRead ? "-return UNI_ERROR_SUCCESS" : "-return UNI_ERROR_FALSE")};
    }
};

inline const PinOperation kPinOperations[] = {
    {
        "KR_setPINProtection",
        [](const PinCall &c) {
            return KR_setPINProtection(c.id, c.enable, c.first, c.lockClass, c.status, c.verify, c.unblock);
        },
        [](const PinCall &c) -> Events {
            return {kApiFile("KR_setPINProtection-in-bEnable:%d", c.enable),
                    kApiFile("KR_setPINProtection-in-pValue:%s", logged(c.first)),
                    kApiFile("KR_setPINProtection-in-iClass:%d", c.lockClass),
                    kApiFile("KR_setPINProtection-in-iStatus:%d", c.status)};
        },
        [](int32_t, const PinCall &c) {
            return "AT+CLCK=\"SC\"," + std::to_string(c.enable) + ",\"" + c.first + "\"" +
                   (c.lockClass == 1 ? ",1" : "");
        },
        lockChange,
        failingLockChanges,
        "-return UNI_ERROR_FALSE-clckSet failed",
        false,
        [](const PinCall &c) { return PinMemory::with(c.first, PinMemory::untouched()); },
        PinMemory::untouched,
    },
    {
        "KR_verifyPIN",
        [](const PinCall &c) { return KR_verifyPIN(c.id, c.first, c.verify, c.unblock); },
        [](const PinCall &c) -> Events { return {kApiFile("KR_verifyPIN-in-pValue:%s", logged(c.first))}; },
        [](int32_t platform, const PinCall &c) { return cpinCommand(platform, c.first); },
        cpinEntry,
        failingCpinEntries,
        "-return UNI_ERROR_FALSE-cpinSet failed",
        false,
        [](const PinCall &c) { return PinMemory::with(c.first, PinMemory::cleared()); },
        PinMemory::cleared,
    },
    {
        "KR_unblockPIN",
        [](const PinCall &c) { return KR_unblockPIN(c.id, c.first, c.second, c.verify, c.unblock); },
        [](const PinCall &c) -> Events {
            return {kApiFile("KR_unblockPIN-in-pPUKValue:%s", logged(c.first)),
                    kApiFile("KR_unblockPIN-in-pNewValue:%s", logged(c.second))};
        },
        [](int32_t platform, const PinCall &c) { return cpinCommand(platform, c.first, c.second); },
        cpinEntry,
        failingCpinEntries,
        "-return UNI_ERROR_FALSE-cpinSet failed",
        true,
        [](const PinCall &) { return PinMemory::untouched(); },
        PinMemory::untouched,
    },
    {
        "KR_changePIN",
        [](const PinCall &c) { return KR_changePIN(c.id, c.first, c.second, c.verify, c.unblock); },
        [](const PinCall &c) -> Events {
            return {kApiFile("KR_changePIN-in-pOldValue:%s", logged(c.first)),
                    kApiFile("KR_changePIN-in-pNewValue:%s", logged(c.second))};
        },
        [](int32_t, const PinCall &c) {
            return std::string(R"(AT+CPWD="SC",")") + c.first + "\",\"" + c.second + "\"";
        },
        [](const std::string &command) -> Events { return {ok(command, 10000)}; },
        failingPasswordChanges,
        "-return UNI_ERROR_FALSE-cpwdSet failed",
        true,
        [](const PinCall &c) { return PinMemory::with(c.second, PinMemory::untouched()); },
        PinMemory::untouched,
    },
};

/** One call of an operation, with new outputs and a filled memory. */
class PinRun {
  public:
    PinRun()
    {
        call.status = status_;
        call.verify = verify_;
        call.unblock = unblock_;
    }

    /** Expects the code, what is remembered afterwards, and the counts. */
    void expect(const PinOperation &operation, int32_t platform, const Events &events, uint32_t code,
                const std::string &remembered, int32_t pin = kKept, int32_t puk = kKept)
    {
        EXPECT_EQ(play(platform, events, [&] { return operation.call(call); }), code);
        EXPECT_EQ(PinMemory::lastPin(), remembered);
        EXPECT_EQ(*status_.get(), kKept);
        EXPECT_EQ(*verify_.get(), pin);
        EXPECT_EQ(*unblock_.get(), puk);
    }

    /** Expects success, with the attempts as the platform tells them first. */
    void expectSuccess(const PinOperation &operation, int32_t platform, const Events &step)
    {
        const Attempts attempts = attemptsOn(platform).front();
        expect(operation, platform, operation.entry(call) + step + attempts.events + operation.exit(platform, attempts),
               UNI_ERROR_SUCCESS, operation.rememberedAfterSuccess(call), attempts.pin, attempts.puk);
    }

    /** Expects a step that fails. */
    void expectFailure(const PinOperation &operation, int32_t platform, const Events &step, uint32_t code)
    {
        expect(operation, platform, operation.entry(call) + step + Events{operation.says(operation.stepFailed)}, code,
               operation.rememberedAfterFailure());
    }

    PinCall call;

  private:
    PinMemory memory_;
    GuardedRecord<int32_t> status_{kFill}, verify_{kFill}, unblock_{kFill};
};

} // namespace dialogue

#endif

#include <array>

#include <mainControl/api.h>

#include "krctl/commands/commands.h"
#include "krctl/commands/pin_operation.h"
#include "krctl/commands/readings.h"
#include "krctl/commands/secret_input.h"

namespace krctl {
namespace {

/** From the digit order of the SIM's file to the one on the card; the filler behind an odd number of digits goes. */
std::string readableIccid(std::string digits)
{
    for (size_t i = 0; i + 1 < digits.size(); i += 2)
        std::swap(digits[i], digits[i + 1]);
    while (!digits.empty() && (digits.back() == 'F' || digits.back() == 'f'))
        digits.pop_back();
    return digits;
}

Report status(Context &context)
{
    Session &session = context.session;
    const SimReading sim = readSim(session);
    if (!sim.state) throw session.failureFor("KR_getPINStatus", "tell the state of the SIM");
    Report report;
    Section &section = report.addSection("", "");
    addSimState(section, sim);
    const bool isLockOn = sim.state == KORA_MTS_SIM_PIN_ENABLED;
    const auto pinLock = isReady(*sim.state) ? std::optional(isLockOn) : std::nullopt;
    section.add(flagField("PIN lock", "pin_lock", pinLock, "on", "off"));
    // A SIM that waits for its PIN tells none of this, and need not be asked.
    const bool canBeAsked = *sim.state != KORA_MTS_SIM_NOT_INSERTED && *sim.state != KORA_MTS_SIM_PIN_REQUIRED &&
                            *sim.state != KORA_MTS_SIM_PUK_REQUIRED;
    const auto ask = [&](uint32_t (*getter)(int32_t, char *), const char *item) {
        return canBeAsked ? identity(session, getter, item) : std::string();
    };
    section.add(textField("IMSI", "imsi", ask(KR_getIMSI, "IMSI")));
    section.add(textField("ICCID", "iccid", readableIccid(ask(KR_getICCID, "ICCID"))));
    section.add(textField("Own number", "own_number", ask(KR_getVoiceNumber, "own number")));
    session.noteMissing(report);
    return report;
}

constexpr PinOperation kUnlock{.purpose = "accept the PIN",
                               .function = "KR_verifyPIN",
                               .command = "AT+CPIN=",
                               .sentence = "The PIN is right; the SIM is ready.",
                               .isDone = "The SIM asks for no PIN.",
                               .needs = KORA_MTS_SIM_PIN_REQUIRED,
                               .first = &kPin,
                               .run = [](const char *pin, const char *, int32_t *pinTries, int32_t *pukTries) {
                                   return KR_verifyPIN(1, pin, pinTries, pukTries);
                               }};

constexpr PinOperation kUnblock{.purpose = "accept the PUK",
                                .function = "KR_unblockPIN",
                                .command = "AT+CPIN=",
                                .sentence = "The PUK is right; the new PIN is in force.",
                                .isDone = "The SIM asks for no PUK.",
                                .needs = KORA_MTS_SIM_PUK_REQUIRED,
                                .first = &kPuk,
                                .hasNewPin = true,
                                .countsPuk = true,
                                .run = [](const char *puk, const char *newPin, int32_t *pinTries, int32_t *pukTries) {
                                    return KR_unblockPIN(1, puk, newPin, pinTries, pukTries);
                                }};

constexpr PinOperation kChange{.purpose = "change the PIN",
                               .function = "KR_changePIN",
                               .command = "AT+CPWD=",
                               .sentence = "The new PIN is in force.",
                               .isDone = nullptr,
                               .needs = KORA_MTS_SIM_PIN_ENABLED,
                               .first = &kOldPin,
                               .hasNewPin = true,
                               .run = [](const char *pin, const char *newPin, int32_t *pinTries, int32_t *pukTries) {
                                   return KR_changePIN(1, pin, newPin, pinTries, pukTries);
                               }};

constexpr PinOperation kLock{.purpose = "switch the PIN lock on",
                             .function = "KR_setPINProtection",
                             .command = "AT+CLCK=",
                             .sentence = "The PIN lock is on: the SIM asks for its PIN after each start.",
                             .isDone = "The PIN lock is on already.",
                             .needs = KORA_MTS_SIM_PIN_DISABLED,
                             .first = &kPin,
                             .run = [](const char *pin, const char *, int32_t *pinTries, int32_t *pukTries) {
                                 int32_t status = 0;
                                 return KR_setPINProtection(1, 1, pin, 0, &status, pinTries, pukTries);
                             }};

constexpr PinOperation kUnlockPin{.purpose = "switch the PIN lock off",
                                  .function = "KR_setPINProtection",
                                  .command = "AT+CLCK=",
                                  .sentence = "The PIN lock is off: the SIM asks for no PIN any more.",
                                  .isDone = "The PIN lock is off already.",
                                  .needs = KORA_MTS_SIM_PIN_ENABLED,
                                  .first = &kPin,
                                  .run = [](const char *pin, const char *, int32_t *pinTries, int32_t *pukTries) {
                                      int32_t status = 0;
                                      return KR_setPINProtection(1, 0, pin, 0, &status, pinTries, pukTries);
                                  }};

template <const PinOperation &operation>
Report operate(Context &context)
{
    return runPinOperation(context, operation);
}

constexpr std::array kSecretOptions{kPinStdin, kPinFd, kForce};

constexpr std::array kCommands{
    Command{.path = "sim status",
            .help = "state, PIN lock, tries left, identities",
            .examples = "krctl sim status",
            .run = status},
    Command{.path = "sim unlock",
            .help = "enter the PIN",
            .examples = "krctl sim unlock\nkrctl sim unlock --pin-stdin < pin",
            .parameters = kSecretOptions,
            .run = operate<kUnlock>},
    Command{.path = "sim unblock",
            .help = "enter the PUK and a new PIN",
            .examples = "krctl sim unblock\nprintf '%s\\n%s\\n' \"$PUK\" \"$PIN\" | krctl sim unblock --pin-stdin",
            .parameters = kSecretOptions,
            .run = operate<kUnblock>},
    Command{.path = "sim change-pin",
            .help = "the PIN and a new one",
            .examples = "krctl sim change-pin",
            .parameters = kSecretOptions,
            .run = operate<kChange>},
    Command{.path = "sim lock",
            .help = "switch the PIN lock on",
            .examples = "krctl sim lock",
            .parameters = kSecretOptions,
            .run = operate<kLock>},
    Command{.path = "sim unlock-pin",
            .help = "switch the PIN lock off",
            .examples = "krctl sim unlock-pin",
            .parameters = kSecretOptions,
            .run = operate<kUnlockPin>},
};

} // namespace

std::span<const Command> simCommands()
{
    return kCommands;
}

} // namespace krctl

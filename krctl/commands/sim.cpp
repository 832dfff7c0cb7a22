#include <array>
#include <string>
#include <vector>

#include <mainControl/api.h>

#include "krctl/commands/commands.h"
#include "krctl/commands/identity.h"
#include "krctl/commands/library_value.h"
#include "krctl/commands/pin_operation.h"
#include "krctl/commands/secret_input.h"
#include "krctl/commands/sim_reading.h"

namespace krctl {
namespace {

/** Identities are told only by a SIM that waits for nothing. */
bool canBeAsked(const SimReading &sim)
{
    return sim.state != SimState::NotInserted && (!sim.state || rowOf(*sim.state).demand != SimDemand::Unlock);
}

std::string readImsi(Session &session)
{
    return identity(session, ItemKind::Sim, KR_getIMSI, "IMSI");
}

std::string readIccid(Session &session)
{
    std::string digits(kMostText + 1, '\0');
    const Answer answer = session.ask(ItemKind::Sim, [&] { return KR_getICCID(kMostText, digits.data()); });
    std::string iccid = iccidOf(simFileOf(answer.replies.to("AT+CRSM=")));
    session.note("ICCID", answer.ending, !iccid.empty());
    return iccid;
}

std::vector<std::string> readOwnNumbers(Session &session)
{
    std::string number(kMostText + 1, '\0');
    const Answer answer = session.ask(ItemKind::Sim, [&] { return KR_getVoiceNumber(kMostText, number.data()); });
    std::vector<std::string> numbers = ownNumbersOf(answer.replies.to("AT+CNUM"));
    session.note("own number", answer.ending, !numbers.empty());
    return numbers;
}

void addIdentities(Section &section, const std::string &imsi, const std::string &iccid,
                   const std::vector<std::string> &numbers)
{
    section.add(textField("IMSI", "imsi", imsi));
    section.add(textField("ICCID", "iccid", iccid));
    Field number = textField("Own number", "own_number", numbers.empty() ? "" : numbers.front());
    number.text = listed(numbers);
    section.add(number).add(listField("", "own_numbers", numbers));
}

Report status(Context &context)
{
    Session &session = context.session;
    const SimReading sim = readSim(session);
    if (!sim.isTold()) throw session.failureFor("KR_getPINStatus", "tell the state of the SIM");
    Report report;
    Section &section = report.addSection("", "");
    addSimState(section, sim);
    section.add(flagField("PIN lock", "pin_lock", sim.pinLock, "on", "off"));
    if (canBeAsked(sim)) {
        const std::string imsi = readImsi(session);
        const std::string iccid = readIccid(session);
        addIdentities(section, imsi, iccid, readOwnNumbers(session));
    } else {
        addIdentities(section, "", "", {});
        if (sim.state != SimState::NotInserted)
            for (const char *item : {"IMSI", "ICCID", "own number"})
                session.note(item, Ending::WaitsForSim);
    }
    addNextStep(report, sim);
    session.finish(report);
    return report;
}

constexpr PinOperation kUnlock{.purpose = "accept the PIN",
                               .function = "KR_verifyPIN",
                               .command = "AT+CPIN=",
                               .sentence = "The PIN is right; the SIM is ready.",
                               .isDone = "The SIM asks for no PIN.",
                               .needs = SimState::PinRequired,
                               .first = &kPin,
                               .run = [](const char *pin, const char *, int32_t *pinTries, int32_t *pukTries) {
                                   return KR_verifyPIN(1, pin, pinTries, pukTries);
                               }};

constexpr PinOperation kUnblock{.purpose = "accept the PUK",
                                .function = "KR_unblockPIN",
                                .command = "AT+CPIN=",
                                .sentence = "The PUK is right; the new PIN is in force.",
                                .isDone = "The SIM asks for no PUK.",
                                .needs = SimState::PukRequired,
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
                               .needs = SimState::Ready,
                               .lock = true,
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
                             .needs = SimState::Ready,
                             .lock = false,
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
                                  .needs = SimState::Ready,
                                  .lock = true,
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

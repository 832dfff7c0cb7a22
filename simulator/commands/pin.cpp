// The SIM's PIN, its facilities and the attempts that are left, which each family tells in a way of its own.
#include "simulator/commands/command_table.h"

namespace simulator {
namespace {

constexpr std::string_view kSimLock = AT_FACILITY_SIM;
constexpr std::string_view kNetworkLock = AT_FACILITY_NETWORK;

Reply readPinState(Device &device, const Command &command)
{
    switch (device.sim.state()) {
    case SimState::NeedsPin:
        return named(command, "SIM PIN");
    case SimState::NeedsPuk:
        return named(command, "SIM PUK");
    case SimState::Absent:
    case SimState::Busy:
    case SimState::Failed:
        return device.obstacle(Needs::Pin);
    case SimState::Ready:
        break;
    }
    return named(command, device.networkLock.isActive() ? "PH-NET PIN" : "READY");
}

Failure enterCode(Device &device, const Command &command)
{
    const bool hasNewPin = command.arguments.size() > 1;
    switch (device.sim.state()) {
    case SimState::NeedsPin:
        return hasNewPin ? Cme::IncorrectParameters : device.sim.enterPin(command.text(0));
    case SimState::NeedsPuk:
        return hasNewPin ? device.sim.unblock(command.text(0), command.text(1)) : Cme::SimPukRequired;
    case SimState::Ready:
        break;
    default:
        return device.obstacle(Needs::Pin);
    }
    if (!device.networkLock.isActive()) return Cme::OperationNotAllowed;
    return device.networkLock.set(false, command.text(0));
}

Reply enterPin(Device &device, const Command &command)
{
    const Failure failure = enterCode(device, command);
    device.reconsider();
    return failure;
}

/** The lock of a facility that is neither the SIM's nor the network's; null if the modem has none. */
CodeLock *facilityLock(Device &device, const std::string &facility)
{
    if (facility == kNetworkLock) return &device.networkLock;
    const auto found = device.facilities.find(facility);
    return found == device.facilities.end() ? nullptr : &found->second;
}

Reply queryFacility(Device &device, const Command &command, const std::string &facility)
{
    if (facility == kSimLock) return named(command, device.sim.isPinEnabled() ? AT_CLCK_ACTIVE : AT_CLCK_NOT_ACTIVE);
    const CodeLock *const lock = facilityLock(device, facility);
    return lock == nullptr ? Reply(Cme::OperationNotSupported)
                           : named(command, lock->isActive() ? AT_CLCK_ACTIVE : AT_CLCK_NOT_ACTIVE);
}

Reply lockFacility(Device &device, const Command &command)
{
    const std::string facility = upperCase(command.text(0));
    const std::optional<int> mode = command.number(1, AT_CLCK_UNLOCK, AT_CLCK_QUERY);
    if (!mode) return Cme::IncorrectParameters;
    if (*mode == AT_CLCK_QUERY) return queryFacility(device, command, facility);
    if (command.arguments.size() < 3) return Cme::IncorrectParameters;
    if (facility == kSimLock) return device.sim.enablePin(*mode == AT_CLCK_LOCK, command.text(2));

    CodeLock *const lock = facilityLock(device, facility);
    if (lock == nullptr) return Cme::OperationNotSupported;
    const Failure failure = lock->set(*mode == AT_CLCK_LOCK, command.text(2));
    device.reconsider();
    return failure;
}

Reply changePassword(Device &device, const Command &command)
{
    const std::string facility = upperCase(command.text(0));
    if (facility == kSimLock) return device.sim.changePin(command.text(1), command.text(2));
    CodeLock *const lock = facilityLock(device, facility);
    return lock == nullptr ? Reply(Cme::OperationNotSupported) : lock->changeCode(command.text(1), command.text(2));
}

constexpr int kPin2Tries = 3; // the second PIN is out of use
constexpr int kPuk2Tries = 10;

Reply attemptsBySelector(Device &device, const Command &command)
{
    const std::optional<int> selector = command.number(0, 0, 3);
    if (!selector) return Cme::IncorrectParameters;
    const int tries[] = {device.sim.pinTries(), kPin2Tries, device.sim.pukTries(), kPuk2Tries};
    return named(command, tries[*selector]);
}

Reply fourAttempts(Device &device, const Command &command)
{
    return named(command, device.sim.pinTries(), ',', kPin2Tries, ',', device.sim.pukTries(), ',', kPuk2Tries);
}

Reply twoAttempts(Device &device, const Command &command)
{
    return named(command, device.sim.pinTries(), ',', device.sim.pukTries());
}

Reply cardMode(Device &device, const Command &command)
{
    return named(command, device.sim.settings().isUsim ? 1 : 0);
}

} // namespace

CommandRows pinCommands()
{
    constexpr auto kCard = Needs::Card;
    return {
        {"+CPIN", Form::Read, kEvery, kCard, Pace::Quick, readPinState},
        {"+CPIN", Form::Set, kEvery, kCard, Pace::Sim, enterPin},
        test("+CPIN", kEvery, ""),
        {"+CLCK", Form::Set, kEvery, Needs::Pin, Pace::Sim, lockFacility},
        test("+CLCK", kEvery, "(\"SC\",\"PN\",\"PS\",\"FD\",\"AO\",\"OI\",\"AI\")"),
        {"+CPWD", Form::Set, kEvery, Needs::Pin, Pace::Sim, changePassword},
        test("+CPWD", kEvery, "(\"SC\",8),(\"PN\",8),(\"PS\",8),(\"FD\",8),(\"AO\",4),(\"OI\",4),(\"AI\",4)"),
        {"+XX", Form::Set, kSpreadtrum, kCard, Pace::Quick, attemptsBySelector},
        {"+EPINC", Form::Read, kMtk, kCard, Pace::Quick, fourAttempts},
        {"+CARDMODE", Form::Execute, kTsp, kCard, Pace::Quick, cardMode},
        {"+ZRAP", Form::Read, kTsp, kCard, Pace::Quick, fourAttempts},
        {"+ZPINPUK", Form::Test, kQualcomm | kDefault, kCard, Pace::Quick, twoAttempts},
    };
}

} // namespace simulator

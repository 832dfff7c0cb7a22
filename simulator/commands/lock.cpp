// The network lock, the control key of the device.
#include "simulator/commands/command_table.h"

namespace simulator {
namespace {

Reply lockState(Device &device, const Command &command)
{
    constexpr int kInitialised = 2;
    return named(command, kInitialised, ',', device.networkLock.isActive() ? 1 : 0);
}

Reply unlock(Device &device, const Command &command)
{
    if (!device.networkLock.isActive()) return Cme::OperationNotAllowed;
    const Failure failure = device.networkLock.set(false, command.text(0));
    device.reconsider();
    return failure;
}

Reply attemptsLeft(Device &device, const Command &command)
{
    return named(command, device.networkLock.triesLeft());
}

Reply hardLock(Device &device, const Command &command)
{
    return named(command, device.networkLock.isStuck() ? 1 : 0, ',', device.networkLock.isActive() ? 0 : 1);
}

/** A group for each category: network, network subset, service provider, corporate, SIM. Only the first is in use. */
Reply categories(Device &device, const Command &command)
{
    constexpr int kCategories = 5;
    constexpr int kLocked = 1;
    constexpr int kUnlocked = 2;
    constexpr int kUnusedTries = 5;
    constexpr int kUnlockTries = 10;
    std::string groups;
    for (int category = 0; category < kCategories; ++category) {
        const bool isLocked = category == 0 && device.networkLock.isActive();
        const int tries = category == 0 ? device.networkLock.triesLeft() : kUnusedTries;
        groups += concat(category == 0 ? "(" : ",(", category, ',', isLocked ? kLocked : kUnlocked, ',', tries, ',',
                         kUnlockTries, ')');
    }
    return named(command, groups);
}

Reply changeCategory(Device &device, const Command &command)
{
    constexpr int kUnlock = 0;
    constexpr int kLock = 1;
    const std::optional<int> category = command.number(0, 0, 4);
    const std::optional<int> operation = command.number(1, kUnlock, kLock);
    if (!category || !operation) return Cme::IncorrectParameters;
    if (*category != 0) return Cme::OperationNotSupported;
    const Failure failure = device.networkLock.set(*operation == kLock, command.text(2));
    device.reconsider();
    return failure;
}

} // namespace

CommandRows lockCommands()
{
    constexpr Families kOwnCommands = kQualcomm | kTsp | kDefault;
    constexpr auto kFree = Needs::Nothing;
    return {
        {"+ZSEC", Form::Read, kOwnCommands, kFree, Pace::Quick, lockState},
        {"+ZNCK", Form::Read, kOwnCommands, kFree, Pace::Quick, attemptsLeft},
        {"+ZNCK", Form::Set, kOwnCommands, kFree, Pace::Sim, unlock},
        {"+ZLOCK", Form::Read, kOwnCommands, kFree, Pace::Quick, hardLock},
        {"+SPSIMLOCKINFO", Form::Execute, kSpreadtrum, kFree, Pace::Quick, attemptsLeft},
        {"+ESMLCK", Form::Read, kMtk, kFree, Pace::Quick, categories},
        {"+ESMLCK", Form::Set, kMtk, kFree, Pace::Sim, changeCategory},
    };
}

} // namespace simulator

// Settings of the device that the radio does not care about.
#include "simulator/commands/command_table.h"

namespace simulator {
namespace {

Reply readOperationMode(Device &device, const Command &command)
{
    return named(command, device.stored.operationMode);
}

Reply setOperationMode(Device &device, const Command &command)
{
    const std::optional<int> mode = command.number(0);
    if (!mode) return Cme::IncorrectParameters;
    device.stored.operationMode = *mode;
    return {};
}

Reply setNamed(Device &device, const Command &command)
{
    const std::optional<int> value = command.number(1);
    if (command.text(0).empty() || !value) return Cme::IncorrectParameters;
    device.stored.named[std::string(command.text(0))] = *value;
    return named(command, quoted(command.text(0)), ',', *value);
}

Reply controlUpdate(Device & /*device*/, const Command &command)
{
    constexpr int kDone = 0;
    const std::optional<int> type = command.number(0);
    return type ? named(command, *type, ',', kDone) : Reply(Cme::IncorrectParameters);
}

/** *prop=NAME,PERSISTENT,VALUE */
Reply setProperty(Device &device, const Command &command)
{
    if (command.text(0).empty() || command.text(2).empty()) return Cme::IncorrectParameters;
    device.stored.properties[std::string(command.text(0))] = command.text(2);
    return {};
}

} // namespace

CommandRows deviceCommands()
{
    constexpr auto kFree = Needs::Nothing;
    return {
        {"+ZOPRT", Form::Read, kEvery, kFree, Pace::Quick, readOperationMode},
        {"+ZOPRT", Form::Set, kEvery, kFree, Pace::Quick, setOperationMode},
        {"+ZSET", Form::Set, kEvery, kFree, Pace::Quick, setNamed},
        {"+FOTACTR", Form::Set, kEvery, kFree, Pace::Quick, controlUpdate},
        {"*PROP", Form::Set, kDefault, kFree, Pace::Quick, setProperty},
    };
}

} // namespace simulator

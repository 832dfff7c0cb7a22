// What is written on the SIM.
#include "simulator/commands/command_table.h"

namespace simulator {
namespace {

Reply imsi(Device &device, const Command & /*command*/)
{
    return device.sim.settings().imsi;
}

Reply ownNumber(Device &device, const Command &command)
{
    constexpr int kNational = 129;
    const std::string &number = device.sim.settings().number;
    return number.empty() ? Reply() : named(command, quoted("Own"), ',', quoted(number), ',', kNational);
}

Reply accessFile(Device &device, const Command &command)
{
    SimAccess access;
    const std::optional<int> code = command.number(0);
    if (!code) return Cme::IncorrectParameters;
    access.command = *code;
    access.file = command.number(1).value_or(0);
    access.offset = 256 * command.number(2).value_or(0) + command.number(3).value_or(0);
    access.length = command.number(4).value_or(0);
    access.data = command.text(5);
    const SimAnswer answer = device.sim.access(access);
    const std::string words = concat(answer.sw1, ',', answer.sw2);
    return answer.data.empty() ? named(command, words) : named(command, words, ',', quoted(answer.data));
}

} // namespace

CommandRows simFileCommands()
{
    return {
        {"+CIMI", Form::Execute, kEvery, Needs::Pin, Pace::Quick, imsi},
        {"+CNUM", Form::Execute, kEvery, Needs::Pin, Pace::Quick, ownNumber},
        {"+CRSM", Form::Set, kEvery, Needs::Card, Pace::Quick, accessFile},
        test("+CRSM", kEvery, ""),
    };
}

} // namespace simulator

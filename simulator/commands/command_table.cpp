#include "simulator/commands/command_table.h"

#include <iterator>

#include "host/at/text.h"

namespace simulator {
namespace {

Reply refuse(Family family)
{
    Reply reply;
    switch (host::family::rowOf(family).refusal) {
    case Refusal::Error:
        reply.end = Reply::End::Error;
        break;
    case Refusal::CmeError:
        reply = Cme::OperationNotSupported;
        break;
    case Refusal::NotSupport:
        reply.end = Reply::End::NotSupport;
        break;
    }
    return reply;
}

} // namespace

const CommandRows &allCommands()
{
    static const CommandRows all = [] {
        CommandRows rows;
        for (const auto topic : {basicCommands, pinCommands, simFileCommands, lockCommands, registrationCommands,
                                 operatorCommands, radioModeCommands, signalCommands, pdpCommands, deviceCommands}) {
            const CommandRows more = topic();
            rows.insert(rows.end(), more.begin(), more.end());
        }
        return rows;
    }();
    return all;
}

const CommandRow *findCommand(const Command &command)
{
    for (const CommandRow &row : allCommands()) {
        if (row.name == command.name && row.form == command.form) return &row;
    }
    return nullptr;
}

Reply answer(Device &device, const Command &command)
{
    const CommandRow *const row = findCommand(command);
    if (row == nullptr || !contains(row->families, device.family)) return refuse(device.family);
    if (const Failure obstacle = device.obstacle(row->needs)) return *obstacle;
    if (row->answer == nullptr) return row->values.empty() ? Reply() : named(command, row->values);
    return row->answer(device, command);
}

std::string textOf(const CommandRow &row)
{
    constexpr std::string_view kEndings[] = {"", "?", "=?", "=", ""};
    const bool isBasic = !host::at::isSign(row.name.front());
    return concat("AT", row.name, isBasic ? "" : kEndings[static_cast<size_t>(row.form)]);
}

} // namespace simulator

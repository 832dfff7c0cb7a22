/** Which commands there are, which families know them, and what answers them. */
#ifndef SIMULATOR_COMMANDS_COMMAND_TABLE_H
#define SIMULATOR_COMMANDS_COMMAND_TABLE_H

#include <string>
#include <string_view>
#include <vector>

#include "simulator/command_line.h"
#include "simulator/device.h"
#include "simulator/family.h"
#include "simulator/reply.h"
#include "simulator/text.h"

namespace simulator {

/** How long a command takes, and whether a character ends it: those that search for networks can be aborted. */
enum class Pace : uint8_t { Quick, Sim, Power, Select, Scan };

struct CommandRow {
    std::string_view name;
    Form form;
    Families families;
    Needs needs;
    Pace pace;
    Reply (*answer)(Device &, const Command &);
    std::string_view values = {}; ///< of a test: the answer behind the name and ": "
};

constexpr Families kQualcomm = only(Family::Qualcomm);
constexpr Families kMtk = only(Family::Mtk);
constexpr Families kTsp = only(Family::Tsp);
constexpr Families kSpreadtrum = only(Family::Spreadtrum);
constexpr Families kDefault = only(Family::Default);
constexpr Families kEvery = kEveryFamily;

using CommandRows = std::vector<CommandRow>;
CommandRows basicCommands();
CommandRows deviceCommands();
CommandRows lockCommands();
CommandRows operatorCommands();
CommandRows pdpCommands();
CommandRows pinCommands();
CommandRows radioModeCommands();
CommandRows registrationCommands();
CommandRows signalCommands();
CommandRows simFileCommands();

const CommandRows &allCommands();

/** @return null if no family knows the command in this form */
const CommandRow *findCommand(const Command &command);
Pace paceOf(const CommandRow &row, const Command &command);
/** Runs a command: refuses what the family does not know and what cannot work now. */
Reply answer(Device &device, const Command &command);

/** As it is typed: "AT+CREG?", "AT+CPIN=". */
std::string textOf(const CommandRow &row);

/** The answer to a test whose values do not change. */
constexpr CommandRow test(std::string_view name, Families families, std::string_view values)
{
    return {name, Form::Test, families, Needs::Nothing, Pace::Quick, nullptr, values};
}

/** "+CSQ: " and what follows, by the name of the command. */
template <typename... Parts>
Reply named(const Command &command, const Parts &...parts)
{
    return concat(command.name, ": ", parts...);
}

} // namespace simulator

#endif

/** The commands by topic; commands() joins them. */
#ifndef KRCTL_COMMANDS_COMMANDS_H
#define KRCTL_COMMANDS_COMMANDS_H

#include <span>

#include "krctl/commands/command.h"

namespace krctl {

std::span<const Command> statusCommands();
std::span<const Command> deviceCommands();
std::span<const Command> simCommands();
std::span<const Command> netStatusCommands();
std::span<const Command> netSelectionCommands();
std::span<const Command> signalCommands();
std::span<const Command> cellCommands();
std::span<const Command> lockCommands();
std::span<const Command> facilityCommands();
std::span<const Command> dataCommands();
std::span<const Command> powerCommands();
std::span<const Command> settingsCommands();
std::span<const Command> watchCommands();
std::span<const Command> atCommands();
std::span<const Command> traceCommands();

} // namespace krctl

#endif

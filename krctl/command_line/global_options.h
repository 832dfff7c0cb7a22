/** The options of every command as data, like the commands: what the parser, the help, the completion and the tests read. */
#ifndef KRCTL_COMMAND_LINE_GLOBAL_OPTIONS_H
#define KRCTL_COMMAND_LINE_GLOBAL_OPTIONS_H

#include <span>

#include "krctl/commands/command.h"

namespace krctl {

/** All of them, in the order of the help. */
std::span<const Parameter> globalOptions();

extern const Parameter kJson;
extern const Parameter kKeyValue;
extern const Parameter kNoColour;
extern const Parameter kSocket;
extern const Parameter kPlatform;
extern const Parameter kVersion;
extern const Parameter kHelp;

} // namespace krctl

#endif

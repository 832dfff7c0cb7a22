#include "krctl/command_line/global_options.h"

#include <array>

#include "host/protocol/at_protocol.h"
#include "krctl/session/session.h"

namespace krctl {

using Kind = Parameter::Kind;

const Parameter kJson{.name = "--json",
                      .help = "one JSON object, as krctl.schema.json describes it",
                      .kind = Kind::Flag,
                      .shortName = "-J"};
const Parameter kKeyValue{.name = "--key-value", .help = "lines of key=value", .kind = Kind::Flag, .shortName = "-K"};
const Parameter kNoColour{.name = "--no-color", .help = "no colours, whatever the terminal can do", .kind = Kind::Flag};
const Parameter kSocket{.name = "--socket",
                        .help = "socket of kr-at-server",
                        .valueName = "PATH",
                        .variable = host::protocol::kSocketVariable};
const Parameter kPlatform{.name = kPlatformOption,
                          .help = "family of the modem",
                          .choices = kPlatforms,
                          .valueName = "NAME",
                          .variable = kPlatformVariable};
const Parameter kVersion{.name = "--version", .help = "the version", .kind = Kind::Flag};
const Parameter kHelp{.name = "--help", .help = "this help", .kind = Kind::Flag, .shortName = "-h"};

std::span<const Parameter> globalOptions()
{
    static const std::array all{kJson, kKeyValue, kNoColour, kSocket, kPlatform, kVersion, kHelp};
    return all;
}

} // namespace krctl

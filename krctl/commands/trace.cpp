#include "krctl/commands/trace.h"

#include <array>

#include "krctl/commands/commands.h"

namespace krctl {
namespace {

constexpr std::array kParameters{kTranscript};

constexpr std::array kCommands{
    Command{.path = "trace record",
            .help = "write what goes over the port to a file",
            .examples = "krctl trace record modem.jsonl -- status\nkrctl trace record modem.jsonl",
            .parameters = kParameters,
            .run = recordTrace,
            .takesRest = true},
    Command{.path = "trace replay",
            .help = "run a krctl command, or a shell, against a recorded modem",
            .examples = "krctl trace replay modem.jsonl -- status\nkrctl trace replay modem.jsonl",
            .parameters = kParameters,
            .run = replayTrace,
            .takesRest = true,
            .needsServer = false},
};

} // namespace

std::span<const Command> traceCommands()
{
    return kCommands;
}

} // namespace krctl

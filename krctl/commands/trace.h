/** Recording what goes over the modem's port, and a modem that answers from such a record. */
#ifndef KRCTL_COMMANDS_TRACE_H
#define KRCTL_COMMANDS_TRACE_H

#include "krctl/commands/command.h"

namespace krctl {

constexpr Parameter kTranscript{.name = "FILE", .help = "the transcript, one JSON object a line"};

/** Records while another krctl runs, or until Ctrl-C. */
Report recordTrace(Context &context);

/** Runs another krctl, or a shell, against a simulator that answers from a transcript. */
Report replayTrace(Context &context);

} // namespace krctl

#endif

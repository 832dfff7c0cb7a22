/** What the PIN operations have in common: the state before, the tries left before and after, and the last one, which is
 *  not spent unasked. */
#ifndef KRCTL_COMMANDS_PIN_OPERATION_H
#define KRCTL_COMMANDS_PIN_OPERATION_H

#include <cstdint>
#include <optional>

#include "krctl/commands/command.h"
#include "krctl/commands/secret_input.h"
#include "krctl/output/report.h"
#include "krctl/values/sim_states.h"

namespace krctl {

constexpr Parameter kForce{
    .name = "--force", .help = "spend the last try too, or one of an unknown number", .kind = Parameter::Kind::Flag};

struct PinOperation {
    const char *purpose;        ///< behind "to"
    const char *function;       ///< of the library
    const char *command;        ///< the AT command that changes something, up to its "="
    const char *sentence;       ///< when it is done
    const char *isDone;         ///< when there is nothing to do; NULL if there always is
    SimState needs;             ///< before
    std::optional<bool> lock{}; ///< whether the PIN lock has to be on, of a SIM that is ready
    const SecretForm *first;
    bool hasNewPin = false;
    bool countsPuk = false; ///< a wrong entry costs a try of the PUK
    uint32_t (*run)(const char *first, const char *newPin, int32_t *pinTries, int32_t *pukTries) = nullptr;
};

Report runPinOperation(Context &context, const PinOperation &operation);

/** Throws a Failure unless a try may be spent.
 *  @param name  "PIN", "PUK", "unlock code" */
void guardTries(const Context &context, const char *name, std::optional<int64_t> tries);

} // namespace krctl

#endif

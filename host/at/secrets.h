/** Which commands and replies carry secrets (PIN, PUK, passwords, lock codes) and identities (IMSI, IMEI, ICCID, own
 *  number), and where in them. The one place to add such a command to: masking and the guard of raw commands read it. */
#ifndef HOST_AT_SECRETS_H
#define HOST_AT_SECRETS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "host/at/command_line.h"

namespace host::at {

enum class Kind { Nothing, Secret, Identity };

/** Arguments, counted from 1. */
struct Range {
    Kind kind = Kind::Nothing;
    int first = 0;
    int last = 0;
};

struct CommandRule {
    std::string_view name; ///< in capitals, without its sign
    Range whenSet;         ///< in AT+NAME=...
    Range whenTold;        ///< in +NAME: ..., and without its name in the reply to AT+NAME
    bool hasQuery = false; ///< set with two arguments, the second of them 2, it asks
};

/** @return nullptr for a name without anything to hide */
const CommandRule *ruleFor(const Mention &mention);

/** Whether a command line enters or changes a PIN, a PUK, a password or a lock, in any of its commands or by dialling. A
 *  query of a facility lock does not. */
bool changesSecrets(std::string_view commandLine);

/** Codes that are dialled: "**04*old*new*new#" and its like change a PIN, "**03*" a password. */
struct DialledCode {
    size_t begin; ///< behind "**0"
    size_t end;   ///< of the code
};
std::optional<DialledCode> findDialledCode(std::string_view text, size_t from);

/** Whether a file of the SIM, read with +CRSM, says nothing about who the subscriber is. */
bool isHarmlessFile(uint32_t file);

} // namespace host::at

#endif

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
    bool sparesWords = false; ///< only those are hidden that look like a code, a number or a name

    constexpr bool has(int number) const { return kind != Kind::Nothing && number >= first && number <= last; }
};

struct CommandRule {
    std::string_view name; ///< in capitals, without its sign
    Range whenSet;         ///< in AT+NAME=...
    Range whenTold;        ///< in +NAME: ..., and without its name in the reply to AT+NAME
    bool hasQuery = false; ///< set with two arguments, the second of them 2, it asks
    bool hasTexts = false; ///< what it tells goes on in lines without a name: messages
};

/** @return nullptr for a name without anything to hide */
const CommandRule *ruleFor(const Mention &mention);
/** @param name  in capitals, with its sign, whichever that is */
const CommandRule *ruleNamed(std::string_view name);

/** Whether a command line enters or changes a PIN, a PUK, a password or a lock, in any of its commands or by dialling. A
 *  query of a facility lock does not. */
bool changesSecrets(std::string_view commandLine);

/** What is dialled to reach the card or the network: stars, hashes and digits, perhaps with blanks among them. */
struct DialledCode {
    size_t begin;
    size_t end;
    bool changesSecrets; ///< "**04*old*new*new#" and its like change a PIN, "**03*" a password
};
std::optional<DialledCode> findDialledCode(std::string_view text, size_t from);

/** Whether a file of the SIM, read with +CRSM, says nothing about who the subscriber is. */
bool isHarmlessFile(uint32_t file);

} // namespace host::at

#endif

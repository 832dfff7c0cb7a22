/** Who made the modem, what it is, and whose SIM is in it. */
#ifndef KRCTL_COMMANDS_IDENTITY_H
#define KRCTL_COMMANDS_IDENTITY_H

#include <cstdint>
#include <string>

#include "krctl/session/session.h"

namespace krctl {

/** One of the identity functions.
 *  @param item  what is missing if the modem does not tell it
 *  @return empty, and remembered as missing, if it does not, or tells what is none */
std::string identity(Session &session, ItemKind kind, uint32_t (*getter)(int32_t, char *), const std::string &item);

} // namespace krctl

#endif

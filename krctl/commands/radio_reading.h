/** Whether the radio is on. */
#ifndef KRCTL_COMMANDS_RADIO_READING_H
#define KRCTL_COMMANDS_RADIO_READING_H

#include <cstdint>
#include <optional>

#include "krctl/session/session.h"

namespace krctl {

/** @return the level of +CFUN; nothing, and remembered as missing, if the modem does not tell */
std::optional<int32_t> readRadio(Session &session);

} // namespace krctl

#endif

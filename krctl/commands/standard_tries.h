/** The tries left as 3GPP TS 27.007 8.65 has them (+CPINR), for modems that lack their vendor's command. */
#ifndef KRCTL_COMMANDS_STANDARD_TRIES_H
#define KRCTL_COMMANDS_STANDARD_TRIES_H

#include <cstdint>
#include <optional>
#include <string_view>

namespace krctl {

struct StandardTries {
    std::optional<int64_t> pin;
    std::optional<int64_t> puk;
};

/** @param reply  lines such as "+CPINR: SIM PIN,3,3" */
StandardTries standardTriesOf(std::string_view reply);

/** Asks the modem. AT+CPINR (5000 ms). */
StandardTries readStandardTries();

} // namespace krctl

#endif

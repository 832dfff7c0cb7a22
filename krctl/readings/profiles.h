/** Packet data profiles as +CGDCONT tells them, 3GPP TS 27.007 10.1.1. */
#ifndef KRCTL_READINGS_PROFILES_H
#define KRCTL_READINGS_PROFILES_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace krctl {

struct Profile {
    int32_t cid = 0;
    std::string type; ///< each text is empty if it was not told
    std::string apn;
    std::string address;
};

/** @param reply  to AT+CGDCONT? */
std::vector<Profile> profilesOf(std::string_view reply);

} // namespace krctl

#endif

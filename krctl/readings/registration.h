/** Registration as +CREG, +CGREG, +CEREG and +C5GREG tell it, in replies and reports: 3GPP TS 27.007 7.2, 10.1.20, 10.1.22
 *  and 10.1.47. A place is hexadecimal; where a routing area stands between area and cell, the cell comes behind it. */
#ifndef KRCTL_READINGS_REGISTRATION_H
#define KRCTL_READINGS_REGISTRATION_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace krctl {

struct Registration {
    std::optional<int32_t> reports; ///< which reports are on; not told by reports
    std::optional<int32_t> state;
    std::string area;
    std::string cell;
    std::optional<int32_t> technology;
    std::optional<int32_t> epsRejectCause; ///< of an LTE registration that was refused, as 3GPP TS 24.301 numbers it
};

/** @param reply  to the read command; its lines may have lost their name */
Registration registrationOfReply(std::string_view reply);

/** @param line  a report, which begins with the state, or with the mode of reports as in a reply */
Registration registrationOfReport(std::string_view line);

} // namespace krctl

#endif

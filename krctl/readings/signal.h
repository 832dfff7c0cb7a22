/** The codes of +CSQ and +CESQ, 3GPP TS 27.007 8.5 and 8.69, as they stand in replies. */
#ifndef KRCTL_READINGS_SIGNAL_H
#define KRCTL_READINGS_SIGNAL_H

#include <cstdint>
#include <optional>
#include <string_view>

namespace krctl {

/** @param reply  to AT+CSQ */
std::optional<int32_t> csqOf(std::string_view reply);

struct ExtendedSignal {
    std::optional<int32_t> rxlev;
    std::optional<int32_t> rscp;
    std::optional<int32_t> ecno;
    std::optional<int32_t> rsrq;
    std::optional<int32_t> rsrp;
};
/** @param reply  to AT+CESQ */
ExtendedSignal extendedSignalOf(std::string_view reply);

} // namespace krctl

#endif

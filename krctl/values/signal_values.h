/** Signal figures: from the coded values of +CSQ and +CESQ (3GPP TS 27.007 8.5 and 8.69) to dBm and dB, and from there to
 *  words. A coded value stands for a range, of which the lower end is given. */
#ifndef KRCTL_VALUES_SIGNAL_VALUES_H
#define KRCTL_VALUES_SIGNAL_VALUES_H

#include <cstdint>
#include <optional>

#include "krctl/output/report.h"

namespace krctl {

// Nothing for codes that stand for unknown, or for no value at all.
std::optional<int64_t> rssiDbm(int32_t csq);   ///< 0 to 31: -113 dBm or less to -51 dBm or more
std::optional<int64_t> rxlevDbm(int32_t code); ///< 0 to 63: below -110 dBm to -48 dBm or more
std::optional<int64_t> rscpDbm(int32_t code);  ///< 0 to 96: below -120 dBm to -25 dBm or more
std::optional<double> ecnoDb(int32_t code);    ///< 0 to 49: below -24 dB to 0 dB or more
std::optional<double> rsrqDb(int32_t code);    ///< 0 to 34: below -19.5 dB to -3 dB or more
std::optional<int64_t> rsrpDbm(int32_t code);  ///< 0 to 97: below -140 dBm to -44 dBm or more

enum class Measure { Rssi, Rsrp, Rsrq, Sinr, Rscp, Ecno };

/** The ends of what a measure can be, which are the ends of its bar. */
struct Range {
    double lowest;
    double highest;
};
Range rangeOf(Measure measure);

/** @param value  nothing has no word */
Quality qualityOf(Measure measure, std::optional<double> value);

} // namespace krctl

#endif

/** How well the modem receives. */
#ifndef KRCTL_COMMANDS_SIGNAL_READING_H
#define KRCTL_COMMANDS_SIGNAL_READING_H

#include <cstdint>
#include <optional>

#include "krctl/output/report.h"
#include "krctl/session/session.h"

namespace krctl {

struct SignalReading {
    std::optional<int64_t> rssiDbm;
    std::optional<int64_t> rsrpDbm;
    std::optional<double> rsrqDb;
    std::optional<double> sinrDb;
    std::optional<int64_t> rscpDbm;
    std::optional<double> ecnoDb;
};
SignalReading readSignal(Session &session);
/** One field a measure, each with its bar. */
void addSignal(Section &section, const SignalReading &signal);

} // namespace krctl

#endif

#include "simulator/signal.h"

#include <algorithm>

#include "simulator/text.h"

namespace simulator {

Signal::Signal(const SignalSettings &settings, uint64_t seed)
    : settings_(settings), random_(seed), rssiDbm_(settings.rssiDbm)
{
}

void Signal::setRssi(int dbm)
{
    rssiDbm_ = std::clamp(dbm, settings_.weakestDbm, settings_.strongestDbm);
}

SignalFigures Signal::look()
{
    const auto choices = 2 * static_cast<uint64_t>(settings_.walkDb) + 1;
    setRssi(rssiDbm_ + static_cast<int>(random_() % choices) - settings_.walkDb);

    constexpr int kGood = -85; // from here downwards quality suffers
    const int shortfallDb = std::max(0, kGood - rssiDbm_);
    return {
        .rssiDbm = rssiDbm_,
        .rscpDbm = rssiDbm_ - 6,
        .ecIoDb = -6 - shortfallDb / 3,
        .rsrpDbm = rssiDbm_ - 24,
        .rsrqDb = -8 - shortfallDb / 3,
        .sinrDb = std::max(-10, 18 - shortfallDb),
    };
}

std::string extendedQuality(const SignalFigures &figures, std::optional<Technology> technology)
{
    int values[] = {AT_SIGNAL_UNKNOWN,          AT_SIGNAL_UNKNOWN,          AT_SIGNAL_UNKNOWN_EXTENDED,
                    AT_SIGNAL_UNKNOWN_EXTENDED, AT_SIGNAL_UNKNOWN_EXTENDED, AT_SIGNAL_UNKNOWN_EXTENDED};
    if (technology == Technology::Gsm) {
        values[0] = std::clamp(figures.rssiDbm + 111, 0, 63);
        values[1] = 0;
    } else if (technology == Technology::Umts) {
        values[2] = std::clamp(figures.rscpDbm + 121, 0, 96);
        values[3] = std::clamp(2 * figures.ecIoDb + 49, 0, 49);
    } else if (technology == Technology::Lte) {
        values[4] = std::clamp(2 * figures.rsrqDb + 40, 0, 34);
        values[5] = std::clamp(figures.rsrpDbm + 141, 0, 97);
    }
    return concat(values[0], ',', values[1], ',', values[2], ',', values[3], ',', values[4], ',', values[5]);
}

} // namespace simulator

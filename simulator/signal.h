/** The strength of the signal: a walk that its seed decides, one step with each look at it. */
#ifndef SIMULATOR_SIGNAL_H
#define SIMULATOR_SIGNAL_H

#include <cstdint>
#include <optional>
#include <random>

#include "simulator/network.h"

namespace simulator {

struct SignalSettings {
    int rssiDbm = -71;
    int walkDb = 1; ///< the longest step; 0: the signal stands still
    int weakestDbm = -111;
    int strongestDbm = -51;
};

/** One look at the signal. */
struct SignalFigures {
    int rssiDbm;
    int rscpDbm;
    int ecIoDb;
    int rsrpDbm;
    int rsrqDb;
    int sinrDb;
};

class Signal {
  public:
    Signal(const SignalSettings &settings, uint64_t seed);

    /** Walks one step first. */
    SignalFigures look();
    void setRssi(int dbm);

  private:
    SignalSettings settings_;
    std::mt19937_64 random_;
    int rssiDbm_;
};

/** The six values of +CESQ: what the technology does not have is unknown, and all are without one. */
std::string extendedQuality(const SignalFigures &figures, std::optional<Technology> technology);

} // namespace simulator

#endif

/** What the SIM is waiting for, its PIN lock, and the tries left for its codes. */
#ifndef KRCTL_COMMANDS_SIM_READING_H
#define KRCTL_COMMANDS_SIM_READING_H

#include <optional>
#include <string>

#include "krctl/output/report.h"
#include "krctl/readings/sim.h"
#include "krctl/session/session.h"

namespace krctl {

struct SimReading {
    std::optional<SimState> state{};
    std::string stateText{};       ///< the modem's own words for it, be it one that is not known; empty if it told none
    std::optional<bool> pinLock{}; ///< of a SIM that is ready
    Tries tries{};

    bool isTold() const { return !stateText.empty(); }
    /** The state for people; "-" if it was not told. */
    std::string word() const;
};

/** Changes nothing. What is missing is remembered as such. */
SimReading readSim(Session &session);

/** State and tries left as fields. */
void addSimState(Section &section, const SimReading &sim);

/** What a SIM that waits for something needs next, as a note. */
void addNextStep(Report &report, const SimReading &sim);

} // namespace krctl

#endif

/** Scenarios and transcripts as files. Their formats are described in docs/simulator.md. */
#ifndef SIMULATOR_SCENARIO_FILE_H
#define SIMULATOR_SCENARIO_FILE_H

#include <string>
#include <string_view>

#include "simulator/replay.h"
#include "simulator/scenario.h"

namespace simulator {

/** @param text  JSON
 *  @param scenario  keeps the values that the text does not name
 *  @return empty if all is well, otherwise what is wrong and where: "sim.pinn: unknown key" */
std::string readScenario(std::string_view text, Scenario &scenario);

/** Reads a transcript: one JSON object a line. The last line is passed over if the end of it is missing.
 *  @param remark  out, that a line was passed over; otherwise as it was
 *  @return as readScenario(), with the number of the line */
std::string readTranscript(std::string_view lines, Replay &replay, std::string &remark);

} // namespace simulator

#endif

/** The command line of kr-modem-sim. */
#ifndef SIMULATOR_OPTIONS_H
#define SIMULATOR_OPTIONS_H

#include <cstdint>
#include <optional>
#include <string>

namespace simulator {

struct Options {
    std::string family; ///< empty: the scenario's, or Qualcomm's
    std::string scenario;
    std::string replay;
    std::string link;
    std::string control;
    uint64_t seed = 1;
    double timeScale = 1; ///< each delay is multiplied by it
    bool listsCommands = false;
};

/** @return nothing if the program is to end now, with this status */
std::optional<Options> parseOptions(int count, char **arguments, int &status);

} // namespace simulator

#endif

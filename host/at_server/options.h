/** The settings of kr-at-server: its command line, and its settings file. */
#ifndef HOST_AT_SERVER_OPTIONS_H
#define HOST_AT_SERVER_OPTIONS_H

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "host/at_server/access.h"
#include "host/at_server/second_question.h"
#include "host/at_server/server_log.h"
#include "host/at_server/transcript.h"
#include "host/family/family.h"

namespace host::at_server {

using family::Family;

struct Options {
    std::string device;
    unsigned baud = 115200;
    std::string socket;
    std::string group; ///< empty: none
    std::vector<Allowance> allowances;
    std::optional<Family> family; ///< nothing: the modem is asked
    RecordSettings record;
    LogLevel logLevel = LogLevel::Info;
    bool echo = true;
    std::chrono::milliseconds quiet{200};
    std::chrono::milliseconds answer{1000};
    std::chrono::milliseconds linger{2000};
    std::chrono::milliseconds longestTimeout{3600000};
    std::chrono::milliseconds codeWait{1000}; ///< behind the first code that was refused
    std::chrono::milliseconds idle{10000};
    Capitals capitals = Capitals::AsNeeded;
};

/** Prints what --help and --version ask for, and what is wrong with the arguments.
 *  @param exitStatus  out, what the program ends with if nothing is returned */
std::optional<Options> readOptions(int argc, char **argv, int &exitStatus);

} // namespace host::at_server

#endif

/** What a simulated modem is and what goes wrong with it. The defaults are a modem at home with a good signal. */
#ifndef SIMULATOR_SCENARIO_H
#define SIMULATOR_SCENARIO_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/code_lock.h"
#include "simulator/fault.h"
#include "simulator/network.h"
#include "simulator/pdp.h"
#include "simulator/signal.h"
#include "simulator/sim_card.h"

namespace simulator {

/** Empty texts are the family's own. */
struct Identity {
    std::string manufacturer;
    std::string model;
    std::string firmware;
    std::string hardware;
    std::string imei = "861234567890123";
    std::string serial = "KR0000000001";
};

/** Milliseconds of modem time. */
struct Timing {
    int commandMs = 0;
    int scanMs = 12000;
    int selectMs = 1500;                              ///< AT+COPS to another network
    int simMs = 50;                                   ///< commands that change something on the SIM or try a code
    int powerMs = 300;                                ///< AT+CFUN
    int registrationMs = 1000;                        ///< from the search to the network
    std::map<std::string, int, std::less<>> commands; ///< by upper-case beginning of a line; these come first
};

struct Scenario {
    std::string family; ///< its name; empty: as on the command line
    Identity identity;
    SimSettings sim;
    LockSettings networkLock;
    std::map<std::string, LockSettings, std::less<>> facilities; ///< by the two letters of AT+CLCK
    std::vector<Operator> operators;
    SignalSettings signal;
    PdpContexts contexts;
    Timing timing;
    std::vector<Fault> faults;
    bool echo = false;
    int cmee = AT_CMEE_TEXTS;

    Scenario();
};

} // namespace simulator

#endif

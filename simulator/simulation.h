/** A modem with a port, a clock and someone who tells it what happens to it. */
#ifndef SIMULATOR_SIMULATION_H
#define SIMULATOR_SIMULATION_H

#include <chrono>
#include <string>
#include <string_view>

#include "host/event_loop/event_loop.h"
#include "simulator/modem.h"
#include "simulator/pty.h"

namespace simulator {

class Simulation {
  public:
    struct Settings {
        Family family = Family::Qualcomm;
        uint64_t seed = 1;
        double timeScale = 1;
        std::string link;
        std::string control; ///< path of the FIFO; empty: none
    };

    Simulation(host::EventLoop &loop, const Settings &settings, const Scenario &scenario, Replay *replay);
    ~Simulation();
    Simulation(const Simulation &) = delete;
    Simulation &operator=(const Simulation &) = delete;

    /** Opens FIFO and port, and prints the port's path.
     *  @return empty, or what cannot be opened */
    std::string start();

  private:
    int64_t modemMs() const;
    void catchUp();
    void scheduleNext();
    void plug(bool plugged);
    bool openPort();
    bool openControl();
    void readControl();

    host::EventLoop &loop_;
    const Settings settings_;
    const std::chrono::steady_clock::time_point started_ = std::chrono::steady_clock::now();
    Pty pty_;
    Modem modem_;
    host::Timer timer_;
    int controlFile_ = -1;
    std::string controlText_;
    host::ReadWatch controlWatch_;
};

} // namespace simulator

#endif

/** The modem at its port: bytes come in, bytes go out in modem time. It knows no file and no clock, so that tests run it
 *  as fast as they like, and equal input gives equal output. */
#ifndef SIMULATOR_MODEM_H
#define SIMULATOR_MODEM_H

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/commands/command_table.h"
#include "simulator/device.h"
#include "simulator/fault.h"
#include "simulator/replay.h"
#include "simulator/scheduler.h"

namespace simulator {

/** Where the bytes go, and who hears that the modem's plug is pulled. */
struct Port {
    std::function<void(std::string_view bytes)> write;
    std::function<void(bool plugged)> plug = [](bool /*plugged*/) {};
};

class Modem {
  public:
    static constexpr size_t kMaxLine = 2048;

    /** Powered up and plugged in.
     *  @param replay  null, or a transcript that answers in the place of the modem; outlives it */
    Modem(Family family, const Scenario &scenario, uint64_t seed, Port port, Replay *replay = nullptr);

    void receive(std::string_view bytes);

    /** Runs what is due up to a time, in ms since power-up. */
    void advanceTo(int64_t timeMs) { scheduler_.advanceTo(timeMs); }
    int64_t nowMs() const { return scheduler_.nowMs(); }
    /** When something is due next; nothing if nothing is before more bytes arrive. */
    std::optional<int64_t> nextMs() const { return scheduler_.nextMs(); }

    /** A line that the modem says by itself. */
    void report(const std::string &line);
    /** @param forMs  until it is plugged in again, with its power; below 0: until plug() */
    void unplug(int forMs);
    void plug();
    bool isPlugged() const { return isPlugged_; }
    /** The other side has closed the port: what is half said is forgotten. */
    void hangUp();

    Device &device() { return device_; }

  private:
    /** A line of commands on its way to its one final result. */
    struct Running {
        std::string line;
        std::vector<Command> commands;
        size_t next = 0;
        std::vector<std::string> lines;
        std::optional<Scheduler::Task> wait;
        bool isAbortable = false;
    };

    void work();
    void takeCharacter(char character);
    void start(const std::string &line);
    void startReplay(const std::string &line);
    void step();
    void runNext();
    void abort();
    void finish(const Reply &last);
    void reply(const std::string &line, const std::string &text);
    void emit(std::vector<Piece> pieces);
    void emitNext();
    void idle();
    void restart();
    int delayOf(const Running &running, const Command &command) const;

    Scheduler scheduler_;
    Port port_;
    Device device_;
    FaultPlan faults_;
    Replay *replay_;
    std::string inbox_; ///< received while something runs
    std::string line_;
    bool isOverlong_ = false;
    std::string echo_;
    std::optional<Running> running_;
    std::deque<Piece> outbox_;       ///< of the reply that is being given
    std::vector<std::string> saved_; ///< reports that come while a command is being carried out
    bool isAnswering_ = false;
    bool isPlugged_ = true;
    uint64_t powerCycle_ = 0;
};

} // namespace simulator

#endif

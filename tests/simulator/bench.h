#ifndef TESTS_SIMULATOR_BENCH_H
#define TESTS_SIMULATOR_BENCH_H

#include <string>
#include <string_view>
#include <vector>

#include "simulator/modem.h"

/** A modem on a bench: no port, no clock, everything that it says kept. */
namespace bench {

using simulator::Family;
using simulator::Scenario;

inline std::vector<Family> everyFamily()
{
    std::vector<Family> families;
    families.reserve(host::family::kRows.size());
    for (const host::family::Row &row : host::family::kRows)
        families.push_back(row.family);
    return families;
}

class Bench {
  public:
    explicit Bench(Family family = Family::Qualcomm, const Scenario &scenario = {}, uint64_t seed = 1,
                   simulator::Replay *replay = nullptr)
        : modem(family, scenario, seed,
                {[this](std::string_view bytes) {
                     said_ += bytes;
                     writes.emplace_back(bytes);
                 },
                 [this](bool plugged) { said_ += plugged ? "<plugged>" : "<unplugged>"; }},
                replay)
    {
    }

    /** Sends a line, lets everything happen that it leads to, and gives what the modem has said. */
    std::string send(const std::string &line)
    {
        modem.receive(line + '\r');
        return settle();
    }

    /** Lets everything happen that is under way. */
    std::string settle()
    {
        while (modem.nextMs())
            modem.advanceTo(*modem.nextMs());
        return said();
    }

    /** Lets time pass. */
    std::string wait(int64_t ms)
    {
        modem.advanceTo(modem.nowMs() + ms);
        return said();
    }

    /** What the modem has said since the last look. */
    std::string said()
    {
        writes.clear();
        return std::exchange(said_, {});
    }

    std::vector<std::string> writes; ///< the same in the pieces in which it came

  private:
    std::string said_;

  public:
    simulator::Modem modem;
};

/** A reply in standard framing. */
inline std::string framed(const std::vector<std::string> &lines, const std::string &finalResult = "OK")
{
    std::string text = lines.empty() ? "" : "\r\n";
    for (const std::string &line : lines)
        text += line + "\r\n";
    return text + "\r\n" + finalResult + "\r\n";
}

inline std::string ok()
{
    return framed({});
}

inline std::string refused(const std::string &why)
{
    return framed({}, "+CME ERROR: " + why);
}

inline std::string reports(const std::vector<std::string> &lines)
{
    std::string text;
    for (const std::string &line : lines)
        text += "\r\n" + line + "\r\n";
    return text;
}

inline Scenario pinLocked()
{
    Scenario scenario;
    scenario.sim.isPinEnabled = true;
    return scenario;
}

} // namespace bench

#endif

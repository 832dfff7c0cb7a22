// Explores all that can happen between clients, the dialogue and a modem, up to a number of steps, and says how it came to
// what must not happen.
// usage: host_at_server_exploration [--steps N] [--deviations N] [--script NAME]
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <CLI/CLI.hpp>

#include "host/at_server/server_log.h"
#include "tests/host/at_server/exploration/arena.h"
#include "tests/host/at_server/exploration/world.h"

using namespace exploration;

namespace {

struct HashOfHash {
    size_t operator()(const Hash &hash) const { return static_cast<size_t>(hash.low); }
};

struct Limits {
    size_t steps = 10;
    size_t deviations = 2; ///< of modem and clients from what is usual
};

class Explorer {
  public:
    Explorer(const Script &script, bool canEcho, const Limits &limits) : limits_(limits), snapshots_(limits.steps + 2)
    {
        const InArena open;
        world_ = new World(script, canEcho); // stays in the arena, which is put back
    }

    bool isGood()
    {
        explore(limits_.steps, limits_.deviations);
        return violation_.empty();
    }

    size_t states() const { return seen_.size(); }
    size_t steps() const { return steps_; }
    const std::string &violation() const { return violation_; }

  private:
    void explore(size_t stepsLeft, size_t deviationsLeft);
    bool isNew(size_t stepsLeft, size_t deviationsLeft);
    void tryToBehave(size_t stepsLeft);
    void note();

    const Limits limits_;
    World *world_;
    std::unordered_map<Hash, uint8_t, HashOfHash> seen_;
    std::vector<Snapshot> snapshots_;
    std::vector<Action> path_;
    StateWriter writer_;
    size_t steps_ = 0;
    std::string violation_;
};

/** Or was met with fewer steps left. */
bool Explorer::isNew(size_t stepsLeft, size_t deviationsLeft)
{
    writer_.clear();
    world_->writeState(writer_);
    writer_(deviationsLeft);
    const auto [place, isFirst] = seen_.try_emplace(writer_.hash(), static_cast<uint8_t>(stepsLeft));
    if (!isFirst && place->second >= stepsLeft) return false;
    place->second = static_cast<uint8_t>(stepsLeft);
    return true;
}

void Explorer::note()
{
    if (world_->violation().empty()) return;
    violation_ = std::string(world_->violation().data(), world_->violation().size());
    for (const Action action : path_)
        violation_.append("\n  ").append(nameOf(action));
}

void Explorer::tryToBehave(size_t stepsLeft)
{
    {
        const InArena open;
        world_->behave();
    }
    note();
    putBack(snapshots_[stepsLeft]);
}

void Explorer::explore(size_t stepsLeft, size_t deviationsLeft)
{
    if (!isNew(stepsLeft, deviationsLeft)) return;
    save(snapshots_[stepsLeft]);
    if (stepsLeft == 0 || seen_.size() % 16 == 0) tryToBehave(stepsLeft);
    if (stepsLeft == 0) return;
    for (size_t i = 0; i < kActions && violation_.empty(); ++i) {
        const auto action = static_cast<Action>(i);
        if (!world_->isPossible(action, deviationsLeft > 0)) continue;
        path_.push_back(action);
        {
            const InArena open;
            world_->perform(action);
        }
        ++steps_;
        note();
        if (violation_.empty()) explore(stepsLeft - 1, deviationsLeft - (World::isDeviation(action) ? 1 : 0));
        putBack(snapshots_[stepsLeft]);
        path_.pop_back();
    }
}

} // namespace

int main(int argc, char **argv) // NOLINT(bugprone-exception-escape): nobody is there to catch them
{
    Limits limits;
    std::string only;
    CLI::App app("Explores what can happen between clients, the dialogue and a modem.", "host_at_server_exploration");
    app.add_option("--steps", limits.steps, "how many happenings one behind the other");
    app.add_option("--deviations", limits.deviations, "how many of them may be unusual");
    app.add_option("--script", only, "one script instead of all");
    CLI11_PARSE(app, argc, argv)
    host::at_server::setLogLevel(host::at_server::LogLevel::Error);

    size_t states = 0;
    Snapshot empty;
    save(empty);
    for (const Script &script : allScripts()) {
        for (const bool canEcho : {false, true}) {
            if (!only.empty() && only != script.name) continue;
            putBack(empty);
            Explorer explorer(script, canEcho, limits);
            const bool isGood = explorer.isGood();
            states += explorer.states();
            std::printf("%s, %s echo: %zu states, %zu steps\n", script.name, canEcho ? "with" : "without",
                        explorer.states(), explorer.steps());
            if (isGood) continue;
            std::printf("violated: %s\n", explorer.violation().c_str());
            return 1;
        }
    }
    std::printf("%zu states of %zu happenings one behind the other, %zu of them unusual: nothing is violated\n", states,
                limits.steps, limits.deviations);
    return 0;
}

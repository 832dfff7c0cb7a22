// kr-modem-sim: a simulated modem on a pseudo-terminal.
#include <csignal>
#include <cstdio>
#include <fstream>
#include <sstream>

#include "simulator/commands/command_table.h"
#include "simulator/options.h"
#include "simulator/scenario_file.h"
#include "simulator/simulation.h"
#include "simulator/text.h"

using namespace simulator; // NOLINT(google-build-using-namespace): the program of this namespace

namespace {

std::string contents(const std::string &file)
{
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

void tell(const std::string &text)
{
    std::fprintf(stderr, "kr-modem-sim: %s\n", text.c_str());
}

int fail(const std::string &text)
{
    tell(text);
    return 1;
}

/** A line for each command: its text, and whether each family knows it. */
void listCommands()
{
    for (const CommandRow &row : allCommands()) {
        std::printf("%-18s", textOf(row).c_str());
        for (const host::family::Row &known : host::family::kRows) {
            const std::string name(known.word);
            const char *const text = contains(row.families, known.family) ? name.c_str() : "-";
            std::printf(" %-*s", static_cast<int>(name.size()), text);
        }
        std::puts("");
    }
}

std::string readInputs(const Options &options, Scenario &scenario, Replay &replay)
{
    if (!options.scenario.empty()) {
        const std::string wrong = readScenario(contents(options.scenario), scenario);
        if (!wrong.empty()) return concat(options.scenario, ": ", wrong);
    }
    if (!options.replay.empty()) {
        std::string remark;
        const std::string wrong = readTranscript(contents(options.replay), replay, remark);
        if (!wrong.empty()) return concat(options.replay, ": ", wrong);
        if (!remark.empty()) tell(concat(options.replay, ": ", remark));
    }
    return {};
}

int simulate(const Options &options)
{
    Scenario scenario;
    Replay replay;
    const std::string wrong = readInputs(options, scenario, replay);
    if (!wrong.empty()) return fail(wrong);

    Simulation::Settings settings;
    const std::string &family = options.family.empty() ? scenario.family : options.family;
    settings.family = host::family::familyNamed(family).value_or(Family::Qualcomm);
    settings.seed = options.seed;
    settings.timeScale = options.timeScale;
    settings.link = options.link;
    settings.control = options.control;

    host::EventLoop loop;
    const host::SignalWatch terminate(loop, SIGTERM, [&] { loop.stop(); });
    const host::SignalWatch interrupt(loop, SIGINT, [&] { loop.stop(); });
    std::signal(SIGPIPE, SIG_IGN); // NOLINT(cert-err33-c): whoever wanted the path may have gone
    Simulation simulation(loop, settings, scenario, options.replay.empty() ? nullptr : &replay);
    const std::string failure = simulation.start();
    if (!failure.empty()) return fail(failure);
    loop.run();
    return 0;
}

} // namespace

int main(int count, char **arguments)
{
    int status = 0;
    const std::optional<Options> options = parseOptions(count, arguments, status);
    if (!options) return status;
    if (!options->listsCommands) return simulate(*options);
    listCommands();
    return 0;
}

#include "simulator/options.h"

#include <vector>

#include <CLI/CLI.hpp>

#include "host/family/family.h"

namespace simulator {

std::optional<Options> parseOptions(int count, char **arguments, int &status)
{
    std::vector<std::string> families;
    families.reserve(host::family::kRows.size());
    for (const host::family::Row &row : host::family::kRows)
        families.emplace_back(row.word);

    Options options;
    CLI::App app("A simulated modem on a pseudo-terminal, whose path is the first line that it prints.",
                 "kr-modem-sim");
    app.set_version_flag("--version", "kr-modem-sim " SIMULATOR_VERSION);
    app.add_option("--family", options.family, "Modem family (qualcomm unless the scenario says otherwise)")
        ->check(CLI::IsMember(families));
    app.add_option("--scenario", options.scenario, "JSON file with SIM, networks, timing and faults")
        ->check(CLI::ExistingFile);
    app.add_option("--seed", options.seed, "Decides what is random (1)");
    app.add_option("--time-scale", options.timeScale, "Factor of each delay; 0: none takes any time (1)")
        ->check(CLI::Range(0.0, 1000.0));
    app.add_option("--link", options.link, "Symbolic link to keep on the path of the port");
    app.add_option("--control", options.control, "FIFO to make and to take commands from, one a line");
    app.add_option("--replay", options.replay, "Transcript that answers in the place of the modem")
        ->check(CLI::ExistingFile);
    app.add_flag("--list-commands", options.listsCommands, "Print which commands which family knows, and end");
    try {
        app.parse(count, arguments);
    } catch (const CLI::ParseError &error) {
        constexpr int kUsage = 2;
        status = app.exit(error) == 0 ? 0 : kUsage;
        return std::nullopt;
    }
    return options;
}

} // namespace simulator

#include "tests/support/plain_port/play_rounds.h"

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <map>

#include <gtest/gtest.h>

#include "tests/support/rounds.h"

namespace plain {

void playRounds(const std::vector<Row> &rows, int usual)
{
    const uint32_t first = numberFromEnvironment("MAINCONTROL_SEED", 1);
    const char *const only = std::getenv("MAINCONTROL_FUNCTION"); // NOLINT(concurrency-mt-unsafe)
    std::map<std::string, int> mismatches;
    for (int i = 0; i < rounds(usual); ++i) {
        const uint32_t seed = first + static_cast<uint32_t>(i);
        const Row &row = rows[seed % rows.size()];
        if (only != nullptr && std::strcmp(only, row.name) != 0) continue;
        Round round(seed * 3);
        row.run(round);
        if (round.difference.empty() || ++mismatches[row.name] > 1) continue;
        ADD_FAILURE() << row.name << ", seed " << seed << ": " << escaped(round.difference) << "\n"
                      << escaped(round.script());
    }
    for (const auto &[name, count] : mismatches)
        std::cerr << name << ": " << count << " mismatches\n";
}

} // namespace plain

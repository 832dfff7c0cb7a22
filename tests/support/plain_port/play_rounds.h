#pragma once

#include <vector>

#include "rows.h"

namespace plain {

/// Plays rounds over all rows in turn. MAINCONTROL_ROUNDS, MAINCONTROL_SEED and MAINCONTROL_FUNCTION set how many, from
/// which seed on, and for which function alone.
void playRounds(const std::vector<Row> &rows, int usual);

} // namespace plain

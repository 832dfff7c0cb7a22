#ifndef TESTS_SUPPORT_PLAIN_PORT_PLAY_ROUNDS_H
#define TESTS_SUPPORT_PLAIN_PORT_PLAY_ROUNDS_H

#include <vector>

#include "tests/support/plain_port/rows.h"

namespace plain {

/** Plays rounds over all rows in turn. MAINCONTROL_ROUNDS, MAINCONTROL_SEED and MAINCONTROL_FUNCTION set how many, from
 *  which seed on, and for which function alone. */
void playRounds(const std::vector<Row> &rows, int usual);

} // namespace plain

#endif

/** The present time as output shows it. */
#ifndef KRCTL_OUTPUT_TIME_TEXT_H
#define KRCTL_OUTPUT_TIME_TEXT_H

#include <string>

namespace krctl {

/** "2026-01-31T12:34:56.789Z" */
std::string timeText();

/** "12:34:56", local time, for people. */
std::string clockText();

} // namespace krctl

#endif

/** What happens to a modem from outside, told in lines: "unplug 500", "report +CREG: 0". */
#ifndef SIMULATOR_CONTROL_H
#define SIMULATOR_CONTROL_H

#include <string>
#include <string_view>

#include "simulator/modem.h"

namespace simulator {

/** @return empty, or what is wrong with the line */
std::string control(Modem &modem, std::string_view line);

} // namespace simulator

#endif

#pragma once

#include <cstdint>

#include <mainControl/records.h>

#include "../../support/scan.h"

namespace mainControl {

/// What crsmSet() does, with a response of stated room.
std::uint32_t accessSim(const CrsmCmd &command, std::int32_t &sw1, std::int32_t &sw2, TextTarget response);

} // namespace mainControl

#pragma once

#include "../lib_public/support/log.h"

namespace mainControl {

/// The log of a function of the PIN, network lock and device settings family, which log under another module name than
/// the rest of the API.
template <Literal Function>
using FileLog = ApiLog<Function, "lib_mainControl.c">;

} // namespace mainControl

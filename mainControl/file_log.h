#ifndef MAINCONTROL_FILE_LOG_H
#define MAINCONTROL_FILE_LOG_H

#include "lib_public/support/log.h"

namespace mainControl {

/** The module under which the PIN, network lock and device settings family logs, unlike the rest of the API. */
inline constexpr Literal kFileModule = "lib_mainControl.c";

/** The log of a function of that family. */
template <Literal Function>
using FileLog = ApiLog<Function, kFileModule>;

} // namespace mainControl

#endif

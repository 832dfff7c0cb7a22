#pragma once

#include <mainControl/platform.h>

namespace mainControl {

/// Whether one of several platforms is in force.
template <typename... Platforms>
bool platformIs(Platforms... platforms)
{
    return ((g_currentPlatform == platforms) || ...);
}

} // namespace mainControl

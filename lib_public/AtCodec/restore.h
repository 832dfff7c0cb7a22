#pragma once

#include "../support/scan.h"

namespace mainControl {

/// What ATCodec_Restore_String_Para() does, within a room: a field that the reply did not fill holds what the caller left
/// there, which need not be terminated.
void restoreText(TextTarget target);

} // namespace mainControl

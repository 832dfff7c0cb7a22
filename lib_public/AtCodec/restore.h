#pragma once

#include <cstddef>
#include <cstring>

#include "../ATPreprocess/reply_room.h"
#include "../support/scan.h"

namespace mainControl {

/// A buffer of the caller's, who made it as large as a reply can be.
inline TextTarget intoWhole(char *buffer)
{
    return {buffer, kParasRoom};
}

/// How many bytes of a target may be looked at: all of a field, and of a caller's buffer, which nobody has measured, what
/// stands in front of the terminator.
inline std::size_t readableIn(TextTarget target)
{
    return target.room == kParasRoom ? strnlen(target.text, target.room) : target.room;
}

/// What ATCodec_Restore_String_Para() does, within a room: what the reply did not fill holds what the caller left there, which
/// need not be terminated.
void restoreText(TextTarget target);

} // namespace mainControl

#ifndef LIB_PUBLIC_ATCODEC_RESTORE_H
#define LIB_PUBLIC_ATCODEC_RESTORE_H

#include <cstddef>

#include "lib_public/ATPreprocess/reply_room.h"
#include "lib_public/support/scan.h"

namespace mainControl {

/** A buffer of the caller's, who made it as large as a reply can be. */
inline TextTarget intoWhole(char *buffer)
{
    return {buffer, kParasRoom};
}

/** What ATCodec_Restore_String_Para() does, within a room: what the reply did not fill holds what the caller left there, which
 *  need not be terminated. */
void restoreText(TextTarget target);

} // namespace mainControl

#endif

#ifndef LIB_PUBLIC_ATPREPROCESS_REPLY_ROOM_H
#define LIB_PUBLIC_ATPREPROCESS_REPLY_ROOM_H

#include <cstddef>

#include <mainControl/records.h>

namespace mainControl {

/** Characters of the longest reply. */
constexpr size_t kReplyLength = sizeof(AtClientRes::aucDataBuf) - 1;

/** Room for the parameters of any reply, with their terminator. A bare line of one character grows most: with its line
 *  break it takes three characters of the reply and becomes four of the parameters. */
constexpr size_t kParasRoom = kReplyLength / 3 * 4 + kReplyLength % 3 + 1;

} // namespace mainControl

#endif

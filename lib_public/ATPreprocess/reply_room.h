#pragma once

#include <cstddef>

#include <mainControl/records.h>

namespace mainControl {

/// Characters of the longest reply.
constexpr std::size_t kReplyLength = sizeof(AtClientRes::aucDataBuf) - 1;

/// Room for the parameters of any reply, with their terminator. A bare line of one character grows most: with its line
/// break it takes three characters of the reply and becomes four of the parameters.
constexpr std::size_t kParasRoom = kReplyLength / 3 * 4 + kReplyLength % 3 + 1;

} // namespace mainControl

/** Outputs of the library's functions: what they wrote, and what they left alone. */
#ifndef KRCTL_COMMANDS_LIBRARY_VALUE_H
#define KRCTL_COMMANDS_LIBRARY_VALUE_H

#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string>

namespace krctl {

/** The most that a text of a reply can hold, and its terminator. */
constexpr int32_t kMostText = 13653;

/** A text that the library has written into a buffer: what stands in front of its terminator. */
inline std::string writtenText(std::string buffer)
{
    buffer.resize(std::strlen(buffer.c_str()));
    return buffer;
}

/** Stands in an output that the library leaves alone when the modem does not tell it. */
constexpr int32_t kUntold = std::numeric_limits<int32_t>::min();

/** The value of such an output. */
inline std::optional<int32_t> told(int32_t value)
{
    return value == kUntold ? std::nullopt : std::optional(value);
}

} // namespace krctl

#endif

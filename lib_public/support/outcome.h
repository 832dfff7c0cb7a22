#ifndef LIB_PUBLIC_SUPPORT_OUTCOME_H
#define LIB_PUBLIC_SUPPORT_OUTCOME_H

#include <cstdint>

#include <mainControl/result_codes.h>

namespace mainControl {

/** How a command and its reply came to an end. */
enum class Ending : uint8_t {
    Ok,
    NotSent,   ///< the host could not send the command, or got no reply in time
    NotParsed, ///< the reply holds no final result
    Refused    ///< another final result than OK, or an answer that cannot be handed on
};

/** The result code of what tells only success from failure. */
constexpr uint32_t toCode(bool success)
{
    return success ? UNI_ERROR_SUCCESS : UNI_ERROR_FALSE;
}

} // namespace mainControl

#endif

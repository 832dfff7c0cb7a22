#ifndef LIB_PUBLIC_ATCODEC_WRAPPER_SUPPORT_H
#define LIB_PUBLIC_ATCODEC_WRAPPER_SUPPORT_H

#include <cstddef>
#include <cstring>

#include <mainControl/codec.h>

#include "lib_public/AtCodec/AtExchange.h"
#include "lib_public/AtCodec/restore.h"
#include "lib_public/support/log.h"
#include "lib_public/support/platform_traits.h"
#include "lib_public/support/record_text.h"

/** What several wrappers share beyond the exchange itself. */
namespace mainControl {

using SetLog = ModuleLog<"../lib_public/AtCodec/Set_AtWrapper">;
using NetworkLog = ModuleLog<"../lib_public/AtCodec/Network_AtWrapper">;

/** Undoes the markers of a rewritten line in the texts that were read from it, and in those that the reply lacked. */
template <typename... Targets>
void restore(Targets... targets)
{
    (restoreText(targets), ...);
}

/** Whether the parameter text holds another, outside quotes; case counts. */
inline bool parasContain(AtExchange &at, const char *text)
{
    return ATCodec_Find_Sub_Str(at.paras(), text) != nullptr;
}

/** A text of +CME ERROR and the code that a wrapper returns for it. */
struct ErrorText {
    const char *text;
    ResultCode code;
};

/** The code of the first error text that the parameters contain, or another code. */
template <size_t Size>
ResultCode errorCode(AtExchange &at, const ErrorText (&texts)[Size], ResultCode other)
{
    for (const ErrorText &error : texts) {
        if (parasContain(at, error.text)) return error.code;
    }
    return other;
}

} // namespace mainControl

#endif

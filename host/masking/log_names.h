/** Names that log lines give to values that are hidden. */
#ifndef HOST_MASKING_LOG_NAMES_H
#define HOST_MASKING_LOG_NAMES_H

#include <string_view>

#include "host/at/secrets.h"

namespace host::masking {

using at::Kind;

/** What stands behind the name of a value, "name:value" or "name=value". */
Kind kindOfName(std::string_view name);

/** A text in a log line behind which a value stands that its name alone does not tell. */
struct LogKey {
    std::string_view text;
    Kind kind;
};

constexpr LogKey kLogKeys[] = {
    {"KR_getIMSI-out-pString:", Kind::Identity},
    {"KR_getICCID-out-pString:", Kind::Identity},
    {"KR_getVoiceNumber return OK:", Kind::Identity},
    {"pCrsmres->response:", Kind::Identity}, // any file of the SIM
    {"tCrsmcmd.data:", Kind::Identity},
    {"KR_setLockCode-in-strcode", Kind::Secret}, // without a colon
};

/** Behind which the library logs a reply's parameters without the command's name. */
constexpr std::string_view kParametersKey = "Bk_Parse_At_Res-out-";

} // namespace host::masking

#endif

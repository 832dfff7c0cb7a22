/** Which values are hidden, and where they stand: arguments of AT commands and replies, files of the SIM, and names
 *  that log lines give their values. The one place to add a command to. */
#ifndef HOST_MASKING_RULES_H
#define HOST_MASKING_RULES_H

#include <cstdint>
#include <string_view>

namespace host::masking {

enum class Kind { Nothing, Secret, Identity };

/** Arguments, counted from 1. */
struct Range {
    Kind kind = Kind::Nothing;
    int first = 0;
    int last = 0;

    bool has(int argument) const { return argument >= first && argument <= last; }
};

struct CommandRule {
    std::string_view name; ///< in capitals, without what stands before it (+, ^, *, $)
    Range whenSet;         ///< in AT+NAME=...
    Range whenTold;        ///< in +NAME: ..., and without its name in the reply to AT+NAME
};

/** @return nullptr for a command without anything to hide */
const CommandRule *ruleFor(std::string_view name);

/** Whether a file of the SIM, read with +CRSM, says nothing about who the subscriber is. */
bool isHarmlessFile(uint32_t file);

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

#ifndef TESTS_SUPPORT_FAILURES_H
#define TESTS_SUPPORT_FAILURES_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/** The ways in which an exchange fails, with the replies for each of them. */
namespace scripted {

enum class FailureKind {
    Send,         ///< ClientSendCmd() fails
    Unparsable,   ///< the reply has no final result
    Error,        ///< ERROR
    CmeError,     ///< +CME ERROR
    SimBusy,      ///< +CME ERROR with a text that a read of the PIN state tells from the others
    CmsError,     ///< +CMS ERROR
    NotSupported, ///< "not support"
    Prompt,       ///< the prompt for a text
    Report,       ///< a report stands in front
};

const char *nameOf(FailureKind kind);

struct Failure {
    FailureKind kind;
    std::string name;
    std::optional<std::string> reply; ///< without one, the command cannot be sent
    std::string paras;                ///< what the parser logs of the reply
    int32_t identifier;               ///< 0: the reply cannot be parsed
};

const std::vector<Failure> &allFailures();
const std::vector<Failure> &allFailingReplies();
/** The failure that stands for a kind: the first of them. */
const Failure &failureOf(FailureKind kind);

/** A failing send, and then every reply. */
inline const std::vector<Failure> &kFailures = allFailures();
/** The replies alone. */
inline const std::vector<Failure> &kFailingReplies = allFailingReplies();

} // namespace scripted

#endif

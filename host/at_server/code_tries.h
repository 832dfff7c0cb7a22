/** Codes that modems refuse, and how long their users wait before the next: a PIN that can be tried as fast as the line
 *  takes it is a PIN that can be guessed. */
#ifndef HOST_AT_SERVER_CODE_TRIES_H
#define HOST_AT_SERVER_CODE_TRIES_H

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include <sys/types.h>

#include "host/at_server/command_queue.h"

namespace host::at_server {

/** A command line that takes a code. */
struct CodeTry {
    std::string what;         ///< its commands without the code: what is tried
    bool isProvenByOk = true; ///< an OK says that the code was right, and not only that it was handed on
};

/** @return nothing for a line without a PIN, PUK, password or code */
std::optional<CodeTry> codeTryIn(std::string_view commandLine);

enum class CodeIs : uint8_t {
    Right,
    Wrong,   ///< or nobody knows, since the answer did not come
    NotTold, ///< it was not looked at, or the answer does not tell
};

CodeIs judged(const CodeTry &code, const Outcome &outcome);

/** Who has to wait. Each wrong code doubles the wait, the right one for all that was tried in vain ends it. */
class CodeTries {
  public:
    using Clock = CommandQueue::Clock;
    static constexpr std::chrono::milliseconds kLongestWait{60000};

    explicit CodeTries(std::chrono::milliseconds firstWait) : firstWait_(firstWait) {}

    void add(uid_t user, const std::string &what, CodeIs verdict, Clock::time_point now);
    /** How long the next code of a user is not to be sent. */
    std::chrono::milliseconds waitOf(uid_t user, Clock::time_point now) const;

  private:
    struct Failed {
        std::set<std::string> what;
        std::chrono::milliseconds wait{};
        Clock::time_point until;
    };

    const std::chrono::milliseconds firstWait_;
    std::map<uid_t, Failed> users_;
};

} // namespace host::at_server

#endif

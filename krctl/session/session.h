/** The library and its AT client as commands use them: the server that is asked, the family that the library runs on, and
 *  what became of each call. */
#ifndef KRCTL_SESSION_SESSION_H
#define KRCTL_SESSION_SESSION_H

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "krctl/output/failure.h"

namespace krctl {

/** What names the family: an option, or else a variable of the environment. */
constexpr const char *kPlatformOption = "--platform";
constexpr const char *kPlatformVariable = "KR_PLATFORM";

/** What a session is asked to use; empty for what the environment or the server says. */
struct SessionOptions {
    std::string socket;
    std::string platform;
};

/** Things that happen while calls run or reports are dispatched. Empty ones are not called. */
struct Happenings {
    std::function<void(uint32_t atMostMs, std::string_view why)> waiting{}; ///< why: empty for others' commands
    std::function<void(std::string_view text)> report{};
    std::function<void(bool isOpen, std::string_view why)> port{};
    std::function<void(uint32_t count)> lost{};
    std::function<void(std::string_view event)> trace{};
};

class Session {
  public:
    explicit Session(SessionOptions options);
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    /** Finds the server and the family, and tells the library. Throws a Failure. */
    void open();

    int32_t platform() const { return platform_; }
    std::string platformName() const;
    /** The family that the command line or the environment names.
     *  @return empty if none is named; throws a Failure if there is none of that name */
    std::string chosenPlatform() const;
    const std::string &socket() const { return socket_; }
    /** What the server said of itself and its port, a JSON object. */
    const std::string &serverStatus() const { return serverStatus_; }
    Happenings happenings;

    /** A call that the command cannot do without: throws a Failure unless it succeeded.
     *  @param result    of the call
     *  @param function  its name, and the AT command if that helps: "KR_getPower"
     *  @param purpose   what it was for, behind "to": "read the state of the radio" */
    void require(uint32_t result, const std::string &function, const std::string &purpose);

    /** A call whose value may be missing: it is remembered as such. Throws a Failure if the server or the port is gone, or
     *  if the modem has been silent too often.
     *  @param item  what is missing then, for people: "hardware revision"
     *  @return whether there is a value */
    bool has(uint32_t result, const std::string &item);
    /** Items that the modem did not tell. */
    const std::vector<std::string> &missing() const { return missing_; }
    /** Adds a sentence about them to a report. */
    void noteMissing(Report &report) const;

    /** The failure of a call, to be thrown. A refusal is looked into: a SIM may be in the way. */
    Failure failureFor(const std::string &function, const std::string &purpose);

    /** What failed, for sentences: the function and the server. */
    std::string where(const std::string &function) const;

    /** The SIM's state by the standard command alone, which every modem knows.
     *  @return a KoraMtsSimState, whether the PIN lock is on left out; nothing if the modem does not tell */
    std::optional<int32_t> simState();

    /** Throws if Ctrl-C has been pressed. */
    static void throwIfInterrupted();

    /** Last line of the modem's last answer. */
    const std::string &finalResult() const { return finalResult_; }
    /** Last line of the modem's last answer to commands that begin so, up to their "=" or "?": "AT+CPIN=".
     *  @return empty if there was none */
    std::string finalResultOf(const std::string &commandStart) const;

  private:
    void observe();
    void readServerStatus();
    void choosePlatform(const std::string &chosen);
    void heardReply(std::string_view command, std::string_view reply);

    SessionOptions options_;
    std::string socket_;
    std::string serverStatus_;
    std::string finalResult_;
    std::map<std::string, std::string> finalResults_; // by the start of the command, which holds no secret
    std::vector<std::string> missing_;
    int32_t platform_ = 0;
    int silences_ = 0;
};

} // namespace krctl

#endif

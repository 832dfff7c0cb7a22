/** The library and its AT client as commands use them: the server that is asked, the family that the library runs on, and
 *  what became of each call. */
#ifndef KRCTL_SESSION_SESSION_H
#define KRCTL_SESSION_SESSION_H

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "krctl/output/failure.h"
#include "krctl/readings/sim.h"
#include "krctl/session/item.h"

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

    /** Makes a call of the library, and hears what the modem answers to its commands. */
    Answer call(const std::function<uint32_t()> &function);
    /** The same with a command that no function of the library sends. */
    Answer run(const std::string &command, int32_t timeoutMs);
    /** A call whose value may be missing. It is not made at all where the server or the port is gone, or where others of
     *  its kind were silent. */
    Answer ask(ItemKind kind, const std::function<uint32_t()> &function);
    /** The same with a command of 5 s that no function of the library sends. */
    Answer send(ItemKind kind, const std::string &command);
    /** Whether a call gave an item its value; if not it is remembered as missing. */
    bool has(ItemKind kind, const std::string &item, const std::function<uint32_t()> &function);
    /** Remembers an item as missing unless it was told.
     *  @return whether it was */
    bool note(const std::string &item, Ending ending, bool isTold = false);
    /** Whether any item was told. */
    bool isAnythingTold() const { return isAnythingTold_; }
    /** Ends what was asked: what is missing goes into the notes. Throws a Failure, with the report in it, if the server or
     *  the port went away. */
    void finish(Report &report) const;
    /** Throws a Failure if the server or the port went away. */
    void throwIfGone() const;
    /** Asks anew, whatever was silent or missing before. */
    void startOver();

    /** The failure of a call, to be thrown. A refusal is looked into: a SIM may be in the way. */
    Failure failureFor(const std::string &function, const std::string &purpose);

    /** What failed, for sentences: the function and the server. */
    std::string where(const std::string &function) const;

    /** The SIM's state by the standard command alone, which every modem knows. */
    SimStateReading simState();

    /** Throws if Ctrl-C has been pressed. */
    static void throwIfInterrupted();

    /** Last line of the modem's last answer. */
    const std::string &finalResult() const { return finalResult_; }

  private:
    void observe();
    void readServerStatus();
    void choosePlatform(const std::string &chosen);
    void heardReply(std::string_view command, std::string_view reply);
    Ending endingOf(uint32_t result) const;
    Answer askBy(ItemKind kind, const std::function<Answer()> &way);

    SessionOptions options_;
    std::string socket_;
    std::string serverStatus_;
    std::string finalResult_;
    Replies heard_; // while the present call runs
    Missing missing_;
    std::optional<Failure> gone_;
    std::array<int, kItemKinds> silences_{};
    int32_t platform_ = 0;
    bool isAnythingTold_ = false;
};

} // namespace krctl

#endif

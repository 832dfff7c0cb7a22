/** The real dialogue between clients that come, cancel and go, and a modem that may do anything. Time and I/O are the
 *  explorer's. */
#ifndef TESTS_HOST_AT_SERVER_EXPLORATION_WORLD_H
#define TESTS_HOST_AT_SERVER_EXPLORATION_WORLD_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/at_server/dialogue.h"
#include "tests/host/at_server/exploration/modem_model.h"
#include "tests/host/at_server/exploration/state_writer.h"
#include "tests/host/at_server/exploration/virtual_time.h"

namespace exploration {

/** A command that clients send, with what is no answer to any other. */
struct Script {
    const char *name;
    std::vector<const char *> commands; ///< in the order in which they are sent, by two clients in turn
};

std::span<const Script> allScripts();

enum class Action : uint8_t {
    Submit,   ///< the next command is sent by its client
    Withdraw, ///< the client of the oldest command that has no answer cancels it, or goes
    MoveOn,   ///< time goes on until something happens
    // of the modem, with the first command that it has heard
    Answer,
    AnswerTwice,
    AnswerLater,
    BeginAnswer,
    PassOver,
    Miss,
    LoseEcho, ///< as by a restart that nobody notices
    // of the modem, by itself
    SendOwed,
    SendOtherOwed,
    Report,
};
constexpr size_t kActions = static_cast<size_t>(Action::Report) + 1;
std::string_view nameOf(Action action);

class World {
  public:
    /** Up to where the modem has been asked all that the server wants to know. */
    World(const Script &script, bool canEcho);

    /** @param freely  the modem may do more than answer */
    bool isPossible(Action action, bool freely) const;
    /** Whether it is something that no modem and no client should do. */
    static bool isDeviation(Action action);
    void perform(Action action);

    /** From now on the modem answers at once what it hears, and owes nothing: all commands end, and further ones are
     *  answered by what belongs to them. */
    void behave();

    /** What is wrong; empty if nothing is. */
    const std::string &violation() const { return violation_; }
    void writeState(StateWriter &writer) const;

  private:
    struct Submitted {
        std::string text;
        host::at_server::Ticket ticket = 0;
        bool isSent = false;
        bool isEnded = false;
        bool wasAlone = false;   ///< the modem owed nothing when it was sent
        bool isClean = false;    ///< its reply has to be its own, to the last character
        bool isDoubtful = false; ///< a bare result of another may have been taken for its own
        host::Time::Point submittedAt{};
    };

    host::at_server::Dialogue::Calls calls();
    void submit(std::string_view text, uint64_t session);
    void ended(size_t number, const host::at_server::Outcome &outcome);
    void sent(std::string_view bytes);
    void sentCommand(std::string_view line);
    void say(const std::string &bytes, bool hasResult);
    void sayAnswer(const std::string &bytes, int number, bool isBare);
    void sayOwed(size_t which);
    void moveOn();
    void checkReply(const Submitted &command, size_t number, const std::string &text);
    void violate(const std::string &what);
    size_t oldestWaiting() const;

    const Script &script_;
    const bool canEcho_;
    VirtualTime time_;
    ModemModel modem_;
    std::vector<Submitted> submitted_;
    size_t begun_ = 0;   ///< of the script
    size_t reports_ = 0; ///< that the modem has sent and nobody has heard yet
    size_t reportsSent_ = 0;
    size_t slowAnswers_ = 0; ///< to questions
    bool isInOrder_ = true;  ///< the modem has answered one command after the other, each once
    bool isEchoLost_ = false;
    bool isAgreementDue_ = false;
    bool isDuplicate_ = false; ///< what the modem says just now
    std::string violation_;
    host::at_server::Dialogue dialogue_;
};

} // namespace exploration

#endif

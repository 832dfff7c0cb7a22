/** What the server asks behind a reply, before it hands that on, and the case in which commands go out. No I/O.
 *
 *  A name of hexadecimal digits is UCS-2 if the modem says so (AT+CSCS?). A modem may know capitals only: what it refuses
 *  in small letters is sent again in capitals, once, and so is the first command that reads in small letters and meets
 *  silence. Behind any other that does, the next goes out in capitals. If capitals are answered, all commands get them. */
#ifndef HOST_AT_SERVER_SECOND_QUESTION_H
#define HOST_AT_SERVER_SECOND_QUESTION_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/at_server/reply.h"
#include "host/at_server/translation/operators.h"

namespace host::at_server {

/** Whether commands are sent in capitals. */
enum class Capitals : uint8_t {
    AsNeeded, ///< once the modem was found to know nothing else
    Always,
    Never,
};

/** A command in capitals, but for what stands in quotes and for parameters. */
std::string inCapitalsOutsideParameters(std::string_view command);

class SecondQuestion {
  public:
    explicit SecondQuestion(Capitals capitals) : capitals_(capitals) {}

    void portOpened();

    /** A command as it goes out. */
    std::string asSent(std::string_view command);

    /** The reply to hand on; nothing if question() has to be asked before, whose reply is told next.
     *  @param command  as it was sent */
    std::optional<Reply> settled(const std::string &command, Reply reply);
    /** A question that has to be sent, once. */
    std::optional<std::string> takeQuestion();
    bool isAsking() const { return about_ != About::Nothing; }
    /** No answer to the question will come.
     *  @return the reply behind which it was asked, if one was */
    std::optional<Reply> giveUp();
    /** Whether a command, as it was sent, is the first that shows whether the modem hears small letters, and may be repeated
     *  if nothing is heard. */
    bool isTrial(std::string_view command) const;
    /** In capitals, a command that is a trial and has met silence. */
    std::optional<std::string> raised(std::string_view command);
    /** A command has stayed without a reply. */
    void timedOut(std::string_view command);

    /** Of the texts in the reply that was settled last. */
    Alphabet alphabet() const { return alphabet_; }
    bool knowsCapitalsOnly() const { return knowsCapitalsOnly_; }

    /** Hands on all that its future depends on, for those who compare states. */
    template <typename Visit>
    void state(Visit &&visit) const
    {
        visit(hasTriedCase_, knowsCapitalsOnly_, suspectsCase_, wasRaised_, about_, behind_.lines, alphabet_);
    }

  private:
    enum class About { Nothing, Alphabet, Refusal, Silence };

    bool mayHaveBeenCase(const std::string &command, const Reply &reply) const;
    std::optional<Reply> ask(About about, std::string question, Reply behind);

    const Capitals capitals_;
    bool hasTriedCase_ = false;
    bool knowsCapitalsOnly_ = false;
    bool suspectsCase_ = false; ///< small letters have met silence, and the next ones go out as capitals
    bool wasRaised_ = false;    ///< so has the last command
    About about_ = About::Nothing;
    std::optional<std::string> question_;
    Reply behind_;
    Alphabet alphabet_ = Alphabet::Plain;
};

} // namespace host::at_server

#endif

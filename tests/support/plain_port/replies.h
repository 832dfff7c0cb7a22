#ifndef TESTS_SUPPORT_PLAIN_PORT_REPLIES_H
#define TESTS_SUPPORT_PLAIN_PORT_REPLIES_H

#include <string>

#include "tests/support/plain_port/dice.h"
#include "tests/support/plain_port/world.h"

namespace plain {

/** Answers of a host: to a command mostly what a modem would say to it, and then everything that can go wrong. */
class Replies {
  public:
    explicit Replies(Dice dice);

    /** @param call  a command, or another call of the host as the world writes it down */
    Answer answer(const std::string &call);

    /** A report, or what stands where a report is expected. */
    std::string report();
    /** The parameters of a reply to a command, as the parser leaves them. */
    std::string parameters(const std::string &command);

  private:
    std::string value(const std::string &kind);
    std::string oddValue();
    std::string quoted(const std::string &text);
    std::string values(std::string kinds);
    std::string line(const char *name, const char *kinds);
    std::string body(const std::string &command);
    std::string finalResult();
    std::string disturbed(const std::string &command, std::string reply);

    Dice dice_;
    size_t trouble_; ///< one reply in so many fails, or is not what a modem would say
};

} // namespace plain

#endif

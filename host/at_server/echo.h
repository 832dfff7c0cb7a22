/** Whether the modem repeats what it is sent. Then the echo of a command shows where its reply begins, and nothing that
 *  comes before it is mistaken for the reply. The server switches the echo on by itself, and keeps it on. */
#ifndef HOST_AT_SERVER_ECHO_H
#define HOST_AT_SERVER_ECHO_H

#include <string_view>

namespace host::at_server {

class Echo {
  public:
    static constexpr std::string_view kSwitchOn = "ATE1";

    explicit Echo(bool isWanted) : isWanted_(isWanted) {}

    /** Another modem, or the same one after who knows what. */
    void portOpened();
    /** It may have been restarted or set anew. */
    void doubt();

    /** Whether the server has to send kSwitchOn before anything else. */
    bool isToBeSwitchedOn() const { return isWanted() && !isAsked_; }
    void switchedOn() { isAsked_ = true; }
    /** Whether a line of commands does nothing but switch the echo, and is answered by the server. */
    bool answersFor(std::string_view command) const;

    /** Whether replies are known to begin behind the echo of their command. */
    bool isEvidence() const { return isEvidence_; }
    void replied(std::string_view command, bool wasEchoed);
    /** A command was answered without its echo, as after a restart that nobody has noticed.
     *  @return whether it happens too often for the echo to be relied on */
    bool missed();

    /** Hands on all that its future depends on, for those who compare states. */
    template <typename Visit>
    void state(Visit &&visit) const
    {
        visit(isAsked_, isEvidence_, misses_);
    }

  private:
    bool isWanted() const { return isWanted_ && misses_ < kMaxMisses; }

    static constexpr unsigned kMaxMisses = 3;
    const bool isWanted_;
    bool isAsked_ = false;
    bool isEvidence_ = false;
    unsigned misses_ = 0;
};

} // namespace host::at_server

#endif

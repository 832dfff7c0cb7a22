/** How to get a modem and its server to agree again on which reply belongs to which command: after a time-out, when the
 *  port has been opened, and whenever a reply may still come that nobody waits for or has come in the place of another.
 *
 *  A bare "AT" is answered by a bare result, which looks like the late reply of another command. What tells them apart is
 *  count and quiet: nothing is asked before the line has been quiet for a time, and an answer only counts if it is the
 *  one result of its round, followed by quiet. A late result makes a round with two, and then the round does not count.
 *  A modem that has been deaf for a while answers several rounds at once, which does not count either. Two rounds in a
 *  row have to count; three, as long as some question was never answered. Where a modem is known to repeat what it is
 *  sent, one is enough that came behind the echo of its question, and it takes three to believe that it echoes no more.
 *
 *  Which result it is does not matter: a modem that refuses a bare "AT" has answered it. Reports and other lines only
 *  delay that for as long as insist() has not been called; results are counted on. A line that carries data is left
 *  first, and one on which nobody answers may be such a line. */
#ifndef HOST_AT_SERVER_RESYNC_H
#define HOST_AT_SERVER_RESYNC_H

namespace host::at_server {

class Resync {
  public:
    /** Whether a result came behind the echo of the question. */
    enum class Echoed {
        Perhaps, ///< the modem is not known to echo
        Yes,
        No, ///< although the modem is known to echo
    };

    enum class Next {
        Stay,       ///< nothing changes, and a timer that runs goes on
        AwaitQuiet, ///< start the timer for quiet anew
        Ask,        ///< send "AT" and start the timer for an answer
        HangUp,     ///< tell the modem that the terminal is not ready, and start the timer for the guard of the escape
        Escape,     ///< tell it that it is, send "+++", and start the timer for the guard behind that
        Done,
    };

    Next begin();
    /** The line carries data now, and a modem that hears no commands: that is ended first. */
    Next leaveData();
    /** Bytes have come, whatever they are. */
    Next heardBytes();
    /** A line that is neither echo nor report nor result. */
    Next heardLine();
    Next heardResult(Echoed echoed = Echoed::Perhaps);
    /** The timer of the last step has run out. */
    Next timeIsUp();
    /** From now on until the end nothing is waited for but the own timers. */
    void insist() { insists_ = true; }

    /** Hands on all that its future depends on, for those who compare states. */
    template <typename Visit>
    void state(Visit &&visit) const
    {
        visit(stage_, insists_, echoed_, goodRounds_, unanswered_, failedTries_);
    }

    /** Of the last result that counted. */
    Echoed echoed() const { return echoed_; }

    /** Questions since begin() without an answer in time, in a row. */
    unsigned failedTries() const { return failedTries_; }

  private:
    enum class Stage { Settling, Asked, Proving, HangingUp, Escaping };

    Next settle();
    Next ask();
    Next unanswered();
    unsigned neededRounds() const;

    Stage stage_ = Stage::Settling;
    bool insists_ = false;
    Echoed echoed_ = Echoed::Perhaps;
    unsigned goodRounds_ = 0;
    unsigned unanswered_ = 0;
    unsigned failedTries_ = 0;
};

} // namespace host::at_server

#endif

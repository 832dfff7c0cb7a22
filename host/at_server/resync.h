/** How to get a modem and its server to agree again on which reply belongs to which command: after a time-out, when the
 *  port has been opened, and whenever a reply may still come that nobody waits for.
 *
 *  A bare "AT" is answered by a bare "OK", which looks like the late reply of another command. What tells them apart is
 *  count and quiet: nothing is asked before the line has been quiet for a time, and an answer only counts if it is the
 *  one result of its round, followed by quiet. A late result makes a round with two, and then the round does not count.
 *  A modem that has been deaf for a while answers several rounds at once, which does not count either. Two rounds in a
 *  row have to count; three, as long as some question was never answered. */
#ifndef HOST_AT_SERVER_RESYNC_H
#define HOST_AT_SERVER_RESYNC_H

namespace host::at_server {

class Resync {
  public:
    enum class Next {
        Stay,       ///< nothing changes, and a timer that runs goes on
        AwaitQuiet, ///< start the timer for quiet anew
        Ask,        ///< send "AT" and start the timer for an answer
        Done,
    };

    Next begin();
    /** Bytes have come, whatever they are. */
    Next heardBytes();
    /** A line that is neither echo nor report nor result. */
    Next heardLine();
    Next heardResult(bool isOk);
    /** The timer of the last AwaitQuiet or Ask has run out. */
    Next timeIsUp();

    /** Questions since begin() without an answer in time, in a row. */
    unsigned failedTries() const { return failedTries_; }

  private:
    enum class Stage { Settling, Asked, Proving };

    Next settle();
    Next ask();

    Stage stage_ = Stage::Settling;
    unsigned goodRounds_ = 0;
    unsigned unanswered_ = 0;
    unsigned failedTries_ = 0;
    unsigned disturbances_ = 0; ///< of this stage
};

} // namespace host::at_server

#endif

/** How a signal handler or another thread ends the call that runs now, and never a later one. */
#ifndef HOST_AT_CLIENT_INTERRUPTION_H
#define HOST_AT_CLIENT_INTERRUPTION_H

namespace host::at_client {

/** Marks the calling thread's stretch of work as one that interrupt() may end. Calls inside each other are one call. */
class Interruptible {
  public:
    Interruptible();
    ~Interruptible();
    Interruptible(const Interruptible &) = delete;
    Interruptible &operator=(const Interruptible &) = delete;

    /** Whether the call that runs now is to end. */
    static bool isOver();
    /** Readable when isOver() may have come to hold; -1 if there are no descriptors left. */
    static int fd();
    /** Undoes the readability of fd(). */
    static void clear();
    /** To be called in a child of fork(), which shares the descriptor of its parent. */
    static void renew();
};

/** Safe in signal handlers. */
void interrupt() noexcept;

} // namespace host::at_client

#endif

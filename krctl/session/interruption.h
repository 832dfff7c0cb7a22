/** Ctrl-C and SIGTERM: the command that runs returns at once, and everything is put back as it was. */
#ifndef KRCTL_SESSION_INTERRUPTION_H
#define KRCTL_SESSION_INTERRUPTION_H

#include <chrono>

namespace krctl {

/** From now on SIGINT, SIGTERM and SIGHUP end what runs instead of the process. */
void heedInterruptions();

/** The signal that came, 0 for none. */
int pendingInterruption();

/** Waits, unless one comes or has come. */
void pauseFor(std::chrono::milliseconds time);

} // namespace krctl

#endif

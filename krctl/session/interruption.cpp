#include "krctl/session/interruption.h"

#include <array>
#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include "host/at_client/at_client.h"

namespace krctl {
namespace {

volatile std::sig_atomic_t g_pending = 0;
std::array<int, 2> g_wakeUp{-1, -1}; // a pipe, written to by the handler

void handle(int signal)
{
    if (signal != SIGALRM) {
        g_pending = signal;
        const char byte = 0;
        (void)!write(g_wakeUp[1], &byte, 1);
    }
    ClientInterrupt();
    // A call may have been about to start: it is interrupted a second later.
    alarm(1);
}

} // namespace

void heedInterruptions()
{
    (void)!pipe2(g_wakeUp.data(), O_CLOEXEC | O_NONBLOCK);
    struct sigaction action = {};
    action.sa_handler = handle; // without SA_RESTART, so that a read of the terminal returns
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGALRM})
        sigaction(signal, &action, nullptr);
}

int pendingInterruption()
{
    return g_pending;
}

void pauseFor(std::chrono::milliseconds time)
{
    pollfd wakeUp{.fd = g_wakeUp[0], .events = POLLIN, .revents = 0};
    (void)poll(&wakeUp, 1, static_cast<int>(time.count()));
}

} // namespace krctl

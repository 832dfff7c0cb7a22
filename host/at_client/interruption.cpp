#include "host/at_client/interruption.h"

#include <atomic>
#include <cerrno>
#include <cstdint>

#include <sys/eventfd.h>
#include <unistd.h>

namespace host::at_client {
namespace {

// Calls are numbered: an interruption that comes late bears the number of a call that is over.
std::atomic<uint32_t> current{0};     // odd while a call runs
std::atomic<uint32_t> interrupted{0}; // the newest call that is to end
std::atomic<int> wakeFd{-1};
int depth = 0;

static_assert(std::atomic<uint32_t>::is_always_lock_free && std::atomic<int>::is_always_lock_free,
              "signal handlers must not meet a lock");

bool isNewer(uint32_t call, uint32_t than)
{
    return static_cast<int32_t>(call - than) > 0;
}

} // namespace

Interruptible::Interruptible()
{
    if (wakeFd.load() < 0) wakeFd.store(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (depth++ == 0) ++current;
}

Interruptible::~Interruptible()
{
    if (--depth == 0) ++current;
}

bool Interruptible::isOver()
{
    return interrupted.load() == current.load();
}

int Interruptible::fd()
{
    return wakeFd.load();
}

void Interruptible::clear()
{
    uint64_t count = 0;
    while (read(wakeFd.load(), &count, sizeof count) < 0 && errno == EINTR) {
    }
}

void Interruptible::renew()
{
    const int inherited = wakeFd.exchange(-1);
    if (inherited < 0) return;
    wakeFd.store(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    close(inherited);
}

void interrupt() noexcept
{
    const uint32_t running = current.load();
    if (running % 2 == 0) return;
    uint32_t known = interrupted.load();
    while (isNewer(running, known) && !interrupted.compare_exchange_weak(known, running)) {
    }
    const int error = errno;
    const uint64_t one = 1;
    if (write(wakeFd.load(), &one, sizeof one) < 0) errno = error; // it is readable already
}

} // namespace host::at_client

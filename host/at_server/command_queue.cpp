#include "command_queue.h"

#include <algorithm>
#include <limits>
#include <utility>

using namespace std::chrono_literals;

namespace host::at_server {
namespace {

using Clock = CommandQueue::Clock;

/** Whether what a client was told, less the time since then, is far from what holds now. */
bool shouldBeTold(const CommandQueue::Entry &entry, uint64_t waitMs, Clock::time_point now)
{
    constexpr uint64_t kSubstantialMs = 500;
    if (!entry.toldAt) return true;
    const auto since = now - *entry.toldAt;
    if (since < 1s) return false;
    const auto sinceMs = static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(since).count());
    const uint64_t believedMs = entry.toldMs - std::min(entry.toldMs, sinceMs);
    return std::max(believedMs, waitMs) - std::min(believedMs, waitMs) > std::max(kSubstantialMs, believedMs / 4);
}

} // namespace

Ticket CommandQueue::push(Command command)
{
    entries_.push_back({++lastTicket_, std::move(command)});
    return lastTicket_;
}

CommandQueue::Entry CommandQueue::pop()
{
    Entry first = std::move(entries_.front());
    entries_.pop_front();
    return first;
}

bool CommandQueue::remove(Ticket ticket)
{
    const auto entry =
        std::find_if(entries_.begin(), entries_.end(), [&](const Entry &e) { return e.ticket == ticket; });
    if (entry == entries_.end()) return false;
    entries_.erase(entry);
    return true;
}

void CommandQueue::tellWaits(uint64_t aheadMs, Clock::time_point now)
{
    for (Entry &entry : entries_) {
        if (entry.command.waits && shouldBeTold(entry, aheadMs, now)) {
            entry.toldAt = now;
            entry.toldMs = aheadMs;
            entry.command.waits(
                static_cast<uint32_t>(std::min<uint64_t>(aheadMs, std::numeric_limits<uint32_t>::max())));
        }
        aheadMs += entry.command.timeoutMs;
    }
}

} // namespace host::at_server

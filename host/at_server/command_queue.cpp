#include "host/at_server/command_queue.h"

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

void tell(CommandQueue::Entry &entry, uint64_t waitMs, Clock::time_point now)
{
    if (!entry.command.waits || !shouldBeTold(entry, waitMs, now)) return;
    entry.toldAt = now;
    entry.toldMs = waitMs;
    entry.command.waits(static_cast<uint32_t>(std::min<uint64_t>(waitMs, std::numeric_limits<uint32_t>::max())));
}

} // namespace

CommandQueue::Lanes::iterator CommandQueue::laneOf(uint64_t session)
{
    return std::find_if(lanes_.begin(), lanes_.end(), [&](const Lane &lane) { return lane.session == session; });
}

/** Behind all lanes but that of the session that has been charged. */
void CommandQueue::putBehind(Lane lane)
{
    const bool isBeforeLast =
        charged_ && lane.session != *charged_ && !lanes_.empty() && lanes_.back().session == *charged_;
    lanes_.insert(lanes_.end() - (isBeforeLast ? 1 : 0), std::move(lane));
}

Ticket CommandQueue::push(Command command)
{
    const uint64_t session = command.session;
    Entry entry{++lastTicket_, std::move(command)};
    if (const auto lane = laneOf(session); lane != lanes_.end()) {
        lane->entries.push_back(std::move(entry));
    } else {
        Lane own{session, {}};
        own.entries.push_back(std::move(entry));
        putBehind(std::move(own));
    }
    return lastTicket_;
}

CommandQueue::Entry CommandQueue::pop()
{
    Lane lane = std::move(lanes_.front());
    lanes_.pop_front();
    charged_.reset(); // those who waited now come before it
    Entry first = std::move(lane.entries.front());
    lane.entries.pop_front();
    if (!lane.entries.empty()) putBehind(std::move(lane));
    return first;
}

bool CommandQueue::remove(Ticket ticket)
{
    for (auto lane = lanes_.begin(); lane != lanes_.end(); ++lane) {
        if (std::erase_if(lane->entries, [&](const Entry &entry) { return entry.ticket == ticket; }) == 0) continue;
        if (lane->entries.empty()) lanes_.erase(lane);
        return true;
    }
    return false;
}

void CommandQueue::charge(uint64_t session)
{
    charged_ = session;
    const auto lane = laneOf(session);
    if (lane != lanes_.end()) std::rotate(lane, lane + 1, lanes_.end());
}

size_t CommandQueue::size() const
{
    size_t size = 0;
    for (const Lane &lane : lanes_)
        size += lane.entries.size();
    return size;
}

void CommandQueue::tellWaits(uint64_t aheadMs, Clock::time_point now)
{
    size_t turns = 0;
    for (const Lane &lane : lanes_)
        turns = std::max(turns, lane.entries.size());
    for (size_t turn = 0; turn < turns; ++turn) {
        for (Lane &lane : lanes_) {
            if (turn >= lane.entries.size()) continue;
            tell(lane.entries[turn], aheadMs, now);
            aheadMs += lane.entries[turn].command.timeoutMs;
        }
    }
}

} // namespace host::at_server

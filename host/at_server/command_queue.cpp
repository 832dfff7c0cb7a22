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

/** A user's time on the wire, from its command's turn to the command's end. */
class Turn {
  public:
    Turn(Turns &turns, uid_t user) : turns_(turns), user_(user) {}
    ~Turn() { turns_.hasUsed(user_, std::chrono::duration_cast<Turns::Time>(Clock::now() - start_)); }
    Turn(const Turn &) = delete;
    Turn &operator=(const Turn &) = delete;

  private:
    Turns &turns_;
    const uid_t user_;
    const Clock::time_point start_ = Clock::now();
};

} // namespace

Ticket CommandQueue::push(Command command)
{
    turns_.add(command.session, command.user);
    auto &own = waiting_[command.session];
    own.push_back({++lastTicket_, std::move(command)});
    ++size_;
    return lastTicket_;
}

CommandQueue::Entry CommandQueue::pop()
{
    const auto own = waiting_.find(turns_.take());
    Entry first = std::move(own->second.front());
    own->second.pop_front();
    if (own->second.empty()) waiting_.erase(own);
    --size_;
    first.command.turn = std::make_shared<const Turn>(turns_, first.command.user);
    return first;
}

bool CommandQueue::remove(Ticket ticket)
{
    for (auto &[session, own] : waiting_) {
        if (std::erase_if(own, [&](const Entry &entry) { return entry.ticket == ticket; }) == 0) continue;
        turns_.remove(session);
        --size_;
        if (own.empty()) waiting_.erase(session);
        return true;
    }
    return false;
}

/** In the order in which they come if each takes all of its time. */
void CommandQueue::tellWaits(uint64_t aheadMs, Clock::time_point now)
{
    Turns turns = turns_;
    std::map<uint64_t, size_t> told;
    while (!turns.isEmpty()) {
        const uint64_t session = turns.take();
        Entry &entry = waiting_.at(session).at(told[session]++);
        tell(entry, aheadMs, now);
        aheadMs += entry.command.timeoutMs;
        turns.hasUsed(entry.command.user, std::chrono::milliseconds(entry.command.timeoutMs));
    }
}

} // namespace host::at_server

#include "host/at_server/turns.h"

#include <algorithm>
#include <utility>

namespace host::at_server {
namespace {

constexpr Turns::Time kLeastTurn = std::chrono::milliseconds(1); // so that turns count even if they take no time

} // namespace

Turns::Lanes::iterator Turns::laneOf(uint64_t session)
{
    return std::find_if(lanes_.begin(), lanes_.end(), [&](const Lane &lane) { return lane.session == session; });
}

bool Turns::waits(uid_t user) const
{
    return std::any_of(lanes_.begin(), lanes_.end(), [&](const Lane &lane) { return lane.user == user; });
}

/** Behind all lanes but that of the session that has been charged. */
void Turns::putBehind(const Lane &lane)
{
    const bool isBeforeLast =
        charged_ && lane.session != *charged_ && !lanes_.empty() && lanes_.back().session == *charged_;
    lanes_.insert(lanes_.end() - (isBeforeLast ? 1 : 0), lane);
}

void Turns::add(uint64_t session, uid_t user)
{
    if (const auto lane = laneOf(session); lane != lanes_.end()) {
        ++lane->turns;
        return;
    }
    Time &used = used_[user];
    if (!waits(user)) used = std::max(used, least_);
    putBehind({session, user, 1});
}

void Turns::remove(uint64_t session)
{
    const auto lane = laneOf(session);
    if (lane != lanes_.end() && --lane->turns == 0) lanes_.erase(lane);
}

Turns::Lanes::iterator Turns::next()
{
    const auto rank = [this](const Lane &lane) { return std::pair(lane.session == charged_, used_[lane.user]); };
    return std::min_element(lanes_.begin(), lanes_.end(),
                            [&](const Lane &one, const Lane &other) { return rank(one) < rank(other); });
}

uint64_t Turns::take()
{
    const auto place = next();
    Lane lane = *place;
    lanes_.erase(place);
    settleCharge();
    least_ = std::max(least_, used_[lane.user]);
    hasUsed(lane.user, kLeastTurn);
    if (--lane.turns > 0) putBehind(lane);
    std::erase_if(used_, [this](const auto &entry) { return entry.second <= least_ && !waits(entry.first); });
    return lane.session;
}

/** Those who wait now come before the session that was charged, also by what its user has had. */
void Turns::settleCharge()
{
    if (!charged_) return;
    const auto guilty = laneOf(*std::exchange(charged_, std::nullopt));
    if (guilty == lanes_.end()) return;
    for (const Lane &lane : lanes_)
        used_[guilty->user] = std::max(used_[guilty->user], used_[lane.user]);
}

void Turns::hasUsed(uid_t user, Time time)
{
    Time &used = used_[user];
    used = std::min(used + time, least_ + kMostAhead);
    if (lanes_.empty()) least_ = std::max(least_, used);
}

void Turns::charge(uint64_t session)
{
    charged_ = session;
    const auto lane = laneOf(session);
    if (lane != lanes_.end()) std::rotate(lane, lane + 1, lanes_.end());
}

} // namespace host::at_server

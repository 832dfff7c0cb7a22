/** Whose turn it is: users share the wire by the time that they have it, and the sessions of each take turns. Knows no
 *  commands.
 *
 *  The next turn goes to the user who has had the least of the wire, counted from when it began to wait with the others:
 *  what nobody else wanted costs nothing later. Whoever has had more comes behind, but by kMostAhead at most. */
#ifndef HOST_AT_SERVER_TURNS_H
#define HOST_AT_SERVER_TURNS_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>

#include <sys/types.h>

namespace host::at_server {

class Turns {
  public:
    using Time = std::chrono::microseconds;

    /** What a user can be ahead of the others at most, however long its commands took. */
    static constexpr Time kMostAhead = std::chrono::seconds(10);

    /** One more turn of a session. */
    void add(uint64_t session, uid_t user);
    /** One less of a session that has some. */
    void remove(uint64_t session);
    /** Whose turn it is now, which is one less of its turns; there must be one. */
    uint64_t take();

    /** Counts what a user has had of the wire. */
    void hasUsed(uid_t user, Time time);
    /** Puts the next turn of a session behind those of all others that wait when it is taken. */
    void charge(uint64_t session);

    bool isEmpty() const { return lanes_.empty(); }

    /** Hands on all that its future depends on while one user has all turns, for those who compare states. */
    template <typename Visit>
    void state(Visit &&visit) const
    {
        visit(charged_.value_or(0));
        for (const Lane &lane : lanes_)
            visit(lane.session, lane.turns);
    }

  private:
    /** What one session waits for; at least one turn. */
    struct Lane {
        uint64_t session{};
        uid_t user{};
        size_t turns{};
    };
    using Lanes = std::deque<Lane>;

    Lanes::iterator laneOf(uint64_t session);
    Lanes::iterator next();
    bool waits(uid_t user) const;
    void putBehind(const Lane &lane);
    void settleCharge();

    Lanes lanes_; ///< as they come when users have had equally much
    std::map<uid_t, Time> used_;
    Time least_{}; ///< nobody who waits has had less, nor will who comes now
    std::optional<uint64_t> charged_;
};

} // namespace host::at_server

#endif

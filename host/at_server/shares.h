/** What each user may have of the server, so that none of them takes it from the others. Root and the server's own user
 *  are trusted: no limit of a user holds for them, and what the others may have together leaves them some. */
#ifndef HOST_AT_SERVER_SHARES_H
#define HOST_AT_SERVER_SHARES_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace host::at_server {

class Shares {
  public:
    using Clock = std::chrono::steady_clock;

    static constexpr size_t kPlaces = 32;
    static constexpr size_t kKeptPlaces = 4; ///< that only the trusted take
    static constexpr size_t kPlacesOfUser = 8;
    static constexpr size_t kCommandsOfUser = 64; ///< unanswered ones
    static constexpr size_t kCommandsOfUsers = 224;

    /** A client that is connected. */
    struct Client {
        uint64_t session{};
        uid_t user{};
        size_t unanswered{};                        ///< commands
        std::optional<Clock::time_point> idleSince; ///< nothing while it waits for an answer or for reports
    };
    using Clients = std::vector<Client>;

    struct Place {
        std::string_view refusal;        ///< why there is none; empty if there is
        std::optional<uint64_t> letGo{}; ///< the session whose place it is until now
    };

    /** @param patience  how long an idle client keeps its place when others want it */
    Shares(uid_t own, std::chrono::milliseconds patience) : own_(own), patience_(patience) {}

    /** A place for one more client of a user, if need be that of the client that has been idle for longest. */
    Place placeFor(uid_t user, const Clients &clients, Clock::time_point now) const;

    /** @param clients  with the new command among those that are unanswered
     *  @return why a user may not have a new command; empty if it may */
    std::string_view refusalOfCommand(uid_t user, const Clients &clients) const;

  private:
    bool isTrusted(uid_t user) const { return user == 0 || user == own_; }

    const uid_t own_;
    const std::chrono::milliseconds patience_;
};

} // namespace host::at_server

#endif

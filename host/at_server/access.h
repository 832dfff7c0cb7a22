/** Who may do what: root and the server's own user everything, members of groups what their groups may. */
#ifndef HOST_AT_SERVER_ACCESS_H
#define HOST_AT_SERVER_ACCESS_H

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <sys/types.h>

#include "host/at/rights.h"

namespace host::at_server {

/** What members of the server's group may do as long as nothing else is said. */
inline constexpr at::Rights kRightsOfGroup =
    at::Rights::all().without(at::Right::Device | at::Right::Raw | at::Right::Trace);

/** A setting: a group and what its members may do. */
struct Allowance {
    std::string group;
    at::Rights rights;
};

/** Reads "GROUP=RIGHT,RIGHT...".
 *  @param fault  out, what is wrong with a text for which nothing is returned */
std::optional<Allowance> allowanceIn(std::string_view text, std::string &fault);

class Access {
  public:
    struct Group {
        std::string name;
        gid_t id;
        at::Rights rights;
    };

    explicit Access(uid_t owner, std::vector<Group> groups = {}) : owner_(owner), groups_(std::move(groups)) {}

    /** What a user may do; nothing for one who may not even connect.
     *  @param groups  all that the user is a member of */
    at::Rights rightsOf(uid_t user, std::span<const gid_t> groups) const;

    /** @return what somebody is told who lacks rights that are needed; empty if none is lacking */
    std::string refusal(at::Rights held, at::Rights needed) const;

  private:
    uid_t owner_;
    std::vector<Group> groups_;
};

/** The groups of the settings, each once: more than one allowance for a group is all of them together.
 *  @param group  the server's own; empty for none
 *  @param fault  out, which group the system does not know; otherwise left alone */
std::vector<Access::Group> groupsOf(const std::string &group, std::span<const Allowance> allowances,
                                    std::string &fault);

} // namespace host::at_server

#endif

#include "host/at_server/access.h"

#include <algorithm>

#include <grp.h>

#include "host/at/text.h"

namespace host::at_server {
namespace {

constexpr std::string_view kAll = "all";

/** "one", "one and two", "one, two and three". */
std::string listed(const std::vector<std::string> &items)
{
    std::string text;
    for (size_t i = 0; i < items.size(); ++i)
        text.append(i == 0 ? "" : i + 1 == items.size() ? " and " : ", ").append(items[i]);
    return text;
}

std::string namesOf(at::Rights rights)
{
    std::vector<std::string> names;
    for (const at::Right right : at::kEveryRight)
        if (rights.has(right)) names.emplace_back(at::nameOf(right));
    return (names.size() == 1 ? "the right " : "the rights ") + listed(names);
}

std::optional<at::Rights> rightsNamed(std::string_view word)
{
    if (word == kAll) return at::Rights::all();
    return at::rightNamed(word);
}

Access::Group &groupNamed(std::vector<Access::Group> &groups, const std::string &name, std::string &fault)
{
    const auto place =
        std::find_if(groups.begin(), groups.end(), [&](const auto &group) { return group.name == name; });
    if (place != groups.end()) return *place;
    const ::group *const entry = getgrnam(name.c_str());
    if (entry == nullptr && fault.empty()) fault = "there is no group " + name;
    return groups.emplace_back(Access::Group{name, entry == nullptr ? static_cast<gid_t>(-1) : entry->gr_gid, {}});
}

} // namespace

std::optional<Allowance> allowanceIn(std::string_view text, std::string &fault)
{
    const size_t sign = text.find('=');
    Allowance allowance{std::string(at::withoutBlanksAround(text.substr(0, sign))), {}};
    if (sign == std::string_view::npos || allowance.group.empty()) {
        fault = std::string(text) + " is not a group, =, and its rights";
        return std::nullopt;
    }
    for (const std::string_view word : at::fields(text.substr(sign + 1))) {
        const auto rights = rightsNamed(word);
        if (!rights) {
            fault = "\"" + std::string(word) + "\" is not among " + namesOf(at::Rights::all()) + ", nor all";
            return std::nullopt;
        }
        allowance.rights = allowance.rights | *rights;
    }
    return allowance;
}

at::Rights Access::rightsOf(uid_t user, std::span<const gid_t> groups) const
{
    if (user == 0 || user == owner_) return at::Rights::all();
    at::Rights rights;
    for (const Group &group : groups_)
        if (std::find(groups.begin(), groups.end(), group.id) != groups.end()) rights = rights | group.rights;
    return rights;
}

std::string Access::refusal(at::Rights held, at::Rights needed) const
{
    const at::Rights missing = needed.without(held);
    if (missing.isEmpty()) return {};
    std::vector<std::string> holders{"root", "the server's own user"};
    for (const Group &group : groups_)
        if (group.rights.has(missing)) holders.push_back("members of the group " + group.name);
    return "this user lacks " + namesOf(missing) + ", which " + listed(holders) + " have";
}

std::vector<Access::Group> groupsOf(const std::string &group, std::span<const Allowance> allowances, std::string &fault)
{
    std::vector<Access::Group> groups;
    for (const Allowance &allowance : allowances) {
        Access::Group &allowed = groupNamed(groups, allowance.group, fault);
        allowed.rights = allowed.rights | allowance.rights;
    }
    if (group.empty()) return groups;
    Access::Group &own = groupNamed(groups, group, fault);
    if (own.rights.isEmpty()) own.rights = kRightsOfGroup;
    return groups;
}

} // namespace host::at_server

#include "host/at_server/shares.h"

#include <algorithm>

namespace host::at_server {
namespace {

using Client = Shares::Client;

bool isIdler(const Client &one, const Client &other)
{
    return one.idleSince && (!other.idleSince || *one.idleSince < *other.idleSince);
}

} // namespace

Shares::Place Shares::placeFor(uid_t user, const Clients &clients, Clock::time_point now) const
{
    const auto isOwn = [&](const Client &client) { return client.user == user; };
    const auto own = static_cast<size_t>(std::count_if(clients.begin(), clients.end(), isOwn));
    const size_t places = isTrusted(user) ? kPlaces : kPlaces - kKeptPlaces;
    const bool hasAll = !isTrusted(user) && own >= kPlacesOfUser;
    if (!hasAll && clients.size() < places) return {};

    Clients candidates = clients;
    if (hasAll) std::erase_if(candidates, [&](const Client &client) { return !isOwn(client); });
    const auto idlest = std::min_element(candidates.begin(), candidates.end(), isIdler);
    const bool canGo = idlest != candidates.end() && idlest->idleSince && now - *idlest->idleSince >= patience_;
    if (canGo && clients.size() <= places) return {{}, idlest->session};
    return {hasAll ? "this user has too many clients" : "there are too many clients"};
}

std::string_view Shares::refusalOfCommand(uid_t user, const Clients &clients) const
{
    if (isTrusted(user)) return {};
    size_t own = 0;
    size_t all = 0;
    for (const Client &client : clients) {
        if (client.user == user) own += client.unanswered;
        if (!isTrusted(client.user)) all += client.unanswered;
    }
    if (own > kCommandsOfUser) return "this user waits for too many";
    if (all > kCommandsOfUsers) return "too many commands wait";
    return {};
}

} // namespace host::at_server

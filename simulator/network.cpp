#include "simulator/network.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace simulator {

bool Operator::offers(Technology technology) const
{
    return std::find(technologies.begin(), technologies.end(), technology) != technologies.end();
}

bool RadioPreference::allows(Technology technology) const
{
    return std::find(allowed.begin(), allowed.end(), technology) != allowed.end();
}

int Cell::area() const
{
    constexpr int kMadeFrom = 0x1000;
    constexpr int kSpan = 0x8000;
    return owner->area != 0 ? owner->area : kMadeFrom + std::atoi(owner->plmn.c_str()) % kSpan; // NOLINT(cert-err34-c)
}

long Cell::identity() const
{
    constexpr long kEachTechnology = 0x100;
    return owner->cell != 0 ? owner->cell
                            : static_cast<long>(area()) * kEachTechnology + static_cast<long>(technology) + 1;
}

Network::Network(std::vector<Operator> operators, IsHome isHome)
    : operators_(std::move(operators)), isHome_(std::move(isHome))
{
}

const Operator *Network::find(std::string_view name) const
{
    if (!hasCoverage_) return nullptr;
    for (const Operator &candidate : operators_) {
        if (candidate.plmn == name || candidate.name == name || candidate.shortName == name) return &candidate;
    }
    return nullptr;
}

std::optional<Cell> Network::cellOf(const Operator &owner, const NetworkWish &wish) const
{
    const auto canUse = [&](Technology technology) {
        return owner.offers(technology) && wish.preference.allows(technology) &&
               (!wish.technology || *wish.technology == technology);
    };
    if (wish.preference.first && canUse(*wish.preference.first)) return Cell{&owner, *wish.preference.first};
    for (const Technology technology : kNewestFirst) {
        if (canUse(technology)) return Cell{&owner, technology};
    }
    return std::nullopt;
}

Registration Network::registered(const Cell &cell) const
{
    return {isHome(*cell.owner) ? Status::Home : Status::Roaming, cell};
}

Registration Network::searchManually(const NetworkWish &wish) const
{
    const Operator *const chosen = find(wish.plmn);
    if (chosen == nullptr) return {Status::Searching, {}};
    const std::optional<Cell> cell = cellOf(*chosen, wish);
    if (!cell) return {Status::Searching, {}};
    return chosen->isForbidden ? Registration{Status::Denied, {}} : registered(*cell);
}

Registration Network::searchAutomatically(const NetworkWish &wish) const
{
    NetworkWish any = wish;
    any.technology.reset();
    std::optional<Cell> best;
    for (const Operator &candidate : operators_) {
        if (!hasCoverage_ || candidate.isForbidden) continue;
        const std::optional<Cell> cell = cellOf(candidate, any);
        if (cell && isHome(candidate)) return registered(*cell);
        if (!best) best = cell;
    }
    return best ? registered(*best) : Registration{Status::Searching, {}};
}

Registration Network::search(const NetworkWish &wish) const
{
    if (!wish.canTransmit || wish.selection == Selection::Deregistered) return {};
    if (wish.selection == Selection::Automatic) return searchAutomatically(wish);
    const Registration chosen = searchManually(wish);
    if (wish.selection == Selection::Manual || isRegistered(chosen.status)) return chosen;
    return searchAutomatically(wish);
}

} // namespace simulator

#include "simulator/device.h"

#include <utility>

#include "simulator/text.h"

namespace simulator {

std::string_view reportNameOf(Domain domain)
{
    constexpr std::array<std::string_view, kAllDomains.size()> kNames = {"+CREG", "+CGREG", "+CEREG"};
    return kNames[static_cast<size_t>(domain)];
}

Device::Device(Family theFamily, Scenario theScenario, uint64_t seed, Scheduler &scheduler, Report report)
    : family(theFamily), scenario(std::move(theScenario)), sim(scenario.sim), networkLock(scenario.networkLock),
      network(scenario.operators, [this](std::string_view plmn) { return sim.isHome(plmn); }),
      signal(scenario.signal, seed), contexts(scenario.contexts), scheduler_(scheduler), report_(std::move(report))
{
    for (const auto &[name, lock] : scenario.facilities)
        facilities.emplace(name, CodeLock(lock));
}

void Device::resetSettings()
{
    settings = {};
    settings.echo = scenario.echo;
    settings.cmee = scenario.cmee;
}

void Device::powerUp()
{
    resetSettings();
    function = Function::Full;
    sim.powerUp();
    if (scenario.sim.busyMs > 0) {
        sim.setBusy(true);
        busyEnd_ = scheduler_.after(scenario.sim.busyMs, [this] {
            sim.setBusy(false);
            reconsider();
        });
    }
    reconsider();
}

void Device::powerDown()
{
    if (search_) scheduler_.cancel(*search_);
    if (busyEnd_) scheduler_.cancel(*busyEnd_);
    search_.reset();
    busyEnd_.reset();
    sim.setBusy(false);
    registration_ = {};
    resetsAfterReply = false;
    resetSettings(); // nobody hears of what follows
    endContexts();
}

Failure Device::obstacle(Needs needs) const
{
    const SimState state = sim.state();
    if (needs >= Needs::Card && state == SimState::Absent) return Cme::SimNotInserted;
    if (needs >= Needs::Card && state == SimState::Busy) return Cme::SimBusy;
    if (needs >= Needs::Pin && state == SimState::Failed) return Cme::SimFailure;
    if (needs >= Needs::Pin && state == SimState::NeedsPin) return Cme::SimPinRequired;
    if (needs >= Needs::Pin && state == SimState::NeedsPuk) return Cme::SimPukRequired;
    if (needs >= Needs::Sim && networkLock.isActive()) return Cme::NetworkPinRequired;
    if (needs >= Needs::Radio && function != Function::Full) return Cme::OperationNotAllowed;
    return {};
}

void Device::reconsider()
{
    wish.canTransmit = !obstacle(Needs::Radio);
    if (search_) scheduler_.cancel(*search_);
    search_.reset();
    const Registration found = network.search(wish);
    if (found == registration_ || !isRegistered(found.status)) {
        enter(found);
        return;
    }
    enter({Status::Searching, {}});
    search_ = scheduler_.after(scenario.timing.registrationMs, [this, found] { enter(found); });
}

void Device::searchNow()
{
    reconsider();
    if (search_) scheduler_.cancel(*search_);
    search_.reset();
    enter(network.search(wish));
}

/** Makes a change, and reports of the registration what it has changed. */
template <typename Change>
void Device::reportingWhat(Change change)
{
    std::array<std::string, kAllDomains.size()> before;
    for (const Domain domain : kAllDomains)
        before[static_cast<size_t>(domain)] = reportOf(domain);
    change();
    for (const Domain domain : kAllDomains) {
        const std::string now = reportOf(domain);
        if (now != before[static_cast<size_t>(domain)]) report_(now);
    }
}

void Device::enter(const Registration &next)
{
    reportingWhat([&] { registration_ = next; });
    if (!isRegistered(next.status) && next.status != Status::Searching) endContexts();
}

void Device::attach(bool attached)
{
    reportingWhat([&] { stored.isAttached = attached; });
    if (!attached) endContexts();
}

void Device::useDomains(bool circuit, bool packet)
{
    reportingWhat([&] {
        stored.usesCircuitDomain = circuit;
        stored.usesPacketDomain = packet;
    });
}

void Device::endContexts()
{
    for (auto &[cid, context] : contexts) {
        if (context.isActive) reportEvent(concat("ME PDN DEACT ", cid));
        context.isActive = false;
    }
}

Status Device::status(Domain domain) const
{
    if (!isRegistered(registration_.status)) return registration_.status;
    const bool isLte = registration_.cell->technology == Technology::Lte;
    const bool isServed = domain == Domain::Circuit
                              ? stored.usesCircuitDomain
                              : stored.isAttached && stored.usesPacketDomain && (isLte || domain == Domain::Packet);
    return isServed ? registration_.status : Status::NotRegistered;
}

std::optional<Technology> Device::technology() const
{
    if (!registration_.cell) return std::nullopt;
    return registration_.cell->technology;
}

std::string Device::location(Domain domain) const
{
    if (!isRegistered(status(domain))) return {};
    const Cell &cell = *registration_.cell;
    const std::string codes =
        concat(',', quoted(hex(static_cast<unsigned>(cell.area()), 4)), ',',
               quoted(hex(static_cast<unsigned>(cell.identity()), 8)), ',', static_cast<int>(cell.technology));
    return domain == Domain::Packet ? codes + ",\"01\"" : codes;
}

std::string Device::reportOf(Domain domain) const
{
    const int mode = settings.registrationReports[static_cast<size_t>(domain)];
    if (mode == AT_REPORTS_OFF) return {};
    return concat(reportNameOf(domain), ": ", static_cast<int>(status(domain)),
                  mode == AT_REPORTS_LOCATION ? location(domain) : "");
}

void Device::reportEvent(const std::string &event)
{
    if (settings.eventReports) report_(concat("+CGEV: ", event));
}

} // namespace simulator

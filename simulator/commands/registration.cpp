// The registration reports, and attaching to the packet domain.
#include "simulator/commands/command_table.h"

namespace simulator {
namespace {

Domain domainOf(const Command &command)
{
    for (const Domain domain : kAllDomains) {
        if (reportNameOf(domain) == command.name) return domain;
    }
    return Domain::Circuit;
}

Reply readRegistration(Device &device, const Command &command)
{
    const Domain domain = domainOf(command);
    const int mode = device.settings.registrationReports[static_cast<size_t>(domain)];
    return named(command, mode, ',', static_cast<int>(device.status(domain)),
                 mode == AT_REPORTS_LOCATION ? device.location(domain) : "");
}

Reply setReports(Device &device, const Command &command)
{
    const std::optional<int> mode = command.number(0, AT_REPORTS_OFF, AT_REPORTS_LOCATION);
    if (!mode) return Cme::IncorrectParameters;
    device.settings.registrationReports[static_cast<size_t>(domainOf(command))] = *mode;
    return {};
}

Reply readAttached(Device &device, const Command &command)
{
    return named(command, isRegistered(device.status(Domain::Packet)) ? AT_CGATT_ATTACHED : AT_CGATT_DETACHED);
}

Reply attach(Device &device, const Command &command)
{
    const std::optional<int> attached = command.number(0, AT_CGATT_DETACHED, AT_CGATT_ATTACHED);
    if (!attached) return Cme::IncorrectParameters;
    device.attach(*attached == AT_CGATT_ATTACHED);
    return {};
}

Reply setAutoAttach(Device &device, const Command &command)
{
    const std::optional<int> state = command.number(0);
    if (!state) return Cme::IncorrectParameters;
    device.stored.autoAttach = *state;
    return {};
}

Reply readAutoAttach(Device &device, const Command &command)
{
    return named(command, device.stored.autoAttach);
}

} // namespace

CommandRows registrationCommands()
{
    constexpr auto kFree = Needs::Nothing;
    CommandRows rows = {
        {"+CGATT", Form::Read, kEvery, kFree, Pace::Quick, readAttached},
        {"+CGATT", Form::Set, kEvery, Needs::Radio, Pace::Quick, attach},
        test("+CGATT", kEvery, "(0,1)"),
        {"+ZGAAT", Form::Read, kEvery, kFree, Pace::Quick, readAutoAttach},
        {"+ZGAAT", Form::Set, kEvery, kFree, Pace::Quick, setAutoAttach},
    };
    for (const Domain domain : kAllDomains) {
        rows.push_back({reportNameOf(domain), Form::Read, kEvery, kFree, Pace::Quick, readRegistration});
        rows.push_back({reportNameOf(domain), Form::Set, kEvery, kFree, Pace::Quick, setReports});
        rows.push_back(test(reportNameOf(domain), kEvery, "(0-2)"));
    }
    return rows;
}

} // namespace simulator

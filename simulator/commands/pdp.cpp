// Packet data contexts.
#include "simulator/commands/command_table.h"

namespace simulator {
namespace {

constexpr int kDefaultBearer = 1;

bool isType(std::string_view type)
{
    return type.empty() || type == "IP" || type == "IPV6" || type == "IPV4V6";
}

Reply readContexts(Device &device, const Command &command)
{
    std::vector<std::string> lines;
    for (const auto &[cid, context] : device.contexts)
        lines.push_back(concat(command.name, ": ", cid, ',', quoted(context.type), ',', quoted(context.apn), ',',
                               quoted(context.address), ',', context.dataCompression, ',', context.headerCompression));
    return lines;
}

Reply defineContext(Device &device, const Command &command)
{
    const std::optional<int> cid = command.number(0, 1, kMaxContexts);
    const std::string type = upperCase(command.text(1));
    if (!cid || !isType(type)) return Cme::IncorrectParameters;
    if (command.arguments.size() == 1) {
        device.contexts.erase(*cid);
        return {};
    }
    PdpContext context;
    context.type = type;
    context.apn = command.text(2);
    context.address = command.text(3);
    context.dataCompression = command.number(4).value_or(0);
    context.headerCompression = command.number(5).value_or(0);
    context.isActive = device.contexts[*cid].isActive;
    device.contexts[*cid] = context;
    return {};
}

Reply setDefaultBearer(Device &device, const Command &command)
{
    const std::string type = upperCase(command.text(1));
    if (command.number(0) != kDefaultBearer || !isType(type)) return Cme::IncorrectParameters;
    PdpContext &context = device.contexts[kDefaultBearer];
    context.type = type;
    context.apn = command.text(2);
    return {};
}

Reply readActive(Device &device, const Command &command)
{
    std::vector<std::string> lines;
    for (const auto &[cid, context] : device.contexts)
        lines.push_back(concat(command.name, ": ", cid, ',', context.isActive ? 1 : 0));
    return lines;
}

Reply activate(Device &device, const Command &command)
{
    const std::optional<int> active = command.number(0, 0, 1);
    const std::optional<int> cid = command.number(1);
    if (!active || !cid) return Cme::IncorrectParameters;
    const auto context = device.contexts.find(*cid);
    if (context == device.contexts.end()) return Cme::InvalidIndex;
    if (*active == 1 && !isRegistered(device.status(Domain::Packet))) return Cme::NoNetworkService;
    const bool changes = context->second.isActive != (*active == 1);
    context->second.isActive = *active == 1;
    if (changes) device.reportEvent(concat(*active == 1 ? "ME PDN ACT " : "ME PDN DEACT ", *cid));
    return {};
}

Reply setEventReports(Device &device, const Command &command)
{
    const std::optional<int> mode = command.number(0, 0, 2);
    if (!mode) return Cme::IncorrectParameters;
    device.settings.eventReports = *mode != 0;
    return {};
}

Reply readEventReports(Device &device, const Command &command)
{
    return named(command, device.settings.eventReports ? 1 : 0, ",0");
}

} // namespace

CommandRows pdpCommands()
{
    constexpr auto kFree = Needs::Nothing;
    return {
        {"+CGDCONT", Form::Read, kEvery, kFree, Pace::Quick, readContexts},
        {"+CGDCONT", Form::Set, kEvery, kFree, Pace::Quick, defineContext},
        test("+CGDCONT", kEvery, "(1-16),\"IP\",,,(0),(0)"),
        {"*CGDFLT", Form::Set, kEvery, kFree, Pace::Quick, setDefaultBearer},
        {"+CGACT", Form::Read, kEvery, kFree, Pace::Quick, readActive},
        {"+CGACT", Form::Set, kEvery, Needs::Radio, Pace::Quick, activate},
        test("+CGACT", kEvery, "(0,1)"),
        {"+CGEREP", Form::Read, kEvery, kFree, Pace::Quick, readEventReports},
        {"+CGEREP", Form::Set, kEvery, kFree, Pace::Quick, setEventReports},
        test("+CGEREP", kEvery, "(0-2),(0,1)"),
    };
}

} // namespace simulator

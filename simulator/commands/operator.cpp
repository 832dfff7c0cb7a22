// Operators: who serves the modem, who could, and who is home.
#include "simulator/commands/command_table.h"

namespace simulator {
namespace {

constexpr int kPlainList = 5; // an operator a line

std::string nameOf(const Operator &which, int format)
{
    if (format == AT_COPS_NUMERIC) return which.plmn;
    return format == AT_COPS_SHORT_NAME ? which.shortName : which.name;
}

/** Access technologies with sub-kinds count as their family. */
Technology technologyOf(int value)
{
    switch (value) {
    case AT_ACT_E_UTRAN:
        return Technology::Lte;
    case AT_ACT_UTRAN:
    case AT_ACT_UTRAN_HSDPA:
    case AT_ACT_UTRAN_HSUPA:
    case AT_ACT_UTRAN_HSPA:
        return Technology::Umts;
    default:
        return Technology::Gsm;
    }
}

Reply readOperator(Device &device, const Command &command)
{
    const int mode = static_cast<int>(device.wish.selection);
    const std::optional<Cell> &cell = device.registration().cell;
    if (!cell) return named(command, mode);
    const int format = device.settings.operatorFormat;
    return named(command, mode, ',', format, ',', quoted(nameOf(*cell->owner, format)), ',',
                 static_cast<int>(cell->technology));
}

/** The operators that a scan finds, each with every technology that it offers. */
std::vector<std::string> scan(const Device &device)
{
    std::vector<std::string> found;
    if (!device.network.hasCoverage()) return found;
    for (const Operator &candidate : device.network.operators()) {
        for (const Technology technology : kNewestFirst) {
            if (!candidate.offers(technology)) continue;
            const bool isCurrent = device.registration().cell == Cell{&candidate, technology};
            const int status = isCurrent               ? AT_OPERATOR_CURRENT
                               : candidate.isForbidden ? AT_OPERATOR_FORBIDDEN
                                                       : AT_OPERATOR_AVAILABLE;
            found.push_back(concat(status, ',', quoted(candidate.name), ',', quoted(candidate.shortName), ',',
                                   quoted(candidate.plmn), ',', static_cast<int>(technology)));
        }
    }
    return found;
}

Reply scanInOneLine(Device &device, const Command &command)
{
    std::string entries;
    for (const std::string &entry : scan(device))
        entries += concat(entries.empty() ? "(" : ",(", entry, ')');
    return named(command, entries, ",,(0-4),(0-2)");
}

Reply scanInLines(Device &device, const Command &command)
{
    std::vector<std::string> lines;
    for (const std::string &entry : scan(device))
        lines.push_back(concat(command.name, ": ", entry));
    return lines;
}

Reply setFormat(Device &device, const Command &command)
{
    const std::optional<int> format = command.number(1, AT_COPS_LONG_NAME, AT_COPS_NUMERIC);
    if (!format) return Cme::IncorrectParameters;
    device.settings.operatorFormat = *format;
    return {};
}

Failure manualFailure(const Device &device)
{
    if (device.wish.selection != Selection::Manual) return {};
    switch (device.registration().status) {
    case Status::Home:
    case Status::Roaming:
        return {};
    case Status::Denied:
        return Cme::NetworkNotAllowed;
    default:
        return Cme::NoNetworkService;
    }
}

Reply select(Device &device, const Command &command, Selection selection)
{
    const bool namesOperator = selection == Selection::Manual || selection == Selection::ManualThenAutomatic;
    if (namesOperator && command.text(2).empty()) return Cme::IncorrectParameters;
    if (const Failure obstacle = device.obstacle(Needs::Radio)) return *obstacle;
    device.wish.selection = selection;
    if (namesOperator) {
        const Operator *const known = device.network.find(command.text(2));
        device.wish.plmn = known != nullptr ? known->plmn : std::string(command.text(2));
        const std::optional<int> technology = command.number(3);
        device.wish.technology.reset();
        if (technology) device.wish.technology = technologyOf(*technology);
    }
    device.searchNow();
    return manualFailure(device);
}

Reply setOperator(Device &device, const Command &command)
{
    const std::optional<int> mode = command.number(0, AT_COPS_AUTOMATIC, kPlainList);
    if (!mode) return Cme::IncorrectParameters;
    if (*mode == AT_COPS_FORMAT_ONLY) return setFormat(device, command);
    if (*mode != kPlainList) return select(device, command, static_cast<Selection>(*mode));
    if (const Failure obstacle = device.obstacle(Needs::Radio)) return *obstacle;
    return scanInLines(device, command);
}

struct Plmn {
    std::string mcc;
    std::string mnc;
};

Plmn split(std::string_view plmn)
{
    return {std::string(plmn.substr(0, 3)), std::string(plmn.substr(std::min<size_t>(3, plmn.size())))};
}

/** As long as the operators' codes say that it is. */
Plmn homePlmn(const Device &device)
{
    constexpr size_t kUsualLength = 5;
    for (const Operator &candidate : device.network.operators()) {
        if (device.network.isHome(candidate)) return split(candidate.plmn);
    }
    return split(std::string_view(device.sim.settings().imsi).substr(0, kUsualLength));
}

Reply networkNames(Device &device, const Command &command)
{
    const Plmn home = homePlmn(device);
    const std::string homeTexts =
        concat(quoted(device.sim.settings().homeName), ',', quoted(home.mcc), ',', quoted(home.mnc));
    const Registration &registration = device.registration();
    if (!registration.cell) return named(command, ",,,", homeTexts);
    const Operator &serving = *registration.cell->owner;
    const Plmn plmn = split(serving.plmn);
    return named(command, quoted(serving.name), ',', quoted(plmn.mcc), ',', quoted(plmn.mnc), ',', homeTexts, ',',
                 quoted(registration.status == Status::Roaming ? "ROAM_ON" : "ROAM_OFF"));
}

std::string_view nameOf(Technology technology)
{
    switch (technology) {
    case Technology::Gsm:
        return "GSM";
    case Technology::Umts:
        return "UMTS";
    case Technology::Lte:
        break;
    }
    return "LTE";
}

Reply networkType(Device &device, const Command &command)
{
    const bool isCircuit = isRegistered(device.status(Domain::Circuit));
    const bool isPacket = isRegistered(device.status(Domain::Packet));
    const std::optional<Technology> technology = device.technology();
    if (!technology || (!isCircuit && !isPacket)) return named(command, "\"No Service\",\"NO_SERVICE\"");
    const char *const domain = !isPacket ? "CS_ONLY" : !isCircuit ? "PS_ONLY" : "CS_PS";
    return named(command, quoted(nameOf(*technology)), ',', quoted(domain));
}

} // namespace

CommandRows operatorCommands()
{
    return {
        {"+COPS", Form::Read, kEvery, Needs::Nothing, Pace::Quick, readOperator},
        {"+COPS", Form::Set, kEvery, Needs::Nothing, Pace::Select, setOperator},
        {"+COPS", Form::Test, kEvery, Needs::Radio, Pace::Scan, scanInOneLine},
        {"+ZDON", Form::Read, kEvery, Needs::Pin, Pace::Quick, networkNames},
        {"+ZPAS", Form::Read, kEvery, Needs::Nothing, Pace::Quick, networkType},
    };
}

Pace paceOf(const CommandRow &row, const Command &command)
{
    if (row.pace != Pace::Select) return row.pace;
    if (command.number(0) == AT_COPS_FORMAT_ONLY) return Pace::Quick;
    return command.number(0) == kPlainList ? Pace::Scan : Pace::Select;
}

} // namespace simulator

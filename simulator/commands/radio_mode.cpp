// Which technologies the modem may use: each family has a command and numbers of its own.
#include "simulator/commands/command_table.h"

namespace simulator {
namespace {

using Technologies = std::vector<Technology>;

const Technologies kAll = {Technology::Lte, Technology::Umts, Technology::Gsm};

struct Mode {
    int number;
    Technologies allowed;
};

const Mode *find(const std::vector<Mode> &modes, int number)
{
    for (const Mode &mode : modes) {
        if (mode.number == number) return &mode;
    }
    return nullptr;
}

void prefer(Device &device, const Technologies &allowed, std::optional<Technology> first)
{
    device.wish.preference = {allowed, first};
    device.wish.technology.reset(); // the later word counts
    device.reconsider();
}

const std::vector<Mode> &zsntModes()
{
    static const std::vector<Mode> modes = {
        {0, kAll},
        {1, {Technology::Gsm}},
        {2, {Technology::Umts}},
        {6, {Technology::Lte}},
        {7, {Technology::Lte, Technology::Umts}},
    };
    return modes;
}

std::optional<Technology> firstOfZsnt(int order)
{
    switch (order) {
    case 1:
        return Technology::Gsm;
    case 2:
        return Technology::Umts;
    case 3:
        return Technology::Lte;
    default:
        return std::nullopt;
    }
}

/** The second number is the selection of operators, which AT+COPS changes too. */
Reply readZsnt(Device &device, const Command &command)
{
    const int isManual = device.wish.selection == Selection::Manual ? 1 : 0;
    return named(command, device.stored.zsnt[0], ',', isManual, ',', device.stored.zsnt[2]);
}

Reply setZsnt(Device &device, const Command &command)
{
    const std::optional<int> mode = command.number(0);
    const std::optional<int> manual = command.number(1, 0, 1);
    const std::optional<int> order = command.number(2, 0, 3);
    const Mode *const known = mode ? find(zsntModes(), *mode) : nullptr;
    if (known == nullptr || !manual || !order) return Cme::IncorrectParameters;
    device.stored.zsnt = {*mode, *manual, *order};
    if (*manual == 0) device.wish.selection = Selection::Automatic;
    prefer(device, known->allowed, firstOfZsnt(*order));
    return {};
}

const std::vector<Mode> &sysconfigModes()
{
    static const std::vector<Mode> modes = {
        {2, kAll},
        {13, {Technology::Gsm}},
        {14, {Technology::Umts}},
        {15, {}}, // TD-SCDMA, which is nowhere in service
        {17, {Technology::Lte}},
        {18, {Technology::Umts, Technology::Gsm}},
        {19, {Technology::Lte, Technology::Gsm}},
        {20, {Technology::Lte, Technology::Umts}},
    };
    return modes;
}

std::optional<Technology> firstOfSysconfig(int order)
{
    switch (order) {
    case 1:
    case 4:
        return Technology::Gsm;
    case 2:
    case 5:
        return Technology::Umts;
    case 6:
    case 7:
        return Technology::Lte;
    default:
        return std::nullopt;
    }
}

Reply readSysconfig(Device &device, const Command &command)
{
    const auto &values = device.stored.sysconfig;
    return named(command, values[0], ',', values[1], ',', values[2], ',', values[3]);
}

Reply setSysconfig(Device &device, const Command &command)
{
    const std::optional<int> mode = command.number(0);
    const std::optional<int> order = command.number(1, 0, 7);
    const std::optional<int> roaming = command.number(2, 0, 2);
    const std::optional<int> domain = command.number(3, 0, 4);
    const Mode *const known = mode ? find(sysconfigModes(), *mode) : nullptr;
    if (known == nullptr || !order || !roaming || !domain) return Cme::IncorrectParameters;
    device.stored.sysconfig = {*mode, *order, *roaming, *domain};
    device.useDomains(*domain != 1, *domain != 0);
    prefer(device, known->allowed, firstOfSysconfig(*order));
    return {};
}

const std::vector<Mode> &eratModes()
{
    static const std::vector<Mode> modes = {
        {0, {Technology::Gsm}}, {1, {Technology::Umts}}, {2, kAll}, {3, {Technology::Lte}}};
    return modes;
}

/** The technology in use and its packet service, then the two numbers that were set. */
Reply readErat(Device &device, const Command &command)
{
    const std::optional<Technology> technology = device.technology();
    const int inUse = technology ? static_cast<int>(*technology) : 0;
    const int packetService = isRegistered(device.status(Domain::Packet)) ? 1 : 0;
    return named(command, inUse, ',', packetService, ',', device.stored.erat[0], ',', device.stored.erat[1]);
}

Reply setErat(Device &device, const Command &command)
{
    const std::optional<int> mode = command.number(0);
    const std::optional<int> preferred = command.number(1, 0, 3);
    const Mode *const known = mode ? find(eratModes(), *mode) : nullptr;
    if (known == nullptr || !preferred) return Cme::IncorrectParameters;
    device.stored.erat = {*mode, *preferred};
    prefer(device, known->allowed, firstOfZsnt(*preferred));
    return {};
}

Reply setBand(Device &device, const Command &command)
{
    const std::optional<int> band = command.number(0);
    if (!band) return Cme::IncorrectParameters;
    device.stored.band = *band;
    return {};
}

Reply readBand(Device &device, const Command &command)
{
    return named(command, device.stored.band);
}

Reply setLteMode(Device &device, const Command &command)
{
    const std::optional<int> mode = command.number(0);
    if (!mode) return Cme::IncorrectParameters;
    device.stored.lteMode = *mode;
    return {};
}

Reply readLteMode(Device &device, const Command &command)
{
    return named(command, device.stored.lteMode);
}

} // namespace

CommandRows radioModeCommands()
{
    constexpr Families kZsnt = kQualcomm | kTsp | kDefault; // TSP: for the selection of operators
    constexpr Families kSysconfig = kTsp | kSpreadtrum;
    constexpr auto kFree = Needs::Nothing;
    return {
        {"+ZSNT", Form::Read, kZsnt, kFree, Pace::Quick, readZsnt},
        {"+ZSNT", Form::Set, kZsnt, kFree, Pace::Quick, setZsnt},
        {"^SYSCONFIG", Form::Read, kSysconfig, kFree, Pace::Quick, readSysconfig},
        {"^SYSCONFIG", Form::Set, kSysconfig, kFree, Pace::Quick, setSysconfig},
        {"+ERAT", Form::Read, kMtk, kFree, Pace::Quick, readErat},
        {"+ERAT", Form::Set, kMtk, kFree, Pace::Quick, setErat},
        {"+ZPREFBAND", Form::Read, kQualcomm, kFree, Pace::Quick, readBand},
        {"+ZPREFBAND", Form::Set, kQualcomm, kFree, Pace::Quick, setBand},
        {"+ZEACT", Form::Read, kEvery, kFree, Pace::Quick, readLteMode},
        {"+ZEACT", Form::Set, kEvery, kFree, Pace::Quick, setLteMode},
    };
}

} // namespace simulator

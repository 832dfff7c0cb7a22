// What the modem measures: signal, cell, transmit power and the state of its system.
#include <algorithm>

#include "simulator/commands/command_table.h"

namespace simulator {
namespace {

/** System modes as ^SYSINFO and *ZAIRINFO count them. */
int systemMode(std::optional<Technology> technology)
{
    if (!technology) return 0;
    switch (*technology) {
    case Technology::Gsm:
        return 3;
    case Technology::Umts:
        return 5;
    case Technology::Lte:
        break;
    }
    return 17;
}

Reply systemInformation(Device &device, const Command &command)
{
    constexpr int kNoService = 0;
    constexpr int kLimited = 1;
    constexpr int kFull = 2;
    constexpr int kNoSim = 255;
    const bool isCircuit = isRegistered(device.status(Domain::Circuit));
    const bool isPacket = isRegistered(device.status(Domain::Packet));
    const int service = isCircuit || isPacket ? kFull : device.hears() ? kLimited : kNoService;
    const int domain = (isCircuit ? 1 : 0) + (isPacket ? 2 : 0);
    const int roaming = device.registration().status == Status::Roaming ? 1 : 0;
    const bool isValid = !device.obstacle(Needs::Sim);
    const int card = device.sim.state() == SimState::Absent ? kNoSim : isValid ? 1 : 0;
    return concat(command.name, host::family::rowOf(device.family).sysinfoHasBlank ? ": " : ":", service, ',', domain,
                  ',', roaming, ',', systemMode(device.technology()), ',', card);
}

Reply signalQuality(Device &device, const Command &command)
{
    if (!device.hears()) return named(command, AT_SIGNAL_UNKNOWN, ',', AT_SIGNAL_UNKNOWN);
    const int rssi = std::clamp((device.signal.look().rssiDbm + 113) / 2, 0, 31);
    return named(command, rssi, ',', AT_SIGNAL_UNKNOWN);
}

Reply extendedSignalQuality(Device &device, const Command &command)
{
    const std::optional<Technology> technology = device.hears() ? device.technology() : std::nullopt;
    return named(command, extendedQuality(device.signal.look(), technology));
}

Reply threeStrengths(Device &device, const Command &command)
{
    const SignalFigures seen = device.signal.look();
    return named(command, seen.rssiDbm, ',', seen.ecIoDb, ',', seen.rscpDbm);
}

/** One value on GSM, two on UMTS, four on LTE. */
Reply strengthsByTechnology(Device &device, const Command &command)
{
    const SignalFigures seen = device.signal.look();
    switch (device.technology().value_or(Technology::Gsm)) {
    case Technology::Gsm:
        return named(command, seen.rssiDbm);
    case Technology::Umts:
        return named(command, seen.rscpDbm, ',', seen.ecIoDb);
    case Technology::Lte:
        break;
    }
    return named(command, seen.rsrpDbm, ',', seen.rsrqDb, ',', seen.rssiDbm, ',', seen.sinrDb);
}

Reply cellLock(Device & /*device*/, const Command &command)
{
    return named(command, "0,0,0");
}

Reply cellInformation(Device &device, const Command &command)
{
    struct Channel {
        const char *band;
        int number;
    };
    const std::optional<Cell> &cell = device.registration().cell;
    if (!cell) return named(command, "0,0,\"\",0");
    const Channel channel = cell->technology == Technology::Lte    ? Channel{"B3", 1650}
                            : cell->technology == Technology::Umts ? Channel{"B1", 10688}
                                                                   : Channel{"GSM900", 62};
    constexpr long kPhysicalCells = 504;
    return named(command, cell->identity(), ',', cell->identity() % kPhysicalCells, ',', quoted(channel.band), ',',
                 channel.number);
}

/** The weaker the signal, the stronger the modem sends. */
Reply transmitPower(Device &device, const Command &command)
{
    const int powerDbm = std::clamp(-60 - device.signal.look().rssiDbm, -40, 22);
    return named(command, systemMode(device.technology()), ',', powerDbm, ".5");
}

} // namespace

CommandRows signalCommands()
{
    constexpr auto kFree = Needs::Nothing;
    return {
        {"^SYSINFO", Form::Execute, kEvery, kFree, Pace::Quick, systemInformation},
        {"+CSQ", Form::Execute, kEvery, kFree, Pace::Quick, signalQuality},
        test("+CSQ", kEvery, "(0-31,99),(0-7,99)"),
        {"+CESQ", Form::Execute, kEvery, kFree, Pace::Quick, extendedSignalQuality},
        {"+ZRSSI", Form::Execute, kMtk | kTsp | kSpreadtrum | kDefault, kFree, Pace::Quick, threeStrengths},
        {"+ZRSSI", Form::Read, kQualcomm, kFree, Pace::Quick, strengthsByTechnology},
        {"+ZLTELC", Form::Read, kEvery, kFree, Pace::Quick, cellLock},
        {"+ZCELLINFO", Form::Read, kEvery, kFree, Pace::Quick, cellInformation},
        {"*ZAIRINFO", Form::Read, kEvery, kFree, Pace::Quick, transmitPower},
    };
}

} // namespace simulator

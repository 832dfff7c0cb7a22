#include <array>
#include <cmath>
#include <limits>

#include <mainControl/api.h>

#include "krctl/commands/commands.h"
#include "krctl/commands/library_value.h"
#include "krctl/session/session.h"

namespace krctl {
namespace {

void addServingCell(Report &report, Session &session)
{
    CellInfo info{kUntold, kUntold, "", 0};
    (void)session.has(ItemKind::Network, "serving cell (AT+ZCELLINFO?)", [&] { return KR_getCellInfo(&info); });
    Section &cell = report.addSection("Serving cell", "serving_cell");
    cell.add(numberField("Cell or area", "eci_lac", told(info.eci_lac)));
    cell.add(numberField("Physical cell", "pci", told(info.pci)));
    cell.add(textField("Band", "band", info.band));
    cell.add(numberField("Channel", "dl_earfcn", info.dlEarfcn == 0 ? std::nullopt : told(info.dlEarfcn)));
}

void addTransmitter(Report &report, Session &session)
{
    ZairInfo info{kUntold, std::numeric_limits<float>::quiet_NaN()};
    (void)session.has(ItemKind::Network, "transmit power (AT*ZAIRINFO?)", [&] { return KR_getTxPowerInfo(&info); });
    Section &transmitter = report.addSection("Transmitter", "transmitter");
    const bool isTold = !std::isnan(info.txpow);
    transmitter.add(realField("Power", "power", isTold ? std::optional<double>(info.txpow) : std::nullopt));
    transmitter.add(numberField("Network type", "network_type_code", told(info.nettype)));
}

void addCellLock(Report &report, Session &session)
{
    int32_t action = kUntold;
    int32_t channel = kUntold;
    int32_t cell = kUntold;
    (void)session.has(ItemKind::Network, "cell lock (AT+ZLTELC?)",
                      [&] { return KR_getZltelcInfo(&action, &channel, &cell); });
    Section &lock = report.addSection("Cell lock", "cell_lock");
    lock.add(numberField("Action", "action_code", told(action)));
    lock.add(numberField("Channel", "earfcn", told(channel)));
    lock.add(numberField("Cell", "cell", told(cell)));
}

Report cell(Context &context)
{
    Session &session = context.session;
    Report report;
    addServingCell(report, session);
    addTransmitter(report, session);
    addCellLock(report, session);
    if (!session.isAnythingTold()) throw session.failureFor("KR_getCellInfo", "tell its serving cell");
    session.finish(report);
    return report;
}

constexpr std::array kCommands{
    Command{.path = "cell",
            .help = "serving cell, transmit power, cell lock, in the modem's own figures",
            .examples = "krctl cell\nkrctl -K cell",
            .run = cell},
};

} // namespace

std::span<const Command> cellCommands()
{
    return kCommands;
}

} // namespace krctl

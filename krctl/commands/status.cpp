#include <array>
#include <utility>

#include <mainControl/api.h>

#include "krctl/commands/commands.h"
#include "krctl/commands/identity.h"
#include "krctl/commands/network_reading.h"
#include "krctl/commands/radio_reading.h"
#include "krctl/commands/signal_reading.h"
#include "krctl/commands/sim_reading.h"
#include "krctl/output/render.h"
#include "krctl/session/call_failure.h"

namespace krctl {
namespace {

std::string joined(const std::string &one, const std::string &other)
{
    return one.empty() || other.empty() ? one + other : one + ' ' + other;
}

void addModem(Report &report, Session &session)
{
    Section &modem = report.addSection("Modem", "modem");
    const std::string maker = identity(session, ItemKind::Device, KR_getManufacturer, "manufacturer");
    const std::string model = identity(session, ItemKind::Device, KR_getModelID, "model");
    Field device = textField("Device", "", joined(maker, model));
    modem.add(device).add(textField("", "manufacturer", maker)).add(textField("", "model", model));
    modem.add(
        textField("Firmware", "firmware", identity(session, ItemKind::Device, KR_getFirmwareRevision, "firmware")));
    modem.add(textField("IMEI", "imei", identity(session, ItemKind::Device, KR_getIMEI, "IMEI")));
    modem.add(textField("Family", "family", session.platformName()));
    modem.add(textField("Port", "port", jsonText(session.serverStatus(), "device").value_or("")));
    const auto radio = readRadio(session);
    modem.addCode("Radio", "radio", radio, wordOf(kRadioPowers, radio));
}

void addNetwork(Report &report, Session &session)
{
    const SelectedOperator serving = readOperator(session);
    const Registration eps = readRegistration(session, kEps);
    const Registration packet = readRegistration(session, kPacket);
    Section &network = report.addSection("Network", "network");
    Field name = textField("Operator", "operator", serving.name);
    if (serving.name.empty() && !serving.code.empty()) name.text = "code " + serving.code;
    network.add(name).add(textField("", "operator_code", serving.code));
    const auto technology = serving.technology ? serving.technology : eps.technology;
    const bool isServed = !serving.name.empty() || !serving.code.empty();
    if (isServed) session.note("technology", Ending::Done, technology.has_value());
    network.addCode("Technology", "technology", technology, wordOf(kTechnologies, technology));
    addRegistration(network, kEps.label, "eps_registration", eps.state);
    addRegistration(network, kPacket.label, "packet_registration", packet.state);
}

Report status(Context &context)
{
    Session &session = context.session;
    session.require(KR_startAT(), "KR_startAT", "answer");
    Report report;
    addModem(report, session);
    const SimReading sim = readSim(session);
    addSimState(report.addSection("SIM", "sim"), sim);
    addNetwork(report, session);
    addSignal(report.addSection("Signal", "signal"), readSignal(session));
    addNextStep(report, sim);
    const bool isAnythingTold = session.isAnythingTold();
    session.finish(report);
    if (isAnythingTold) return report;

    Failure failure = failureOf("say anything about itself", session.where("krctl status"), session.finalResult());
    failure.known = std::move(report);
    throw Failure(std::move(failure));
}

constexpr std::array kCommands{
    Command{.path = "status",
            .help = "device, SIM, network and signal at a glance",
            .examples = "krctl status\nkrctl -J status | jq .data.signal.rsrp_dbm\nkrctl --platform mtk status",
            .run = status},
};

} // namespace

std::span<const Command> statusCommands()
{
    return kCommands;
}

} // namespace krctl

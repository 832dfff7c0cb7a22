#include <array>
#include <utility>

#include <mainControl/api.h>

#include "krctl/commands/commands.h"
#include "krctl/commands/readings.h"
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
    const std::string maker = identity(session, KR_getManufacturer, "manufacturer");
    const std::string model = identity(session, KR_getModelID, "model");
    Field device = textField("Device", "", joined(maker, model));
    modem.add(device).add(textField("", "manufacturer", maker)).add(textField("", "model", model));
    modem.add(textField("Firmware", "firmware", identity(session, KR_getFirmwareRevision, "firmware")));
    modem.add(textField("IMEI", "imei", identity(session, KR_getIMEI, "IMEI")));
    modem.add(textField("Family", "family", session.platformName()));
    modem.add(textField("Port", "port", jsonText(session.serverStatus(), "device").value_or("")));
    int32_t power = 0;
    const bool isPowerKnown = session.has(KR_getPower(&power), "state of the radio");
    const auto radio = isPowerKnown ? std::optional(power) : std::nullopt;
    modem.addCode("Radio", "radio", radio, wordOf(kRadioPowers, radio));
}

void addNetwork(Report &report, Session &session)
{
    const OperatorReading serving = readOperator(session);
    const RegistrationReading eps = readEpsRegistration(session);
    const RegistrationReading packet = readPacketRegistration(session);
    Section &network = report.addSection("Network", "network");
    network.add(textField("Operator", "operator", serving.name));
    const auto technology = serving.technology ? serving.technology : eps.technology;
    network.addCode("Technology", "technology", technology, wordOf(kTechnologies, technology));
    addRegistration(network, "LTE", "eps_registration", eps);
    addRegistration(network, "Packet data", "packet_registration", packet);
}

/** Whether the modem told anything but the state of its SIM. */
bool isAnythingKnown(const Report &report)
{
    for (const Section &section : report.sections)
        for (const Field &field : section.fields) {
            const bool isOurs =
                section.key == "sim" || field.key == "family" || field.key == "port" || field.key.empty();
            if (!isOurs && !std::holds_alternative<std::monostate>(field.value)) return true;
        }
    return false;
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
    session.noteMissing(report);
    if (isAnythingKnown(report)) return report;

    Failure failure = failureOf("say anything about itself", session.where("krctl status"), session.finalResult());
    if (sim.state) isInTheWay(*sim.state, failure);
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

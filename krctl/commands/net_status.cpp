#include <array>
#include <cstdio>
#include <utility>

#include <mainControl/api.h>

#include "krctl/commands/commands.h"
#include "krctl/commands/readings.h"
#include "krctl/commands/service_provider.h"
#include "krctl/output/output.h"

namespace krctl {
namespace {

constexpr Parameter kBySelection{
    .name = "--by-selection",
    .help = "names and codes as the operator selection gives them; names operators long from then on",
    .kind = Parameter::Kind::Flag};

/** MCC and MNC as one text; a country has three digits, a network two unless it needs three. */
std::string codeText(int32_t mcc, int32_t mnc)
{
    if (mcc <= 0) return {};
    std::array<char, 32> text{};
    (void)std::snprintf(text.data(), text.size(), "%03d%02d", mcc, mnc);
    return text.data();
}

struct Serving {
    int32_t circuitDomain = 0;
    int32_t packetDomain = 0;
    int32_t roaming = ROAMING_STATE_UNKNOWN;
    int32_t mcc = 0;
    int32_t mnc = 0;
    std::string type = std::string(kMostText, '\0');
    std::string name = std::string(kMostText, '\0');
    std::string domain = std::string(kMostText, '\0');
    bool isKnown = false;
};

Serving readServing(Session &session, bool bySelection)
{
    Serving serving;
    const auto read = [&](auto function) {
        return function(&serving.circuitDomain, &serving.packetDomain, &serving.roaming, &serving.mcc, &serving.mnc,
                        kMostText, serving.type.data(), kMostText, serving.name.data(), serving.domain.data());
    };
    const uint32_t result = bySelection ? read(KR_getServingNetworkC) : read(KR_getServingNetwork);
    serving.isKnown = session.has(result, bySelection ? "serving network (AT+ZPAS?, AT+CREG?, AT+COPS?)"
                                                      : "serving network (AT+ZPAS?, AT+ZDON?)");
    for (std::string *text : {&serving.type, &serving.name, &serving.domain})
        *text = serving.isKnown ? writtenText(std::move(*text)) : "";
    return serving;
}

void addOperator(Report &report, Session &session, bool bySelection)
{
    const Serving serving = readServing(session, bySelection);
    const OperatorReading selected = readOperator(session);
    int32_t mode = 0;
    const bool isModeKnown = session.has(KR_getNetworkSelectionMode(&mode), "selection mode");
    const auto selection = isModeKnown ? std::optional(mode) : std::nullopt;

    Section &section = report.addSection("Operator", "operator");
    section.add(textField("Name", "name", serving.name.empty() ? selected.name : serving.name));
    section.add(textField("Code", "code", codeText(serving.mcc, serving.mnc)));
    section.addCode("Technology", "technology", selected.technology, wordOf(kTechnologies, selected.technology));
    section.add(textField("Network type", "network_type", serving.type));
    section.addCode("Selection", "selection", selection, wordOf(kSelectionModes, selection));
    const bool isRoamingKnown = serving.isKnown && serving.roaming != ROAMING_STATE_UNKNOWN;
    section.add(flagField("Roaming", "is_roaming",
                          isRoamingKnown ? std::optional(serving.roaming == ROAMING_STATE_ROAMING) : std::nullopt));
    const auto addDomain = [&](const char *label, const char *key, int32_t domain) {
        const auto code = serving.isKnown ? std::optional(domain) : std::nullopt;
        section.addCode(label, key, code, wordOf(kDomains, code));
    };
    addDomain("Calls", "circuit_domain", serving.circuitDomain);
    addDomain("Packet data", "packet_domain", serving.packetDomain);
}

void addPlace(Section &section, const char *label, const char *key, const std::string &value)
{
    Field field = textField(label, key, value);
    field.onlyIfKnown = true;
    section.add(field);
}

void addRegistrations(Report &report, Session &session)
{
    const RegistrationReading eps = readEpsRegistration(session);
    const RegistrationReading packet = readPacketRegistration(session);
    const RegistrationReading circuit = readCircuitRegistration(session);
    Section &section = report.addSection("Registration", "registration");
    addRegistration(section, "LTE", "eps", eps);
    addPlace(section, "  tracking area", "tracking_area", eps.area);
    addPlace(section, "  cell", "eps_cell", eps.cell);
    addRegistration(section, "Packet data", "packet", packet);
    addRegistration(section, "Calls", "circuit", circuit);
    addPlace(section, "  location area", "location_area", circuit.area);
    addPlace(section, "  cell", "circuit_cell", circuit.cell);
}

void addSystem(Report &report, Session &session)
{
    constexpr int32_t kNoCode = -1;
    std::array<int32_t, 5> codes{};
    codes.fill(kNoCode);
    auto &[service, domain, roaming, mode, sim] = codes;
    (void)session.has(KR_getSysinfo(&service, &domain, &roaming, &mode, &sim, 0, 0), "system information (AT^SYSINFO)");
    Section &section = report.addSection("", "system");
    const auto add = [&](const char *key, int32_t code) {
        section.add(numberField("", key, code == kNoCode ? std::nullopt : std::optional<int64_t>(code)));
    };
    add("service_code", service);
    add("domain_code", domain);
    add("roaming_code", roaming);
    add("mode_code", mode);
    add("sim_code", sim);
}

Report status(Context &context)
{
    Session &session = context.session;
    Report report;
    addOperator(report, session, context.arguments.has(kBySelection.name));
    addRegistrations(report, session);
    addSystem(report, session);
    constexpr size_t kItems = 7;
    if (session.missing().size() == kItems) throw session.failureFor("KR_getCops", "tell its network");
    session.noteMissing(report);
    return report;
}

Report home(Context &context)
{
    Session &session = context.session;
    int32_t mcc = 0;
    int32_t mnc = 0;
    std::string name(kMostText, '\0');
    const bool isKnown = session.has(KR_getHomeNetwork(&mcc, &mnc, kMostText, name.data()), "home network (AT+ZDON?)");
    const ServiceProvider provider = readServiceProvider(session);
    if (!isKnown && !provider.isSimRead) throw session.failureFor("KR_getHomeNetwork", "tell its home network");
    Report report;
    Section &section = report.addSection("", "");
    section.add(textField("Home network", "name", isKnown ? writtenText(std::move(name)) : ""));
    section.add(textField("Code", "code", codeText(mcc, mnc)));
    section.add(textField("Service provider", "service_provider", provider.name));
    Section &friends = report.addSection("", "friendly_operators");
    friends.kind = Section::Kind::Lines;
    friends.title = provider.friendlyOperators.empty() ? "" : "Operators that show this name";
    friends.lines = provider.friendlyOperators;
    session.noteMissing(report);
    return report;
}

constexpr std::array kStatusParameters{kBySelection};
const std::array kCommands{
    Command{.path = "net status",
            .help = "operator, registration, place",
            .examples = "krctl net status",
            .parameters = kStatusParameters,
            .run = status},
    Command{.path = "net home",
            .help = "the home network and the SIM's service provider",
            .examples = "krctl net home",
            .run = home},
};

} // namespace

std::span<const Command> netStatusCommands()
{
    return kCommands;
}

} // namespace krctl

#include <array>
#include <string>
#include <utility>

#include <mainControl/api.h>
#include <mainControl/at_values.h>

#include "krctl/commands/commands.h"
#include "krctl/commands/library_value.h"
#include "krctl/commands/network_reading.h"
#include "krctl/commands/service_provider.h"
#include "krctl/output/output.h"

namespace krctl {
namespace {

constexpr Parameter kBySelection{.name = "--by-selection",
                                 .help = "names and codes as the operator selection gives them",
                                 .kind = Parameter::Kind::Flag};

struct Serving {
    int32_t circuitDomain = 0;
    int32_t packetDomain = 0;
    int32_t roaming = ROAMING_STATE_UNKNOWN;
    std::string type;
    std::string name;
    std::string code;
    bool isKnown = false;
};

/** The name and the code that the operator selection told, each in a reply of its own. */
void takeSelected(const Replies &replies, Serving &serving)
{
    serving.name.clear(); // the library takes a code for a name
    for (const std::string_view reply : replies.allTo("AT+COPS?")) {
        const SelectedOperator selected = selectedOperatorOf(reply);
        if (!selected.name.empty()) serving.name = selected.name;
        if (!selected.code.empty()) serving.code = selected.code;
    }
}

Serving readServing(Session &session, bool bySelection)
{
    Serving serving;
    int32_t mcc = 0; // without the zeros in front, which count
    int32_t mnc = 0;
    std::string type(kMostText, '\0');
    std::string name(kMostText, '\0');
    std::string domain(kMostText, '\0');
    const Answer answer = session.ask(ItemKind::Network, [&] {
        const auto function = bySelection ? KR_getServingNetworkC : KR_getServingNetwork;
        return function(&serving.circuitDomain, &serving.packetDomain, &serving.roaming, &mcc, &mnc, kMostText,
                        type.data(), kMostText, name.data(), domain.data());
    });
    serving.isKnown = session.note(bySelection ? "serving network (AT+ZPAS?, AT+CREG?, AT+COPS?)"
                                               : "serving network (AT+ZPAS?, AT+ZDON?)",
                                   answer.ending, answer.isDone());
    if (!serving.isKnown) return serving;
    serving.type = writtenText(std::move(type));
    serving.name = writtenText(std::move(name));
    serving.code = networkCodesOf(answer.replies.to("AT+ZDON?")).serving;
    if (bySelection) takeSelected(answer.replies, serving);
    return serving;
}

/** The operator selection was asked in two formats; the modem goes on in the one that it had before. */
void putFormatBack(const SelectedOperator &before)
{
    constexpr int32_t kLeft = AT_COPS_LONG_NAME;
    if (before.format && *before.format != kLeft) (void)KR_setCops(AT_COPS_FORMAT_ONLY, *before.format, "", AT_ACT_GSM);
}

/** The selection mode as +COPS? tells it; nothing if the modem selects no operator. */
std::optional<int32_t> selectionOf(const SelectedOperator &selected)
{
    switch (selected.mode.value_or(AT_COPS_DEREGISTER)) {
    case AT_COPS_AUTOMATIC:
        return SELECTION_MODE_AUTOMATIC;
    case AT_COPS_MANUAL:
    case AT_COPS_MANUAL_THEN_AUTOMATIC:
        return SELECTION_MODE_MANUAL;
    default:
        return std::nullopt;
    }
}

/** By the library's command, or else as +COPS? told. */
std::optional<int32_t> readSelection(Session &session, const SelectedOperator &selected)
{
    int32_t mode = 0;
    const Answer answer = session.ask(ItemKind::Network, [&] { return KR_getNetworkSelectionMode(&mode); });
    const auto selection = answer.isDone() ? std::optional(mode) : selectionOf(selected);
    session.note("selection mode", answer.ending, selection.has_value());
    return selection;
}

void addOperator(Report &report, Session &session, bool bySelection)
{
    const SelectedOperator selected = readOperator(session);
    const Serving serving = readServing(session, bySelection);
    if (bySelection) putFormatBack(selected);
    const auto selection = readSelection(session, selected);
    const std::string name = serving.name.empty() ? selected.name : serving.name;
    const std::string code = serving.code.empty() ? selected.code : serving.code;
    if (!name.empty() || !code.empty()) {
        session.note("operator's name", Ending::Done, !name.empty());
        session.note("operator's code", Ending::Done, !code.empty());
        session.note("technology", Ending::Done, selected.technology.has_value());
    }

    Section &section = report.addSection("Operator", "operator");
    section.add(textField("Name", "name", name));
    section.add(textField("Code", "code", code));
    section.addCode("Technology", "technology", selected.technology, wordOf(kTechnologies, selected.technology));
    section.add(textField("Network type", "network_type", serving.type));
    section.addCode("Selection", "selection", selection, wordOf(kSelectionModes, selection));
    const bool isRoamingKnown = serving.isKnown && serving.roaming != ROAMING_STATE_UNKNOWN;
    section.add(flagField("Roaming", "is_roaming",
                          isRoamingKnown ? std::optional(serving.roaming == ROAMING_STATE_ROAMING) : std::nullopt));
    const auto addDomain = [&](const char *label, const char *key, int32_t domain) {
        const auto known = serving.isKnown ? std::optional(domain) : std::nullopt;
        section.addCode(label, key, known, wordOf(kDomains, known));
    };
    addDomain("Calls", "circuit_domain", serving.circuitDomain);
    addDomain("Packet data", "packet_domain", serving.packetDomain);
}

/** What the keys of a domain are called besides its own. */
struct PlaceKeys {
    const char *areaLabel;
    const char *area;
    const char *cell;
};

void addDomain(Section &section, const Domain &domain, const PlaceKeys &keys, const Registration &registration)
{
    const std::string key = domain.key;
    const size_t first = section.fields.size();
    addRegistration(section, domain.label, key, registration.state);
    section.fields[first].onlyIfKnown = &domain == &k5g;
    addIfKnown(section, textField(keys.areaLabel, keys.area, registration.area));
    addIfKnown(section, textField("  cell", keys.cell, registration.cell));
    Field technology = wordField("  technology", key + "_technology", wordOf(kTechnologies, registration.technology));
    addIfKnown(section, std::move(technology));
    section.add(numberField("", key + "_technology_code", registration.technology));
}

void addRegistrations(Report &report, Session &session)
{
    const Registration eps = readRegistration(session, kEps);
    const Registration packet = readRegistration(session, kPacket);
    const Registration circuit = readCircuitWithPlace(session);
    const Registration fiveg = readRegistration(session, k5g);
    Section &section = report.addSection("Registration", "registration");
    addDomain(section, kEps, {"  tracking area", "tracking_area", "eps_cell"}, eps);
    Field cause = numberField("  refused because", "eps_reject_cause", eps.epsRejectCause);
    const std::string word = wordOf(kEpsRejects, eps.epsRejectCause);
    cause.text = word.empty() ? "cause " + cause.text : word;
    addIfKnown(section, std::move(cause));
    addDomain(section, kPacket, {"  area", "packet_area", "packet_cell"}, packet);
    addDomain(section, kCircuit, {"  location area", "location_area", "circuit_cell"}, circuit);
    addDomain(section, k5g, {"  tracking area", "fiveg_tracking_area", "fiveg_cell"}, fiveg);
}

void addSystem(Report &report, Session &session)
{
    constexpr int32_t kNoCode = -1;
    int32_t service = kNoCode;
    int32_t domain = kNoCode;
    int32_t roaming = kNoCode;
    int32_t mode = kNoCode;
    int32_t sim = kNoCode;
    (void)session.has(ItemKind::Network, "system information (AT^SYSINFO)",
                      [&] { return KR_getSysinfo(&service, &domain, &roaming, &mode, &sim, 0, 0); });
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
    if (!session.isAnythingTold()) throw session.failureFor("KR_getCops", "tell its network");
    session.finish(report);
    return report;
}

Report home(Context &context)
{
    Session &session = context.session;
    int32_t mcc = 0;
    int32_t mnc = 0;
    std::string name(kMostText, '\0');
    const Answer answer =
        session.ask(ItemKind::Network, [&] { return KR_getHomeNetwork(&mcc, &mnc, kMostText, name.data()); });
    const bool isKnown = session.note("home network (AT+ZDON?)", answer.ending, answer.isDone());
    const ServiceProvider provider = readServiceProvider(session);
    if (!isKnown && !provider.isSimRead) throw session.failureFor("KR_getHomeNetwork", "tell its home network");
    const std::string code = networkCodesOf(answer.replies.to("AT+ZDON?")).home;
    if (isKnown) session.note("code of the home network", Ending::Done, !code.empty());
    if (provider.isSimRead) session.note("service provider", Ending::Done, !provider.name.empty());
    Report report;
    Section &section = report.addSection("", "");
    section.add(textField("Home network", "name", isKnown ? writtenText(std::move(name)) : ""));
    section.add(textField("Code", "code", code));
    section.add(textField("Service provider", "service_provider", provider.name));
    Section &friends = report.addSection("", "friendly_operators");
    friends.kind = Section::Kind::Lines;
    friends.title = provider.friendlyOperators.empty() ? "" : "Operators that show this name";
    friends.lines = provider.friendlyOperators;
    session.finish(report);
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

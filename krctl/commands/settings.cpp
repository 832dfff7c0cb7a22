#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include <arpa/inet.h>

#include <mainControl/api.h>
#include <mainControl/at_values.h>

#include "krctl/commands/commands.h"
#include "krctl/commands/library_value.h"
#include "krctl/commands/quotable_text.h"
#include "krctl/session/session.h"

namespace krctl {
namespace {

using Kind = Parameter::Kind;

constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();
constexpr std::array kErrorForms{Name{AT_CMEE_OFF, "off"}, Name{AT_CMEE_NUMBERS, "number"},
                                 Name{AT_CMEE_TEXTS, "text"}};
constexpr std::array kReportModes{Name{AT_REPORTS_OFF, "off"}, Name{AT_REPORTS_STATUS, "status"},
                                  Name{AT_REPORTS_LOCATION, "place"}};

enum Domain : int32_t { kCircuit, kPacket, kEps };
constexpr std::array kReportDomains{Name{kCircuit, "calls"}, Name{kPacket, "packet"}, Name{kEps, "lte"}};

constexpr Parameter kState{.name = "STATE", .help = "the setting", .kind = Kind::Choice, .choices = kOnOff};
constexpr Parameter kForm{
    .name = "FORM", .help = "what the modem says of errors", .kind = Kind::Choice, .choices = kErrorForms};
constexpr Parameter kDomain{
    .name = "DOMAIN", .help = "which registration", .kind = Kind::Choice, .choices = kReportDomains};
constexpr Parameter kReports{
    .name = "REPORTS", .help = "what is reported", .kind = Kind::Choice, .choices = kReportModes};
/** A number whose meaning only the modem knows. */
constexpr Parameter modemsNumber(const char *name, const char *help, bool isRequired)
{
    return {.name = name, .help = help, .kind = Kind::Number, .isRequired = isRequired, .highest = kHighest};
}

constexpr Parameter kMode = modemsNumber("MODE", "the modem's number of it; shown if it is not given", false);
constexpr Parameter kNumber = modemsNumber("NUMBER", "the modem's number of it", true);
constexpr Parameter kSystemMode = modemsNumber("MODE", "system mode; all four are shown if none is given", false);
constexpr Parameter kOrder = modemsNumber("ORDER", "acquisition order", false);
constexpr Parameter kRoam = modemsNumber("ROAM", "roaming", false);
constexpr Parameter kServiceDomain = modemsNumber("SERVICE", "service domain", false);
constexpr Parameter kNamed{.name = "NAME", .help = "name of the setting"};
constexpr Parameter kValue{.name = "VALUE",
                           .help = "its value",
                           .kind = Kind::Number,
                           .lowest = std::numeric_limits<int32_t>::min(),
                           .highest = kHighest};
constexpr Parameter kAddress{.name = "ADDRESS", .help = "an IPv4 address"};

Report echo(Context &context)
{
    const int32_t mode = context.arguments.number(kState.name);
    context.session.require(KR_echo(mode), "KR_echo", "switch its echo");
    return Report::done("The echo is " + context.arguments.text(kState.name) + '.', {flagField("", "echo", mode == 1)});
}

Report errors(Context &context)
{
    const std::string form = context.arguments.text(kForm.name);
    context.session.require(KR_setCmee(context.arguments.number(kForm.name)), "KR_setCmee",
                            "set the form of its errors");
    return Report::done("The form of errors is \"" + form + "\".", {textField("", "errors", form)});
}

Report reports(Context &context)
{
    const int32_t mode = context.arguments.number(kReports.name);
    Session &session = context.session;
    const char *purpose = "set its registration reports";
    switch (context.arguments.number(kDomain.name)) {
    case kCircuit:
        session.require(KR_setCregMode(mode), "KR_setCregMode", purpose);
        break;
    case kPacket:
        session.require(KR_setGPRSRegisterState(mode), "KR_setGPRSRegisterState", purpose);
        break;
    default:
        session.require(KR_setEPSRegisterState(mode), "KR_setEPSRegisterState", purpose);
        break;
    }
    const std::string domain = context.arguments.text(kDomain.name);
    const std::string reported = context.arguments.text(kReports.name);
    return Report::done("Registration reports (" + domain + "): " + reported + '.',
                        {textField("", "domain", domain), textField("", "reports", reported)});
}

Report autoAttach(Context &context)
{
    const int32_t state = context.arguments.number(kState.name);
    context.session.require(KR_setZgaat(state), "KR_setZgaat", "set automatic attach");
    return Report::done("Automatic attach is " + context.arguments.text(kState.name) + '.',
                        {flagField("", "auto_attach", state == 1)});
}

Report operationMode(Context &context)
{
    int32_t mode = context.arguments.number(kMode.name);
    if (context.arguments.has(kMode.name)) {
        context.session.require(KR_setOperationMode(mode), "KR_setOperationMode", "set its operation mode");
        return Report::done("The operation mode is " + std::to_string(mode) + '.',
                            {numberField("", "operation_mode", mode)});
    }
    context.session.require(KR_getOperationMode(&mode), "KR_getOperationMode", "tell its operation mode");
    Report report;
    report.addSection("", "").add(numberField("Operation mode", "operation_mode", mode));
    return report;
}

Report sysconfig(Context &context)
{
    constexpr std::array kAll{kSystemMode, kOrder, kRoam, kServiceDomain};
    const Arguments &arguments = context.arguments;
    const auto given =
        std::count_if(kAll.begin(), kAll.end(), [&](const Parameter &one) { return arguments.has(one.name); });
    std::array<int32_t, kAll.size()> values{};
    auto &[mode, order, roam, service] = values;
    if (given == 0) {
        context.session.require(KR_getSysconfig(&mode, &order, &roam, &service), "KR_getSysconfig",
                                "tell its system configuration (AT^SYSCONFIG?)");
    } else if (given == static_cast<long>(kAll.size())) {
        std::transform(kAll.begin(), kAll.end(), values.begin(),
                       [&](const Parameter &one) { return arguments.number(one.name); });
        context.session.require(KR_setSysconfig(mode, order, roam, service), "KR_setSysconfig",
                                "set its system configuration (AT^SYSCONFIG=)");
    } else {
        throw usageFailure("The system configuration has four values.", "krctl settings sysconfig",
                           "Give all four, or none.");
    }
    Report report;
    Section &section = report.addSection("", "");
    section.add(numberField("System mode", "mode", mode)).add(numberField("Acquisition order", "order", order));
    section.add(numberField("Roaming", "roam", roam)).add(numberField("Service domain", "service", service));
    return report;
}

Report ltePreference(Context &context)
{
    const int32_t number = context.arguments.number(kNumber.name);
    context.session.require(KR_setLteNetworkPreference(number), "KR_setLteNetworkPreference", "set its LTE preference");
    return Report::done("The LTE preference is " + std::to_string(number) + '.',
                        {numberField("", "lte_preference", number)});
}

Report named(Context &context)
{
    const std::string name = context.arguments.text(kNamed.name);
    constexpr size_t kLongest = 64;
    if (name.empty() || name.size() > kLongest || !isQuotable(name))
        throw usageFailure('"' + name + "\" is no name of a setting.", "krctl settings named",
                           "It has letters, digits and marks, and no blank or quote.");
    int32_t mode = 0;
    std::string state(kMostText + 1, '\0');
    context.session.require(KR_setZSET(name.c_str(), context.arguments.number(kValue.name), state.data(), &mode),
                            "KR_setZSET", "set \"" + name + '"');
    Report report;
    Section &section = report.addSection("", "");
    section.add(textField("Setting", "state", writtenText(std::move(state)))).add(numberField("Value", "mode", mode));
    return report;
}

Report fota(Context &context)
{
    int32_t type = 0;
    int32_t result = 0;
    context.session.require(KR_setFOTACTR(context.arguments.number(kNumber.name), &type, &result), "KR_setFOTACTR",
                            "control firmware over the air");
    Report report;
    Section &section = report.addSection("", "");
    section.add(numberField("Type", "type", type)).add(numberField("Result", "result", result));
    return report;
}

Report handOver(Context &context, uint32_t (*setter)(const char *), const char *function, const char *key,
                const char *sentence)
{
    const std::string address = context.arguments.text(kAddress.name);
    in_addr parsed{};
    if (inet_pton(AF_INET, address.c_str(), &parsed) != 1)
        throw usageFailure('"' + address + "\" is no IPv4 address.", "krctl settings", "Write it as 192.168.1.1.");
    context.session.require(setter(address.c_str()), function, "take the address");
    return Report::done(sentence + address + '.', {textField("", key, address)});
}

Report ramdumpHost(Context &context)
{
    return handOver(context, KR_Sendusb0IPtoMarvell, "KR_Sendusb0IPtoMarvell", "ramdump_host", "The ramdump host is ");
}

Report staticAddress(Context &context)
{
    return handOver(context, KR_SendNetgateIPtoMarvell, "KR_SendNetgateIPtoMarvell", "static_address",
                    "The static address is ");
}

constexpr std::array kStateOnly{kState};
constexpr std::array kFormOnly{kForm};
constexpr std::array kReportParameters{kDomain, kReports};
constexpr std::array kModeOnly{kMode};
constexpr std::array kSysconfigParameters{kSystemMode, kOrder, kRoam, kServiceDomain};
constexpr std::array kNumberOnly{kNumber};
constexpr std::array kNamedParameters{kNamed, kValue};
constexpr std::array kAddressOnly{kAddress};

constexpr std::array kCommands{
    Command{.path = "settings echo",
            .help = "whether the modem repeats commands",
            .examples = "krctl settings echo off",
            .parameters = kStateOnly,
            .run = echo},
    Command{.path = "settings errors",
            .help = "how the modem words errors",
            .examples = "krctl settings errors text",
            .parameters = kFormOnly,
            .run = errors},
    Command{.path = "settings reports",
            .help = "which registration changes the modem reports",
            .examples = "krctl settings reports lte place",
            .parameters = kReportParameters,
            .run = reports},
    Command{.path = "settings auto-attach",
            .help = "attach to the packet domain by itself",
            .examples = "krctl settings auto-attach on",
            .parameters = kStateOnly,
            .run = autoAttach},
    Command{.path = "settings operation-mode",
            .help = "show or set the operation mode",
            .examples = "krctl settings operation-mode",
            .parameters = kModeOnly,
            .run = operationMode},
    Command{.path = "settings sysconfig",
            .help = "show or set the system configuration",
            .examples = "krctl settings sysconfig\nkrctl settings sysconfig 2 0 1 3",
            .parameters = kSysconfigParameters,
            .run = sysconfig},
    Command{.path = "settings lte-preference",
            .help = "set the LTE preference",
            .examples = "krctl settings lte-preference 1",
            .parameters = kNumberOnly,
            .run = ltePreference},
    Command{.path = "settings named",
            .help = "set a named setting of the vendor",
            .examples = "krctl settings named STANDBY 1",
            .parameters = kNamedParameters,
            .run = named},
    Command{.path = "settings fota",
            .help = "control firmware over the air",
            .examples = "krctl settings fota 1",
            .parameters = kNumberOnly,
            .run = fota},
    Command{.path = "settings ramdump-host",
            .help = "hand over the address of the USB interface",
            .examples = "krctl settings ramdump-host 192.168.1.1",
            .parameters = kAddressOnly,
            .run = ramdumpHost},
    Command{.path = "settings static-address",
            .help = "hand over the address of the network gate",
            .examples = "krctl settings static-address 192.168.1.2",
            .parameters = kAddressOnly,
            .run = staticAddress},
};

} // namespace

std::span<const Command> settingsCommands()
{
    return kCommands;
}

} // namespace krctl

#include <array>
#include <chrono>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include <mainControl/api.h>
#include <mainControl/at_values.h>

#include "krctl/commands/commands.h"
#include "krctl/output/output.h"
#include "krctl/output/progress.h"
#include "krctl/readings/operators.h"
#include "krctl/session/session.h"

namespace krctl {
namespace {

constexpr std::array kActs{Name{AT_ACT_GSM, "gsm"}, Name{AT_ACT_UTRAN, "umts"}, Name{AT_ACT_E_UTRAN, "lte"}};
constexpr std::array kRegisterModes{Name{AT_COPS_AUTOMATIC, "auto"}, Name{AT_COPS_MANUAL, "manual"},
                                    Name{AT_COPS_DEREGISTER, "deregister"}};
constexpr int32_t kManualPreference = 5;
constexpr int32_t kHighestPreference = 22;

constexpr Parameter kCode{.name = "CODE", .help = "the operator's MCC and MNC, such as 46000"};
constexpr Parameter kOptionalCode{
    .name = "CODE", .help = "the operator's MCC and MNC; not needed for auto", .isRequired = false};
constexpr Parameter kAct{
    .name = "--act", .help = "access technology, lte unless given", .kind = Parameter::Kind::Choice, .choices = kActs};
constexpr Parameter kNoAct{
    .name = "--no-act", .help = "name no technology; the modem takes any", .kind = Parameter::Kind::Flag};
constexpr Parameter kMode{
    .name = "MODE", .help = "what to do", .kind = Parameter::Kind::Choice, .choices = kRegisterModes};
constexpr Parameter kPreference{.name = "PREFERENCE",
                                .help = "what to use; shown if it is not given",
                                .kind = Parameter::Kind::ChoiceOrNumber,
                                .isRequired = false,
                                .highest = kHighestPreference};
constexpr Parameter kResetBands{.name = "--reset-bands",
                                .help = "first forget the preferred band (family qualcomm)",
                                .kind = Parameter::Kind::Flag};
constexpr Parameter kVendor{.name = "--vendor",
                            .help = "the vendor's long scan, its lines as they are; up to 6 minutes",
                            .kind = Parameter::Kind::Flag};
Report vendorScan(Context &context)
{
    constexpr std::chrono::seconds kAtMost{360};
    const auto list = std::make_unique<AtParasList>();
    {
        const Progress progress(context.output.errors(), "Scanning for operators", kAtMost);
        context.session.require(KR_getPlmnInfo(list.get()), "KR_getPlmnInfo", "scan for operators (AT+COPS=5)");
    }
    Report report;
    Section &section = report.addSection("", "lines");
    section.kind = Section::Kind::Lines;
    for (int32_t i = 0; i < list->nCount; ++i) {
        std::string line(list->strParasLine[i], strnlen(list->strParasLine[i], sizeof list->strParasLine[i]));
        std::erase_if(line, [](char character) { return character == '\r' || character == '\n'; });
        if (!line.empty()) section.lines.push_back(std::move(line));
    }
    return report;
}

Tone toneOf(int32_t operatorState)
{
    if (operatorState == AT_OPERATOR_CURRENT) return Tone::Good;
    return operatorState == AT_OPERATOR_FORBIDDEN ? Tone::Dim : Tone::Plain;
}

Fields rowOf(const FoundOperator &network)
{
    Field state = wordField("State", "state", wordOf(kOperatorStates, network.state));
    if (network.state) state.tone = toneOf(*network.state);
    return {textField("Operator", "name", network.name),
            textField("Short", "short_name", network.shortName),
            textField("Code", "code", network.code),
            wordField("Technology", "technology", wordOf(kTechnologies, network.technology)),
            numberField("", "technology_code", network.technology),
            state,
            numberField("", "state_code", network.state)};
}

Report scan(Context &context)
{
    if (context.arguments.has(kVendor.name)) return vendorScan(context);
    constexpr std::chrono::seconds kAtMost{180};
    constexpr int32_t kMostOperators = 100;
    std::vector<NetworkInfo> found(kMostOperators);
    int32_t count = kMostOperators;
    Answer answer;
    {
        const Progress progress(context.output.errors(), "Scanning for operators", kAtMost);
        answer = context.session.call([&] { return KR_scanNetwork(found.data(), &count); });
    }
    if (!answer.isDone()) throw context.session.failureFor("KR_scanNetwork", "scan for operators (AT+COPS=?)");
    Report report;
    Section &section = report.addSection("", "operators");
    section.kind = Section::Kind::Table;
    section.whenEmpty = "No operator was found.";
    for (const FoundOperator &network : foundOperatorsOf(answer.replies.to("AT+COPS=")))
        section.rows.push_back(rowOf(network));
    return report;
}

void checkCode(const std::string &code)
{
    const bool isCode =
        (code.size() == 5 || code.size() == 6) && code.find_first_not_of("0123456789") == std::string::npos;
    if (!isCode)
        throw usageFailure('"' + code + "\" is no operator.", "krctl net",
                           "Use the five or six digits of its MCC and MNC; \"krctl net scan\" lists them.");
}

/** A selection that names no technology, which no function of the library sends. */
Answer selectAny(Session &session, const std::string &parameters)
{
    constexpr int32_t kSelectionTimeoutMs = 180000;
    return session.run("AT+COPS=" + parameters, kSelectionTimeoutMs);
}

Report select(Context &context)
{
    const Arguments &arguments = context.arguments;
    const std::string code = arguments.text(kCode.name);
    checkCode(code);
    if (arguments.has(kAct.name) && arguments.has(kNoAct.name))
        throw usageFailure("A technology is named, and none is to be named.", "krctl net select",
                           "Use --act or --no-act, not both.");
    const auto act =
        arguments.has(kNoAct.name) ? std::nullopt : std::optional(arguments.number(kAct.name, AT_ACT_E_UTRAN));
    {
        const Progress progress(context.output.errors(), "Selecting " + code, std::chrono::seconds(180));
        const Answer answer =
            act ? context.session.call([&] { return KR_setCops(AT_COPS_MANUAL, AT_COPS_NUMERIC, code.c_str(), *act); })
                : selectAny(context.session, "1,2,\"" + code + '"');
        if (!answer.isDone()) throw context.session.failureFor("KR_setCops", "select the operator " + code);
    }
    return Report::done("The operator " + code + " is selected.",
                        {textField("", "code", code), wordField("", "technology", wordOf(kTechnologies, act)),
                         numberField("", "technology_code", act)});
}

/** Automatic selection is one of any technology; only modems that refuse it so are told one, which the library names. */
Report automatic(Context &context)
{
    {
        const Progress progress(context.output.errors(), "Selecting automatically", std::chrono::seconds(180));
        Session &session = context.session;
        Answer answer = selectAny(session, "0");
        if (answer.ending == Ending::Refused)
            answer = session.call([] { return KR_setCops(AT_COPS_AUTOMATIC, AT_COPS_LONG_NAME, "", AT_ACT_GSM); });
        if (!answer.isDone()) throw session.failureFor("KR_setCops", "select operators automatically");
    }
    return Report::done("The modem selects its operator automatically.", {textField("", "selection", "automatic")});
}

/** A mode written as 2,2 by AT^SYSCONFIG reads back as another number than it was written with. */
std::string preferenceWord(int32_t mode)
{
    constexpr int32_t kReadBack = 22;
    return wordOf(kPreferences, mode == kReadBack ? 2 : mode);
}

Report prefer(Context &context)
{
    Session &session = context.session;
    int32_t mode = 0;
    if (!context.arguments.has(kPreference.name)) {
        session.require(KR_getNetworkPreferMode(&mode), "KR_getNetworkPreferMode", "tell its preference");
        Report report;
        report.addSection("", "").addCode("Preference", "preference", mode, preferenceWord(mode));
        return report;
    }
    mode = context.arguments.number(kPreference.name);
    const std::string typed = context.arguments.text(kPreference.name);
    if (mode == kManualPreference)
        throw usageFailure("5 stands for manual selection, which is no preference.", "krctl net prefer",
                           "Select an operator with \"krctl net select\".");
    if (codeOf(kPreferences, typed) && !hasPreference(session.platform(), mode))
        throw notOnPlatform("Modems of this family cannot prefer \"" + typed + "\".",
                            session.where("KR_setNetworkPreferMode"),
                            "Use auto, gsm, wcdma or wcdma-first, which every family has.");
    session.require(KR_setNetworkPreferMode(mode, context.arguments.has(kResetBands.name) ? 1 : 0),
                    "KR_setNetworkPreferMode", "set the preference");
    return Report::done("The preference is " + typed + '.',
                        {wordField("", "preference", preferenceWord(mode)), numberField("", "preference_code", mode)});
}

Report registerMode(Context &context)
{
    const Arguments &arguments = context.arguments;
    const int32_t mode = arguments.number(kMode.name);
    const std::string code = arguments.text(kOptionalCode.name);
    if (mode != AT_COPS_AUTOMATIC || !code.empty()) checkCode(code);
    context.session.require(KR_setNetworkRegistrationMode(mode, code.c_str(), 0,
                                                          arguments.number(kAct.name, AT_ACT_E_UTRAN),
                                                          arguments.has(kResetBands.name) ? 1 : 0),
                            "KR_setNetworkRegistrationMode", "set the mode of registration");
    const std::string word = wordOf(kRegisterModes, mode);
    return Report::done("The mode of registration is " + word + '.',
                        {textField("", "mode", word), textField("", "code", code)});
}

Parameter preferenceParameter()
{
    Parameter parameter = kPreference;
    parameter.choices = kPreferences;
    return parameter;
}

constexpr std::array kScanParameters{kVendor};
constexpr std::array kSelectParameters{kCode, kAct, kNoAct};
const std::array kPreferParameters{preferenceParameter(), kResetBands};
constexpr std::array kRegisterParameters{kMode, kOptionalCode, kAct, kResetBands};

const std::array kCommands{
    Command{.path = "net scan",
            .help = "which operators can be received; takes up to 3 minutes",
            .examples = "krctl net scan\nkrctl -J net scan | jq -r '.data.operators[].code'",
            .parameters = kScanParameters,
            .run = scan},
    Command{.path = "net select",
            .help = "register with one operator",
            .examples = "krctl net select 46000\nkrctl net select 46001 --act umts\nkrctl net select 46001 --no-act",
            .parameters = kSelectParameters,
            .run = select},
    Command{.path = "net auto",
            .help = "let the modem select the operator",
            .examples = "krctl net auto",
            .run = automatic},
    Command{.path = "net prefer",
            .help = "show or set the preferred technology",
            .examples = "krctl net prefer\nkrctl net prefer lte",
            .parameters = kPreferParameters,
            .run = prefer},
    Command{.path = "net register-mode",
            .help = "automatic, manual or no registration",
            .examples = "krctl net register-mode auto\nkrctl net register-mode manual 46000 --act lte",
            .parameters = kRegisterParameters,
            .run = registerMode},
};

} // namespace

std::span<const Command> netSelectionCommands()
{
    return kCommands;
}

} // namespace krctl

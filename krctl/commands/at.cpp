#include <array>
#include <utility>

#include "host/at/secrets.h"
#include "host/at_client/at_client.h"
#include "krctl/commands/commands.h"
#include "krctl/readings/reply.h"
#include "krctl/session/call_failure.h"
#include "krctl/session/session.h"

namespace krctl {
namespace {

constexpr Parameter kText{.name = "COMMAND", .help = "the command as it goes to the modem, such as AT+CSQ"};
constexpr Parameter kTimeout{.name = "--timeout",
                             .help = "seconds to wait for the final result, 30 unless given",
                             .kind = Parameter::Kind::Number,
                             .lowest = 1,
                             .highest = 600};
constexpr Parameter kForceSecret{
    .name = "--force", .help = "send it although it changes secrets or spends tries", .kind = Parameter::Kind::Flag};

bool isGood(const std::string &finalResult)
{
    return finalResult == "OK" || finalResult == "CONNECT" || finalResult.starts_with("CONNECT ") ||
           finalResult == ">" || finalResult == "> ";
}

Report at(Context &context)
{
    const std::string command = context.arguments.text(kText.name);
    if (host::at::changesSecrets(command) && !context.arguments.has(kForceSecret.name))
        throw usageFailure("This command changes secrets, or spends tries for them.", "krctl at",
                           "Use \"krctl sim\", \"krctl lock\" or \"krctl facility\", or add --force.");
    AtClientRes reply{};
    constexpr int32_t kSecond = 1000;
    if (ClientSendCmd(command.c_str(), &reply, context.arguments.number(kTimeout.name, 30) * kSecond) != CLIENT_OK)
        throw context.session.failureFor("krctl at", "run the command");

    Report report;
    Section &section = report.addSection("", "lines");
    section.kind = Section::Kind::Lines;
    section.lines = linesOf(reply.aucDataBuf);
    const std::string finalResult = section.lines.empty() ? "" : section.lines.back();
    Field field = textField("", "final_result", finalResult);
    report.addSection("", "").add(field);
    if (isGood(finalResult)) return report;
    Failure failure = failureOf("carry the command out", context.session.where("krctl at"), finalResult);
    failure.known = std::move(report);
    throw Failure(std::move(failure));
}

constexpr std::array kParameters{kText, kTimeout, kForceSecret};

constexpr std::array kCommands{
    Command{.path = "at",
            .help = "one raw AT command and its reply as it comes",
            .examples = "krctl at AT+CSQ\nkrctl at 'AT+CGDCONT?'",
            .parameters = kParameters,
            .run = at},
};

} // namespace

std::span<const Command> atCommands()
{
    return kCommands;
}

} // namespace krctl

#include <array>

#include <mainControl/api.h>
#include <mainControl/at_values.h>

#include "krctl/commands/commands.h"
#include "krctl/commands/radio_reading.h"
#include "krctl/session/session.h"

namespace krctl {
namespace {

Report setRadio(Session &session, int32_t power, const char *purpose, const char *sentence)
{
    session.require(KR_setPower(power), "KR_setPower", purpose);
    return Report::done(sentence,
                        {wordField("", "radio", wordOf(kRadioPowers, power)), numberField("", "radio_code", power)});
}

Report on(Context &context)
{
    return setRadio(context.session, AT_CFUN_FULL, "switch the radio on", "The radio is on.");
}

Report off(Context &context)
{
    return setRadio(context.session, AT_CFUN_MINIMUM, "switch the radio off",
                    "The radio is off; the modem has its minimum function.");
}

Report status(Context &context)
{
    const auto radio = readRadio(context.session);
    if (!radio) throw context.session.failureFor("KR_getPower", "tell the state of its radio");
    Report report;
    report.addSection("", "").addCode("Radio", "radio", radio, wordOf(kRadioPowers, radio));
    return report;
}

constexpr std::array kCommands{
    Command{.path = "power status", .help = "whether the radio is on", .examples = "krctl power status", .run = status},
    Command{.path = "power on", .help = "full function", .examples = "krctl power on", .run = on},
    Command{.path = "power off",
            .help = "minimum function: no radio, the SIM stays",
            .examples = "krctl power off",
            .run = off},
};

} // namespace

std::optional<int32_t> readRadio(Session &session)
{
    int32_t power = 0;
    const Answer answer = session.ask(ItemKind::Device, [&] { return KR_getPower(&power); });
    const auto level = numberAt(answer.replies.to("AT+CFUN?"), 0);
    session.note("state of the radio", answer.ending, level.has_value());
    return level;
}

std::span<const Command> powerCommands()
{
    return kCommands;
}

} // namespace krctl

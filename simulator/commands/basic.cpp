// The command line itself, power, and who the modem is.
#include "simulator/commands/command_table.h"

namespace simulator {
namespace {

std::string orElse(const std::string &text, std::string_view otherwise)
{
    return text.empty() ? std::string(otherwise) : text;
}

Reply setEcho(Device &device, const Command &command)
{
    const std::optional<int> mode = command.form == Form::Execute ? 0 : command.number(0, 0, 1);
    if (!mode) return Cme::IncorrectParameters;
    device.settings.echo = *mode == 1;
    return {};
}

Reply acceptOnlyOne(Device & /*device*/, const Command &command)
{
    return command.number(0) == 1 ? Reply() : Reply(Cme::IncorrectParameters);
}

Reply acceptOnlyZero(Device & /*device*/, const Command &command)
{
    return command.number(0).value_or(0) == 0 ? Reply() : Reply(Cme::IncorrectParameters);
}

Reply resetSettings(Device &device, const Command & /*command*/)
{
    device.resetSettings();
    return {};
}

Reply setErrorMode(Device &device, const Command &command)
{
    const std::optional<int> mode = command.number(0, AT_CMEE_OFF, AT_CMEE_TEXTS);
    if (!mode) return Cme::IncorrectParameters;
    device.settings.cmee = *mode;
    return {};
}

Reply readErrorMode(Device &device, const Command &command)
{
    return named(command, device.settings.cmee);
}

Reply readFunction(Device &device, const Command &command)
{
    return named(command, static_cast<int>(device.function));
}

std::optional<Function> functionOf(int level)
{
    for (const Function known : {Function::Minimum, Function::Full, Function::Flight}) {
        if (static_cast<int>(known) == level) return known;
    }
    return std::nullopt;
}

Reply setFunction(Device &device, const Command &command)
{
    const std::optional<Function> level = functionOf(command.number(0).value_or(-1));
    if (!level) return Cme::IncorrectParameters;
    device.function = *level;
    device.resetsAfterReply = command.number(1) == 1;
    if (device.function == Function::Minimum) device.sim.powerUp(); // the card loses its power with the rest
    device.reconsider();
    return {};
}

Reply manufacturer(Device &device, const Command & /*command*/)
{
    return orElse(device.scenario.identity.manufacturer, host::family::rowOf(device.family).manufacturer);
}

Reply model(Device &device, const Command & /*command*/)
{
    return orElse(device.scenario.identity.model, concat("KRS-", upperCase(nameOf(device.family))));
}

Reply firmware(Device &device, const Command & /*command*/)
{
    return orElse(device.scenario.identity.firmware, "KRS_1.0.0");
}

Reply hardware(Device &device, const Command &command)
{
    return named(command, orElse(device.scenario.identity.hardware, "KRS_HW_A"));
}

Reply imei(Device &device, const Command & /*command*/)
{
    return device.scenario.identity.imei;
}

Reply serial(Device &device, const Command &command)
{
    return named(command, device.scenario.identity.serial);
}

Reply allIdentities(Device &device, const Command &command)
{
    return std::vector<std::string>{manufacturer(device, command).lines[0], model(device, command).lines[0],
                                    concat("Revision: ", firmware(device, command).lines[0])};
}

Reply listCommands(Device &device, const Command & /*command*/)
{
    std::vector<std::string> names;
    for (const CommandRow &row : allCommands()) {
        const std::string name(row.name);
        if (contains(row.families, device.family) && (names.empty() || names.back() != name)) names.push_back(name);
    }
    return names;
}

} // namespace

CommandRows basicCommands()
{
    constexpr auto kExecute = Form::Execute;
    constexpr auto kRead = Form::Read;
    constexpr auto kSet = Form::Set;
    constexpr auto kFree = Needs::Nothing;
    constexpr auto kQuick = Pace::Quick;
    return {
        {"E", kExecute, kEvery, kFree, kQuick, setEcho},
        {"E", kSet, kEvery, kFree, kQuick, setEcho},
        {"V", kSet, kEvery, kFree, kQuick, acceptOnlyOne},
        {"Q", kSet, kEvery, kFree, kQuick, acceptOnlyZero},
        {"Z", kExecute, kEvery, kFree, kQuick, resetSettings},
        {"&F", kExecute, kEvery, kFree, kQuick, resetSettings},
        {"I", kExecute, kEvery, kFree, kQuick, allIdentities},
        {"+CLAC", kExecute, kEvery, kFree, kQuick, listCommands},
        {"+CMEE", kRead, kEvery, kFree, kQuick, readErrorMode},
        {"+CMEE", kSet, kEvery, kFree, kQuick, setErrorMode},
        test("+CMEE", kEvery, "(0-2)"),
        {"+CFUN", kRead, kEvery, kFree, kQuick, readFunction},
        {"+CFUN", kSet, kEvery, kFree, Pace::Power, setFunction},
        test("+CFUN", kEvery, "(0,1,4),(0,1)"),
        {"+CGMI", kExecute, kEvery, kFree, kQuick, manufacturer},
        {"+GMI", kExecute, kEvery, kFree, kQuick, manufacturer},
        {"+CGMM", kExecute, kEvery, kFree, kQuick, model},
        {"+GMM", kExecute, kEvery, kFree, kQuick, model},
        {"+CGMR", kExecute, kEvery, kFree, kQuick, firmware},
        {"+GMR", kExecute, kEvery, kFree, kQuick, firmware},
        {"+CGSN", kExecute, kEvery, kFree, kQuick, imei},
        {"+GSN", kExecute, kEvery, kFree, kQuick, imei},
        {"+HVER", kExecute, kTsp | kSpreadtrum, kFree, kQuick, hardware},
        {"+ZPCB", kRead, kQualcomm | kMtk | kDefault, kFree, kQuick, hardware},
        {"+ZMSN", kRead, kMtk | kSpreadtrum | kDefault, kFree, kQuick, serial},
    };
}

} // namespace simulator

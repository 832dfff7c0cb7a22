#include "simulator/command_line.h"

#include <charconv>

#include "host/at/text.h"

namespace simulator {
namespace {

Argument argumentOf(std::string_view text)
{
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"')
        return {std::string(text.substr(1, text.size() - 2)), true};
    return {std::string(text), false};
}

Command commandOf(const host::at::Command &read)
{
    Command command{read.name, read.form, {}};
    if (read.form != Form::Set) return command;
    for (const std::string_view field : host::at::fields(read.parameters))
        command.arguments.push_back(argumentOf(field));
    return command;
}

} // namespace

std::string_view Command::text(size_t index) const
{
    return index < arguments.size() ? std::string_view(arguments[index].text) : std::string_view();
}

std::optional<int> Command::number(size_t index) const
{
    const std::string_view digits = text(index);
    int value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return value;
}

std::optional<int> Command::number(size_t index, int lowest, int highest) const
{
    const std::optional<int> value = number(index);
    return value && *value >= lowest && *value <= highest ? value : std::nullopt;
}

std::optional<std::vector<Command>> parseCommandLine(std::string_view line)
{
    if (!host::at::isCommandLine(line)) return std::nullopt;
    std::vector<Command> commands;
    for (const host::at::Command &read : host::at::commandsOf(line))
        commands.push_back(commandOf(read));
    return commands;
}

} // namespace simulator

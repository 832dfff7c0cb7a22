#include "command_line.h"

#include "text.h"

#include <cctype>
#include <charconv>

namespace simulator {
namespace {

constexpr std::string_view kSigns = "+*^$%";

bool isNameCharacter(char character)
{
    return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_';
}

/** Up to a separator outside quotes, which is taken too. */
std::string_view takeUntil(std::string_view &rest, char separator)
{
    bool inQuotes = false;
    size_t end = 0;
    for (; end < rest.size() && (inQuotes || rest[end] != separator); ++end) {
        if (rest[end] == '"') inQuotes = !inQuotes;
    }
    const std::string_view taken = rest.substr(0, end);
    rest.remove_prefix(end < rest.size() ? end + 1 : end);
    return taken;
}

Argument argumentOf(std::string_view text)
{
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"')
        return {std::string(text.substr(1, text.size() - 2)), true};
    return {std::string(text), false};
}

std::vector<Argument> argumentsOf(std::string_view text)
{
    std::vector<Argument> arguments;
    bool more = true;
    while (more) {
        const size_t before = text.size();
        const std::string_view taken = takeUntil(text, ',');
        more = taken.size() < before; // a comma stood behind it, perhaps as the last character
        arguments.push_back(argumentOf(taken));
    }
    return arguments;
}

Command extendedCommand(std::string_view text)
{
    size_t end = 1;
    while (end < text.size() && isNameCharacter(text[end]))
        ++end;
    Command command;
    command.name = upperCase(text.substr(0, end));
    const std::string_view tail = text.substr(end);
    if (tail.empty()) return command;
    if (tail == "?") {
        command.form = Form::Read;
    } else if (tail == "=?") {
        command.form = Form::Test;
    } else if (tail.front() == '=') {
        command.form = Form::Set;
        command.arguments = argumentsOf(tail.substr(1));
    } else {
        command.name.clear();
    }
    return command;
}

/** A letter, perhaps behind an ampersand, and its digits: basic commands need no separator. */
Command takeBasicCommand(std::string_view &rest)
{
    const size_t letter = rest.front() == '&' ? 1 : 0;
    if (letter >= rest.size() || std::isalpha(static_cast<unsigned char>(rest[letter])) == 0) {
        rest = {};
        return {};
    }
    size_t end = letter + 1;
    while (end < rest.size() && std::isdigit(static_cast<unsigned char>(rest[end])) != 0)
        ++end;
    Command command;
    command.name = upperCase(rest.substr(0, letter + 1));
    if (end > letter + 1) {
        command.form = Form::Set;
        command.arguments = {{std::string(rest.substr(letter + 1, end - letter - 1)), false}};
    }
    rest.remove_prefix(end);
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
    const size_t start = line.find_first_not_of(' ');
    if (start == std::string_view::npos || upperCase(line.substr(start, 2)) != "AT") return std::nullopt;
    std::string_view rest = line.substr(start + 2);
    while (!rest.empty() && rest.back() == ' ')
        rest.remove_suffix(1);

    std::vector<Command> commands;
    while (!rest.empty()) {
        if (kSigns.find(rest.front()) != std::string_view::npos)
            commands.push_back(extendedCommand(takeUntil(rest, ';')));
        else
            commands.push_back(takeBasicCommand(rest));
    }
    return commands;
}

} // namespace simulator

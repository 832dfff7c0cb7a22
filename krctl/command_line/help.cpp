#include "krctl/command_line/help.h"

#include <algorithm>
#include <cctype>
#include <vector>

#include "krctl/command_line/global_options.h"
#include "krctl/command_line/vocabulary.h"
#include "krctl/output/terminal.h"

namespace krctl {
namespace {

constexpr int kLeastColumn = 20;

struct Row {
    std::string name;
    std::string help;
};

std::string rowsText(const char *title, const std::vector<Row> &rows)
{
    if (rows.empty()) return "";
    int width = kLeastColumn;
    for (const Row &row : rows)
        width = std::max(width, displayWidth(row.name));
    std::string text = '\n' + std::string(title) + '\n';
    for (const Row &row : rows) {
        std::string start = "  " + padded(row.name, width) + "  ";
        for (const std::string &line : wrapped(row.help, Terminal::kUsualColumns - width - 4)) {
            text += start + line + '\n';
            start.assign(start.size(), ' ');
        }
    }
    return text;
}

/** The usage, broken between arguments. */
std::string usageOf(const Command &command)
{
    std::string usage = "  krctl " + std::string(command.path);
    int width = displayWidth(usage);
    const auto add = [&](const std::string &argument) {
        const bool fits = width + 1 + displayWidth(argument) <= Terminal::kUsualColumns;
        usage += fits ? " " + argument : "\n      " + argument;
        width = (fits ? width + 1 : 6) + displayWidth(argument);
    };
    for (const Parameter &parameter : command.parameters) {
        const bool isOptional = parameter.isOption() || !parameter.isRequired;
        add(isOptional ? '[' + synopsisOf(parameter) + ']' : synopsisOf(parameter));
    }
    if (command.takesRest) add("[-- ARGUMENTS...]");
    return usage;
}

Row rowOf(const Parameter &parameter)
{
    return {synopsisOf(parameter), helpOf(parameter)};
}

std::string globalOptionsText()
{
    std::vector<Row> rows;
    for (const Parameter &option : globalOptions())
        rows.push_back(rowOf(option));
    return rowsText("Options of every command", rows);
}

std::string commandHelp(const Command &command)
{
    std::vector<Row> arguments;
    std::vector<Row> options;
    for (const Parameter &parameter : command.parameters)
        (parameter.isOption() ? options : arguments).push_back(rowOf(parameter));
    std::string text =
        "krctl " + std::string(command.path) + ": " + command.help + "\n\nUsage\n" + usageOf(command) + '\n';
    text += rowsText("Arguments", arguments) + rowsText("Options", options);
    text += globalOptionsText();
    text += "\nExamples\n";
    for (std::string_view examples = command.examples; !examples.empty();) {
        const std::string_view line = examples.substr(0, examples.find('\n'));
        text += "  " + std::string(line) + '\n';
        examples.remove_prefix(std::min(line.size() + 1, examples.size()));
    }
    return text;
}

std::string nounHelp(const std::string &path)
{
    std::vector<Row> rows;
    for (const Command *command : commandsBelow(path))
        rows.push_back({std::string(command->path).substr(path.size() + 1), command->help});
    return "Usage\n  krctl " + path + " COMMAND [OPTIONS]\n" + rowsText("Commands", rows) + globalOptionsText() +
           "\n\"krctl " + path + " COMMAND --help\" says more.\n";
}

std::vector<Row> nounRows()
{
    std::vector<Row> rows;
    for (const Noun &noun : nouns())
        rows.push_back({noun.name, noun.help});
    return rows;
}

std::string wholeHelp()
{
    return "krctl: sees and changes a modem through kr-at-server\n\nUsage\n  krctl COMMAND [OPTIONS]\n" +
           rowsText("Commands", nounRows()) + globalOptionsText() +
           "\nExamples\n  krctl status\n  krctl signal --watch\n  krctl net scan\n  krctl -J sim status\n"
           "\n\"krctl COMMAND --help\" says more, and so does krctl(1).\n";
}

} // namespace

std::string synopsisOf(const Parameter &parameter)
{
    std::string text = parameter.name;
    if (parameter.shortName != nullptr) text = std::string(parameter.shortName) + ", " + text;
    if (!parameter.takesValue()) return text;
    if (parameter.valueName != nullptr) return text + ' ' + parameter.valueName;
    std::string value = std::string(parameter.name).substr(2);
    std::transform(value.begin(), value.end(), value.begin(),
                   [](unsigned char character) { return static_cast<char>(std::toupper(character)); });
    return text + ' ' + value;
}

std::string helpOf(const Parameter &parameter)
{
    std::string text = parameter.help;
    if (!parameter.choices.empty()) text += ": " + possibleValues(parameter);
    if (parameter.variable != nullptr) text += " (" + std::string(parameter.variable) + ')';
    return text;
}

std::string versionText()
{
    return "krctl " KRCTL_VERSION "\n";
}

std::string shortHelp()
{
    return "krctl: sees and changes a modem through kr-at-server\n" + rowsText("Commands", nounRows()) +
           "\nBegin with \"krctl status\"; \"krctl --help\" says more.\n";
}

std::string helpFor(const std::string &path)
{
    if (path.empty()) return wholeHelp();
    const Command *command = commandAt(path);
    return command != nullptr ? commandHelp(*command) : nounHelp(path);
}

std::string possibleValues(const Parameter &parameter)
{
    std::string words = listed(wordsOf(parameter.choices));
    std::string range =
        "a number from " + std::to_string(parameter.lowest) + " to " + std::to_string(parameter.highest);
    switch (parameter.kind) {
    case Parameter::Kind::Number:
        return range;
    case Parameter::Kind::Choice:
        return "one of " + words;
    case Parameter::Kind::ChoiceOrNumber:
        return words + " or " + range;
    case Parameter::Kind::Text:
    case Parameter::Kind::Flag:
        break;
    }
    return words;
}

} // namespace krctl

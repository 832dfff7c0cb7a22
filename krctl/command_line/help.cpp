#include "krctl/command_line/help.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>
#include <utility>

#include "host/family/family.h"
#include "krctl/output/terminal.h"

namespace krctl {
namespace {

constexpr int kLeastColumn = 20;

struct Row {
    std::string name;
    std::string help;
};

constexpr auto kPlatformHelp = host::family::choicesText("family of the modem: ", ", ", " (KR_PLATFORM)");
constexpr std::array kGlobalOptions{
    Parameter{.name = "-J, --json", .help = "one JSON object, as krctl.schema.json describes it"},
    Parameter{.name = "-K, --key-value", .help = "lines of key=value"},
    Parameter{.name = "--no-color", .help = "no colours, whatever the terminal can do"},
    Parameter{.name = "--socket PATH", .help = "socket of kr-at-server (KR_AT_SERVER)"},
    Parameter{.name = "--platform NAME", .help = kPlatformHelp.data()},
    Parameter{.name = "--version", .help = "the version"},
    Parameter{.name = "-h, --help", .help = "this help"},
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

/** "--act gsm|umts|lte", "CODE", "--force". */
std::string synopsisOf(const Parameter &parameter)
{
    std::string text = parameter.name;
    if (parameter.isOption() && parameter.kind != Parameter::Kind::Flag) {
        std::string value = std::string(parameter.name).substr(2);
        std::transform(value.begin(), value.end(), value.begin(),
                       [](unsigned char character) { return static_cast<char>(std::toupper(character)); });
        text += ' ' + value;
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

std::vector<Row> globalRows()
{
    std::vector<Row> rows;
    rows.reserve(kGlobalOptions.size());
    for (const Parameter &option : kGlobalOptions)
        rows.push_back({option.name, option.help});
    return rows;
}

std::string commandHelp(const Command &command)
{
    std::vector<Row> arguments;
    std::vector<Row> options;
    for (const Parameter &parameter : command.parameters)
        (parameter.isOption() ? options : arguments).push_back({synopsisOf(parameter), helpOf(parameter)});
    std::string text =
        "krctl " + std::string(command.path) + ": " + command.help + "\n\nUsage\n" + usageOf(command) + '\n';
    text += rowsText("Arguments", arguments) + rowsText("Options", options);
    text += rowsText("Options of every command", globalRows());
    text += "\nExamples\n";
    for (std::string_view examples = command.examples; !examples.empty();) {
        const std::string_view line = examples.substr(0, examples.find('\n'));
        text += "  " + std::string(line) + '\n';
        examples.remove_prefix(std::min(line.size() + 1, examples.size()));
    }
    return text;
}

bool isBelow(std::string_view path, std::string_view above)
{
    return path.size() > above.size() && path.starts_with(above) && path[above.size()] == ' ';
}

std::string nounHelp(const std::string &path)
{
    std::vector<Row> rows;
    for (const Command &command : commands())
        if (isBelow(command.path, path))
            rows.push_back({std::string(command.path).substr(path.size() + 1), command.help});
    return "Usage\n  krctl " + path + " COMMAND [OPTIONS]\n" + rowsText("Commands", rows) +
           rowsText("Options of every command", globalRows()) + "\n\"krctl " + path + " COMMAND --help\" says more.\n";
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
           rowsText("Commands", nounRows()) + rowsText("Options of every command", globalRows()) +
           "\nExamples\n  krctl status\n  krctl signal --watch\n  krctl net scan\n  krctl -J sim status\n"
           "\n\"krctl COMMAND --help\" says more, and so does krctl(1).\n";
}

/** Insertions, deletions, exchanges and swaps of neighbours from one word to another. */
size_t editDistance(std::string_view one, std::string_view other)
{
    std::vector<std::vector<size_t>> cost(one.size() + 1, std::vector<size_t>(other.size() + 1));
    for (size_t i = 0; i <= one.size(); ++i)
        cost[i][0] = i;
    std::iota(cost[0].begin(), cost[0].end(), size_t{0});
    for (size_t i = 1; i <= one.size(); ++i) {
        for (size_t j = 1; j <= other.size(); ++j) {
            const size_t exchange = cost[i - 1][j - 1] + (one[i - 1] == other[j - 1] ? 0 : 1);
            cost[i][j] = std::min({cost[i - 1][j] + 1, cost[i][j - 1] + 1, exchange});
            const bool isSwap = i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1];
            if (isSwap) cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + 1);
        }
    }
    return cost[one.size()][other.size()];
}

} // namespace

const Command *commandAt(std::string_view path)
{
    const auto &all = commands();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Command &command) { return path == command.path; });
    return found == all.end() ? nullptr : &*found;
}

std::vector<std::string> wordsBelow(const std::string &path)
{
    std::vector<std::string> words;
    for (const Command &command : commands()) {
        std::string_view rest = command.path;
        if (!path.empty() && !isBelow(rest, path)) continue;
        if (!path.empty()) rest.remove_prefix(path.size() + 1);
        const std::string word(rest.substr(0, rest.find(' ')));
        if (std::find(words.begin(), words.end(), word) == words.end()) words.push_back(word);
    }
    return words;
}

std::vector<std::string> optionsOf(const Command *command)
{
    std::vector<std::string> options{"--json",     "--key-value", "--no-color", "--socket",
                                     "--platform", "--version",   "--help"};
    if (command == nullptr) return options;
    for (const Parameter &parameter : command->parameters)
        if (parameter.isOption()) options.emplace_back(parameter.name);
    return options;
}

std::string commandPathIn(const std::vector<std::string> &words)
{
    std::string path;
    std::string found;
    for (const std::string &word : words) {
        if (word == "--") break;
        if (word.starts_with('-')) continue;
        path += (path.empty() ? "" : " ") + word;
        if (commandAt(path) != nullptr) found = path;
    }
    return found;
}

std::string helpOf(const Parameter &parameter)
{
    using Kind = Parameter::Kind;
    const bool isListed = parameter.kind == Kind::Choice || parameter.kind == Kind::ChoiceOrNumber;
    return isListed ? std::string(parameter.help) + ": " + possibleValues(parameter) : parameter.help;
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

std::string helpFor(std::string_view path)
{
    if (path.empty()) return wholeHelp();
    const Command *command = commandAt(path);
    return command != nullptr ? commandHelp(*command) : nounHelp(std::string(path));
}

std::string possibleValues(const Parameter &parameter)
{
    using Kind = Parameter::Kind;
    std::string words;
    for (const Name &choice : parameter.choices)
        words += (words.empty() ? "" : ", ") + std::string(choice.word);
    std::string range =
        "a number from " + std::to_string(parameter.lowest) + " to " + std::to_string(parameter.highest);
    if (parameter.kind == Kind::Number) return range;
    return parameter.kind == Kind::ChoiceOrNumber ? words + " or " + range : "one of " + words;
}

std::string closestWord(std::string_view word, const std::vector<std::string> &known)
{
    const size_t limit = std::max<size_t>(word.size() / 3, 1);
    size_t best = limit + 1;
    std::string closest;
    for (const std::string &candidate : known) {
        const size_t distance = editDistance(word, candidate);
        if (distance >= best) continue;
        best = distance;
        closest = candidate;
    }
    return closest;
}

Failure unexpectedWord(const std::string &path, const std::string &word)
{
    const std::string where = path.empty() ? "krctl" : "krctl " + path;
    const Command *command = commandAt(path);
    const bool isOption = word.starts_with('-');
    const std::string closest = closestWord(word, isOption ? optionsOf(command) : wordsBelow(path));
    std::string what = "There is no " + std::string(isOption ? "option" : "command") + " \"" + word + "\" here.";
    if (!isOption && command != nullptr) what = '"' + word + "\" is more than this command takes.";
    std::string next = "See \"" + where + " --help\".";
    if (!closest.empty()) next = "Did you mean \"" + (isOption ? closest : where + ' ' + closest) + "\"?";
    return usageFailure(std::move(what), where, std::move(next));
}

Failure missingVerb(const std::string &path)
{
    std::string words;
    for (const std::string &word : wordsBelow(path))
        words += (words.empty() ? "" : ", ") + word;
    const std::string where = "krctl " + path;
    return usageFailure('"' + where + "\" needs a word more.", where,
                        "Use one of " + words + "; \"" + where + " --help\" says more.");
}

} // namespace krctl

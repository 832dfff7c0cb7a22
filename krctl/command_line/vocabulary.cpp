#include "krctl/command_line/vocabulary.h"

#include <algorithm>

#include "krctl/command_line/global_options.h"

namespace krctl {
namespace {

bool isBelow(std::string_view path, std::string_view above)
{
    if (above.empty()) return true;
    return path.size() > above.size() && path.starts_with(above) && path[above.size()] == ' ';
}

/** The options that may stand beside a command, those of every command first. */
std::vector<const Parameter *> allOptionsOf(const Command *command)
{
    std::vector<const Parameter *> options;
    for (const Parameter &option : globalOptions())
        options.push_back(&option);
    if (command == nullptr) return options;
    for (const Parameter &parameter : command->parameters)
        if (parameter.isOption()) options.push_back(&parameter);
    return options;
}

} // namespace

const Command *commandAt(std::string_view path)
{
    const auto &all = commands();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Command &command) { return path == command.path; });
    return found == all.end() ? nullptr : &*found;
}

std::vector<const Command *> commandsBelow(std::string_view path)
{
    std::vector<const Command *> below;
    for (const Command &command : commands())
        if (isBelow(command.path, path)) below.push_back(&command);
    return below;
}

std::vector<std::string> wordsBelow(std::string_view path)
{
    std::vector<std::string> words;
    for (const Command *command : commandsBelow(path)) {
        std::string_view rest = command->path;
        if (!path.empty()) rest.remove_prefix(path.size() + 1);
        const std::string word(rest.substr(0, rest.find(' ')));
        if (std::find(words.begin(), words.end(), word) == words.end()) words.push_back(word);
    }
    return words;
}

std::string joinedPath(const std::string &path, std::string_view word)
{
    return path + (path.empty() ? "" : " ") + std::string(word);
}

std::vector<std::string> optionsOf(const Command *command)
{
    std::vector<std::string> names;
    for (const Parameter *option : allOptionsOf(command))
        names.emplace_back(option->name);
    return names;
}

const Parameter *optionNamed(std::string_view name, const Command *command)
{
    const std::vector<const Parameter *> options = allOptionsOf(command);
    const auto found =
        std::find_if(options.begin(), options.end(), [&](const Parameter *option) { return name == option->name; });
    return found == options.end() ? nullptr : *found;
}

} // namespace krctl

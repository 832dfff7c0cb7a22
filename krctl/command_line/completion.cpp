#include "krctl/command_line/completion.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "krctl/command_line/help.h"
#include "krctl/commands/command.h"

namespace krctl {
namespace {

using Words = std::vector<std::string>;

Words wordsOf(std::span<const Name> names)
{
    Words words;
    for (const Name &name : names)
        words.emplace_back(name.word);
    return words;
}

const Parameter *optionOf(const Command *command, std::string_view name)
{
    if (command == nullptr) return nullptr;
    for (const Parameter &parameter : command->parameters)
        if (name == parameter.name) return &parameter;
    return nullptr;
}

bool takesValue(const Command *command, std::string_view word)
{
    if (word == "--platform" || word == "--socket") return true;
    const Parameter *option = optionOf(command, word);
    return option != nullptr && option->isOption() && option->kind != Parameter::Kind::Flag;
}

/** The words of a command line that are neither options nor their values. */
Words plainWords(const Words &words)
{
    Words plain;
    for (size_t i = 0; i < words.size(); ++i) {
        if (!words[i].starts_with('-')) {
            plain.push_back(words[i]);
        } else if (takesValue(commandAt(commandPathIn(plain)), words[i])) {
            ++i;
        }
    }
    return plain;
}

Words choicesOfPositional(const Command &command, size_t position)
{
    for (const Parameter &parameter : command.parameters)
        if (!parameter.isOption() && position-- == 0) return wordsOf(parameter.choices);
    return {};
}

Words candidates(const Words &before, std::string_view last)
{
    const Words plain = plainWords(before);
    const std::string path = commandPathIn(plain);
    const Command *command = commandAt(path);
    if (!before.empty() && takesValue(command, before.back())) {
        if (before.back() == "--platform") return wordsOf(kPlatforms);
        const Parameter *option = optionOf(command, before.back());
        return option != nullptr ? wordsOf(option->choices) : Words();
    }
    if (last.starts_with('-')) return optionsOf(command);
    if (command != nullptr) {
        const auto depth = static_cast<size_t>(std::count(path.begin(), path.end(), ' ')) + 1;
        return choicesOfPositional(*command, plain.size() - depth);
    }
    std::string above;
    for (const std::string &word : plain)
        above += (above.empty() ? "" : " ") + word;
    return wordsBelow(above);
}

} // namespace

std::vector<std::string> completionsOf(const std::vector<std::string> &words)
{
    if (words.empty()) return {};
    const std::string &last = words.back();
    Words found = candidates({words.begin(), words.end() - 1}, last);
    std::erase_if(found, [&](const std::string &word) { return !word.starts_with(last); });
    return found;
}

} // namespace krctl

#include "krctl/command_line/completion.h"

#include "krctl/command_line/vocabulary.h"

namespace krctl {
namespace {

using Words = std::vector<std::string>;

/** What the words in front of the last one come to. They need not make a whole command line. */
struct Beginning {
    std::string path;                  ///< all words that are neither options nor values of options
    const Command *command = nullptr;  ///< that the path begins with
    size_t arguments = 0;              ///< words behind the command's own
    const Parameter *option = nullptr; ///< whose value comes next

    void add(const std::string &word);
};

void Beginning::add(const std::string &word)
{
    if (option != nullptr) { // this is its value
        option = nullptr;
    } else if (word.starts_with('-')) {
        const Parameter *named = optionNamed(word, command);
        if (named != nullptr && named->takesValue()) option = named;
    } else {
        path = joinedPath(path, word);
        const Command *longer = commandAt(path);
        arguments = longer != nullptr ? 0 : arguments + 1;
        if (longer != nullptr) command = longer;
    }
}

Words choicesOfPositional(const Command &command, size_t position)
{
    for (const Parameter &parameter : command.parameters)
        if (!parameter.isOption() && position-- == 0) return wordsOf(parameter.choices);
    return {};
}

Words candidates(const Beginning &beginning, std::string_view last)
{
    if (beginning.option != nullptr) return wordsOf(beginning.option->choices);
    if (last.starts_with('-')) return optionsOf(beginning.command);
    if (beginning.command != nullptr) return choicesOfPositional(*beginning.command, beginning.arguments);
    return wordsBelow(beginning.path);
}

} // namespace

std::vector<std::string> completionsOf(const std::vector<std::string> &words)
{
    if (words.empty()) return {};
    Beginning beginning;
    for (size_t i = 0; i + 1 < words.size(); ++i)
        beginning.add(words[i]);
    const std::string &last = words.back();
    Words found = candidates(beginning, last);
    std::erase_if(found, [&](const std::string &word) { return !word.starts_with(last); });
    return found;
}

} // namespace krctl

#include "host/at/command_line.h"

#include <algorithm>
#include <cctype>

#include "host/at/text.h"

namespace host::at {
namespace {

constexpr std::string_view kAttention = "AT";

char upper(char character)
{
    return static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
}

std::string_view trimmed(std::string_view text)
{
    text.remove_prefix(skip(text, kBlanks, 0));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

/** Appends the characters of a name, and passes them and the blanks among them and behind. */
size_t takeName(std::string_view text, size_t at, std::string &name)
{
    for (at = skip(text, kBlanks, at); at < text.size() && isNameCharacter(text[at]); at = skip(text, kBlanks, at + 1))
        name += upper(text[at]);
    return at;
}

Command malformed(std::string_view text)
{
    Command command;
    command.form = Form::Malformed;
    command.text = text;
    return command;
}

Command extendedCommand(std::string_view text)
{
    Command command{std::string(text.substr(0, 1))};
    command.text = text;
    command.nameEnd = takeName(text, 1, command.name);
    const std::string_view tail = trimmed(text.substr(command.nameEnd));
    if (command.name.size() == 1) return malformed(text);
    if (tail.empty()) return command;
    command.form = Form::Malformed;
    if (tail == "?") command.form = Form::Read;
    if (tail.front() != '=') return command;
    command.form = isTest(tail.substr(1)) ? Form::Test : Form::Set;
    if (command.form == Form::Set) command.parameters = trimmed(tail.substr(1));
    return command;
}

/** Where the parameters of a basic command end: digits, for which no separator is needed. A number to be dialled goes on
 *  to the end of the command, a register to its value. */
size_t endOfBasicParameters(std::string_view text, std::string_view name, size_t at)
{
    if (name == "D") return findOutsideQuotes(text, ';', at);
    return skip(text, name == "S" ? "0123456789=?" : "0123456789", at);
}

/** A letter, perhaps behind an ampersand, and its parameters. What is no command goes on to the next separator. */
size_t takeBasicCommand(std::string_view text, size_t at, std::vector<Command> &commands)
{
    Command command;
    size_t letter = at;
    if (text[at] == '&') letter = skip(text, kBlanks, at + 1);
    if (letter == text.size() || std::isalpha(static_cast<unsigned char>(text[letter])) == 0) {
        const size_t end = findOutsideQuotes(text, ';', at);
        commands.push_back(malformed(text.substr(at, end - at)));
        return end;
    }
    if (letter != at) command.name += '&';
    command.name += upper(text[letter]);
    const size_t begin = skip(text, kBlanks, letter + 1);
    const size_t end = endOfBasicParameters(text, command.name, begin);
    command.parameters = trimmed(text.substr(begin, end - begin));
    command.text = text.substr(at, end - at);
    command.nameEnd = begin - at;
    if (!command.parameters.empty()) command.form = Form::Set;
    commands.push_back(std::move(command));
    return end;
}

size_t takeCommand(std::string_view text, size_t at, std::vector<Command> &commands)
{
    if (!isSign(text[at])) return takeBasicCommand(text, at, commands);
    const size_t end = findOutsideQuotes(text, ';', at);
    commands.push_back(extendedCommand(text.substr(at, end - at)));
    return end;
}

/** Any mark but those that stand between values. */
bool mayBeSign(char character)
{
    constexpr std::string_view kSeparators = " \t\r\n\"=:,;?";
    const auto byte = static_cast<unsigned char>(character);
    const bool isMark = std::ispunct(byte) != 0 && kSeparators.find(character) == std::string_view::npos;
    return isSign(character) || isMark;
}

} // namespace

bool isCommandLine(std::string_view line)
{
    return isSameWithoutCase(line.substr(skip(line, kBlanks, 0), kAttention.size()), kAttention);
}

std::vector<Command> commandsOf(std::string_view line)
{
    std::vector<Command> commands;
    size_t at = skip(line, kBlanks, 0);
    if (isCommandLine(line)) at += kAttention.size();
    for (at = skip(line, " \t;", at); at < line.size(); at = skip(line, " \t;", at))
        at = takeCommand(line, at, commands);
    return commands;
}

bool isOperatorScan(const Command &command)
{
    if (command.name != "+COPS") return false;
    return command.form == Form::Test || (command.form == Form::Set && command.parameters == "5");
}

std::optional<Mention> findMention(std::string_view text, size_t from)
{
    for (size_t at = from; at < text.size(); ++at) {
        if (!mayBeSign(text[at])) continue;
        Mention mention{{text[at]}, {}, at, 0};
        mention.end = takeName(text, at + 1, mention.name);
        if (mention.name.size() == 1) continue;
        const auto *const start = text.begin() + static_cast<ptrdiff_t>(skip(text, kBlanks, at + 1));
        const auto length = std::find_if_not(start, text.end(), isNameCharacter) - start;
        mention.word = mention.name.substr(0, static_cast<size_t>(length) + 1);
        return mention;
    }
    return std::nullopt;
}

bool isTest(std::string_view behindEqualsSign)
{
    const size_t mark = skip(behindEqualsSign, kBlanks, 0);
    if (mark == behindEqualsSign.size() || behindEqualsSign[mark] != '?') return false;
    const size_t behind = skip(behindEqualsSign, kBlanks, mark + 1);
    return behind == behindEqualsSign.size() || behindEqualsSign[behind] == ';';
}

} // namespace host::at

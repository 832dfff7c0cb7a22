#include "at_text.h"

#include <algorithm>
#include <cctype>

namespace host::at_server {
namespace {

constexpr std::string_view kSigns = "+^$%*#";

bool isNameCharacter(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

char lower(char c)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

bool isSign(char c)
{
    return kSigns.find(c) != std::string_view::npos;
}

/** Length of a sign and a name at the start of a text; 0 if none is there. */
size_t nameLength(std::string_view text)
{
    if (text.empty() || !isSign(text.front())) return 0;
    const auto *const end = std::find_if_not(text.begin() + 1, text.end(), isNameCharacter);
    const auto length = static_cast<size_t>(end - text.begin());
    return length > 1 ? length : 0;
}

/** Calls with each piece between separators outside quotes. */
template <typename Take>
void split(std::string_view text, char separator, Take take)
{
    bool isQuoted = false;
    size_t start = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"') isQuoted = !isQuoted;
        if (text[i] != separator || isQuoted) continue;
        take(text.substr(start, i - start));
        start = i + 1;
    }
    take(text.substr(start));
}

CommandPart partOf(std::string_view text)
{
    const size_t named = nameLength(text);
    if (named == 0) return {text.substr(0, 1), Form::Execute, {}};
    const std::string_view rest = text.substr(named);
    CommandPart part{text.substr(0, named), Form::Execute, {}};
    if (rest == "=?")
        part.form = Form::Test;
    else if (rest == "?")
        part.form = Form::Read;
    else if (!rest.empty() && rest.front() == '=')
        part = {part.name, Form::Set, rest.substr(1)};
    return part;
}

std::string_view withoutBlanksAround(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return withoutBlanksBehind(text);
}

} // namespace

std::optional<NamedLine> namedLine(std::string_view line)
{
    const size_t length = nameLength(line);
    if (length == 0 || length == line.size() || line[length] != ':') return std::nullopt;
    const std::string_view rest = line.substr(length + 1);
    const size_t start = std::min(rest.find_first_not_of(' '), rest.size());
    return NamedLine{line.substr(0, length), rest.substr(start), start > 0};
}

std::vector<CommandPart> commandParts(std::string_view command)
{
    if (isSameWithoutCase(command.substr(0, 2), "AT")) command.remove_prefix(2);
    std::vector<CommandPart> parts;
    split(command, ';', [&](std::string_view part) {
        if (!part.empty()) parts.push_back(partOf(part));
    });
    return parts;
}

bool isSameName(std::string_view one, std::string_view other)
{
    if (!one.empty() && isSign(one.front())) one.remove_prefix(1);
    if (!other.empty() && isSign(other.front())) other.remove_prefix(1);
    return isSameWithoutCase(one, other);
}

std::vector<std::string_view> fields(std::string_view parameters)
{
    std::vector<std::string_view> all;
    split(parameters, ',', [&](std::string_view field) { all.push_back(withoutBlanksAround(field)); });
    return all;
}

std::string_view withoutBlanksBehind(std::string_view line)
{
    return line.substr(0, line.find_last_not_of(' ') + 1);
}

bool isSameWithoutCase(std::string_view one, std::string_view other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char a, char b) { return lower(a) == lower(b); });
}

} // namespace host::at_server

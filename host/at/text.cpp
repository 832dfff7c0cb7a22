#include "host/at/text.h"

#include <algorithm>
#include <cctype>

namespace host::at {
namespace {

char lower(char character)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
}

/** Length of a sign and a name at the start of a text; 0 if none is there. */
size_t nameLength(std::string_view text)
{
    if (text.empty() || !isSign(text.front())) return 0;
    const auto *const end = std::find_if_not(text.begin() + 1, text.end(), isNameCharacter);
    const auto length = static_cast<size_t>(end - text.begin());
    return length > 1 ? length : 0;
}

std::string_view withoutSign(std::string_view name)
{
    return name.substr(!name.empty() && isSign(name.front()) ? 1 : 0);
}

} // namespace

bool isNameCharacter(char character)
{
    return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_';
}

size_t skip(std::string_view text, std::string_view characters, size_t at)
{
    return std::min(text.find_first_not_of(characters, at), text.size());
}

std::string_view withoutBlanksBehind(std::string_view text)
{
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view withoutBlanksAround(std::string_view text)
{
    return withoutBlanksBehind(text.substr(skip(text, " ", 0)));
}

bool isSameWithoutCase(std::string_view one, std::string_view other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char a, char b) { return lower(a) == lower(b); });
}

bool isSameName(std::string_view one, std::string_view other)
{
    return isSameWithoutCase(withoutSign(one), withoutSign(other));
}

size_t findOutsideQuotes(std::string_view text, char separator, size_t at)
{
    bool isQuoted = false;
    for (; at < text.size() && (isQuoted || text[at] != separator); ++at)
        if (text[at] == '"') isQuoted = !isQuoted;
    return at;
}

std::vector<std::string_view> fields(std::string_view parameters)
{
    std::vector<std::string_view> all;
    size_t begin = 0;
    while (true) {
        const size_t end = findOutsideQuotes(parameters, ',', begin);
        all.push_back(withoutBlanksAround(parameters.substr(begin, end - begin)));
        if (end == parameters.size()) return all;
        begin = end + 1;
    }
}

std::optional<NamedLine> namedLine(std::string_view line)
{
    const size_t length = nameLength(line);
    const size_t colon = skip(line, " ", length);
    if (length == 0 || colon == line.size() || line[colon] != ':') return std::nullopt;
    return NamedLine{line.substr(0, length), line.substr(skip(line, " ", colon + 1))};
}

} // namespace host::at

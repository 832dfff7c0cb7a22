#include "host/at_server/translation/fields.h"

#include <algorithm>
#include <cctype>

#include "host/at/text.h"

namespace host::at_server {

std::optional<std::string_view> parametersOf(std::string_view line, const at::Command &command)
{
    const auto named = at::namedLine(line);
    if (named && !at::isSameName(named->name, command.name)) return std::nullopt;
    return at::withoutBlanksAround(named ? named->parameters : line);
}

bool isWhole(std::string_view text)
{
    return std::count(text.begin(), text.end(), '"') % 2 == 0;
}

bool isQuoted(std::string_view field)
{
    return field.size() >= 2 && field.front() == '"' && field.back() == '"';
}

std::string_view unquoted(std::string_view field)
{
    field = at::withoutBlanksAround(field);
    return isQuoted(field) ? at::withoutBlanksAround(field.substr(1, field.size() - 2)) : field;
}

std::string inQuotes(std::string_view text)
{
    return std::string(1, '"').append(text).append(1, '"');
}

bool isDigits(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool isHexadecimal(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(),
                                        [](char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; });
}

std::optional<int> numberIn(std::string_view field)
{
    constexpr size_t kMostDigits = 9;
    const std::string_view digits = unquoted(field);
    if (!isDigits(digits) || digits.size() > kMostDigits) return std::nullopt;
    int number = 0;
    for (const char digit : digits)
        number = number * 10 + (digit - '0');
    return number;
}

std::string joined(const std::vector<std::string> &fields)
{
    std::string text;
    for (const std::string &field : fields)
        text.append(&field == &fields.front() ? "" : ",").append(field);
    return text;
}

std::string inCapitals(std::string_view text)
{
    std::string capitals(text);
    std::transform(capitals.begin(), capitals.end(), capitals.begin(),
                   [](unsigned char character) { return static_cast<char>(std::toupper(character)); });
    return capitals;
}

} // namespace host::at_server

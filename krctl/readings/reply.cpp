#include "krctl/readings/reply.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <functional>

#include "host/at/text.h"

namespace krctl {
namespace {

/** Where the colon behind the name of a line stands, blanks before it or not; nowhere if the line has no name. */
size_t colonOf(std::string_view line)
{
    if (line.empty() || !host::at::isSign(line.front())) return std::string_view::npos;
    size_t end = 1;
    while (end < line.size() && host::at::isNameCharacter(line[end]))
        ++end;
    end = host::at::skip(line, " ", end);
    return end > 1 && end < line.size() && line[end] == ':' ? end : std::string_view::npos;
}

} // namespace

std::vector<std::string> linesOf(std::string_view text)
{
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
        if (!line.empty()) lines.emplace_back(line);
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return lines;
}

std::string finalResultOf(std::string_view reply)
{
    const std::vector<std::string> lines = linesOf(reply);
    return lines.empty() ? "" : lines.back();
}

std::vector<std::string> bodyOf(std::string_view reply)
{
    std::vector<std::string> lines = linesOf(reply);
    if (lines.empty() || lines.back() != "OK") return {};
    lines.pop_back();
    return lines;
}

std::string_view errorIn(std::string_view finalResult)
{
    constexpr std::string_view kStart = "+CME ERROR:";
    if (!inCapitals(finalResult).starts_with(kStart)) return {};
    return host::at::withoutBlanksAround(finalResult.substr(kStart.size()));
}

std::string_view parametersOf(std::string_view line)
{
    const size_t colon = colonOf(line);
    return host::at::withoutBlanksAround(colon == std::string_view::npos ? line : line.substr(colon + 1));
}

std::vector<std::string> valueLinesOf(std::string_view reply)
{
    std::vector<std::string> lines = bodyOf(reply);
    const auto isNamed = [](const std::string &line) { return colonOf(line) != std::string_view::npos; };
    if (std::any_of(lines.begin(), lines.end(), isNamed)) std::erase_if(lines, std::not_fn(isNamed));
    return lines;
}

bool isQuoted(std::string_view field)
{
    return field.size() >= 2 && field.front() == '"' && field.back() == '"';
}

std::string unquoted(std::string_view field)
{
    std::string text(field);
    std::erase(text, '"');
    return std::string(host::at::withoutBlanksAround(text));
}

Values valuesOf(std::string_view line)
{
    Values values;
    for (const std::string_view field : host::at::fields(parametersOf(line)))
        values.push_back(unquoted(field));
    return values;
}

std::string valueAt(const Values &values, size_t place)
{
    return place < values.size() ? values[place] : "";
}

std::optional<int32_t> numberIn(std::string_view value)
{
    int32_t number = 0;
    const char *const end = value.data() + value.size();
    const auto [stopped, error] = std::from_chars(value.data(), end, number);
    return error == std::errc() && stopped == end ? std::optional(number) : std::nullopt;
}

std::optional<int32_t> numberAt(std::string_view reply, size_t place)
{
    const std::vector<std::string> body = valueLinesOf(reply);
    return body.empty() ? std::nullopt : numberIn(valueAt(valuesOf(body.front()), place));
}

bool isAll(std::string_view text, std::string_view characters)
{
    return text.find_first_not_of(characters) == std::string_view::npos;
}

std::string inCapitals(std::string_view text)
{
    std::string capitals(text);
    std::transform(capitals.begin(), capitals.end(), capitals.begin(),
                   [](unsigned char character) { return static_cast<char>(std::toupper(character)); });
    return capitals;
}

void Replies::add(std::string_view command, std::string_view reply)
{
    const size_t end = command.find_first_of("=?");
    all_.emplace_back(inCapitals(command.substr(0, end == std::string_view::npos ? end : end + 1)), reply);
}

std::string_view Replies::to(std::string_view commandStart) const
{
    const auto found =
        std::find_if(all_.rbegin(), all_.rend(), [&](const auto &reply) { return reply.first == commandStart; });
    return found == all_.rend() ? std::string_view() : found->second;
}

std::vector<std::string_view> Replies::allTo(std::string_view commandStart) const
{
    std::vector<std::string_view> replies;
    for (const auto &[command, reply] : all_)
        if (command == commandStart) replies.emplace_back(reply);
    return replies;
}

} // namespace krctl

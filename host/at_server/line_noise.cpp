#include "host/at_server/line_noise.h"

#include <algorithm>

#include "host/at/text.h"
#include "host/at_server/reply.h"

namespace host::at_server {
namespace {

bool hasEightBits(char byte)
{
    return static_cast<unsigned char>(byte) >= 0x80;
}

std::string_view withoutLeadingNoise(std::string_view line)
{
    const auto *const begin = std::find_if_not(line.begin(), line.end(), hasEightBits);
    return line.substr(static_cast<size_t>(begin - line.begin()));
}

std::string_view withoutTrailingNoise(std::string_view line)
{
    while (!line.empty() && hasEightBits(line.back()))
        line.remove_suffix(1);
    return line;
}

/** Bytes of a character that begins with this one; 0 if none does. */
size_t sizeOfCharacter(unsigned char first)
{
    if (first >= 0xC2 && first <= 0xDF) return 2;
    if (first >= 0xE0 && first <= 0xEF) return 3;
    return first >= 0xF0 && first <= 0xF4 ? 4 : 0;
}

/** Of characters of several bytes only. */
bool isUtf8(std::string_view text)
{
    while (!text.empty()) {
        const size_t size = sizeOfCharacter(static_cast<unsigned char>(text.front()));
        const std::string_view rest = text.substr(1, std::max<size_t>(size, 1) - 1);
        const bool isCharacter = size > 0 && rest.size() == size - 1 &&
                                 std::all_of(rest.begin(), rest.end(),
                                             [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; });
        if (!isCharacter) return false;
        text.remove_prefix(size);
    }
    return true;
}

} // namespace

bool isNoText(char byte)
{
    const auto code = static_cast<unsigned char>(byte);
    return (code < ' ' && byte != '\t') || code == 0x7F;
}

bool isNoise(std::string_view line)
{
    return !line.empty() && std::all_of(line.begin(), line.end(), hasEightBits) && !isUtf8(line);
}

std::string_view withoutNoise(std::string_view line, std::string_view command)
{
    const std::string_view rest = withoutLeadingNoise(line);
    const std::string_view inner = withoutTrailingNoise(rest);
    if (resultKind(inner, command) != ResultKind::None) return inner;
    return at::namedLine(rest) ? rest : line;
}

} // namespace host::at_server

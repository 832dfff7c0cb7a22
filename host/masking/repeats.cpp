#include <algorithm>
#include <cctype>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "host/at/text.h"
#include "host/masking/lines.h"

namespace host::masking {
namespace {

constexpr size_t kShortestSecret = 4;
constexpr std::string_view kBetweenDigits = " \t\"'-"; // that a modem may put into a secret, or leave out

bool isLetter(char character)
{
    return std::isalnum(static_cast<unsigned char>(character)) != 0;
}

char upper(char character)
{
    return static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
}

/** As hexadecimal digits, each with a filling in front: "31" or "0031". */
std::string hex(std::string_view secret, std::string_view filling)
{
    constexpr std::string_view kHexDigits = "0123456789ABCDEF";
    std::string text;
    for (const char character : secret) {
        const auto byte = static_cast<unsigned char>(character);
        text.append(filling).append(1, kHexDigits[byte >> 4U]).append(1, kHexDigits[byte & 0xFU]);
    }
    return text;
}

/** As the SIM holds digits: swapped in pairs. */
std::string swapped(std::string_view secret)
{
    std::string text(secret);
    if (text.size() % 2 != 0) text += 'F';
    for (size_t i = 0; i + 1 < text.size(); i += 2)
        std::swap(text[i], text[i + 1]);
    return text;
}

/** The hidden parts of a command: as they stand, and the letters and digits in them. */
std::set<std::string> secretsOf(std::string_view command, std::string_view masked)
{
    std::set<std::string> secrets;
    const auto add = [&](std::string_view secret) {
        if (secret.size() >= kShortestSecret) secrets.emplace(secret);
    };
    for (size_t begin = 0; begin < command.size();) {
        if (masked[begin] == command[begin]) {
            ++begin;
            continue;
        }
        size_t end = begin;
        while (end < command.size() && masked[end] == '*')
            ++end;
        const std::string_view part = command.substr(begin, end - begin);
        add(part);
        for (size_t at = 0; at < part.size();) {
            const size_t from = at;
            while (at < part.size() && isLetter(part[at]))
                ++at;
            if (at - from < part.size()) add(part.substr(from, at - from));
            if (at == from) ++at;
        }
        begin = end;
    }
    return secrets;
}

/** @return where a secret ends that begins at a place, whatever its case and with marks in it; 0 if none does */
size_t endOfSecret(std::string_view text, size_t at, std::string_view secret)
{
    for (size_t i = 0; i < secret.size(); ++i, ++at) {
        if (i > 0) at = at::skip(text, isLetter(secret[i]) ? kBetweenDigits : "", at);
        if (at >= text.size() || upper(text[at]) != upper(secret[i])) return 0;
    }
    return at;
}

/** Of a long secret the beginning tells where it stands, and is enough to hide within what is hidden already. */
void hideSecret(MaskedText &masked, std::string_view secret)
{
    constexpr size_t kTellingLength = 32;
    const std::string_view text = masked.text();
    size_t hiddenEnd = 0;
    for (size_t at = 0; at < text.size(); ++at) {
        const size_t end = endOfSecret(text, at, secret.substr(0, kTellingLength));
        if (end == 0) continue;
        const size_t whole = at < hiddenEnd ? 0 : endOfSecret(text, at, secret);
        masked.hide(Kind::Secret, {std::max(at, hiddenEnd), std::max(end, whole)});
        hiddenEnd = std::max({hiddenEnd, end, whole});
    }
}

/** Lines that are pieces of an echo; of several places the last one, since secrets stand behind. */
void hidePieces(MaskedText &masked, std::string_view command, std::string_view maskedCommand)
{
    for (size_t at = at::skip(masked.text(), kLineEnds, 0); at < masked.text().size();) {
        const size_t end = masked.lineEnd(at);
        const size_t piece = command.rfind(masked.at({at, end}));
        for (size_t i = at; piece != std::string_view::npos && i < end; ++i)
            if (maskedCommand[piece + i - at] != command[piece + i - at]) masked.hide(Kind::Secret, {i, i + 1});
        at = at::skip(masked.text(), kLineEnds, end);
    }
}

} // namespace

void hideRepeats(MaskedText &masked, std::string_view command, std::string_view maskedCommand)
{
    for (const std::string &secret : secretsOf(command, maskedCommand)) {
        hideSecret(masked, secret);
        hideSecret(masked, hex(secret, ""));
        hideSecret(masked, hex(secret, "00"));
        hideSecret(masked, swapped(secret));
    }
    if (maskedCommand != command) hidePieces(masked, command, maskedCommand);
}

} // namespace host::masking

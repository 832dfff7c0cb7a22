#include "host/masking/log_lines.h"

#include <cctype>
#include <string>

#include "host/at/command_line.h"
#include "host/at/text.h"
#include "host/masking/commands.h"
#include "host/masking/log_names.h"

namespace host::masking {
namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEFabcdef";
constexpr size_t kShortestFile = 14; // hexadecimal digits of an IMSI, the shortest of the SIM's identities

/** Where AT stands in front of a command: no letter before it, and a sign behind, or in capitals a letter. */
size_t findAttention(std::string_view line)
{
    constexpr std::string_view kFirst = "Aa";
    for (size_t at = line.find_first_of(kFirst); at < line.size(); at = line.find_first_of(kFirst, at + 1)) {
        if ((at > 0 && at::isNameCharacter(line[at - 1])) || !at::isCommandLine(line.substr(at, 2))) continue;
        const size_t next = at::skip(line, at::kBlanks, at + 2);
        const bool hasSign = next < line.size() && at::isSign(line[next]);
        const bool hasLetter = next == at + 2 && next < line.size() && line.substr(at, 2) == "AT";
        if (hasSign || hasLetter) return at;
    }
    return line.size();
}

/** Where a name behind a sign is set, whatever stands before it. */
size_t findSetting(std::string_view line)
{
    for (auto mention = at::findMention(line, 0); mention; mention = at::findMention(line, mention->end)) {
        const bool hasSign = at::isSign(line[mention->begin]) && line[mention->begin] != '_'; // which is in names, too
        if (hasSign && line.substr(mention->end, 1) == "=") return mention->begin;
    }
    return line.size();
}

/** What stands before a '=' or ':' as its name. */
std::string_view nameBefore(std::string_view text, size_t sign)
{
    size_t end = sign;
    while (end > 0 && isOneOf(text[end - 1], " \t\"'"))
        --end;
    size_t begin = end;
    while (begin > 0 && at::isNameCharacter(text[begin - 1]))
        --begin;
    return text.substr(begin, end - begin);
}

/** By its name alone, also where a command stands without its sign. */
Kind kindOfValue(std::string_view text, size_t sign)
{
    const std::string_view name = nameBefore(text, sign);
    const Kind kind = kindOfName(name);
    const auto begin = static_cast<size_t>(name.data() - text.data());
    const bool isWord = begin == 0 || isOneOf(text[begin - 1], " \t\r\n");
    if (kind != Kind::Nothing || text[sign] != '=' || !isWord) return kind;
    std::string command = "+";
    for (const char character : name)
        command += static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
    const at::CommandRule *const rule = at::ruleNamed(command);
    return rule != nullptr && rule->whenSet.kind == Kind::Secret && rule->whenSet.first == 1 ? Kind::Secret
                                                                                             : Kind::Nothing;
}

/** What a file of the SIM holds, in a reply to +CRSM: two status words and the data. */
void hideFile(MaskedText &masked, size_t next)
{
    const std::string_view text = masked.text();
    for (int statusWord = 0; statusWord < 2; ++statusWord) {
        const size_t end = at::skip(text, kDigits, next);
        const size_t comma = at::skip(text, at::kBlanks, end);
        if (end == next || comma == text.size() || text[comma] != ',') return;
        next = at::skip(text, at::kBlanks, comma + 1);
    }
    if (next < text.size() && text[next] == '"') ++next;
    const size_t end = at::skip(text, kHexDigits, next);
    if (end - next >= kShortestFile) masked.hide(Kind::Identity, {next, end});
}

/** A report of a number and a text, such as +CUSD: 0,"text",15; places of cells are in quotes, too, but hexadecimal. */
void hideText(MaskedText &masked, size_t begin)
{
    constexpr size_t kMostHexDigits = 8;
    const std::string_view text = masked.text();
    const Stretch first = argumentAt(text, {begin, text.size()});
    if (first.end == text.size() || at::skip(text, kDigits, first.begin) != first.end) return;
    const Stretch second = argumentAt(text, {first.end + 1, text.size()});
    const std::string_view quoted = masked.at(second);
    if (quoted.substr(0, 1) != "\"") return;
    const size_t digits = at::skip(quoted, kHexDigits, 1) - 1;
    const bool isPlace = digits > 0 && digits <= kMostHexDigits && digits + 2 == quoted.size();
    const Stretch third = argumentAt(text, {std::min(second.end + 1, text.size()), text.size()});
    const bool isLast = third.end == text.size();
    const bool hasAlphabet = isLast && third.begin < third.end && at::skip(text, kDigits, third.begin) == third.end;
    if (hasAlphabet || (second.end == text.size() && !isPlace)) masked.hide(Kind::Secret, second);
}

} // namespace

void hideLoggedCommands(MaskedText &masked)
{
    for (size_t begin = 0; begin < masked.text().size();) {
        const size_t end = masked.lineEnd(begin);
        const std::string_view line = masked.at({begin, end});
        const size_t command = std::min(findAttention(line), findSetting(line));
        hideCommandLine(masked, {begin + command, end}, Words::Spared);
        begin = end + 1;
    }
}

void hideNamedValues(MaskedText &masked)
{
    const std::string_view text = masked.text();
    size_t secret = text.size();
    size_t identity = text.size();
    for (size_t sign = text.find_first_of(":="); sign < secret; sign = text.find_first_of(":=", sign + 1)) {
        const Kind kind = kindOfValue(text, sign);
        if (kind == Kind::Secret) secret = sign + 1;
        if (kind == Kind::Identity) identity = std::min(identity, sign + 1);
    }
    masked.hide(Kind::Secret, {secret, text.size()});
    masked.hide(Kind::Identity, {identity, text.size()});
}

void hideNamelessValues(MaskedText &masked)
{
    const std::string_view text = masked.text();
    for (const LogKey &key : kLogKeys) {
        const size_t at = text.find(key.text);
        if (at != std::string_view::npos) masked.hide(key.kind, {at + key.text.size(), text.size()});
    }
    const size_t key = text.find(kParametersKey);
    if (key == std::string_view::npos) return;
    const size_t parameters = key + kParametersKey.size();
    hideFile(masked, parameters);
    hideText(masked, parameters);
    masked.hide(Kind::Secret, {masked.lineEnd(parameters), text.size()}); // the text of a message
}

} // namespace host::masking

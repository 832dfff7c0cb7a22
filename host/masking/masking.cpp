#include "masking.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <utility>

#include "rules.h"

namespace host {
namespace {

using masking::CommandRule;
using masking::Kind;
using masking::Range;

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kLineEnds("\r\n\0", 3);
constexpr std::string_view kSigils = "+^*$%";
constexpr size_t kShortestIdentity = 14; // digits: an IMEI without its check digit
constexpr size_t kShortestFile = 14;     // hexadecimal digits of an IMSI, the shortest of the SIM's identities
constexpr size_t kMostFilling = 2;       // digits F that fill up an ICCID or IMSI

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isHexDigit(char c)
{
    return std::isxdigit(static_cast<unsigned char>(c)) != 0;
}

bool isNameCharacter(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

bool isOneOf(char c, std::string_view set)
{
    return set.find(c) != std::string_view::npos;
}

/** An argument of a command or reply, with where it stands in the text. */
struct Argument {
    size_t begin;
    size_t end;
};

/** A text, and what is left of it once values are hidden. Places are looked for in the text as it came, so that what has
 *  been hidden already does not stand in the way. */
class Masked {
  public:
    Masked(std::string_view text, Hide hide) : text_(text), result_(text), hide_(hide) {}

    std::string take() { return std::move(result_); }

    /** Hides a stretch but for what separates values. */
    void hide(Kind kind, size_t begin, size_t end)
    {
        if (kind == Kind::Nothing || (kind == Kind::Identity && hide_ == Hide::Secrets)) return;
        for (size_t i = begin; i < end; ++i)
            if (!isOneOf(text_[i], "\", \t\r\n")) result_[i] = '*';
    }

    void hideCommands(const CommandRule *ranRule, bool isHarmless, bool isOneLine);
    void hideDialledCodes();
    void hideNumbers();
    void hidePhoneNumbers();
    void hideNamedValues();
    void hideLogKeys();
    void hideFileBehind(std::string_view key);
    void hideBareLines(const CommandRule &rule);
    void hideEchoes(std::string_view command);

  private:
    size_t skip(std::string_view set, size_t at) const
    {
        return std::min(text_.find_first_not_of(set, at), text_.size());
    }
    size_t lineEnd(size_t at) const { return std::min(text_.find_first_of(kLineEnds, at), text_.size()); }
    size_t nameEnd(size_t at) const
    {
        while (at < text_.size() && isNameCharacter(text_[at]))
            ++at;
        return at;
    }
    /** Whether all that stands behind the equals sign is a question mark. */
    bool isTest(size_t at, size_t end) const
    {
        at = skip(kBlanks, at);
        if (at >= end || text_[at] != '?') return false;
        at = skip(kBlanks, at + 1);
        return at >= end || text_[at] == ';';
    }
    size_t hideArguments(const Range &range, size_t begin, size_t end);

    std::string_view text_;
    std::string result_;
    Hide hide_;
};

/** The argument that begins at a place. One in quotes ends with them, if a separator follows; any other one ends at a
 *  comma. What is not well-formed goes on to the end. */
Argument argumentAt(std::string_view text, size_t begin, size_t end)
{
    text = text.substr(0, end);
    begin = std::min(text.find_first_not_of(kBlanks, begin), end);
    if (begin < end && text[begin] == '"') {
        const size_t quote = text.find('"', begin + 1);
        if (quote >= end) return {begin, end};
        const size_t next = std::min(text.find_first_not_of(kBlanks, quote + 1), end);
        return {begin, next == end || isOneOf(text[next], ",;") ? next : end};
    }
    return {begin, std::min(text.find(',', begin), end)};
}

/** @return where the arguments end */
size_t Masked::hideArguments(const Range &range, size_t begin, size_t end)
{
    for (int number = 1;; ++number) {
        const Argument argument = argumentAt(text_, begin, end);
        if (range.has(number)) hide(range.kind, argument.begin, argument.end);
        if (argument.end >= end || text_[argument.end] != ',') return argument.end;
        begin = argument.end + 1;
    }
}

/** Hides the arguments of all commands and replies that stand in the text with their names.
 *  @param isHarmless  the files of the SIM that replies tell about are
 *  @param isOneLine   the text is one command, to its end */
void Masked::hideCommands(const CommandRule *ranRule, bool isHarmless, bool isOneLine)
{
    for (size_t at = text_.find_first_of(kSigils); at < text_.size(); at = text_.find_first_of(kSigils, at)) {
        const size_t name = skip(kBlanks, at + 1);
        const size_t behind = nameEnd(name);
        const CommandRule *const rule = masking::ruleFor(text_.substr(name, behind - name));
        const size_t sign = skip(kBlanks, behind);
        at = std::max(at + 1, behind);
        if (rule == nullptr || sign == text_.size()) continue;
        const size_t end = isOneLine ? text_.size() : lineEnd(sign);
        if (text_[sign] == '=' && !isTest(sign + 1, end)) at = hideArguments(rule->whenSet, sign + 1, end);
        if (text_[sign] == ':' && !(isHarmless && rule == ranRule)) at = hideArguments(rule->whenTold, sign + 1, end);
    }
}

/** Codes that are dialled: "**04*old*new*new#" and its like change a PIN, "**03*" a password. */
void Masked::hideDialledCodes()
{
    for (size_t at = text_.find("**0"); at < text_.size(); at = text_.find("**0", at)) {
        at += 3;
        if (at == text_.size() || !isOneOf(text_[at], "345")) continue;
        const size_t end = std::min(text_.find_first_of("#\r\n", at), text_.size());
        for (size_t star = text_.find('*', at); star < end; star = text_.find('*', star + 1))
            hide(Kind::Secret, star + 1, std::min(text_.find('*', star + 1), end));
        at = end;
    }
}

/** Runs of digits as long as an IMSI, IMEI or ICCID are such numbers wherever they stand, also with their digits swapped
 *  in pairs and filled up as in the files of the SIM. */
void Masked::hideNumbers()
{
    for (size_t at = 0; at < text_.size();) {
        if (!isHexDigit(text_[at])) {
            ++at;
            continue;
        }
        const size_t begin = at;
        size_t digits = 0;
        size_t filling = 0;
        for (; at < text_.size() && isHexDigit(text_[at]); ++at) {
            digits += isDigit(text_[at]) ? 1 : 0;
            filling += isOneOf(text_[at], "Ff") ? 1 : 0;
        }
        const bool isFilled = digits + filling == at - begin && filling <= kMostFilling;
        if (isFilled && at - begin >= kShortestIdentity) hide(Kind::Identity, begin, at);
        if (isFilled) continue;
        for (size_t from = begin; from < at;) { // digits only, within something longer
            const size_t to = std::min(text_.find_first_not_of("0123456789", from), at);
            if (to - from >= kShortestIdentity) hide(Kind::Identity, from, to);
            from = to + 1;
        }
    }
}

/** A number in quotes and the type of number behind it, from 128 to 255, are a telephone number. */
void Masked::hidePhoneNumbers()
{
    for (size_t quote = text_.find('"'); quote < text_.size(); quote = text_.find('"', quote + 1)) {
        const size_t begin = quote + 1;
        const size_t from = begin < text_.size() && text_[begin] == '+' ? begin + 1 : begin;
        const size_t end = skip("0123456789*#", from);
        if (end - from < 3 || end == text_.size() || text_[end] != '"') continue;
        const size_t comma = skip(kBlanks, end + 1);
        if (comma == text_.size() || text_[comma] != ',') continue;
        const size_t type = skip(kBlanks, comma + 1);
        const size_t typeEnd = skip("0123456789", type);
        if (typeEnd - type == 3 && isOneOf(text_[type], "12")) hide(Kind::Identity, begin, end);
    }
}

void Masked::hideNamedValues()
{
    size_t secret = text_.size();
    size_t identity = text_.size();
    for (size_t sign = text_.find_first_of(":="); sign < secret; sign = text_.find_first_of(":=", sign + 1)) {
        size_t end = sign;
        while (end > 0 && isOneOf(text_[end - 1], " \t\"'"))
            --end;
        size_t begin = end;
        while (begin > 0 && isNameCharacter(text_[begin - 1]))
            --begin;
        const Kind kind = masking::kindOfName(text_.substr(begin, end - begin));
        if (kind == Kind::Secret) secret = sign + 1;
        if (kind == Kind::Identity) identity = std::min(identity, sign + 1);
    }
    hide(Kind::Secret, secret, text_.size());
    hide(Kind::Identity, identity, text_.size());
}

void Masked::hideLogKeys()
{
    for (const masking::LogKey &key : masking::kLogKeys) {
        const size_t at = text_.find(key.text);
        if (at != std::string_view::npos) hide(key.kind, at + key.text.size(), text_.size());
    }
}

/** What a file of the SIM holds, where the reply to +CRSM stands without its name: two status words and the data. */
void Masked::hideFileBehind(std::string_view key)
{
    const size_t at = text_.find(key);
    if (at == std::string_view::npos) return;
    size_t next = at + key.size();
    for (int statusWord = 0; statusWord < 2; ++statusWord) {
        const size_t end = skip("0123456789", next);
        const size_t comma = skip(kBlanks, end);
        if (end == next || comma == text_.size() || text_[comma] != ',') return;
        next = skip(kBlanks, comma + 1);
    }
    if (next < text_.size() && text_[next] == '"') ++next;
    const size_t end = skip("0123456789ABCDEFabcdef", next);
    if (end - next >= kShortestFile) hide(Kind::Identity, next, end);
}

bool isFinalResult(std::string_view line)
{
    return line == "OK" || line == "ERROR" || line.substr(0, 4) == "+CME" || line.substr(0, 4) == "+CMS";
}

/** The lines of a reply that stand without the name of their command. */
void Masked::hideBareLines(const CommandRule &rule)
{
    for (size_t at = skip("\r\n", 0); at < text_.size(); at = skip("\r\n", at)) {
        const size_t end = std::max(lineEnd(at), at + 1);
        const std::string_view line = text_.substr(at, end - at);
        const bool isNamed = isOneOf(line[0], kSigils) && line.find(':') != std::string_view::npos;
        const bool isEcho = line.size() > 1 && (line[0] == 'A' || line[0] == 'a') && (line[1] == 'T' || line[1] == 't');
        if (!isNamed && !isEcho && !isFinalResult(line)) hideArguments(rule.whenTold, at, end);
        at = end;
    }
}

/** The secrets of a command that ran, wherever the modem says them again: whole, or in lines that are pieces of an
 *  echo. */
void Masked::hideEchoes(std::string_view command)
{
    const std::string masked = maskedCommand(command, Hide::Secrets);
    constexpr size_t kShortestSecret = 4;
    for (size_t begin = masked.find('*'); begin < masked.size(); begin = masked.find('*', begin)) {
        const size_t end = std::min(masked.find_first_not_of('*', begin), masked.size());
        const std::string_view secret = command.substr(begin, end - begin);
        begin = end;
        if (secret.size() < kShortestSecret) continue;
        for (size_t at = text_.find(secret); at != std::string_view::npos; at = text_.find(secret, at + secret.size()))
            hide(Kind::Secret, at, at + secret.size());
    }
    if (masked == command) return;
    for (size_t at = skip("\r\n", 0); at < text_.size(); at = skip("\r\n", at)) {
        const size_t end = std::max(lineEnd(at), at + 1);
        const size_t piece = command.rfind(text_.substr(at, end - at)); // the last one, since secrets stand behind
        for (size_t i = at; piece != std::string_view::npos && i < end; ++i)
            if (masked[piece + i - at] == '*') hide(Kind::Secret, i, i + 1);
        at = end;
    }
}

struct RanCommand {
    const CommandRule *rule = nullptr;
    bool isHarmless = false; ///< reads a file of the SIM that says nothing about the subscriber
};

RanCommand ranCommand(std::string_view command)
{
    const size_t sigil = command.find_first_of(kSigils);
    if (sigil == std::string_view::npos) return {};
    const size_t begin = std::min(command.find_first_not_of(kBlanks, sigil + 1), command.size());
    size_t end = begin;
    while (end < command.size() && isNameCharacter(command[end]))
        ++end;
    RanCommand ran{masking::ruleFor(command.substr(begin, end - begin))};
    if (ran.rule == nullptr || ran.rule->name != "CRSM") return ran;

    const size_t comma = command.find(',', end);
    if (comma == std::string_view::npos) return ran;
    const Argument file = argumentAt(command, comma + 1, command.size());
    uint32_t number = 0;
    std::from_chars(command.data() + file.begin, command.data() + file.end, number);
    ran.isHarmless = masking::isHarmlessFile(number);
    return ran;
}

} // namespace

std::string maskedCommand(std::string_view command, Hide hide)
{
    Masked masked(command, hide);
    masked.hideCommands(nullptr, false, true);
    masked.hideDialledCodes();
    masked.hideNumbers();
    return masked.take();
}

std::string maskedReply(std::string_view command, std::string_view reply, Hide hide)
{
    const RanCommand ran = ranCommand(command);
    Masked masked(reply, hide);
    masked.hideCommands(ran.rule, ran.isHarmless, false);
    masked.hideDialledCodes();
    masked.hideEchoes(command);
    if (ran.isHarmless) return masked.take();
    masked.hideNumbers();
    masked.hidePhoneNumbers();
    if (ran.rule != nullptr) masked.hideBareLines(*ran.rule);
    return masked.take();
}

std::string maskedLogLine(std::string_view line, Hide hide)
{
    Masked masked(line, hide);
    masked.hideCommands(nullptr, false, false);
    masked.hideDialledCodes();
    masked.hideNamedValues();
    masked.hideLogKeys();
    masked.hideFileBehind(masking::kParametersKey);
    masked.hideNumbers();
    masked.hidePhoneNumbers();
    return masked.take();
}

} // namespace host

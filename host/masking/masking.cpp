#include "host/masking/masking.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <utility>
#include <vector>

#include "host/at/command_line.h"
#include "host/at/secrets.h"
#include "host/at/text.h"
#include "host/masking/log_names.h"

namespace host {
namespace {

using at::CommandRule;
using at::kBlanks;
using at::Kind;
using at::Range;

constexpr std::string_view kLineEnds("\r\n\0", 3);
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

    bool hides(Kind kind) const
    {
        return kind == Kind::Secret || (kind == Kind::Identity && hide_ == Hide::SecretsAndIdentities);
    }

    /** Hides a stretch but for what separates values. */
    void hide(Kind kind, size_t begin, size_t end)
    {
        if (!hides(kind)) return;
        for (size_t i = begin; i < end; ++i)
            if (!isOneOf(text_[i], "\", \t\r\n")) result_[i] = '*';
    }

    void hideCommands(const CommandRule *harmless, bool isOneLine);
    void hideDialledCodes();
    void hideNumbers();
    void hidePhoneNumbers();
    void hideNamedValues();
    void hideLogKeys();
    void hideFileBehind(std::string_view key);
    void hideBareLines(const CommandRule &rule);
    void hideEchoes(std::string_view command);

  private:
    size_t skip(std::string_view set, size_t at) const { return at::skip(text_, set, at); }
    size_t lineEnd(size_t at) const { return std::min(text_.find_first_of(kLineEnds, at), text_.size()); }
    void hideArguments(const Range &range, size_t begin, size_t end);
    bool isInHiddenEnd(size_t at) const { return at >= hiddenEnd_.begin && at < hiddenEnd_.end; }

    std::string_view text_;
    std::string result_;
    Hide hide_;
    Argument hiddenEnd_{0, 0}; ///< of a line, all of it hidden: what stands there need not be looked at again
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

void Masked::hideArguments(const Range &range, size_t begin, size_t end)
{
    if (!hides(range.kind)) return;
    size_t firstHidden = end;
    for (int number = 1; number <= range.last; ++number) {
        const Argument argument = argumentAt(text_, begin, end);
        if (number >= range.first) {
            if (isInHiddenEnd(argument.begin)) return;
            hide(range.kind, argument.begin, argument.end);
            firstHidden = std::min(firstHidden, argument.begin);
            if (argument.end == end) hiddenEnd_ = {firstHidden, end};
        }
        if (argument.end >= end || text_[argument.end] != ',') return;
        begin = argument.end + 1;
    }
}

/** Hides the arguments of all commands and replies that stand in the text with their names.
 *  @param harmless   what it tells about need not be hidden; nullptr if there is no such rule
 *  @param isOneLine  the text is one command, to its end */
void Masked::hideCommands(const CommandRule *harmless, bool isOneLine)
{
    size_t next = 0;
    for (auto mention = at::findMention(text_, 0); mention; mention = at::findMention(text_, next)) {
        const size_t sign = mention->end;
        next = isInHiddenEnd(mention->begin) ? hiddenEnd_.end : sign;
        const CommandRule *const rule = next == sign ? at::ruleFor(*mention) : nullptr;
        if (rule == nullptr || sign == text_.size()) continue;
        const size_t end = isOneLine ? text_.size() : lineEnd(sign);
        const bool isSet = text_[sign] == '=' && !at::isTest(text_.substr(sign + 1, end - sign - 1));
        if (isSet) hideArguments(rule->whenSet, sign + 1, end);
        if (text_[sign] == ':' && rule != harmless) hideArguments(rule->whenTold, sign + 1, end);
    }
}

/** What is dialled between the stars of a code that changes a PIN or a password. */
void Masked::hideDialledCodes()
{
    for (auto code = at::findDialledCode(text_, 0); code; code = at::findDialledCode(text_, code->end))
        for (size_t star = text_.find('*', code->begin); star < code->end; star = text_.find('*', star + 1))
            hide(Kind::Secret, star + 1, std::min(text_.find('*', star + 1), code->end));
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
        while (begin > 0 && at::isNameCharacter(text_[begin - 1]))
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
        const bool isNamed = line[0] != '#' && at::namedLine(line); // behind # there are no reports that could come
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
    std::vector<const CommandRule *> rules;
    /** Of a command that reads a file of the SIM which says nothing about the subscriber, and does nothing else. */
    const CommandRule *harmless = nullptr;
};

bool readsHarmlessFile(const at::Command &command)
{
    const size_t comma = command.parameters.find(',');
    if (command.name != "+CRSM" || comma == std::string_view::npos) return false;
    const Argument file = argumentAt(command.parameters, comma + 1, command.parameters.size());
    uint32_t number = 0;
    std::from_chars(command.parameters.data() + file.begin, command.parameters.data() + file.end, number);
    return at::isHarmlessFile(number);
}

RanCommand ranCommand(std::string_view command)
{
    RanCommand ran;
    for (auto mention = at::findMention(command, 0); mention; mention = at::findMention(command, mention->end))
        if (const CommandRule *const rule = at::ruleFor(*mention)) ran.rules.push_back(rule);
    const auto commands = at::commandsOf(command);
    if (ran.rules.size() == 1 && commands.size() == 1 && readsHarmlessFile(commands[0])) ran.harmless = ran.rules[0];
    return ran;
}

} // namespace

std::string maskedCommand(std::string_view command, Hide hide)
{
    Masked masked(command, hide);
    masked.hideCommands(nullptr, true);
    masked.hideDialledCodes();
    masked.hideNumbers();
    return masked.take();
}

std::string maskedReply(std::string_view command, std::string_view reply, Hide hide)
{
    const RanCommand ran = ranCommand(command);
    Masked masked(reply, hide);
    masked.hideCommands(ran.harmless, false);
    masked.hideDialledCodes();
    masked.hideEchoes(command);
    if (ran.harmless != nullptr) return masked.take();
    masked.hideNumbers();
    masked.hidePhoneNumbers();
    for (const CommandRule *const rule : ran.rules)
        masked.hideBareLines(*rule);
    return masked.take();
}

std::string maskedLogLine(std::string_view line, Hide hide)
{
    Masked masked(line, hide);
    masked.hideCommands(nullptr, false);
    masked.hideDialledCodes();
    masked.hideNamedValues();
    masked.hideLogKeys();
    masked.hideFileBehind(masking::kParametersKey);
    masked.hideNumbers();
    masked.hidePhoneNumbers();
    return masked.take();
}

} // namespace host

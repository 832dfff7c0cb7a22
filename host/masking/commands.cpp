#include "host/masking/commands.h"

#include <cctype>

#include "host/at/command_line.h"
#include "host/at/text.h"
#include "host/at/vocabulary.h"

namespace host::masking {
namespace {

using at::Command;
using at::Form;

constexpr size_t kMostDigits = 3; // of a number that is no secret

std::string_view trimmed(std::string_view text)
{
    text.remove_prefix(at::skip(text, at::kBlanks, 0));
    return text.substr(0, text.find_last_not_of(at::kBlanks) + 1);
}

bool isSmallNumber(std::string_view value)
{
    value = trimmed(value);
    if (!value.empty() && isOneOf(value.front(), "+-")) value.remove_prefix(1);
    return value.size() <= kMostDigits && std::all_of(value.begin(), value.end(), isDigit);
}

/** "0=1" of S0=1 */
bool isRegister(std::string_view parameters)
{
    const size_t equals = at::skip(parameters, kDigits, 0);
    if (equals == parameters.size() || !isOneOf(parameters[equals], "=?")) return false;
    return isSmallNumber(parameters.substr(0, equals)) && isSmallNumber(parameters.substr(equals + 1));
}

/** Whether its quotes are around it, or nowhere, and no command may be in it. */
bool isWellFormed(std::string_view argument)
{
    argument = trimmed(argument);
    if (argument.find_first_of(";=") != std::string_view::npos) return false;
    if (!isOneOf('"', argument)) return true;
    return argument.size() > 1 && argument.find('"', 1) == argument.size() - 1 && argument.front() == '"';
}

template <typename Test>
size_t countOf(std::string_view text, Test test)
{
    return static_cast<size_t>(std::count_if(text.begin(), text.end(), test));
}

/** Whether there are digits or blanks in a name behind its sign, or letters of both cases. */
bool isStrange(std::string_view name)
{
    const std::string_view word = trimmed(name.substr(std::min<size_t>(name.size(), 1)));
    const size_t small = countOf(word, [](unsigned char character) { return std::islower(character) != 0; });
    const size_t capital = countOf(word, [](unsigned char character) { return std::isupper(character) != 0; });
    return (small > 0 && capital > 0) ||
           small + capital + countOf(word, [](char character) { return character == '_'; }) < word.size();
}

bool isBasic(const Command &command)
{
    return !command.name.empty() && !at::isSign(command.name.front());
}

/** One command of a line, and what is known of it. */
class HiddenCommand {
  public:
    HiddenCommand(MaskedText &masked, const Command &command, bool isUnderstood, Words words)
        : masked_(masked), command_(command), place_(masked.placeOf(command.text)), words_(words),
          word_(isUnderstood && command.form != Form::Malformed ? at::wordNamed(command.name) : nullptr),
          rule_(command.form == Form::Set ? at::ruleNamed(command.name) : nullptr)
    {
    }

    void hideAll() { masked_.hide(Kind::Secret, place_); }

    /** A secret may follow a name without what should separate them. */
    void hideName()
    {
        const Stretch name{place_.begin, nameEnd()};
        const std::string_view text = masked_.at(name);
        if (words_ == Words::Spared || at::wordNamed(command_.name) != nullptr) {
            if (countOf(text, isDigit) > kMostDigits) masked_.hideDigits(Kind::Secret, name);
        } else {
            hideStrangeName(masked_, name);
        }
    }

    void hideArguments()
    {
        if (command_.form != Form::Set && command_.form != Form::Malformed) return;
        Stretch rest{nameEnd(), place_.end};
        if (command_.form == Form::Set && !isBasic(command_)) ++rest.begin; // '='
        if (command_.name == "S" && isRegister(command_.parameters)) return;
        Stretch argument{};
        int number = 1;
        do {
            argument = argumentAt(masked_.text(), rest);
            masked_.hide(kindOf(number++, masked_.at(argument)), argument);
            hideFirstWord(argument);
            rest.begin = argument.end + 1;
        } while (argument.end < rest.end && masked_.text()[argument.end] == ',');
        masked_.hide(Kind::Secret, {argument.end, rest.end}); // where quotes do not pair, another command
    }

  private:
    /** Of what nobody knows, where other text may follow it. */
    void hideFirstWord(Stretch argument)
    {
        if (at::wordNamed(command_.name) != nullptr || isBasic(command_) || command_.form != Form::Set) return;
        const Stretch word{argument.begin,
                           std::min(masked_.text().find_first_of(at::kBlanks, argument.begin), argument.end)};
        if (!isSmallNumber(masked_.at(word))) masked_.hide(Kind::Secret, word);
    }

    size_t nameEnd() const { return place_.begin + command_.nameEnd; }

    Kind kindOf(int number, std::string_view argument) const
    {
        if (rule_ != nullptr && rule_->whenSet.has(number)) return rule_->whenSet.kind;
        if (isHarmless(number, argument)) return Kind::Nothing;
        const bool isSpared = words_ == Words::Spared ? !looksPrivate(argument) : isSmallNumber(argument);
        return isSpared ? Kind::Nothing : Kind::Secret;
    }

    /** Beside a secret only short words are, such as the name of a lock: a secret may stand in their place. */
    bool isHarmless(int number, std::string_view argument) const
    {
        constexpr ptrdiff_t kMostLetters = 2;
        if (word_ == nullptr || !word_->harmless.has(number) || !isWellFormed(argument)) return false;
        const bool isBesideSecret = rule_ != nullptr && rule_->whenSet.kind == Kind::Secret;
        const auto isMark = [](char character) { return isOneOf(character, "\" \t"); };
        const auto marks = std::count_if(argument.begin(), argument.end(), isMark);
        return !isBesideSecret || static_cast<ptrdiff_t>(argument.size()) - marks <= kMostLetters;
    }

    MaskedText &masked_;
    const Command &command_;
    Stretch place_;
    Words words_;
    const at::Word *word_;
    const at::CommandRule *rule_;
};

/** Of a command that is set, where another one may stand behind a semicolon. An open quote may go on in the next line. */
void hideSetting(MaskedText &masked, const at::CommandRule &rule, Stretch arguments)
{
    const std::string_view text = masked.at(arguments);
    if (at::isTest(text)) return;
    if (std::count(text.begin(), text.end(), '"') % 2 != 0) arguments.end = masked.text().size();
    masked.hideArguments(rule.whenSet, arguments, ",");
}

} // namespace

void hideCommandLine(MaskedText &masked, Stretch line, Words words)
{
    const std::string_view text = masked.at(line);
    const auto commands = at::commandsOf(text);
    const bool isUnderstood = std::count(text.begin(), text.end(), '"') % 2 == 0;
    const bool hasPlainText = std::any_of(commands.begin(), commands.end(), [](const Command &command) {
        return command.name.empty() || (isBasic(command) && at::wordNamed(command.name) == nullptr);
    });
    for (const Command &command : commands) {
        HiddenCommand hidden(masked, command, isUnderstood, words);
        const bool mayBeText = command.name.empty() || isBasic(command);
        if (words == Words::Hidden && mayBeText && (hasPlainText || !at::isCommandLine(text))) hidden.hideAll();
        hidden.hideName();
        hidden.hideArguments();
    }
}

void hideStrangeName(MaskedText &masked, Stretch name)
{
    if (isStrange(masked.at(name))) masked.hide(Kind::Secret, {name.begin + 1, name.end});
}

void hideMentions(MaskedText &masked, const at::CommandRule *harmless, bool isOneLine)
{
    const std::string_view text = masked.text();
    size_t next = 0;
    size_t lineEnd = 0;
    for (auto mention = at::findMention(text, 0); mention; mention = at::findMention(text, next)) {
        const size_t sign = mention->end;
        const size_t behind = masked.behindHiddenEnd(mention->begin);
        next = behind != mention->begin ? behind : sign;
        const at::CommandRule *const rule = next == sign ? at::ruleFor(*mention) : nullptr;
        if (rule == nullptr || sign == text.size() || !isOneOf(text[sign], "=:")) continue;
        if (sign >= lineEnd) lineEnd = isOneLine ? text.size() : masked.lineEnd(sign);
        const Stretch arguments{sign + 1, lineEnd};
        if (text[sign] == '=')
            hideSetting(masked, *rule, arguments);
        else if (rule != harmless)
            masked.hideArguments(rule->whenTold, arguments);
    }
}

void hideUnknownArguments(MaskedText &masked, Kind kind, Stretch arguments)
{
    while (arguments.begin < arguments.end) {
        const Stretch argument = argumentAt(masked.text(), arguments);
        if (!isSmallNumber(masked.at(argument))) masked.hide(kind, argument);
        arguments.begin = argument.end + 1;
    }
}

} // namespace host::masking

#include "host/at_server/second_question.h"

#include <cctype>
#include <utility>

#include "host/at/command_line.h"
#include "host/at/secrets.h"

namespace host::at_server {
namespace {

constexpr std::string_view kWhichAlphabet = "AT+CSCS?";

bool hasSmallLetters(std::string_view command)
{
    return inCapitalsOutsideParameters(command) != command;
}

} // namespace

std::string inCapitalsOutsideParameters(std::string_view command)
{
    std::string raised;
    bool isInQuotes = false;
    bool isInParameters = false;
    for (const char character : command) {
        if (character == '"') isInQuotes = !isInQuotes;
        if (!isInQuotes && character == '=') isInParameters = true;
        if (!isInQuotes && character == ';') isInParameters = false;
        const bool stays = isInQuotes || isInParameters;
        raised += stays ? character : static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
    }
    return raised;
}

void SecondQuestion::portOpened()
{
    hasTriedCase_ = knowsCapitalsOnly_ = suspectsCase_ = wasRaised_ = false;
    (void)giveUp();
}

std::string SecondQuestion::asSent(std::string_view command)
{
    const bool isRaised =
        capitals_ == Capitals::Always || (capitals_ == Capitals::AsNeeded && (knowsCapitalsOnly_ || suspectsCase_));
    std::string sent = isRaised ? inCapitalsOutsideParameters(command) : std::string(command);
    wasRaised_ = sent != command;
    return sent;
}

/** A command with a secret is never sent twice: it may have been refused for the secret. */
bool SecondQuestion::mayHaveBeenCase(const std::string &command, const Reply &reply) const
{
    const ResultKind kind = resultKind(reply.result, command);
    const bool isRefused = kind == ResultKind::Error || kind == ResultKind::NotSupported || kind == ResultKind::Refusal;
    return capitals_ == Capitals::AsNeeded && isRefused && reply.lines.empty() && hasSmallLetters(command) &&
           !at::changesSecrets(command);
}

std::optional<Reply> SecondQuestion::settled(const std::string &command, Reply reply)
{
    const About about = std::exchange(about_, About::Nothing);
    if (about == About::Alphabet) {
        alphabet_ = alphabetIn(reply);
        return std::exchange(behind_, {});
    }
    alphabet_ = Alphabet::Plain;
    if (hasSmallLetters(command)) hasTriedCase_ = true;
    const bool isOk = resultKind(reply.result, command) == ResultKind::Ok;
    const bool isOfCapitals = about == About::Refusal || about == About::Silence;
    if ((isOfCapitals && isOk) || (wasRaised_ && suspectsCase_)) knowsCapitalsOnly_ = true;
    if (!isOfCapitals && mayHaveBeenCase(command, reply))
        return ask(About::Refusal, inCapitalsOutsideParameters(command), std::move(reply));
    if (mayHaveUcs2(reply, command)) return ask(About::Alphabet, std::string(kWhichAlphabet), std::move(reply));
    return reply;
}

std::optional<Reply> SecondQuestion::ask(About about, std::string question, Reply behind)
{
    about_ = about;
    question_ = std::move(question);
    behind_ = std::move(behind);
    return std::nullopt;
}

std::optional<std::string> SecondQuestion::takeQuestion()
{
    return std::exchange(question_, std::nullopt);
}

std::optional<Reply> SecondQuestion::giveUp()
{
    question_.reset();
    const About about = std::exchange(about_, About::Nothing);
    if (about == About::Nothing || about == About::Silence) return std::nullopt;
    alphabet_ = Alphabet::Plain;
    return std::exchange(behind_, {});
}

/** Commands that read are answered at once, and do nothing twice. */
bool SecondQuestion::isTrial(std::string_view command) const
{
    const auto commands = at::commandsOf(command);
    return capitals_ == Capitals::AsNeeded && !hasTriedCase_ && hasSmallLetters(command) && commands.size() == 1 &&
           commands[0].form == at::Form::Read;
}

std::optional<std::string> SecondQuestion::raised(std::string_view command)
{
    if (!isTrial(command)) return std::nullopt;
    hasTriedCase_ = true;
    about_ = About::Silence;
    return inCapitalsOutsideParameters(command);
}

void SecondQuestion::timedOut(std::string_view command)
{
    if (about_ == About::Nothing) suspectsCase_ = !wasRaised_ && hasSmallLetters(command);
}

} // namespace host::at_server

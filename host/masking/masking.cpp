#include "host/masking/masking.h"

#include <charconv>
#include <vector>

#include "host/at/command_line.h"
#include "host/at/text.h"
#include "host/masking/commands.h"
#include "host/masking/lines.h"
#include "host/masking/log_lines.h"
#include "host/masking/masked_text.h"
#include "host/masking/numbers.h"

namespace host {
namespace {

using at::CommandRule;
using masking::Line;
using masking::MaskedText;
using masking::Stretch;

struct RanCommand {
    std::vector<const CommandRule *> rules;
    /** Of a command that reads a file of the SIM which says nothing about the subscriber, and does nothing else. */
    const CommandRule *harmless = nullptr;
};

bool readsHarmlessFile(const at::Command &command)
{
    const size_t comma = command.parameters.find(',');
    if (command.name != "+CRSM" || comma == std::string_view::npos) return false;
    const Stretch file = masking::argumentAt(command.parameters, {comma + 1, command.parameters.size()});
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

/** The lines of a reply that stand without the name of their command. */
void hideBareLines(MaskedText &masked, const CommandRule &rule)
{
    const std::string_view text = masked.text();
    for (size_t at = at::skip(text, "\r\n", 0); at < text.size(); at = at::skip(text, "\r\n", at)) {
        const size_t end = std::max(masked.lineEnd(at), at + 1);
        const std::string_view line = masked.at({at, end});
        const bool isNamed = line[0] != '#' && at::namedLine(line); // behind # there are no reports that could come
        if (!isNamed && !at::isCommandLine(line) && !masking::isFinalResult(line))
            masked.hideArguments(rule.whenTold, {at, end});
        at = end;
    }
}

/** What holds for all that modems say. */
void hideInLines(MaskedText &masked, std::string_view command, Line line)
{
    masking::hideDialledCodes(masked);
    masking::hideTextsOfMessages(masked);
    masking::hideRepeats(masked, command, maskedCommand(command, Hide::Secrets));
    masking::hideLines(masked, command, line);
}

} // namespace

std::string maskedCommand(std::string_view command, Hide hide)
{
    MaskedText masked(command, hide);
    masking::hideCommandLine(masked, {0, command.size()}, masking::Words::Hidden);
    masking::hideMentions(masked, nullptr, true);
    masking::hideDialledCodes(masked);
    masking::hideLongNumbers(masked);
    return masked.take();
}

std::string maskedReply(std::string_view command, std::string_view reply, Hide hide)
{
    const RanCommand ran = ranCommand(command);
    MaskedText masked(reply, hide);
    masking::hideMentions(masked, ran.harmless, false);
    hideInLines(masked, command, Line::Reply);
    if (ran.harmless != nullptr) return masked.take();
    masking::hideLongNumbers(masked);
    masking::hidePhoneNumbers(masked);
    for (const CommandRule *const rule : ran.rules)
        hideBareLines(masked, *rule);
    return masked.take();
}

std::string maskedReport(std::string_view command, std::string_view report, Hide hide)
{
    MaskedText masked(report, hide);
    masking::hideMentions(masked, nullptr, false);
    hideInLines(masked, command, Line::Report);
    masking::hideLongNumbers(masked);
    masking::hidePhoneNumbers(masked);
    return masked.take();
}

std::string maskedLogLine(std::string_view line, Hide hide)
{
    MaskedText masked(line, hide);
    masking::hideMentions(masked, nullptr, false);
    masking::hideDialledCodes(masked);
    masking::hideTextsOfMessages(masked);
    masking::hideLoggedCommands(masked);
    masking::hideNamedValues(masked);
    masking::hideNamelessValues(masked);
    masking::hideLongNumbers(masked);
    masking::hidePhoneNumbers(masked);
    return masked.take();
}

} // namespace host

#include "host/at_server/translation/operators.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "host/at/text.h"
#include "host/at_server/translation/fields.h"
#include "host/at_server/translation/ucs2.h"

namespace host::at_server {
namespace {

constexpr size_t kFieldsOfOperator = 4; ///< state, long, short and numeric name; a fifth is the technology

/** Where the text of a list begins a group: a bracket at the start of a field. One within a name belongs to the name. */
bool beginsGroup(std::string_view list, size_t at)
{
    if (list[at] != '(') return false;
    const std::string_view before = at::withoutBlanksBehind(list.substr(0, at));
    return before.empty() || before.back() == ',' || before.back() == ')' || before.back() == '(';
}

/** Ends a group: a bracket in front of a comma, or at the end. */
bool endsGroup(std::string_view list, size_t at)
{
    if (list[at] != ')') return false;
    const std::string_view behind = at::withoutBlanksAround(list.substr(at + 1));
    return behind.empty() || behind.front() == ',' || behind.front() == ')' || behind.front() == '(';
}

/** The texts that begin with a bracket each, up to the next one: of some modems a bracket closes too early, or never. What
 *  stands in quotes has no brackets. */
std::vector<std::string> groupsIn(std::string_view list)
{
    std::vector<std::string> groups(1);
    bool isInQuotes = false;
    int openInName = 0;
    for (size_t i = 0; i < list.size(); ++i) {
        if (list[i] == '"') isInQuotes = !isInQuotes;
        if (!isInQuotes && beginsGroup(list, i)) {
            groups.emplace_back();
            openInName = 0;
            continue;
        }
        const bool belongs = isInQuotes || openInName > 0 || !endsGroup(list, i);
        if (!isInQuotes && list[i] == '(') ++openInName;
        if (!isInQuotes && list[i] == ')' && openInName > 0) --openInName;
        if (belongs) groups.back() += list[i];
    }
    return groups;
}

/** What no list of modes and formats has: a text, or a number of more digits. */
bool isNameOrCode(std::string_view field)
{
    constexpr size_t kMostDigitsOfMode = 2;
    if (isQuoted(field)) return true;
    const bool isRange = field.find_first_not_of("0123456789-") == std::string_view::npos;
    return !isRange || (isDigits(field) && field.size() > kMostDigitsOfMode);
}

/** An operator has a state and names; the lists of modes and formats have only numbers. */
bool isOperator(const std::vector<std::string_view> &fields)
{
    return fields.size() >= kFieldsOfOperator && numberIn(fields[0]) &&
           std::any_of(fields.begin() + 1, fields.begin() + kFieldsOfOperator, isNameOrCode);
}

std::string operatorText(const std::vector<std::string_view> &fields)
{
    std::vector<std::string> written{std::to_string(numberIn(fields[0]).value_or(0))};
    for (size_t i = 1; i < kFieldsOfOperator; ++i)
        written.push_back(inQuotes(unquoted(fields[i])));
    const auto technology = fields.size() > kFieldsOfOperator ? numberIn(fields[kFieldsOfOperator]) : std::nullopt;
    if (technology) written.push_back(std::to_string(*technology));
    return joined(written);
}

bool isList(std::string_view parameters)
{
    return parameters.empty() || parameters.front() == '(' || parameters.front() == ',';
}

/** Puts what a line of a scan becomes behind the lines that there are. */
void shapeLine(const std::string &line, const at::Command &command, std::vector<std::string> &shaped)
{
    const std::string_view list = parametersOf(line, command).value_or(line);
    bool hasOperator = false;
    if (!isWhole(list)) {
        shaped.push_back(line);
        return;
    }
    for (const std::string &group : groupsIn(list)) {
        const auto fields = at::fields(group);
        if (!isOperator(fields)) continue;
        hasOperator = true;
        shaped.push_back("+COPS: " + operatorText(fields));
    }
    if (!hasOperator && !isList(list)) shaped.push_back(line);
}

/** Calls with each text in quotes, without them; what is returned takes its place. */
template <typename Change>
void changeQuoted(std::string &line, Change change)
{
    std::string changed;
    for (size_t at = 0; at < line.size();) {
        const size_t end = line[at] == '"' ? line.find('"', at + 1) : std::string::npos;
        if (end == std::string::npos) {
            changed += line[at++];
            continue;
        }
        changed += inQuotes(change(std::string_view(line).substr(at + 1, end - at - 1)));
        at = end + 1;
    }
    line = std::move(changed);
}

/** With each name in quotes. */
Reply shaped(Reply reply, std::string_view command)
{
    const auto commands = at::commandsOf(command);
    if (at::isOperatorScan(commands[0]))
        anOperatorALine(reply, commands[0]);
    else
        operatorInUse(reply, commands[0]);
    return reply;
}

bool isAboutOperators(std::string_view command)
{
    const auto commands = at::commandsOf(command);
    return commands.size() == 1 && commands[0].name == "+COPS" &&
           (commands[0].form == at::Form::Read || at::isOperatorScan(commands[0]));
}

} // namespace

bool mayHaveUcs2(const Reply &reply, std::string_view command)
{
    if (!isAboutOperators(command)) return false;
    bool isFound = false;
    for (std::string line : shaped(reply, command).lines)
        changeQuoted(line, [&](std::string_view text) {
            isFound = isFound || textOfUcs2(text).has_value();
            return text;
        });
    return isFound;
}

Alphabet alphabetIn(const Reply &reply)
{
    const bool isUcs2 = std::any_of(reply.lines.begin(), reply.lines.end(), [](const std::string &line) {
        const auto named = at::namedLine(line);
        return inCapitals(unquoted(named ? named->parameters : line)) == "UCS2";
    });
    return isUcs2 ? Alphabet::Ucs2 : Alphabet::Plain;
}

void ucs2AsText(Reply &reply)
{
    for (std::string &line : reply.lines)
        changeQuoted(line, [](std::string_view text) { return textOfUcs2(text).value_or(std::string(text)); });
}

void anOperatorALine(Reply &reply, const at::Command &command)
{
    const auto sent = std::exchange(reply.lines, {});
    for (const std::string &line : sent)
        shapeLine(line, command, reply.lines);
}

void operatorInUse(Reply &reply, const at::Command &command)
{
    constexpr size_t kName = 2;
    for (std::string &line : reply.lines) {
        const auto parameters = parametersOf(line, command);
        if (!parameters || !isWhole(*parameters)) continue;
        const auto fields = at::fields(*parameters);
        if (!numberIn(fields[0])) continue;
        std::vector<std::string> written;
        for (size_t i = 0; i < fields.size(); ++i) {
            const auto number = i == kName ? std::nullopt : numberIn(fields[i]);
            if (i == kName)
                written.push_back(inQuotes(unquoted(fields[i])));
            else
                written.push_back(number ? std::to_string(*number) : std::string(fields[i]));
        }
        line = command.name + ": " + joined(written);
    }
}

} // namespace host::at_server

#include "host/at_server/reply_shaping.h"

#include <algorithm>
#include <array>
#include <utility>

#include "host/at/command_line.h"
#include "host/at/text.h"

namespace host::at_server {
namespace {

using Lines = std::vector<std::string>;

/** Puts what a line becomes behind the lines that there are. */
using ShapeLine = void (*)(std::string_view line, Lines &shaped);

void withoutName(std::string_view line, Lines &shaped)
{
    const auto named = at::namedLine(line);
    shaped.emplace_back(named ? named->parameters : line);
}

void withoutBlankBehindColon(std::string_view line, Lines &shaped)
{
    const auto named = at::namedLine(line);
    shaped.push_back(named ? std::string(named->name).append(":").append(named->parameters) : std::string(line));
}

/** The texts in the brackets of a list such as (2,"One"),(3,"Two"),,(0,1): what stands in quotes has no brackets. */
std::vector<std::string_view> bracketed(std::string_view list)
{
    std::vector<std::string_view> groups;
    bool isQuoted = false;
    size_t start = std::string_view::npos;
    for (size_t i = 0; i < list.size(); ++i) {
        if (list[i] == '"') isQuoted = !isQuoted;
        if (isQuoted) continue;
        if (list[i] == '(') start = i + 1;
        if (list[i] != ')' || start > i) continue;
        groups.push_back(list.substr(start, i - start));
        start = std::string_view::npos;
    }
    return groups;
}

/** An operator has names; the lists of modes and formats have only numbers. */
bool isOperator(std::string_view group)
{
    return group.find('"') != std::string_view::npos;
}

void anOperatorALine(std::string_view line, Lines &shaped)
{
    const auto named = at::namedLine(line);
    const std::string_view list = named ? named->parameters : line;
    const bool isList = list.empty() || list.front() == '(' || list.front() == ',';
    if (!isList) {
        shaped.emplace_back(line);
        return;
    }
    for (const std::string_view group : bracketed(list))
        if (isOperator(group)) shaped.push_back(std::string("+COPS: ").append(group));
}

bool isRead(const at::Command &command)
{
    return command.form != at::Form::Set;
}

bool isExecution(const at::Command &command)
{
    return command.form == at::Form::Execute;
}

bool isAny(Family /*family*/)
{
    return true;
}

bool isReadWithoutBlank(Family family)
{
    return !family::rowOf(family).sysinfoHasBlank;
}

struct Row {
    std::string_view name;
    bool (*isForm)(const at::Command &command);
    bool (*isFamily)(Family family);
    ShapeLine shapeLine;
};

constexpr std::array kRows{
    Row{"+CEREG", isRead, isAny, withoutName},
    Row{"+CGREG", isRead, isAny, withoutName},
    Row{"+COPS", at::isOperatorScan, isAny, anOperatorALine},
    Row{"^SYSINFO", isExecution, isReadWithoutBlank, withoutBlankBehindColon},
};

void shapeLines(Lines &lines, std::string_view command, Family family)
{
    const auto commands = at::commandsOf(command);
    if (commands.size() != 1) return; // lines of several replies cannot be told apart
    for (const Row &row : kRows) {
        const bool applies = commands[0].name == row.name && row.isForm(commands[0]) && row.isFamily(family);
        if (!applies) continue;
        const Lines sent = std::exchange(lines, {});
        for (const std::string &line : sent)
            row.shapeLine(line, lines);
    }
}

void shapeCallResult(Reply &reply, std::string_view command)
{
    if (resultKind(reply.result, command) != ResultKind::Call) return;
    const char *const result = isConnect(reply.result) ? "OK" : "ERROR";
    reply.lines.push_back(std::exchange(reply.result, result));
}

} // namespace

void shape(Reply &reply, std::string_view command, Family family)
{
    shapeLines(reply.lines, command, family);
    shapeCallResult(reply, command);
}

std::string asLibraryReads(Reply reply, std::string_view command, Family family)
{
    for (std::string &line : reply.lines)
        line = withBlank(line);
    reply.result = withBlank(reply.result);
    shape(reply, command, family);
    return framed(reply);
}

} // namespace host::at_server

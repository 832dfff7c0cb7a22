#include "host/at_server/translation/translation.h"

#include <algorithm>
#include <array>
#include <utility>

#include "host/at/command_line.h"
#include "host/at/text.h"
#include "host/at_server/translation/errors.h"
#include "host/at_server/translation/registration.h"
#include "host/at_server/translation/sim.h"
#include "host/at_server/translation/values.h"

namespace host::at_server {
namespace {

using at::Command;
using at::Form;

bool isRead(const Command &command)
{
    return command.form == Form::Read;
}

bool isNoSet(const Command &command)
{
    return command.form != Form::Set;
}

bool isExecution(const Command &command)
{
    return command.form == Form::Execute;
}

/** +CPINR may be asked for one code. */
bool isAnyForm(const Command & /*command*/)
{
    return true;
}

bool isQuery(const Command &command)
{
    const auto fields = at::fields(command.parameters);
    return command.form == Form::Set && fields.size() >= 2 && fields[1] == "2";
}

bool isWithoutBlank(Family family)
{
    return !family::rowOf(family).sysinfoHasBlank;
}

bool isAny(Family /*family*/)
{
    return true;
}

struct Row {
    std::string_view name;
    bool (*isForm)(const Command &command);
    void (*translate)(Reply &reply, const Command &command);
    bool (*isFamily)(Family family) = isAny;
};

constexpr std::array kRows{
    Row{"+CREG", isRead, registrationInFiveFields},
    Row{"+CEREG", isNoSet, registrationWithoutName},
    Row{"+CGREG", isNoSet, registrationWithoutName},
    Row{"+COPS", at::isOperatorScan, anOperatorALine},
    Row{"+COPS", isRead, operatorInUse},
    Row{"+CPIN", isRead, simState},
    Row{"+CPINR", isAnyForm, triesACodeALine},
    Row{"+CLCK", isQuery, facilityState},
    Row{"+CGDCONT", isRead, profilesInSixFields},
    Row{"^SYSINFO", isExecution, withoutBlankBehindName, isWithoutBlank},
};

void translateFor(const Command &command, Family family, Reply &reply)
{
    for (const Row &row : kRows)
        if (command.name == row.name && row.isForm(command) && row.isFamily(family)) row.translate(reply, command);
    if (isIdentity(command)) identityOnOneLine(reply, command);
    if (hasOnlyNumbers(command)) plainNumbers(reply, command);
    if (asksForSim(command)) errorAsText(reply);
}

} // namespace

std::string asLibraryReads(Reply reply, std::string_view command, Family family, Alphabet alphabet)
{
    for (std::string &line : reply.lines)
        line = withBlank(line);
    reply.result = withBlank(reply.result);
    const auto commands = at::commandsOf(command);
    // Lines of several replies cannot be told apart.
    if (commands.size() == 1) translateFor(commands[0], family, reply);
    if (alphabet == Alphabet::Ucs2) ucs2AsText(reply);
    resultAsKnown(reply, command);
    return framed(reply);
}

std::string reportAsLibraryReads(std::vector<std::string> lines)
{
    if (!lines.empty()) registrationReport(lines.front());
    return framedReport(lines);
}

} // namespace host::at_server

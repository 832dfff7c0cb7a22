#include "host/at_server/translation/values.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "host/at/text.h"
#include "host/at_server/translation/fields.h"

namespace host::at_server {
namespace {

/** A command, and what modems write before its value instead of its name. */
struct Identity {
    std::string_view command;
    std::array<std::string_view, 4> labels;
};

constexpr std::array kIdentities{
    Identity{"+CGMI", {"Manufacturer", "Manufacturer ID"}},
    Identity{"+GMI", {"Manufacturer", "Manufacturer ID"}},
    Identity{"+CGMM", {"Model", "Model ID"}},
    Identity{"+GMM", {"Model", "Model ID"}},
    Identity{"+CGMR", {"Revision", "Firmware", "Version", "Software Version"}},
    Identity{"+GMR", {"Revision", "Firmware", "Version", "Software Version"}},
    Identity{"+CGSN", {"IMEI", "IMEISV", "SN", "Serial Number"}},
    Identity{"+GSN", {"IMEI", "IMEISV", "SN", "Serial Number"}},
    Identity{"+CIMI", {"IMSI"}},
};

const Identity *identityOf(const at::Command &command)
{
    const auto *const found = std::find_if(kIdentities.begin(), kIdentities.end(),
                                           [&](const Identity &identity) { return identity.command == command.name; });
    return found == kIdentities.end() ? nullptr : found;
}

/** A line's value: behind the command's name or a label, and without quotes. */
std::string_view valueIn(std::string_view line, const Identity &identity)
{
    const size_t colon = line.find(':');
    if (colon == std::string_view::npos) return unquoted(line);
    const std::string_view label = at::withoutBlanksAround(line.substr(0, colon));
    const bool isLabel =
        !label.empty() && std::any_of(identity.labels.begin(), identity.labels.end(),
                                      [&](std::string_view one) { return at::isSameWithoutCase(one, label); });
    const bool isName = !label.empty() && at::isSign(label.front()) && at::isSameName(identity.command, label);
    return unquoted(isLabel || isName ? line.substr(colon + 1) : line);
}

constexpr std::array<std::string_view, 9> kCommandsOfNumbers{"+CSQ",  "+CESQ", "+CFUN",  "+CGATT", "+ZRSSI",
                                                             "+ZSNT", "+ERAT", "+EPINC", "+ZRAP"};

/** What +CESQ tells of a value that it does not know, by its place (27.007 8.69). */
constexpr std::array<std::string_view, 6> kUnknownSignal{"99", "99", "255", "255", "255", "255"};

bool isNumber(std::string_view text)
{
    const bool hasSign = !text.empty() && (text.front() == '-' || text.front() == '+');
    return isDigits(hasSign ? text.substr(1) : text);
}

/** @return nothing unless all fields are numbers, or empty */
std::vector<std::string> numbersIn(std::string_view parameters)
{
    std::vector<std::string> numbers;
    for (const std::string_view field : at::fields(parameters)) {
        const std::string_view number = unquoted(field);
        if (!number.empty() && !isNumber(number)) return {};
        numbers.emplace_back(number);
    }
    return numbers;
}

void fillInUnknownSignal(std::vector<std::string> &numbers)
{
    numbers.resize(std::max(numbers.size(), kUnknownSignal.size()));
    for (size_t i = 0; i < kUnknownSignal.size(); ++i)
        if (numbers[i].empty()) numbers[i] = kUnknownSignal[i];
}

} // namespace

bool isIdentity(const at::Command &command)
{
    return command.form == at::Form::Execute && identityOf(command) != nullptr;
}

void identityOnOneLine(Reply &reply, const at::Command &command)
{
    const Identity &identity = *identityOf(command);
    std::string value;
    bool isPlain = reply.lines.size() == 1;
    for (const std::string &line : reply.lines) {
        const std::string_view part = valueIn(line, identity);
        isPlain = isPlain && part == line;
        value.append(value.empty() ? "" : " ").append(part);
    }
    // Behind the name a value may have any characters: the library takes what stands before a colon for a name.
    if (!isPlain && !value.empty()) reply.lines = {command.name + ": " + value};
}

bool hasOnlyNumbers(const at::Command &command)
{
    const bool isKnown =
        std::find(kCommandsOfNumbers.begin(), kCommandsOfNumbers.end(), command.name) != kCommandsOfNumbers.end();
    return isKnown && (command.form == at::Form::Execute || command.form == at::Form::Read);
}

void plainNumbers(Reply &reply, const at::Command &command)
{
    for (std::string &line : reply.lines) {
        const auto parameters = parametersOf(line, command);
        if (!parameters || parameters->empty()) continue;
        auto numbers = numbersIn(*parameters);
        if (numbers.empty()) continue;
        if (command.name == "+CESQ") fillInUnknownSignal(numbers);
        const std::string plain = joined(numbers);
        if (line != plain) line = command.name + ": " + plain;
    }
}

void profilesInSixFields(Reply &reply, const at::Command &command)
{
    constexpr size_t kTexts = 3;
    constexpr size_t kFields = 6;
    for (std::string &line : reply.lines) {
        const auto parameters = parametersOf(line, command);
        if (!parameters || !isWhole(*parameters)) continue;
        auto fields = at::fields(*parameters);
        if (!numberIn(fields[0])) continue;
        fields.resize(std::max(fields.size(), kFields));
        std::vector<std::string> written{std::to_string(numberIn(fields[0]).value_or(0))};
        for (size_t i = 1; i < fields.size(); ++i) {
            if (i <= kTexts)
                written.push_back(inQuotes(unquoted(fields[i])));
            else
                written.emplace_back(fields[i].empty() && i < kFields ? "0" : fields[i]);
        }
        line = command.name + ": " + joined(written);
    }
}

void withoutBlankBehindName(Reply &reply, const at::Command & /*command*/)
{
    for (std::string &line : reply.lines)
        if (const auto named = at::namedLine(line))
            line = std::string(named->name).append(":").append(named->parameters);
}

} // namespace host::at_server

#include "host/at_server/translation/registration.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "host/at/reports.h"
#include "host/at/text.h"
#include "host/at_server/translation/fields.h"

namespace host::at_server {
namespace {

using Fields = std::vector<std::string_view>;

constexpr int kHighestMode = 5;
constexpr int kHighestState = 11;
constexpr int kHighestTechnology = 15;
constexpr size_t kFieldsOfPlace = 3; ///< area, cell, technology

/** The values of a line, each in its form for the library. */
struct Registration {
    std::string mode; ///< empty: not told, as in a report
    std::string state;
    std::vector<std::string> place; ///< area, cell and technology, as far as they are told
    std::vector<std::string> rest;
};

bool isMode(std::string_view field)
{
    return numberIn(field).value_or(kHighestMode + 1) <= kHighestMode;
}

/** A state of more than two digits has zeros in front, which a modem that writes them has in front of the mode, too. */
bool isStateBehind(std::string_view mode, std::string_view field)
{
    const auto number = numberIn(field);
    if (!number || *number > kHighestState) return false;
    return unquoted(field).size() <= 2 || (!isQuoted(field) && unquoted(mode).size() > 2);
}

bool beginsWithMode(const Fields &fields)
{
    return fields.size() >= 2 && isMode(fields[0]) && isStateBehind(fields[0], fields[1]);
}

std::string_view withoutPrefix(std::string_view code)
{
    const bool hasPrefix = code.size() > 2 && (code.substr(0, 2) == "0x" || code.substr(0, 2) == "0X");
    return hasPrefix ? code.substr(2) : code;
}

std::string_view codeIn(std::string_view field)
{
    return withoutPrefix(unquoted(field));
}

bool isEmpty(std::string_view field)
{
    return unquoted(field).empty();
}

/** The number of an access technology, which some modems write as a hexadecimal digit. */
std::optional<int> technologyIn(std::string_view field)
{
    constexpr size_t kMostDigits = 3;
    constexpr int kHexadecimal = 16;
    const std::string_view code = unquoted(field);
    if (code.empty() || code.size() > kMostDigits || !isHexadecimal(code)) return std::nullopt;
    int number = 0;
    std::from_chars(code.data(), code.data() + code.size(), number, isDigits(code) ? 10 : kHexadecimal);
    return number <= kHighestTechnology ? std::optional(number) : std::nullopt;
}

/** In a report that names its mode the area comes third. An area has at most six digits, a cell mostly eight. */
bool isReportWithMode(const Fields &fields)
{
    constexpr size_t kMostDigitsOfArea = 6;
    if (!beginsWithMode(fields)) return false;
    if (fields.size() == 2 || isEmpty(fields[2])) return true;
    const std::string_view area = codeIn(fields[2]);
    return isHexadecimal(area) && area.size() <= kMostDigitsOfArea;
}

/** A routing area is an octet, and the cell stands behind it. */
bool isRoutingArea(std::string_view field, std::string_view behind)
{
    const std::string_view code = codeIn(field);
    return isHexadecimal(code) && code.size() <= 2 && isHexadecimal(codeIn(behind)) && !technologyIn(behind);
}

std::string codeText(std::string_view field)
{
    const std::string_view code = codeIn(field);
    return isHexadecimal(code) || code.empty() ? inQuotes(code) : inQuotes(unquoted(field));
}

std::string technologyText(std::string_view field)
{
    const auto technology = technologyIn(field);
    if (technology) return std::to_string(*technology);
    return isEmpty(field) ? inQuotes("") : std::string(field);
}

/** Takes area, cell and what is behind them.
 *  @param hasRoom  whether a routing area has a place of its own, behind the technology */
void takePlace(Fields fields, bool hasRoom, Registration &registration)
{
    std::string routingArea;
    if (fields.size() >= 3 && isRoutingArea(fields[1], fields[2])) {
        routingArea = hasRoom ? inQuotes(codeIn(fields[1])) : "";
        fields.erase(fields.begin() + 1);
    }
    if (!routingArea.empty()) fields.resize(std::max(fields.size(), kFieldsOfPlace));
    for (size_t i = 0; i < fields.size(); ++i) {
        if (i < 2)
            registration.place.push_back(codeText(fields[i]));
        else if (i < kFieldsOfPlace)
            registration.place.push_back(technologyText(fields[i]));
        else
            registration.rest.emplace_back(fields[i]);
    }
    if (!routingArea.empty()) registration.rest.insert(registration.rest.begin(), routingArea);
    while (!registration.rest.empty() && registration.rest.back().empty())
        registration.rest.pop_back();
    for (std::string &field : registration.rest)
        if (field.empty()) field = inQuotes("");
}

/** @return nothing for parameters of another form */
std::optional<Registration> registrationIn(std::string_view parameters, bool hasMode, bool hasRoom)
{
    Fields fields = at::fields(parameters);
    const size_t stateAt = hasMode ? 1 : 0;
    const auto state = fields.size() > stateAt ? numberIn(fields[stateAt]) : std::nullopt;
    if (!state || !isWhole(parameters)) return std::nullopt;
    Registration registration;
    if (hasMode) registration.mode = std::to_string(numberIn(fields[0]).value_or(0));
    registration.state = std::to_string(*state);
    fields.erase(fields.begin(), fields.begin() + static_cast<ptrdiff_t>(stateAt + 1));
    takePlace(std::move(fields), hasRoom, registration);
    return registration;
}

std::string textOf(const Registration &registration)
{
    std::vector<std::string> fields;
    if (!registration.mode.empty()) fields.push_back(registration.mode);
    fields.push_back(registration.state);
    fields.insert(fields.end(), registration.place.begin(), registration.place.end());
    fields.insert(fields.end(), registration.rest.begin(), registration.rest.end());
    return joined(fields);
}

bool hasRoutingArea(std::string_view name)
{
    return at::isSameName(name, "+CGREG");
}

/** Of a line in reply to a read command. */
std::optional<Registration> registrationOf(std::string_view line, const at::Command &command)
{
    const auto parameters = parametersOf(line, command);
    if (!parameters || !hasModeAndState(*parameters)) return std::nullopt;
    return registrationIn(*parameters, true, hasRoutingArea(command.name));
}

} // namespace

bool hasModeAndState(std::string_view parameters)
{
    return beginsWithMode(at::fields(parameters));
}

void registrationInFiveFields(Reply &reply, const at::Command &command)
{
    for (std::string &line : reply.lines) {
        auto registration = registrationOf(line, command);
        if (!registration) continue;
        registration->place.resize(kFieldsOfPlace, inQuotes(""));
        line = command.name + ": " + textOf(*registration);
    }
}

void registrationWithoutName(Reply &reply, const at::Command &command)
{
    for (std::string &line : reply.lines) {
        if (const auto registration = registrationOf(line, command))
            line = textOf(*registration);
        else if (const auto parameters = parametersOf(line, command))
            line = std::string(*parameters);
    }
}

void registrationReport(std::string &line)
{
    const auto named = at::namedLine(line);
    const at::Report *const report = named ? at::reportNamed(named->name) : nullptr;
    if (report == nullptr || report->kind != at::ReportKind::Registration) return;
    auto registration =
        registrationIn(named->parameters, isReportWithMode(at::fields(named->parameters)), hasRoutingArea(named->name));
    if (!registration) return;
    registration->mode.clear();
    line = std::string(named->name).append(": ").append(textOf(*registration));
}

} // namespace host::at_server

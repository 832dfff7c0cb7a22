#include "krctl/readings/registration.h"

#include <vector>

#include "host/at/text.h"
#include "krctl/readings/reply.h"

namespace krctl {
namespace {

using Fields = std::vector<std::string_view>;

constexpr int32_t kHighestCode = 15;  // of states and technologies, with room for what is to come
constexpr int32_t kHighestState = 99; // where only a state can stand
constexpr int32_t kHighestReports = 5;
constexpr size_t kRoutingAreaDigits = 2;
constexpr size_t kFewestCellDigits = 3; // of a cell where only the length tells it from a code

std::string_view at(const Fields &fields, size_t place)
{
    return place < fields.size() ? fields[place] : std::string_view();
}

std::optional<int32_t> codeIn(std::string_view field, int32_t highest)
{
    const auto number = numberIn(unquoted(field));
    return number && *number >= 0 && *number <= highest ? number : std::nullopt;
}

bool isTechnology(std::string_view field)
{
    return unquoted(field).size() <= 3 && codeIn(field, kHighestCode).has_value();
}

/** Hexadecimal digits in capitals, without a prefix; empty for anything else. */
std::string placeIn(std::string_view field)
{
    std::string digits = inCapitals(unquoted(field));
    if (digits.starts_with("0X")) digits.erase(0, 2);
    return isAll(digits, kHexDigits) ? digits : "";
}

/** Whether mode and state begin a line, and not the state alone. */
bool beginsWithMode(const Fields &fields, bool isReport)
{
    const std::string_view second = at(fields, 1);
    const bool isFirstMode = at(fields, 0).empty() || codeIn(at(fields, 0), kHighestReports).has_value();
    if (!isFirstMode || !codeIn(second, kHighestState)) return false;
    const bool isShort = !isQuoted(second) && second.size() <= 2;
    // Behind the state of a report stands an area: quoted, or longer than a code.
    return isShort || (!isReport && codeIn(second, kHighestCode));
}

/** @param rest  area, two fields that may be routing area and cell, or cell and technology, and what follows */
bool hasRoutingArea(const Fields &rest)
{
    const std::string_view second = at(rest, 1);
    const std::string_view third = at(rest, 2);
    const std::string_view fourth = at(rest, 3);
    const std::string cell = placeIn(third);
    if (cell.empty()) return false;
    if (!isTechnology(third)) return cell.size() >= kFewestCellDigits || isTechnology(fourth);
    const bool isShort = placeIn(second).size() <= kRoutingAreaDigits && !second.empty();
    return isShort && isQuoted(third) && !isQuoted(fourth) && isTechnology(fourth);
}

/** The cause behind cause type 0. A routing area in quotes may stand between the technology and them. */
std::optional<int32_t> rejectCauseIn(const Fields &rest, size_t behindTechnology)
{
    constexpr int32_t kHighestCause = 255;
    const size_t type = isQuoted(at(rest, behindTechnology)) ? behindTechnology + 1 : behindTechnology;
    if (codeIn(at(rest, type), kHighestCode) != 0) return std::nullopt;
    const auto cause = codeIn(at(rest, type + 1), kHighestCause);
    return cause != 0 ? cause : std::nullopt; // 0 is none
}

Registration registrationIn(std::string_view line, bool isReport)
{
    const Fields fields = host::at::fields(parametersOf(line));
    const bool hasMode = beginsWithMode(fields, isReport);
    Registration registration;
    if (hasMode) registration.reports = codeIn(fields[0], kHighestReports);
    registration.state = codeIn(at(fields, hasMode ? 1 : 0), kHighestState);
    if (!registration.state) return {};

    const size_t behindState = hasMode ? 2 : 1;
    if (fields.size() <= behindState) return registration;
    const Fields rest(fields.begin() + static_cast<ptrdiff_t>(behindState), fields.end());
    const size_t cell = hasRoutingArea(rest) ? 2 : 1;
    registration.area = placeIn(rest[0]);
    registration.cell = placeIn(at(rest, cell));
    if (isTechnology(at(rest, cell + 1))) registration.technology = codeIn(at(rest, cell + 1), kHighestCode);
    registration.epsRejectCause = rejectCauseIn(rest, cell + 2);
    return registration;
}

} // namespace

Registration registrationOfReply(std::string_view reply)
{
    for (const std::string &line : valueLinesOf(reply))
        if (Registration registration = registrationIn(line, false); registration.state) return registration;
    return {};
}

Registration registrationOfReport(std::string_view line)
{
    return registrationIn(line, true);
}

} // namespace krctl

#include "host/at/rights.h"

#include <algorithm>

#include "host/at/command_line.h"
#include "host/at/text.h"
#include "host/at/vocabulary.h"

namespace host::at {
namespace {

constexpr std::array<std::string_view, kEveryRight.size()> kNames{"read",   "network", "settings", "sim",
                                                                  "device", "raw",     "trace"};

bool isPlain(char character)
{
    return character == '\t' || (character >= ' ' && character <= '~');
}

/** Whether a modem sees the commands that are seen here: where a quote stays open or a backslash stands before one, or where
 *  characters stand that some modems drop or take for others, it may see more. */
bool isUnambiguous(std::string_view line)
{
    const bool hasPairs = std::count(line.begin(), line.end(), '"') % 2 == 0;
    return hasPairs && line.find("\\\"") == std::string_view::npos && std::all_of(line.begin(), line.end(), isPlain);
}

} // namespace

std::string_view nameOf(Right right)
{
    return kNames[static_cast<size_t>(right)];
}

std::optional<Right> rightNamed(std::string_view word)
{
    const auto *const found = std::find(kNames.begin(), kNames.end(), word);
    if (found == kNames.end()) return std::nullopt;
    return kEveryRight[static_cast<size_t>(found - kNames.begin())];
}

Rights rightsFor(std::string_view commandLine)
{
    Rights rights;
    if (!isCommandLine(commandLine) || !isUnambiguous(commandLine)) rights = Right::Raw;
    for (const Command &command : commandsOf(commandLine))
        rights = rights | rightsFor(command);
    return rights;
}

} // namespace host::at

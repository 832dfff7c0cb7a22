#include "host/at_server/echo.h"

#include <algorithm>
#include <array>

#include "host/at/command_line.h"

namespace host::at_server {
namespace {

/** Commands behind which a modem may have another setting. */
constexpr std::array<std::string_view, 4> kSetting{"E", "Z", "&F", "+CFUN"};

} // namespace

void Echo::portOpened()
{
    doubt();
    misses_ = 0;
}

void Echo::doubt()
{
    isAsked_ = false;
    isEvidence_ = false;
}

bool Echo::answersFor(std::string_view command) const
{
    const auto commands = at::commandsOf(command);
    return isWanted() && !commands.empty() &&
           std::all_of(commands.begin(), commands.end(), [](const at::Command &one) { return one.name == "E"; });
}

void Echo::replied(std::string_view command, bool wasEchoed)
{
    const auto commands = at::commandsOf(command);
    const bool mayBeSet =
        command != kSwitchOn && std::any_of(commands.begin(), commands.end(), [](const at::Command &one) {
            const bool isSetting = std::find(kSetting.begin(), kSetting.end(), one.name) != kSetting.end();
            return isSetting && (one.name != "+CFUN" || one.form == at::Form::Set);
        });
    if (mayBeSet)
        doubt();
    else
        isEvidence_ = isAsked_ && isWanted() && wasEchoed && command != kSwitchOn;
}

bool Echo::missed()
{
    doubt();
    ++misses_;
    return !isWanted();
}

} // namespace host::at_server

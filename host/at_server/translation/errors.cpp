#include "host/at_server/translation/errors.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "host/at/text.h"
#include "host/at_server/translation/fields.h"

namespace host::at_server {
namespace {

struct ErrorText {
    int number;
    std::string_view text;
};

constexpr std::array kErrorTexts{
    ErrorText{0, "phone failure"},
    ErrorText{1, "no connection to phone"},
    ErrorText{2, "phone-adaptor link reserved"},
    ErrorText{3, "operation not allowed"},
    ErrorText{4, "operation not supported"},
    ErrorText{5, "PH-SIM PIN required"},
    ErrorText{6, "PH-FSIM PIN required"},
    ErrorText{7, "PH-FSIM PUK required"},
    ErrorText{10, "SIM not inserted"},
    ErrorText{11, "SIM PIN required"},
    ErrorText{12, "SIM PUK required"},
    ErrorText{13, "SIM failure"},
    ErrorText{14, "SIM busy"},
    ErrorText{15, "SIM wrong"},
    ErrorText{16, "incorrect password"},
    ErrorText{17, "SIM PIN2 required"},
    ErrorText{18, "SIM PUK2 required"},
    ErrorText{20, "memory full"},
    ErrorText{21, "invalid index"},
    ErrorText{22, "not found"},
    ErrorText{23, "memory failure"},
    ErrorText{24, "text string too long"},
    ErrorText{25, "invalid characters in text string"},
    ErrorText{26, "dial string too long"},
    ErrorText{27, "invalid characters in dial string"},
    ErrorText{30, "no network service"},
    ErrorText{31, "network timeout"},
    ErrorText{32, "network not allowed - emergency calls only"},
    ErrorText{40, "network personalization PIN required"},
    ErrorText{41, "network personalization PUK required"},
    ErrorText{42, "network subset personalization PIN required"},
    ErrorText{43, "network subset personalization PUK required"},
    ErrorText{44, "service provider personalization PIN required"},
    ErrorText{45, "service provider personalization PUK required"},
    ErrorText{46, "corporate personalization PIN required"},
    ErrorText{47, "corporate personalization PUK required"},
    ErrorText{48, "hidden key required"},
    ErrorText{49, "EAP method not supported"},
    ErrorText{50, "Incorrect parameters"},
    ErrorText{51, "command implemented but currently disabled"},
    ErrorText{52, "command aborted by user"},
    ErrorText{100, "unknown"},
    ErrorText{112, "location area not allowed"},
};

constexpr std::array<std::string_view, 7> kCommandsOfSim{"+CPIN", "+CPINR", "+CLCK", "+CPWD",
                                                         "+CRSM", "+CSIM",  "+CIMI"};

constexpr std::string_view kCmeError = "+CME ERROR: ";
constexpr std::string_view kNotSupport = "not support";

bool isOfErrorText(const ErrorText &error, std::string_view told)
{
    return numberIn(told) == error.number || at::isSameWithoutCase(error.text, told);
}

} // namespace

bool asksForSim(const at::Command &command)
{
    return std::find(kCommandsOfSim.begin(), kCommandsOfSim.end(), command.name) != kCommandsOfSim.end();
}

void errorAsText(Reply &reply)
{
    const std::string_view result = reply.result;
    if (result.substr(0, kCmeError.size()) != kCmeError) return;
    const std::string_view told = unquoted(result.substr(kCmeError.size()));
    const auto *const found = std::find_if(kErrorTexts.begin(), kErrorTexts.end(),
                                           [&](const ErrorText &error) { return isOfErrorText(error, told); });
    if (found != kErrorTexts.end()) reply.result = std::string(kCmeError).append(found->text);
}

void resultAsKnown(Reply &reply, std::string_view command)
{
    switch (resultKind(reply.result, command)) {
    case ResultKind::NotSupported:
        reply.result = kNotSupport;
        break;
    case ResultKind::Refusal:
        reply.lines.push_back(std::exchange(reply.result, "ERROR"));
        break;
    case ResultKind::Call:
        reply.lines.push_back(std::exchange(reply.result, isConnect(reply.result) ? "OK" : "ERROR"));
        break;
    case ResultKind::None:
    case ResultKind::Ok:
    case ResultKind::Error:
        break;
    }
}

} // namespace host::at_server

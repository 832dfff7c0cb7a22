#include "host/at_server/numeric_results.h"

#include <algorithm>
#include <array>

#include "host/at/text.h"
#include "host/at_server/reply.h"

namespace host::at_server {
namespace {

constexpr std::string_view kOk = "OK";
constexpr std::string_view kError = "ERROR";

struct Number {
    std::string_view number;
    std::string_view words;
    bool isOfCall; ///< only commands that make or take calls are answered by it
};

constexpr std::array kNumbers{
    Number{"0", kOk, false},          Number{"1", "CONNECT", true},   Number{"2", "RING", false},
    Number{"3", "NO CARRIER", false}, Number{"4", kError, false},     Number{"6", "NO DIALTONE", true},
    Number{"7", "BUSY", true},        Number{"8", "NO ANSWER", true},
};

} // namespace

std::string_view NumericResults::inWords(std::string_view line, std::string_view command, bool isAgreement)
{
    const std::string_view text = at::withoutBlanksBehind(line);
    if (text == kOk || text == kError) isSpoken_ = false;
    const auto *const found =
        std::find_if(kNumbers.begin(), kNumbers.end(), [&](const Number &number) { return number.number == text; });
    if (found == kNumbers.end()) return line;
    if (isAgreement && (found->words == kOk || found->words == kError)) isSpoken_ = true;
    const bool isResult = isSpoken_ && (!found->isOfCall || makesCalls(command));
    return isResult ? found->words : line;
}

} // namespace host::at_server

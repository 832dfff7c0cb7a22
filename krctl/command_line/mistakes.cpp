#include "krctl/command_line/mistakes.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

#include "krctl/command_line/help.h"
#include "krctl/command_line/vocabulary.h"

namespace krctl {
namespace {

/** Insertions, deletions, exchanges and swaps of neighbours from one word to another. */
size_t editDistance(std::string_view one, std::string_view other)
{
    std::vector<std::vector<size_t>> cost(one.size() + 1, std::vector<size_t>(other.size() + 1));
    for (size_t i = 0; i <= one.size(); ++i)
        cost[i][0] = i;
    std::iota(cost[0].begin(), cost[0].end(), size_t{0});
    for (size_t i = 1; i <= one.size(); ++i) {
        for (size_t j = 1; j <= other.size(); ++j) {
            const size_t exchange = cost[i - 1][j - 1] + (one[i - 1] == other[j - 1] ? 0 : 1);
            cost[i][j] = std::min({cost[i - 1][j] + 1, cost[i][j - 1] + 1, exchange});
            const bool isSwap = i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1];
            if (isSwap) cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + 1);
        }
    }
    return cost[one.size()][other.size()];
}

/** @return the word of the list that was probably meant, empty if none is close */
std::string closestWord(std::string_view word, const std::vector<std::string> &known)
{
    const size_t limit = std::max<size_t>(word.size() / 3, 1);
    size_t best = limit + 1;
    std::string closest;
    for (const std::string &candidate : known) {
        const size_t distance = editDistance(word, candidate);
        if (distance >= best) continue;
        best = distance;
        closest = candidate;
    }
    return closest;
}

std::string programWith(const std::string &path)
{
    return path.empty() ? "krctl" : "krctl " + path;
}

std::string seeHelp(const std::string &where)
{
    return "See \"" + where + " --help\".";
}

} // namespace

Failure unexpectedWord(const std::string &path, const std::string &word)
{
    const std::string where = programWith(path);
    const Command *command = commandAt(path);
    const bool isOption = word.starts_with('-');
    const std::string closest = closestWord(word, isOption ? optionsOf(command) : wordsBelow(path));
    std::string what = "There is no " + std::string(isOption ? "option" : "command") + " \"" + word + "\" here.";
    if (!isOption && command != nullptr) what = '"' + word + "\" is more than this command takes.";
    std::string next = seeHelp(where);
    if (!closest.empty()) next = "Did you mean \"" + (isOption ? closest : where + ' ' + closest) + "\"?";
    return usageFailure(std::move(what), where, std::move(next));
}

Failure missingVerb(const std::string &path)
{
    const std::string where = programWith(path);
    return usageFailure('"' + where + "\" needs a word more.", where,
                        "Use one of " + listed(wordsBelow(path)) + "; \"" + where + " --help\" says more.");
}

Failure missingArgument(const std::string &path, const Parameter &parameter)
{
    const std::string where = programWith(path);
    return usageFailure(std::string(parameter.name) + " is missing: " + helpOf(parameter) + '.', where, seeHelp(where));
}

Failure impossibleValue(const std::string &path, const Parameter &parameter, const std::string &text)
{
    return usageFailure('"' + text + "\" is not possible for " + parameter.name + '.', programWith(path),
                        "Use " + possibleValues(parameter) + '.');
}

Failure unexpectedRest(const std::string &path)
{
    const std::string where = programWith(path);
    return usageFailure('"' + where + "\" takes nothing behind \"--\".", where, seeHelp(where));
}

Failure malformedLine(const std::string &path, const std::string &what)
{
    const std::string where = programWith(path);
    return usageFailure(what + '.', where, seeHelp(where));
}

} // namespace krctl

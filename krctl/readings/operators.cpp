#include "krctl/readings/operators.h"

#include "krctl/readings/reply.h"

namespace krctl {
namespace {

std::string codeOf(const std::string &country, const std::string &network)
{
    constexpr size_t kCountryDigits = 3;
    const std::string code = country + network;
    return country.size() == kCountryDigits && isOperatorCode(code) ? code : "";
}

/** What a scan tells of one operator, and what its lists of modes and formats do not. */
bool isOperator(const Values &values)
{
    constexpr size_t kFewest = 4; // state, two names, code
    return values.size() >= kFewest && !(values[1] + values[2] + values[3]).empty();
}

} // namespace

bool isOperatorCode(std::string_view text)
{
    return (text.size() == 5 || text.size() == 6) && isAll(text, kDigits);
}

SelectedOperator selectedOperatorOf(std::string_view reply)
{
    const std::vector<std::string> body = valueLinesOf(reply);
    if (body.empty()) return {};
    const Values values = valuesOf(body.front());
    SelectedOperator selected;
    selected.mode = numberIn(valueAt(values, 0));
    selected.format = numberIn(valueAt(values, 1));
    const std::string text = valueAt(values, 2);
    (isOperatorCode(text) ? selected.code : selected.name) = text;
    if (!text.empty()) selected.technology = numberIn(valueAt(values, 3));
    return selected;
}

std::vector<FoundOperator> foundOperatorsOf(std::string_view reply)
{
    std::vector<FoundOperator> operators;
    for (const std::string &line : valueLinesOf(reply)) {
        const Values values = valuesOf(line);
        if (!isOperator(values)) continue;
        operators.push_back({numberIn(values[0]), values[1], values[2], isOperatorCode(values[3]) ? values[3] : "",
                             numberIn(valueAt(values, 4)).value_or(0)});
    }
    return operators;
}

NetworkCodes networkCodesOf(std::string_view reply)
{
    const std::vector<std::string> body = valueLinesOf(reply);
    if (body.empty()) return {};
    // Name, MCC and MNC of the serving network, and then of the home network.
    const Values values = valuesOf(body.front());
    return {codeOf(valueAt(values, 1), valueAt(values, 2)), codeOf(valueAt(values, 4), valueAt(values, 5))};
}

} // namespace krctl

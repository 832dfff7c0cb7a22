#include "tests/road/replies/expectation.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <regex>

namespace replies {
namespace {

constexpr double kNear = 0.05;

Json stepInto(const Json &from, const std::string &step)
{
    if (from.is_object()) return from.value(step, Json());
    if (!from.is_array()) return {};
    if (const size_t equals = step.find('='); equals != std::string::npos) {
        const auto found = std::find_if(from.begin(), from.end(), [&](const Json &element) {
            const Json value = element.value(step.substr(0, equals), Json());
            return (value.is_string() ? value.get<std::string>() : value.dump()) == step.substr(equals + 1);
        });
        return found == from.end() ? Json() : *found;
    }
    const auto index = std::strtoul(step.c_str(), nullptr, 10);
    return index < from.size() ? from[index] : Json();
}

bool isSameNumber(const Json &value, const std::string &hexadecimal)
{
    static const std::regex kHexadecimal("(0[xX])?[0-9A-Fa-f]{1,16}");
    if (!value.is_string() || !std::regex_match(value.get<std::string>(), kHexadecimal)) return false;
    constexpr int kBase = 16;
    return std::strtoull(value.get<std::string>().c_str(), nullptr, kBase) ==
           std::strtoull(hexadecimal.c_str(), nullptr, kBase);
}

bool fitsInAnyOrder(const Json &value, const Json &wanted)
{
    if (!value.is_array() || value.size() != wanted.size()) return false;
    Json left = value;
    for (const Json &one : wanted) {
        const auto found = std::find_if(left.begin(), left.end(), [&](const Json &other) { return fits(other, one); });
        if (found == left.end()) return false;
        left.erase(found);
    }
    return true;
}

bool fitsObject(const Json &value, const Json &wanted)
{
    if (wanted.size() == 1 && wanted.begin().key() == "hex") return isSameNumber(value, wanted["hex"]);
    const auto fitsValue = [&](const Json &one) { return fits(value, one); };
    if (wanted.size() == 1 && wanted.begin().key() == "any")
        return std::any_of(wanted["any"].begin(), wanted["any"].end(), fitsValue);
    if (wanted.size() == 1 && wanted.begin().key() == "none")
        return std::none_of(wanted["none"].begin(), wanted["none"].end(), fitsValue);
    return value.is_object() && std::all_of(wanted.items().begin(), wanted.items().end(), [&](const auto &item) {
               return fits(value.value(item.key(), Json()), item.value());
           });
}

bool isSent(const std::vector<std::string> &sent, const std::string &expression)
{
    const std::regex command(expression, std::regex::icase);
    return std::any_of(sent.begin(), sent.end(),
                       [&](const std::string &one) { return std::regex_match(one, command); });
}

} // namespace

Json valueAt(const Json &from, std::string_view path)
{
    Json value = from;
    std::string step;
    bool isInBrackets = false;
    for (const char character : std::string(path) + '.') {
        const bool endsStep = character == ']' || character == '[' || (character == '.' && !isInBrackets);
        if (character == '[') isInBrackets = true;
        if (character == ']') isInBrackets = false;
        if (!endsStep) {
            step += character;
        } else if (!step.empty()) {
            value = stepInto(value, step);
            step.clear();
        }
    }
    return value;
}

bool fits(const Json &value, const Json &wanted)
{
    if (wanted.is_object()) return fitsObject(value, wanted);
    if (wanted.is_array()) return fitsInAnyOrder(value, wanted);
    if (wanted.is_number_float())
        return value.is_number() && std::abs(value.get<double>() - wanted.get<double>()) < kNear;
    return value == wanted;
}

std::vector<std::string> differences(const Row &row, const Said &said)
{
    std::vector<std::string> all;
    for (const auto &[path, wanted] : row.expect.items()) {
        const Json value = valueAt(said.data, path);
        if (!fits(value, wanted)) all.push_back(path + ": expected " + wanted.dump() + ", got " + value.dump());
    }
    for (const std::string &command : row.sends)
        if (!isSent(said.sent, command)) all.push_back("did not send " + command);
    for (const std::string &command : row.never)
        if (isSent(said.sent, command)) all.push_back("sent " + command);
    return all;
}

} // namespace replies

#include "krctl/readings/sim.h"

#include <algorithm>

#include "krctl/readings/reply.h"

namespace krctl {
namespace {

constexpr int32_t kIncorrectPassword = 16;

/** A text of a state in the one spelling of the table. */
std::string asInTable(std::string_view text)
{
    constexpr std::string_view kRequired = " REQUIRED";
    constexpr std::string_view kBritish = "PERSONALISATION";
    std::string words = inCapitals(unquoted(text));
    words.erase(
        std::unique(words.begin(), words.end(), [](char one, char other) { return one == ' ' && other == ' '; }),
        words.end());
    if (words.ends_with(kRequired)) words.resize(words.size() - kRequired.size());
    if (const size_t found = words.find(kBritish); found != std::string::npos)
        words.replace(found, kBritish.size(), "PERSONALIZATION");
    return words;
}

std::optional<SimState> stateOfText(std::string_view text)
{
    const std::string words = asInTable(text);
    for (const SimStateRow &row : simStateRows()) {
        const bool isTold = row.told != nullptr && words == row.told;
        const bool isError = row.errorText != nullptr && words == row.errorText;
        if (isTold || isError) return row.state;
    }
    return std::nullopt;
}

std::optional<SimState> stateOfNumber(int32_t error)
{
    for (const SimStateRow &row : simStateRows())
        if (row.error != 0 && row.error == error) return row.state;
    return std::nullopt;
}

/** Where the tries of a code belong; NULL if it is none of the four. */
std::optional<int64_t> *placeOf(Tries &tries, std::string_view code)
{
    const std::string name = asInTable(code);
    if (name == "SIM PIN") return &tries.pin;
    if (name == "SIM PUK") return &tries.puk;
    if (name == "SIM PIN2") return &tries.pin2;
    return name == "SIM PUK2" ? &tries.puk2 : nullptr;
}

void takeTries(const Values &values, Tries &tries)
{
    std::optional<int64_t> *place = nullptr;
    for (const std::string &value : values) {
        const auto number = numberIn(value);
        if (!number) {
            place = placeOf(tries, value);
        } else if (place != nullptr) {
            *place = *number;
            place = nullptr; // what follows is how many there are at most
        }
    }
}

bool areNumbers(const Values &values)
{
    return std::all_of(values.begin(), values.end(),
                       [](const std::string &value) { return numberIn(value).has_value(); });
}

std::string inPairsSwapped(std::string digits)
{
    for (size_t i = 0; i + 1 < digits.size(); i += 2)
        std::swap(digits[i], digits[i + 1]);
    return digits;
}

/** It stands behind a name, which may be missing, and in front of its type. */
std::string ownNumberIn(const Values &values)
{
    constexpr size_t kTypeDigits = 3;
    const std::string second = valueAt(values, 1);
    const bool isType = values.size() == 2 && second.size() <= kTypeDigits;
    return isType ? values[0] : second;
}

bool isNumberCharacter(char character)
{
    return std::string_view("0123456789+*#").find(character) != std::string_view::npos;
}

} // namespace

std::optional<SimState> simStateOfError(std::string_view finalResult)
{
    const std::string_view error = errorIn(finalResult);
    if (error.empty()) return std::nullopt;
    const auto number = numberIn(error);
    return number ? stateOfNumber(*number) : stateOfText(error);
}

bool isWrongCode(std::string_view finalResult)
{
    const std::string_view error = errorIn(finalResult);
    return numberIn(error) == kIncorrectPassword || inCapitals(unquoted(error)) == "INCORRECT PASSWORD";
}

SimStateReading simStateOf(std::string_view reply)
{
    const std::string result = finalResultOf(reply);
    if (const auto state = simStateOfError(result)) return {state, result};
    const std::vector<std::string> body = valueLinesOf(reply);
    if (body.empty()) return {};
    const std::string told = valueAt(valuesOf(body.front()), 0);
    return {stateOfText(told), told};
}

std::optional<bool> isLockOn(std::string_view reply)
{
    std::optional<bool> isOn;
    for (const std::string &line : valueLinesOf(reply)) {
        std::string text(line);
        std::erase_if(text, [](char character) { return character == '(' || character == ')'; });
        const Values values = valuesOf(text);
        const bool hasName = values.size() > 1 && !numberIn(values[0]); // of the facility
        const auto status = numberIn(valueAt(values, hasName ? 1 : 0));
        if (status) isOn = isOn.value_or(false) || *status != 0;
    }
    return isOn;
}

Tries triesOf(std::string_view reply)
{
    constexpr size_t kCodes = 4;
    Tries tries;
    for (const std::string &line : valueLinesOf(reply)) {
        const Values values = valuesOf(line);
        if (values.size() == kCodes && areNumbers(values))
            return {numberIn(values[0]), numberIn(values[1]), numberIn(values[2]), numberIn(values[3])};
        takeTries(values, tries);
    }
    return tries;
}

bool isSimDone(int32_t sw1, int32_t sw2)
{
    constexpr int32_t kMemoryProblem = 0x40; // behind 0x92, of which less is a number of repetitions
    if (sw1 == 0x92) return sw2 < kMemoryProblem;
    return sw1 == 0x90 || sw1 == 0x91 || sw1 == 0x9F;
}

std::string simFileOf(std::string_view reply)
{
    const std::vector<std::string> body = valueLinesOf(reply);
    if (body.empty()) return {};
    const Values values = valuesOf(body.front());
    const auto sw1 = numberIn(valueAt(values, 0));
    const auto sw2 = numberIn(valueAt(values, 1));
    return sw1 && isSimDone(*sw1, sw2.value_or(0)) ? valueAt(values, 2) : "";
}

std::string iccidOf(std::string_view digits)
{
    constexpr std::string_view kTelecommunication = "89";
    constexpr size_t kFewest = 18;
    constexpr size_t kMost = 20;
    std::string number = inCapitals(digits);
    if (!number.starts_with(kTelecommunication)) number = inPairsSwapped(std::move(number));
    while (number.ends_with('F')) // filler
        number.pop_back();
    const bool isOne = number.starts_with(kTelecommunication) && number.size() >= kFewest && number.size() <= kMost &&
                       isAll(number, kHexDigits);
    return isOne ? number : "";
}

std::vector<std::string> ownNumbersOf(std::string_view reply)
{
    std::vector<std::string> numbers;
    for (const std::string &line : valueLinesOf(reply)) {
        const std::string number = ownNumberIn(valuesOf(line));
        if (!number.empty() && std::all_of(number.begin(), number.end(), isNumberCharacter)) numbers.push_back(number);
    }
    return numbers;
}

} // namespace krctl

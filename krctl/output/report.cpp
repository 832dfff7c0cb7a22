#include "krctl/output/report.h"

#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <utility>

namespace krctl {
namespace {

std::string withUnit(const std::string &number, const std::string &unit)
{
    return unit.empty() ? number : number + ' ' + unit;
}

/** Half decibels are the finest step that a modem reports, so one digit says it all. */
std::string shortNumber(double value)
{
    std::array<char, 64> text{};
    const bool isWhole = std::floor(value) == value;
    (void)std::snprintf(text.data(), text.size(), isWhole ? "%.0f" : "%.1f", value);
    return text.data();
}

struct ValueText {
    std::string operator()(std::monostate) const { return "-"; }
    std::string operator()(bool value) const { return value ? "yes" : "no"; }
    std::string operator()(int64_t value) const { return std::to_string(value); }
    std::string operator()(double value) const { return shortNumber(value); }
    std::string operator()(const std::string &value) const { return value; }
    std::string operator()(const std::vector<std::string> &values) const
    {
        return values.empty() ? "-" : listed(values);
    }
};

} // namespace

std::string textOf(const Field &field)
{
    return field.text.empty() ? std::visit(ValueText{}, field.value) : field.text;
}

Section &Section::add(Field field)
{
    fields.push_back(std::move(field));
    return *this;
}

Section &Section::addCode(const std::string &label, const std::string &codeKey, std::optional<int32_t> code,
                          const std::string &word)
{
    Field named = wordField(label, codeKey, word);
    if (code && word.empty()) named.text = "code " + std::to_string(*code);
    add(std::move(named));
    return add(numberField("", codeKey + "_code", code));
}

Section &Report::addSection(std::string title, std::string key)
{
    return sections.emplace_back(Section{.title = std::move(title), .key = std::move(key)});
}

Report Report::done(std::string sentence, Fields fields)
{
    Report report;
    for (Field &field : fields)
        field.label.clear();
    report.addSection("", "").fields = std::move(fields);
    report.sentence = std::move(sentence);
    return report;
}

Field textField(std::string label, std::string key, std::string value)
{
    Field field{.label = std::move(label), .key = std::move(key)};
    if (!value.empty()) field.value = std::move(value);
    return field;
}

std::string listed(const std::vector<std::string> &words)
{
    std::string list;
    for (const std::string &word : words)
        list += (list.empty() ? "" : ", ") + word;
    return list;
}

std::string identifier(const std::string &word)
{
    std::string text;
    for (const char character : word) {
        if (std::isalnum(static_cast<unsigned char>(character)) != 0)
            text += static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
        else if (!text.empty() && text.back() != '_')
            text += '_';
    }
    return text;
}

Field listField(std::string label, std::string key, std::vector<std::string> values)
{
    return {.label = std::move(label), .key = std::move(key), .value = std::move(values)};
}

Field wordField(std::string label, std::string key, const std::string &word)
{
    Field field = textField(std::move(label), std::move(key), identifier(word));
    field.text = word;
    return field;
}

Field numberField(std::string label, std::string key, std::optional<int64_t> value, const std::string &unit)
{
    Field field{.label = std::move(label), .key = std::move(key)};
    if (!value) return field;
    field.value = *value;
    field.text = withUnit(std::to_string(*value), unit);
    return field;
}

Field realField(std::string label, std::string key, std::optional<double> value, const std::string &unit)
{
    Field field{.label = std::move(label), .key = std::move(key)};
    if (!value) return field;
    field.value = *value;
    field.text = withUnit(shortNumber(*value), unit);
    return field;
}

Field flagField(std::string label, std::string key, std::optional<bool> value, const std::string &whenTrue,
                const std::string &whenFalse)
{
    Field field{.label = std::move(label), .key = std::move(key)};
    if (!value) return field;
    field.value = *value;
    field.text = *value ? whenTrue : whenFalse;
    return field;
}

} // namespace krctl

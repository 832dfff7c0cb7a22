#include "tests/krctl/json_check.h"

#include <fstream>
#include <sstream>

// Not ours to mend: it compares signs and shadows names.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wall"
#pragma GCC diagnostic ignored "-Wextra"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wconversion"
#include <nlohmann/json.hpp>
#include <valijson/adapters/nlohmann_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>
#pragma GCC diagnostic pop

namespace {

using Json = nlohmann::json;
using Adapter = valijson::adapters::NlohmannJsonAdapter;

const valijson::Schema &schema()
{
    static const auto *const parsed = [] {
        auto *one = new valijson::Schema;
        std::ifstream file(SOURCE_DIR "/krctl/krctl.schema.json");
        const Json document = Json::parse(file);
        valijson::SchemaParser(valijson::SchemaParser::kDraft7).populateSchema(Adapter(document), *one);
        return one;
    }();
    return *parsed;
}

std::string described(valijson::ValidationResults &results)
{
    std::string text;
    valijson::ValidationResults::Error error;
    while (results.popError(error)) {
        for (const std::string &step : error.context)
            text += step;
        text += ": " + error.description + '\n';
    }
    return text;
}

void addKeys(const Json &value, const std::string &prefix, std::set<std::string> &keys)
{
    if (!value.is_structured()) {
        keys.insert(prefix);
        return;
    }
    for (const auto &[key, member] : value.items())
        addKeys(member, prefix.empty() ? key : prefix + '.' + key, keys);
}

} // namespace

std::string violationOf(const std::string &text)
{
    const Json document = Json::parse(text, nullptr, false);
    if (document.is_discarded()) return "no JSON: " + text;
    valijson::Validator validator(valijson::Validator::kStrongTypes);
    valijson::ValidationResults results;
    if (validator.validate(schema(), Adapter(document), &results)) return "";
    return described(results) + text;
}

std::string violationOfLines(const std::string &text)
{
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        if (std::string violation = violationOf(line); !violation.empty()) return violation;
    return text.empty() ? "no line" : "";
}

std::set<std::string> flatKeysOf(const std::string &text)
{
    std::set<std::string> keys;
    const Json document = Json::parse(text, nullptr, false);
    if (document.is_object() && document.contains("data")) addKeys(document["data"], "", keys);
    std::erase_if(keys, [](const std::string &key) { return key.starts_with("notes"); });
    return keys;
}

std::string valueAt(const std::string &text, const std::string &path)
{
    const Json document = Json::parse(text, nullptr, false);
    const Json::json_pointer pointer(path);
    if (document.is_discarded() || !document.contains(pointer)) return "missing";
    const Json &value = document[pointer];
    return value.is_string() ? value.get<std::string>() : value.dump();
}

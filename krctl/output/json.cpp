#include <nlohmann/json.hpp>

#include "krctl/output/failure.h"
#include "krctl/output/render.h"

namespace krctl {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char *kSchema = "krctl/1";

struct ValueJson {
    Json operator()(std::monostate) const { return nullptr; }
    template <typename Type>
    Json operator()(const Type &value) const
    {
        return value;
    }
};

void addFields(Json &object, const Fields &fields)
{
    for (const Field &field : fields) {
        if (field.key.empty()) continue;
        object[field.key] = std::visit(ValueJson{}, field.value);
        if (!field.quality) continue;
        const std::string &word = field.quality->word;
        object[field.quality->key] = word.empty() ? Json() : Json(identifier(word));
    }
}

void addSection(Json &data, const Section &section)
{
    if (section.kind == Section::Kind::Properties) {
        Json &object = section.key.empty() ? data : data[section.key];
        if (object.is_null()) object = Json::object();
        addFields(object, section.fields);
        return;
    }
    Json &array = data[section.key] = Json::array();
    for (const Fields &row : section.rows) {
        Json &object = array.emplace_back(Json::object());
        addFields(object, row);
    }
    for (const std::string &line : section.lines)
        array.push_back(line);
}

/** Texts of a modem need not be UTF-8; what is not becomes the replacement character. */
std::string written(const Json &object, bool onOneLine)
{
    return object.dump(onOneLine ? -1 : 2, ' ', false, Json::error_handler_t::replace) + '\n';
}

const Json *memberOf(const Json &object, const char *member)
{
    if (!object.is_object()) return nullptr;
    const auto found = object.find(member);
    return found == object.end() ? nullptr : &*found;
}

} // namespace

std::string asJson(const Report &report, std::string_view command, bool onOneLine)
{
    Json data = Json::object();
    for (const Section &section : report.sections)
        addSection(data, section);
    if (!report.notes.empty()) data["notes"] = report.notes;
    return written({{"schema", kSchema}, {"command", command}, {"data", data}}, onOneLine);
}

std::string asJson(const Failure &failure, std::string_view command, bool onOneLine)
{
    const Json error = {{"code", failure.code},
                        {"what", failure.what},
                        {"where", failure.where},
                        {"next", failure.next},
                        {"exit", failure.exitStatus}};
    return written({{"schema", kSchema}, {"command", command}, {"error", error}}, onOneLine);
}

std::optional<std::string> jsonText(std::string_view object, const char *member)
{
    const Json parsed = Json::parse(object, nullptr, false);
    const Json *found = memberOf(parsed, member);
    return found != nullptr && found->is_string() ? std::optional(found->get<std::string>()) : std::nullopt;
}

} // namespace krctl

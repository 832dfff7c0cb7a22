#include "krctl/output/failure.h"
#include "krctl/output/render.h"

namespace krctl {
namespace {

std::string escaped(const std::string &text)
{
    std::string line;
    for (const char character : text) {
        if (character == '\n')
            line += "\\n";
        else if (character == '\r')
            line += "\\r";
        else if (character == '\\')
            line += "\\\\";
        else
            line += character;
    }
    return line;
}

/** The value alone, without the unit that people see: the key has it. */
std::string bareText(const Value &value)
{
    if (std::holds_alternative<std::monostate>(value)) return "";
    if (const bool *flag = std::get_if<bool>(&value)) return *flag ? "true" : "false";
    return escaped(textOf(Field{.label = "", .key = "", .value = value, .text = ""}));
}

/** A list has a line for each of its texts. */
std::string valueLines(const std::string &key, const Value &value)
{
    const auto *const list = std::get_if<std::vector<std::string>>(&value);
    if (list == nullptr) return key + '=' + bareText(value) + '\n';
    std::string lines;
    for (size_t i = 0; i < list->size(); ++i)
        lines += key + '.' + std::to_string(i) + '=' + escaped((*list)[i]) + '\n';
    return lines;
}

std::string fieldLines(const std::string &prefix, const Fields &fields)
{
    std::string lines;
    for (const Field &field : fields) {
        if (field.key.empty()) continue;
        lines += valueLines(prefix + field.key, field.value);
        if (field.quality) lines += prefix + field.quality->key + '=' + identifier(field.quality->word) + '\n';
    }
    return lines;
}

std::string sectionLines(const Section &section)
{
    const std::string prefix = section.key.empty() ? "" : section.key + '.';
    std::string lines;
    switch (section.kind) {
    case Section::Kind::Properties:
        return fieldLines(prefix, section.fields);
    case Section::Kind::Table:
        for (size_t i = 0; i < section.rows.size(); ++i)
            lines += fieldLines(prefix + std::to_string(i) + '.', section.rows[i]);
        return lines;
    case Section::Kind::Lines:
        for (size_t i = 0; i < section.lines.size(); ++i)
            lines += prefix + std::to_string(i) + '=' + escaped(section.lines[i]) + '\n';
        return lines;
    }
    return lines;
}

} // namespace

std::string asKeyValue(const Report &report)
{
    std::string lines;
    for (const Section &section : report.sections)
        lines += sectionLines(section);
    return lines;
}

std::string asKeyValue(const Failure &failure)
{
    return "error.code=" + failure.code + "\nerror.exit=" + std::to_string(failure.exitStatus) +
           "\nerror.what=" + escaped(failure.what) + "\nerror.where=" + escaped(failure.where) +
           "\nerror.next=" + escaped(failure.next) + '\n';
}

} // namespace krctl

#include "family.h"

#include "at_text.h"

#include <array>

namespace host::at_server {
namespace {

struct Name {
    std::string_view text;
    Family family;
};

constexpr std::array kNames{
    Name{"default", Family::Default}, Name{"qualcomm", Family::Qualcomm},     Name{"mtk", Family::Mtk},
    Name{"tsp", Family::Tsp},         Name{"spreadtrum", Family::Spreadtrum},
};

// As manufacturers call themselves in replies to AT+CGMI.
constexpr std::array kManufacturers{
    Name{"qualcomm", Family::Qualcomm},     Name{"mediatek", Family::Mtk},      Name{"mtk", Family::Mtk},
    Name{"spreadtrum", Family::Spreadtrum}, Name{"unisoc", Family::Spreadtrum}, Name{"tsp", Family::Tsp},
};

bool containsWithoutCase(std::string_view text, std::string_view word)
{
    for (size_t i = 0; i + word.size() <= text.size(); ++i)
        if (isSameWithoutCase(text.substr(i, word.size()), word)) return true;
    return false;
}

} // namespace

std::string_view nameOf(Family family)
{
    for (const Name &name : kNames)
        if (name.family == family) return name.text;
    return kNames.front().text;
}

std::optional<Family> familyNamed(std::string_view text)
{
    for (const Name &name : kNames)
        if (name.text == text) return name.family;
    return std::nullopt;
}

Family familyOfManufacturer(std::string_view reply)
{
    for (const Name &name : kManufacturers)
        if (containsWithoutCase(reply, name.text)) return name.family;
    return Family::Default;
}

} // namespace host::at_server

#include "family.h"

namespace simulator {
namespace {

struct Row {
    std::string_view name;
    std::string_view manufacturer;
    Refusal refusal;
};

constexpr std::array<Row, kAllFamilies.size()> kRows = {{
    {"default", "Generic", Refusal::Error},
    {"qualcomm", "Qualcomm", Refusal::Error},
    {"mtk", "MediaTek", Refusal::CmeError},
    {"tsp", "TSP", Refusal::NotSupport},
    {"spreadtrum", "Spreadtrum", Refusal::CmeError},
}};

const Row &rowOf(Family family)
{
    return kRows[static_cast<size_t>(family)];
}

} // namespace

std::string_view nameOf(Family family)
{
    return rowOf(family).name;
}

std::optional<Family> familyOf(std::string_view name)
{
    for (const Family family : kAllFamilies) {
        if (nameOf(family) == name) return family;
    }
    return std::nullopt;
}

std::string_view manufacturerOf(Family family)
{
    return rowOf(family).manufacturer;
}

Refusal refusalOf(Family family)
{
    return rowOf(family).refusal;
}

} // namespace simulator

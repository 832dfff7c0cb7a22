#include "family.h"

#include <cctype>

namespace host::family {
namespace {

/** @param word  in small letters */
bool containsWithoutCase(std::string_view text, std::string_view word)
{
    const auto *const found =
        std::search(text.begin(), text.end(), word.begin(), word.end(),
                    [](unsigned char a, char b) { return static_cast<char>(std::tolower(a)) == b; });
    return found != text.end();
}

} // namespace

Family familyOfManufacturer(std::string_view reply)
{
    for (const Row &row : kRows)
        for (const std::string_view maker : row.makers)
            if (!maker.empty() && containsWithoutCase(reply, maker)) return row.family;
    return Family::Default;
}

} // namespace host::family

#include "host/family/family.h"

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
    Family family = Family::Default;
    size_t longest = 0; // the most telling name counts
    for (const Row &row : kRows) {
        for (const std::string_view maker : row.makers) {
            if (maker.size() <= longest || !containsWithoutCase(reply, maker)) continue;
            longest = maker.size();
            family = row.family;
        }
    }
    return family;
}

} // namespace host::family

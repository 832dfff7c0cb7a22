#include "simulator/text.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

namespace simulator {

std::string hex(unsigned value, int digits)
{
    char text[2 * sizeof value + 1];
    std::snprintf(text, sizeof text, "%0*X", digits, value);
    return text;
}

std::string upperCase(std::string_view text)
{
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char character) { return static_cast<char>(std::toupper(character)); });
    return upper;
}

bool isDigits(std::string_view text, size_t atLeast, size_t atMost)
{
    return text.size() >= atLeast && text.size() <= atMost &&
           text.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace simulator

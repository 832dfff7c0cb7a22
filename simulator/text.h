/** Texts put together from parts. */
#ifndef SIMULATOR_TEXT_H
#define SIMULATOR_TEXT_H

#include <string>
#include <string_view>
#include <type_traits>

namespace simulator {

/** Joins texts, characters, whole numbers and enumerators, which are told as numbers. */
template <typename... Parts>
std::string concat(const Parts &...parts)
{
    std::string all;
    const auto append = [&all](const auto &part) {
        using Part = std::decay_t<decltype(part)>;
        if constexpr (std::is_same_v<Part, char>)
            all += part;
        else if constexpr (std::is_integral_v<Part>)
            all += std::to_string(part);
        else if constexpr (std::is_enum_v<Part>)
            all += std::to_string(static_cast<std::underlying_type_t<Part>>(part));
        else
            all += std::string_view(part);
    };
    (append(parts), ...);
    return all;
}

inline std::string quoted(std::string_view text)
{
    return concat('"', text, '"');
}

/** Upper-case hexadecimal digits with leading zeros. */
std::string hex(unsigned value, int digits);

std::string upperCase(std::string_view text);

/** Between the limits, all of them decimal digits. */
bool isDigits(std::string_view text, size_t atLeast, size_t atMost);

} // namespace simulator

#endif

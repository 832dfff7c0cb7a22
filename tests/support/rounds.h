#pragma once

#include <cstdint>
#include <cstdlib>

inline std::uint32_t numberFromEnvironment(const char *name, std::uint32_t otherwise)
{
    const char *const text = std::getenv(name); // NOLINT(concurrency-mt-unsafe)
    return text != nullptr ? static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10)) : otherwise;
}

/// How often a generated test repeats: as usual, unless MAINCONTROL_ROUNDS asks for more, or for fewer under an emulator.
inline int rounds(int usual)
{
    return static_cast<int>(numberFromEnvironment("MAINCONTROL_ROUNDS", static_cast<std::uint32_t>(usual)));
}

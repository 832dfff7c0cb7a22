#ifndef TESTS_SUPPORT_ROUNDS_H
#define TESTS_SUPPORT_ROUNDS_H

#include <cstdint>
#include <cstdlib>

inline uint32_t numberFromEnvironment(const char *name, uint32_t otherwise)
{
    const char *const text = std::getenv(name); // NOLINT(concurrency-mt-unsafe)
    return text != nullptr ? static_cast<uint32_t>(std::strtoul(text, nullptr, 10)) : otherwise;
}

/** How often a generated test repeats: as usual, unless MAINCONTROL_ROUNDS asks for more, or for fewer under an
 *  emulator. */
inline int rounds(int usual)
{
    return static_cast<int>(numberFromEnvironment("MAINCONTROL_ROUNDS", static_cast<uint32_t>(usual)));
}

#endif

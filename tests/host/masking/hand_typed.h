/** Secrets as people type them, and whether they can be read. */
#ifndef TESTS_HOST_MASKING_HAND_TYPED_H
#define TESTS_HOST_MASKING_HAND_TYPED_H

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace hand_typed {

inline constexpr std::string_view kSecrets[] = {"7391",   "hunter2", "73918264", "O17pen",
                                                "p@ss!w", "73 91",   "7-3-9-1",  "6217"};

inline bool hasSecret(std::string_view text)
{
    return std::any_of(std::begin(kSecrets), std::end(kSecrets), [&](std::string_view secret) {
        const auto isSame = [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); };
        return std::search(text.begin(), text.end(), secret.begin(), secret.end(), isSame) != text.end();
    });
}

inline void expectNothingToRead(const std::string &masked, std::string_view was)
{
    EXPECT_FALSE(hasSecret(masked)) << masked << "\nwas: " << was;
}

} // namespace hand_typed

#endif

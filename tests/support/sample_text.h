#ifndef TESTS_SUPPORT_SAMPLE_TEXT_H
#define TESTS_SUPPORT_SAMPLE_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>

/** A text of a length, whose characters differ from place to place, so that one in a wrong place shows. */
inline std::string filled(size_t length)
{
    std::string text(length, ' ');
    for (size_t i = 0; i < length; ++i)
        text[i] = static_cast<char>('a' + i % 23);
    return text;
}

inline std::string repeated(std::string_view text, int times)
{
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

#endif

// Looking at many characters at a time, held against looking at one after the other.

#include <string>

#include <gtest/gtest.h>

#include <mainControl/parser.h>

#include "tests/support/guarded_text.h"
#include "tests/support/plain_codec.h"

namespace {

/** What differs from a wanted character in one bit or by one, in a mix that repeats at no block's size. */
std::string similarTo(char wanted, size_t length)
{
    const std::string characters = {wanted, static_cast<char>(wanted ^ '\x80'), '"', static_cast<char>(wanted + 1),
                                    '.',    static_cast<char>(wanted - 1),      '"', static_cast<char>(wanted ^ 2),
                                    '\xFF', static_cast<char>(wanted ^ 1),      ':'};
    std::string text(length, '\0');
    for (size_t i = 0; i < length; ++i)
        text[i] = characters[(i * i + i / 7) % characters.size()];
    return text;
}

TEST(FindSubStr, SeesWhatStandsThereAndNothingBehind)
{
    for (const char wanted : {'\r', ',', '\xFE', '\x7D'}) {
        for (size_t begin = 0; begin < 140; ++begin) {
            for (size_t length = 1; length <= 70; ++length) {
                const std::string text = similarTo(wanted, begin + length).substr(begin);
                const GuardedText guarded(text); // ends where nothing is mapped
                const char *const found = _Find_Sub_Str(guarded, std::string(1, wanted).c_str());
                ASSERT_EQ(found == nullptr ? plain::kNone : static_cast<size_t>(found - guarded.data()),
                          plain::find(text, std::string(1, wanted)))
                    << length << " characters from " << begin;
            }
        }
    }
}

TEST(FindSubStr, FindsTheSameAtEveryDistanceInTextsOfEveryLength)
{
    // Quotes in front of it, in it and behind it, a first character that stands alone, and one that is a quote.
    for (const std::string needle : {"\r\n", ":", "a:b", "\"x", ":\""}) {
        for (const std::string filling : {".", "\"", "\".", ":.", "\r.\"", "\"::"}) {
            for (size_t distance = 0; distance < 140; ++distance) {
                std::string text;
                while (text.size() < distance)
                    text += filling;
                text.resize(distance);
                for (const char *behind : {"", "\"", ".........................\"................."}) {
                    const GuardedText guarded(text + needle + behind);
                    const char *const found = _Find_Sub_Str(guarded, needle.c_str());
                    const size_t expected = plain::find(guarded.str(), needle);
                    ASSERT_EQ(found == nullptr ? plain::kNone : static_cast<size_t>(found - guarded.data()), expected)
                        << needle << " behind " << distance << " of " << filling;
                }
            }
        }
    }
}

} // namespace

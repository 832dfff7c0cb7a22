// The two ways of looking at many characters at a time, held against looking at one after the other.

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include <mainControl/parser.h>

#include "../../../lib_public/support/byte_search.h"
#include "guarded_text.h"
#include "plain_codec.h"

using namespace mainControl;

namespace {

/// What differs from a wanted character in one bit or by one, in a mix that repeats at no block's size.
std::string similarTo(char wanted, std::size_t length)
{
    const std::string characters = {wanted, static_cast<char>(wanted ^ '\x80'), '"',    static_cast<char>(wanted + 1),
                                    '\0',   static_cast<char>(wanted - 1),      wanted, '"',
                                    '\xFF', static_cast<char>(wanted ^ 1),      ':'};
    std::string text(length, '\0');
    for (std::size_t i = 0; i < length; ++i)
        text[i] = characters[(i * i + i / 7) % characters.size()];
    return text;
}

Sightings lookOneByOne(std::string_view text, char wanted)
{
    Sightings seen;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto bit = std::uint64_t{1} << i;
        if (text[i] == wanted) seen.wanted |= bit;
        if (text[i] == '"') seen.quotes |= bit;
    }
    return seen;
}

template <typename AnyBlock>
class ByteSearch : public testing::Test {
};

using Blocks = testing::Types<PlainBlock, Block>;
TYPED_TEST_SUITE(ByteSearch, Blocks, );

TYPED_TEST(ByteSearch, SeesWhatStandsThereAndNothingBehind)
{
    for (const char wanted : {'\r', ',', '\xFE', '\x7F'}) {
        for (std::size_t begin = 0; begin < 2 * kWindow; ++begin) {
            for (std::size_t length = 1; length <= kWindow; ++length) {
                const std::string whole = similarTo(wanted, begin + length);
                GuardedMemory memory(whole.size()); // ends where nothing is mapped
                whole.copy(memory.data(), whole.size());
                const char *const text = memory.data() + begin;
                const Sightings seen = length < TypeParam::kSize ? lookAtShort<TypeParam>(text, length, wanted)
                                                                 : look<TypeParam>(text, length, wanted);
                const Sightings expected = lookOneByOne({text, length}, wanted);
                ASSERT_EQ(seen.wanted, expected.wanted) << length << " characters from " << begin;
                ASSERT_EQ(seen.quotes, expected.quotes) << length << " characters from " << begin;
            }
        }
    }
}

TEST(FindSubStr, FindsTheSameAtEveryDistanceInTextsOfEveryLength)
{
    // Quotes in front of it, in it and behind it, a first character that stands alone, and one that is a quote.
    for (const std::string needle : {"\r\n", ":", "a:b", "\"x", ":\""}) {
        for (const std::string filling : {".", "\"", "\".", ":.", "\r.\"", "\"::"}) {
            for (std::size_t distance = 0; distance < 140; ++distance) {
                std::string text;
                while (text.size() < distance)
                    text += filling;
                text.resize(distance);
                for (const char *behind : {"", "\"", ".........................\"................."}) {
                    const GuardedText guarded(text + needle + behind);
                    const char *const found = _Find_Sub_Str(guarded, needle.c_str());
                    const std::size_t expected = plain::find(guarded.str(), needle);
                    ASSERT_EQ(found == nullptr ? plain::kNone : static_cast<std::size_t>(found - guarded.data()),
                              expected)
                        << needle << " behind " << distance << " of " << filling;
                }
            }
        }
    }
}

} // namespace

// The codec against a plain one, over generated texts: the same bytes, everywhere.

#include <random>

#include <gtest/gtest.h>

#include "tests/support/codec_comparison.h"
#include "tests/support/rounds.h"

namespace {

class Texts {
  public:
    explicit Texts(uint32_t seed) : engine_(seed) {}

    size_t below(size_t limit) { return engine_() % limit; }
    bool oneIn(size_t chances) { return below(chances) == 0; }

    /** Short for the most part, often close to the limit of an entry, now and then far beyond it. */
    size_t length()
    {
        switch (below(8)) {
        case 0:
            return 1020 + below(8);
        case 1:
            return below(3000);
        default:
            return below(40);
        }
    }

    std::string of(std::string_view alphabet, size_t length)
    {
        std::string text(length, ' ');
        for (char &letter : text)
            letter = alphabet[below(alphabet.size())];
        return text;
    }

    /** Pieces behind each other, some of them quoted, some with a quote that is never closed. */
    std::string pieces(std::string_view separator, size_t longest)
    {
        static constexpr std::string_view kPlain = "0123456789abcdefghijklmnopqrstuvwxyz";
        static constexpr std::string_view kMixed = "abc,;:*\r\n\"";
        std::string text;
        for (size_t left = oneIn(10) ? 95 + below(12) : below(8); left > 0; --left) {
            const size_t length = oneIn(20) ? below(longest) : oneIn(10) ? 1020 + below(8) : below(12);
            std::string piece = of(oneIn(4) ? kMixed : kPlain, length);
            if (oneIn(6)) piece = '"' + piece + '"';
            if (oneIn(60)) piece += '"';
            text += piece;
            if (left > 1 || oneIn(3)) text += separator;
        }
        return text;
    }

    int32_t presetCount()
    {
        static constexpr int32_t kCounts[] = {1, 5, 42, 97, 98, 99, 100, 101, -1};
        return oneIn(3) ? kCounts[below(std::size(kCounts))] : 0;
    }

  private:
    std::mt19937 engine_;
};

TEST(AgainstPlainCodec, Searches)
{
    Texts texts(1);
    for (int i = 0; i < rounds(7000); ++i) {
        const std::string text = texts.of("ab\"\"", texts.below(24));
        ASSERT_NO_FATAL_FAILURE(compareSearch(text, texts.of("ab\"", texts.below(4))));
    }
}

TEST(AgainstPlainCodec, CountsFields)
{
    Texts texts(2);
    for (int i = 0; i < rounds(7000); ++i) {
        const std::string text = texts.of("aab,\"", texts.length());
        ASSERT_NO_FATAL_FAILURE(compareFieldCount(text, texts.of("aab,", texts.below(4))));
    }
}

TEST(AgainstPlainCodec, TakesFields)
{
    Texts texts(3);
    for (int i = 0; i < rounds(7000); ++i) {
        const std::string token = texts.oneIn(4) ? texts.of("ab:", 1 + texts.below(3)) : ",";
        const std::string text = texts.pieces(token, 3000);
        const auto index = static_cast<int32_t>(texts.below(110)) % (texts.oneIn(3) ? 110 : 9) - 1;
        ASSERT_NO_FATAL_FAILURE(compareField(text, index, token));
    }
}

TEST(AgainstPlainCodec, CountsCommas)
{
    Texts texts(4);
    for (int i = 0; i < rounds(7000); ++i)
        ASSERT_NO_FATAL_FAILURE(compareCommaCount(texts.pieces(",", 3000)));
}

TEST(AgainstPlainCodec, SplitsAtSemicolons)
{
    Texts texts(5);
    for (int i = 0; i < rounds(2000); ++i) {
        const std::string text = texts.pieces(";", 3000);
        ASSERT_NO_FATAL_FAILURE(compareSplit(Split::AtSemicolons, text, texts.presetCount()));
    }
}

TEST(AgainstPlainCodec, SplitsAtCommas)
{
    Texts texts(6);
    for (int i = 0; i < rounds(2000); ++i) {
        const std::string text = texts.pieces(",", 3000);
        ASSERT_NO_FATAL_FAILURE(compareSplit(Split::AtCommas, text, texts.presetCount()));
    }
}

TEST(AgainstPlainCodec, SplitsAtScanMarkers)
{
    Texts texts(7);
    for (int i = 0; i < rounds(2000); ++i) {
        const std::string text = texts.of("abc*S,", texts.below(20)) + (texts.oneIn(9) ? "" : "*STGC:") +
                                 texts.pieces(texts.oneIn(9) ? "*STG" : "*STGC:", 3000);
        ASSERT_NO_FATAL_FAILURE(compareSplit(Split::AtScanMarkers, text, texts.presetCount()));
    }
}

TEST(AgainstPlainCodec, SplitsScans)
{
    Texts texts(8);
    for (int i = 0; i < rounds(2000); ++i) {
        const std::string text = texts.pieces(texts.oneIn(9) ? "\r\n\r\n" : "\r\n", texts.oneIn(5) ? 90000 : 4000);
        ASSERT_NO_FATAL_FAILURE(compareSplit(Split::AtLines, text, texts.presetCount()));
    }
}

TEST(AgainstPlainCodec, RewritesLines)
{
    Texts texts(9);
    for (int i = 0; i < rounds(7000); ++i) {
        // More or fewer commas than quotes: the result outgrows the text, or falls short of it.
        const std::string_view alphabet = texts.oneIn(3) ? "ab1,,,, \t\"" : "ab1 \t,\"\"\xFD\xFE\xFC";
        ASSERT_NO_FATAL_FAILURE(compareRewrite(Rewrite::Line, texts.of(alphabet, texts.length())));
    }
}

TEST(AgainstPlainCodec, RewritesGroups)
{
    Texts texts(10);
    for (int i = 0; i < rounds(7000); ++i)
        ASSERT_NO_FATAL_FAILURE(compareRewrite(Rewrite::Groups, texts.of("12(()),\"", texts.length())));
}

TEST(AgainstPlainCodec, RestoresTexts)
{
    Texts texts(11);
    for (int i = 0; i < rounds(7000); ++i)
        ASSERT_NO_FATAL_FAILURE(compareRewrite(
            Rewrite::Restore, texts.of("a \xFD\xFE\xFC", texts.oneIn(2) ? texts.below(3) : texts.length())));
}

} // namespace

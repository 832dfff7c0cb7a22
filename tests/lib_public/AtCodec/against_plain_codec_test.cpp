// The codec against a plain one, over generated texts: the same bytes, everywhere.

#include <random>

#include <gtest/gtest.h>

#include <mainControl/codec.h>

#include "guarded_text.h"
#include "list_image.h"
#include "plain_codec.h"
#include "rounds.h"

namespace {

constexpr char kUntouched = 0x5A;

class Texts {
  public:
    explicit Texts(std::uint32_t seed) : engine_(seed) {}

    std::size_t below(std::size_t limit) { return engine_() % limit; }
    bool oneIn(std::size_t chances) { return below(chances) == 0; }

    /// Short for the most part, often close to the limit of an entry, now and then far beyond it.
    std::size_t length()
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

    std::string of(std::string_view alphabet, std::size_t length)
    {
        std::string text(length, ' ');
        for (char &letter : text)
            letter = alphabet[below(alphabet.size())];
        return text;
    }

    /// Pieces behind each other, some of them quoted, some with a quote that is never closed.
    std::string pieces(std::string_view separator, std::size_t longest)
    {
        static constexpr std::string_view kPlain = "0123456789abcdefghijklmnopqrstuvwxyz";
        static constexpr std::string_view kMixed = "abc,;:*\r\n\"";
        std::string text;
        for (std::size_t left = oneIn(10) ? 95 + below(12) : below(8); left > 0; --left) {
            const std::size_t length = oneIn(20) ? below(longest) : oneIn(10) ? 1020 + below(8) : below(12);
            std::string piece = of(oneIn(4) ? kMixed : kPlain, length);
            if (oneIn(6)) piece = '"' + piece + '"';
            if (oneIn(60)) piece += '"';
            text += piece;
            if (left > 1 || oneIn(3)) text += separator;
        }
        return text;
    }

    std::int32_t presetCount()
    {
        static constexpr std::int32_t kCounts[] = {1, 5, 42, 97, 98, 99, 100, 101, -1};
        return oneIn(3) ? kCounts[below(std::size(kCounts))] : 0;
    }

  private:
    std::mt19937 engine_;
};

using Split = void (*)(AtParasList *, const char *);

void expectSameList(Split split, void (*plainSplit)(ListImage &, const std::string &), const std::string &text,
                    std::int32_t presetCount)
{
    const GuardedText guarded(text);
    const GuardedRecord<AtParasList> list;
    list->nCount = presetCount;
    ListImage expected;
    expected.count(presetCount);
    split(list, guarded);
    plainSplit(expected, text);
    ASSERT_EQ(difference(expected, *list.get()), "") << presetCount << " entries, then: " << text;
    ASSERT_EQ(guarded.str(), text);
}

TEST(AgainstPlainCodec, Searches)
{
    Texts texts(1);
    for (int i = 0; i < rounds(7000); ++i) {
        const std::string text = texts.of("ab\"\"", texts.below(24));
        const std::string needle = texts.of("ab\"", texts.below(4));
        const GuardedText guarded(text);
        const GuardedText guardedNeedle(needle);
        const char *const found = ATCodec_Find_Sub_Str(guarded, guardedNeedle);
        const std::size_t at = found == nullptr ? plain::kNone : static_cast<std::size_t>(found - guarded.data());
        ASSERT_EQ(at, plain::find(text, needle)) << text << " in search of " << needle;
    }
}

TEST(AgainstPlainCodec, CountsFields)
{
    Texts texts(2);
    for (int i = 0; i < rounds(7000); ++i) {
        const std::string text = texts.of("aab,\"", texts.length());
        const std::string token = texts.of("aab,", texts.below(4));
        ASSERT_EQ(ATCodec_GetSubStrCountByToken(GuardedText(text), GuardedText(token)), plain::countFields(text, token))
            << text << " by " << token;
    }
}

TEST(AgainstPlainCodec, TakesFields)
{
    Texts texts(3);
    for (int i = 0; i < rounds(7000); ++i) {
        const std::string token = texts.oneIn(4) ? texts.of("ab:", 1 + texts.below(3)) : ",";
        const std::string text = texts.pieces(token, 3000);
        const auto index = static_cast<std::int32_t>(texts.below(110)) % (texts.oneIn(3) ? 110 : 9) - 1;
        const std::string taken = plain::field(text, index, token);
        const GuardedMemory output(text.size() + 8);
        std::fill_n(output.data(), output.size(), kUntouched);
        ATCodec_FindSubStrByIndex(GuardedText(text), output.data(), index, GuardedText(token));
        const std::string expected = taken + std::string(output.size() - taken.size(), kUntouched);
        ASSERT_EQ(difference(expected, std::string_view(output.data(), output.size())), "")
            << "field " << index << " by " << token << " of " << text;
    }
}

TEST(AgainstPlainCodec, CountsCommas)
{
    Texts texts(4);
    for (int i = 0; i < rounds(7000); ++i) {
        const std::string text = texts.pieces(",", 3000);
        std::int32_t count = -77;
        ATCodec_PreProc_Res_ParaList_Entend(GuardedText(text), &count);
        ASSERT_EQ(count, plain::countCommas(text).value_or(-77)) << text;
    }
}

TEST(AgainstPlainCodec, SplitsAtSemicolons)
{
    Texts texts(5);
    const auto plainSplit = [](ListImage &list, const std::string &text) { plain::splitAt(list, text, ";"); };
    for (int i = 0; i < rounds(2000); ++i)
        ASSERT_NO_FATAL_FAILURE(
            expectSameList(ATCodec_PreProc_Res_ParaList, plainSplit, texts.pieces(";", 3000), texts.presetCount()));
}

TEST(AgainstPlainCodec, SplitsAtCommas)
{
    Texts texts(6);
    const auto plainSplit = [](ListImage &list, const std::string &text) { plain::splitAt(list, text, ","); };
    for (int i = 0; i < rounds(2000); ++i)
        ASSERT_NO_FATAL_FAILURE(expectSameList(ATCodec_PreProc_Res_ParaList_Special, plainSplit,
                                               texts.pieces(",", 3000), texts.presetCount()));
}

TEST(AgainstPlainCodec, SplitsAtScanMarkers)
{
    Texts texts(7);
    for (int i = 0; i < rounds(2000); ++i) {
        const std::string text = texts.of("abc*S,", texts.below(20)) + (texts.oneIn(9) ? "" : "*STGC:") +
                                 texts.pieces(texts.oneIn(9) ? "*STG" : "*STGC:", 3000);
        // Whether an overlong text before the first marker is still dropped is left open.
        const std::size_t first = plain::find(text, "*STGC:");
        if (first != plain::kNone && first >= ListImage::kEntrySize) continue;
        ASSERT_NO_FATAL_FAILURE(
            expectSameList(ATCodec_PreProc_Res_Icera_ParaList, plain::splitAtMarker, text, texts.presetCount()));
    }
}

TEST(AgainstPlainCodec, SplitsScans)
{
    Texts texts(8);
    for (int i = 0; i < rounds(2000); ++i) {
        const std::string text = texts.pieces(texts.oneIn(9) ? "\r\n\r\n" : "\r\n", texts.oneIn(5) ? 90000 : 4000);
        ASSERT_NO_FATAL_FAILURE(
            expectSameList(ATCodec_PreProc_Res_COPS5_ParaList, plain::splitScan, text, texts.presetCount()));
    }
}

void expectSameRoom(void (*rewrite)(char *), std::string (*plainRewrite)(const std::string &), const std::string &text)
{
    const GuardedText guarded(text);
    rewrite(guarded);
    ASSERT_EQ(difference(plainRewrite(text) + '\0', guarded.bytes()), "") << text;
}

TEST(AgainstPlainCodec, RewritesLines)
{
    Texts texts(9);
    for (int i = 0; i < rounds(7000); ++i) {
        // More or fewer commas than quotes: the result outgrows the text, or falls short of it.
        const std::string_view alphabet = texts.oneIn(3) ? "ab1,,,, \t\"" : "ab1 \t,\"\"\xFD\xFE\xFC";
        ASSERT_NO_FATAL_FAILURE(
            expectSameRoom(ATCodec_PreProc_Res_ParaLine, plain::rewriteLine, texts.of(alphabet, texts.length())));
    }
}

TEST(AgainstPlainCodec, RewritesGroups)
{
    Texts texts(10);
    for (int i = 0; i < rounds(7000); ++i)
        ASSERT_NO_FATAL_FAILURE(
            expectSameRoom(ATCodec_ProcRes_ParaLineEx, plain::rewriteGroups, texts.of("12(()),\"", texts.length())));
}

TEST(AgainstPlainCodec, RestoresTexts)
{
    Texts texts(11);
    const auto wholeRoom = [](const std::string &text) {
        std::string room = plain::restore(text);
        room.resize(text.size());
        return room;
    };
    for (int i = 0; i < rounds(7000); ++i)
        ASSERT_NO_FATAL_FAILURE(
            expectSameRoom(ATCodec_Restore_String_Para, wholeRoom,
                           texts.of("a \xFD\xFE\xFC", texts.oneIn(2) ? texts.below(3) : texts.length())));
}

} // namespace

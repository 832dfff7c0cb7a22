#include "tests/support/codec_comparison.h"

#include <algorithm>
#include <string_view>

#include <gtest/gtest.h>

#include <mainControl/codec.h>

#include "tests/support/guarded_text.h"
#include "tests/support/list_image.h"
#include "tests/support/plain_codec.h"

namespace {

constexpr char kUntouched = 0x5A;

struct SplitPair {
    void (*library)(AtParasList *, const char *);
    void (*plainly)(ListImage &, const std::string &);
};

SplitPair pairFor(Split split)
{
    switch (split) {
    case Split::AtSemicolons:
        return {ATCodec_PreProc_Res_ParaList,
                [](ListImage &list, const std::string &text) { plain::splitAt(list, text, ";"); }};
    case Split::AtCommas:
        return {ATCodec_PreProc_Res_ParaList_Special,
                [](ListImage &list, const std::string &text) { plain::splitAt(list, text, ","); }};
    case Split::AtScanMarkers:
        return {ATCodec_PreProc_Res_Icera_ParaList, plain::splitAtMarker};
    default:
        return {ATCodec_PreProc_Res_COPS5_ParaList, plain::splitScan};
    }
}

struct RewritePair {
    void (*library)(char *);
    std::string (*plainly)(const std::string &);
};

RewritePair pairFor(Rewrite rewrite)
{
    switch (rewrite) {
    case Rewrite::Line:
        return {ATCodec_PreProc_Res_ParaLine, plain::rewriteLine};
    case Rewrite::Groups:
        return {ATCodec_ProcRes_ParaLineEx, plain::rewriteGroups};
    default:
        return {ATCodec_Restore_String_Para, [](const std::string &text) {
                    std::string room = plain::restore(text);
                    room.resize(text.size());
                    return room;
                }};
    }
}

} // namespace

void compareSearch(const std::string &text, const std::string &needle)
{
    const GuardedText guarded(text);
    const GuardedText guardedNeedle(needle);
    const char *const found = ATCodec_Find_Sub_Str(guarded, guardedNeedle);
    const size_t at = found == nullptr ? plain::kNone : static_cast<size_t>(found - guarded.data());
    ASSERT_EQ(at, plain::find(text, needle)) << text << " in search of " << needle;
}

void compareFieldCount(const std::string &text, const std::string &token)
{
    ASSERT_EQ(ATCodec_GetSubStrCountByToken(GuardedText(text), GuardedText(token)), plain::countFields(text, token))
        << text << " by " << token;
}

void compareField(const std::string &text, int32_t indexFromOne, const std::string &token)
{
    const std::string taken = plain::field(text, indexFromOne, token);
    const GuardedMemory output(text.size() + 8);
    std::fill_n(output.data(), output.size(), kUntouched);
    ATCodec_FindSubStrByIndex(GuardedText(text), output.data(), indexFromOne, GuardedText(token));
    const std::string expected = taken + std::string(output.size() - taken.size(), kUntouched);
    ASSERT_EQ(difference(expected, std::string_view(output.data(), output.size())), "")
        << "field " << indexFromOne << " by " << token << " of " << text;
}

void compareCommaCount(const std::string &text)
{
    constexpr int32_t kUntold = -77;
    int32_t count = kUntold;
    ATCodec_PreProc_Res_ParaList_Entend(GuardedText(text), &count);
    ASSERT_EQ(count, plain::countCommas(text).value_or(kUntold)) << text;
}

void compareSplit(Split split, const std::string &text, int32_t presetCount)
{
    // Whether an overlong text before the first marker is still dropped is left open.
    const size_t marker = split == Split::AtScanMarkers ? plain::find(text, "*STGC:") : 0;
    if (marker != plain::kNone && marker >= ListImage::kEntrySize) return;

    const SplitPair pair = pairFor(split);
    const GuardedText guarded(text);
    const GuardedRecord<AtParasList> list;
    list->nCount = presetCount;
    ListImage expected;
    expected.count(presetCount);
    pair.library(list, guarded);
    pair.plainly(expected, text);
    ASSERT_EQ(difference(expected, *list.get()), "") << presetCount << " entries, then: " << text;
    ASSERT_EQ(guarded.str(), text);
}

void compareRewrite(Rewrite rewrite, const std::string &text)
{
    const RewritePair pair = pairFor(rewrite);
    const GuardedText guarded(text);
    pair.library(guarded);
    ASSERT_EQ(difference(pair.plainly(text) + '\0', guarded.bytes()), "") << text;
}

// From one parameter text to many: search, counts, single fields and lists.

#include <gtest/gtest.h>

#include <mainControl/codec.h>
#include <mainControl/parser.h>

#include "tests/support/guarded_text.h"
#include "tests/support/list_image.h"
#include "tests/support/sample_text.h"

namespace {

constexpr char kUntouched = 0x5A;

struct SearchRow {
    const char *text;
    const char *needle;
    int position; // -1: none
};

const SearchRow kSearches[] = {
    {"a,b", ",", 1},    {"a,b", "b", 2},      {"a,b", ";", -1},    {"", ",", -1},           {"\"a,b\",c", ",", 5},
    {"\"a,b", ",", -1}, {"a\",\"b", ",", -1}, {"a\"\",b", ",", 3}, {"\"x\",\"y\"", ",", 3}, {"\"OK\" OK", "OK", 5},
    {"abc", "", 0},     {"", "", 0},          {"aab", "ab", 1},    {"\"aa\"aa", "aa", 4},   {"abc", "abcd", -1},
};

TEST(Search, FindsTheFirstOccurrenceOutsideQuotes)
{
    for (const SearchRow &row : kSearches) {
        const GuardedText text(row.text);
        const char *const found = ATCodec_Find_Sub_Str(text, GuardedText(row.needle));
        EXPECT_EQ(found, row.position < 0 ? nullptr : text.data() + row.position) << row.text << " / " << row.needle;
        EXPECT_EQ(_Find_Sub_Str(text, GuardedText(row.needle)), found) << row.text << " / " << row.needle;
    }
}

TEST(Search, FindsNothingForNull)
{
    EXPECT_EQ(ATCodec_Find_Sub_Str(nullptr, "a"), nullptr);
    EXPECT_EQ(ATCodec_Find_Sub_Str("a", nullptr), nullptr);
    EXPECT_EQ(ATCodec_Find_Sub_Str(nullptr, nullptr), nullptr);
}

struct CountRow {
    const char *text;
    const char *token;
    int32_t count;
};

const CountRow kCounts[] = {
    {"a,b", ",", 2},  {"a,b,", ",", 2},  {"", ",", 0},        {"a", ",", 1},      {",", ",", 1},
    {",,", ",", 2},   {",a", ",", 2},    {"\"a,b\"", ",", 2}, {"a;b", ",", 1},    {"a, b, c", ", ", 3},
    {"aaa", "aa", 3}, {"aaaa", "aa", 4}, {"a;;", ";;", 2},    {"abc", "abcd", 1}, {"a\r\nb", "\r\n", 2},
    {"abc", "", 1},   {"", "", 0},
};

TEST(FieldCount, TakesQuotedTokensToo)
{
    for (const CountRow &row : kCounts)
        EXPECT_EQ(ATCodec_GetSubStrCountByToken(GuardedText(row.text), GuardedText(row.token)), row.count)
            << row.text << " / " << row.token;
    EXPECT_EQ(ATCodec_GetSubStrCountByToken(GuardedText(repeated("1,", 5000)), ","), 5000);
}

TEST(FieldCount, IsZeroForNull)
{
    EXPECT_EQ(ATCodec_GetSubStrCountByToken(nullptr, ","), 0);
    EXPECT_EQ(ATCodec_GetSubStrCountByToken("a", nullptr), 0);
}

struct FieldRow {
    const char *name;
    std::string text;
    int32_t index;
    const char *token;
    std::string taken; // with the terminator where one is written
};

const std::string kEnd(1, '\0');
const std::string kHundredFields = repeated("7,", 98) + "ninetynine,last";

const FieldRow kFields[] = {
    {"first", "a,b,c", 1, ",", "a"},
    {"middle", "a,b,c", 2, ",", "b"},
    {"last", "a,b,c", 3, ",", "c" + kEnd},
    {"beyond the last", "x,y", 7, ",", "y" + kEnd},
    {"zero", "x,y", 0, ",", "y" + kEnd},
    {"negative", "x,y", -1, ",", "y" + kEnd},
    {"least", "x,y", INT32_MIN, ",", "y" + kEnd},
    {"empty one", "a,,c", 2, ",", ""},
    {"empty last", "a,b,", 3, ",", ""},
    {"beyond an empty last", "a,b,", 9, ",", ""},
    {"quoted token", "\"a,b\",c", 1, ",", "\"a,b\""},
    {"behind a quoted token", "\"a,b\",c", 2, ",", "c" + kEnd},
    {"quote never closed", "a,\"b,c", 2, ",", "\"b,c" + kEnd},
    {"longer token", "a::b:c::d", 2, "::", "b:c"},
    {"longer token, last", "a::b:c::d", 3, "::", "d" + kEnd},
    {"token of a line break", "ab\r\ncd", 1, "\r\n", "ab"},
    {"no token", "abc", 1, ",", "abc" + kEnd},
    {"no token, other index", "abc", 5, ",", "abc" + kEnd},
    {"empty text", "", 1, ",", ""},
    {"empty token", "a,b", 1, "", "a,b" + kEnd},
    {"empty token, other index", "a,b", 2, "", "a,b" + kEnd},
    {"index 99", kHundredFields, 99, ",", "ninetynine"},
    {"index 100", kHundredFields, 100, ",", ""},
    {"index 101", kHundredFields, 101, ",", ""},
    {"index 99 is the last", repeated("7,", 98) + "z", 99, ",", "z" + kEnd},
    {"index 99 is beyond the last", repeated("7,", 20) + "z", 99, ",", "z" + kEnd},
    {"index 100 of two", "x,y", 100, ",", ""},
    {"index 100 of one", "x", 100, ",", "x" + kEnd},
    {"the 150th as the last one", repeated("7,", 149) + "z", 0, ",", "z" + kEnd},
    {"1023 characters", filled(1023) + ",b", 1, ",", filled(1023)},
    {"1024 characters", filled(1024) + ",b", 1, ",", ""},
    {"1025 characters", filled(1025) + ",b", 1, ",", ""},
    {"behind 1023 characters", filled(1023) + ",b", 2, ",", "b" + kEnd},
    {"behind 1024 characters", filled(1024) + ",b", 2, ",", ""},
    {"before 1024 characters", "a," + filled(1024) + ",c", 1, ",", "a"},
    {"last of 1024 characters", "a," + filled(1024), 2, ",", filled(1024) + kEnd},
    {"last of any length", "a," + filled(50000), 2, ",", filled(50000) + kEnd},
};

TEST(Field, IsCopiedByItsIndex)
{
    for (const FieldRow &row : kFields) {
        const GuardedText text(row.text);
        const GuardedMemory output(row.taken.size() + 1);
        std::fill_n(output.data(), output.size(), kUntouched);
        ATCodec_FindSubStrByIndex(text, output.data(), row.index, GuardedText(row.token));
        EXPECT_EQ(difference(row.taken + kUntouched, std::string_view(output.data(), output.size())), "") << row.name;
        EXPECT_EQ(text.str(), row.text) << row.name;
    }
}

TEST(Field, IsNotCopiedForNull)
{
    char output = kUntouched;
    ATCodec_FindSubStrByIndex(nullptr, &output, 1, ",");
    ATCodec_FindSubStrByIndex("a,b", &output, 1, nullptr);
    ATCodec_FindSubStrByIndex("a,b", nullptr, 1, ",");
    EXPECT_EQ(output, kUntouched);
}

struct CommaRow {
    const char *name;
    std::string text;
    int32_t count;
};

constexpr int32_t kNotTold = -77;

const CommaRow kCommaCounts[] = {
    {"none", "a", 0},
    {"two", "a,b,c", 2},
    {"empty fields", ",,a", 2},
    {"quoted", "\"a,b\",c", 1},
    {"quote never closed", "a,\"b,c", 1},
    {"nothing behind the last", "a,b,", kNotTold},
    {"only a comma", ",", kNotTold},
    {"empty", "", kNotTold},
    {"98", repeated("1,", 98) + "1", 98},
    {"99", repeated("1,", 99) + "1", 99},
    {"100", repeated("1,", 100) + "1", kNotTold},
    {"101", repeated("1,", 101) + "1", kNotTold},
    {"first field of 1023", filled(1023) + ",b", 1},
    {"first field of 1024", filled(1024) + ",b", kNotTold},
    {"middle field of 1024", "a," + filled(1024) + ",b", kNotTold},
    {"last field of 1023", "a," + filled(1023), 1},
    {"last field of 1024", "a," + filled(1024), kNotTold},
    {"last field of 1025", "a," + filled(1025), kNotTold},
    {"only field of 1023", filled(1023), 0},
    {"only field of 1024", filled(1024), kNotTold},
};

TEST(CommaCount, IsToldForWholeLines)
{
    for (const CommaRow &row : kCommaCounts) {
        const GuardedRecord<int32_t> count;
        *count = kNotTold;
        ATCodec_PreProc_Res_ParaList_Entend(GuardedText(row.text), count);
        EXPECT_EQ(*count, row.count) << row.name;
    }
}

TEST(CommaCount, IsNotToldForNull)
{
    int32_t count = kNotTold;
    ATCodec_PreProc_Res_ParaList_Entend(nullptr, &count);
    ATCodec_PreProc_Res_ParaList_Entend("a,b", nullptr);
    EXPECT_EQ(count, kNotTold);
}

struct Splitter {
    const char *name;
    void (*split)(AtParasList *, const char *);
    std::string separator;
    std::string other; // does not split
    std::string front; // stands before the first piece
};

const Splitter kSplitters[] = {
    {"Semicolon", ATCodec_PreProc_Res_ParaList, ";", ",", ""},
    {"Comma", ATCodec_PreProc_Res_ParaList_Special, ",", ";", ""},
    {"ScanMarker", ATCodec_PreProc_Res_Icera_ParaList, "*STGC:", "STGC:", "dropped*STGC:"},
};

class SplitTest : public testing::TestWithParam<Splitter> {
  protected:
    static const Splitter &of() { return GetParam(); }
    static std::string joined(std::initializer_list<std::string> pieces)
    {
        std::string text = of().front;
        for (const std::string &piece : pieces)
            text += (&piece == pieces.begin() ? "" : of().separator) + piece;
        return text;
    }
    static std::string after(std::string_view text, const ListImage &expected, int32_t presetCount = 0)
    {
        const GuardedText guarded(text);
        const GuardedRecord<AtParasList> list;
        list->nCount = presetCount;
        of().split(list, guarded);
        return difference(expected, *list.get()) + (guarded.str() == text ? "" : ", and the text has changed");
    }
};

TEST_P(SplitTest, MakesEachPieceAnEntry)
{
    const std::string &separator = of().separator;
    EXPECT_EQ(after(joined({"1", "two", " 3 "}), {"1", "two", " 3 "}), "");
    EXPECT_EQ(after(joined({"1", "", "", "2"}), {"1", "", "", "2"}), "");
    EXPECT_EQ(after(of().front + separator + "1", {"", "1"}), "");
    EXPECT_EQ(after(joined({"1", "2"}) + separator, {"1", "2"}), "");
    EXPECT_EQ(after(joined({"1", "2"}) + separator + separator, {"1", "2", ""}), "");
    EXPECT_EQ(after("single", {"single"}), "");
    EXPECT_EQ(after("1" + of().other + "2", {std::string("1") + of().other + "2"}), "");
    EXPECT_EQ(after("", {}), "");
}

TEST_P(SplitTest, LeavesQuotedSeparatorsAlone)
{
    const std::string &separator = of().separator;
    const std::string quoted = "\"a" + separator + "b\"";
    EXPECT_EQ(after(joined({quoted, "c"}), {quoted, "c"}), "");
    EXPECT_EQ(after(joined({"c", quoted}), {"c", quoted}), "");
    const std::string open = "\"b" + separator + "c";
    EXPECT_EQ(after(joined({"a", open}), {"a", open}), "");
}

TEST_P(SplitTest, TakesPiecesOfLessThan1024Characters)
{
    EXPECT_EQ(after(joined({filled(1023), "b"}), {filled(1023), "b"}), "");
    EXPECT_EQ(after(joined({"a", filled(1024), "b"}), {"a"}), "");
    EXPECT_EQ(after(joined({"a", filled(1025), "b"}), {"a"}), "");
    EXPECT_EQ(after(joined({"a", filled(1024)}) + of().separator, {"a"}), "");
}

TEST_P(SplitTest, Keeps1024CharactersOfTheLastPiece)
{
    for (const size_t length : {1023U, 1024U, 1025U, 9000U})
        EXPECT_EQ(after(joined({"a", filled(length)}), {"a", filled(length).substr(0, 1024)}), "") << length;
    EXPECT_EQ(after(filled(1025), {filled(1024)}), "");
}

TEST_P(SplitTest, TakesAHundredPieces)
{
    for (const int pieces : {99, 100, 101, 150}) {
        ListImage expected;
        for (int i = 0; i < std::min(pieces, 100); ++i)
            expected.add("7");
        EXPECT_EQ(after(of().front + repeated("7" + of().separator, pieces - 1) + "7", expected), "") << pieces;
        EXPECT_EQ(after(of().front + repeated("7" + of().separator, pieces), expected), "") << pieces;
    }
}

TEST_P(SplitTest, AddsToWhatTheListHolds)
{
    const std::string text = joined({"one", "two"});
    EXPECT_EQ(after(text, ListImage().count(5).add("one").add("two"), 5), "");
    EXPECT_EQ(after(text, ListImage().count(98).add("one").add("two"), 98), "");
    EXPECT_EQ(after(text, ListImage().count(99).add("one"), 99), "");
    for (const int32_t full : {100, 101, INT32_MAX, -1, INT32_MIN})
        EXPECT_EQ(after(text, ListImage().count(full), full), "") << full;
}

TEST_P(SplitTest, KeepsTheLastEntryTerminated)
{
    for (const size_t length : {1022U, 1023U, 1024U, 1025U, 5000U})
        EXPECT_EQ(after(filled(length), ListImage().count(99).add(filled(length).substr(0, 1023)), 99), "") << length;
    EXPECT_EQ(after(joined({filled(1023), "b"}), ListImage().count(99).add(filled(1023)), 99), "");
    EXPECT_EQ(after(joined({filled(1024), "b"}), ListImage().count(99), 99), "");
    EXPECT_EQ(after(filled(1024), ListImage().count(98).add(filled(1024)), 98), "");
}

TEST_P(SplitTest, DoesNothingForNull)
{
    EXPECT_EQ(after("", ListImage().count(3), 3), "");
    const GuardedRecord<AtParasList> list;
    list->nCount = 1;
    of().split(list, nullptr);
    of().split(nullptr, "a");
    of().split(nullptr, nullptr);
    EXPECT_EQ(difference(ListImage().count(1), *list.get()), "");
}

INSTANTIATE_TEST_SUITE_P(List, SplitTest, testing::ValuesIn(kSplitters),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(ScanMarker, DropsWhatStandsBeforeTheFirst)
{
    const std::pair<const char *, ListImage> rows[] = {
        {"*STGC:1*STGC:2", {"1", "2"}},
        {"+COPS*STGC:1,\"x\"*STGC:2", {"1,\"x\"", "2"}},
        {"*STGC:", {}},
        {"dropped*STGC:", {}},
        {"*STGC:*STGC:1", {"", "1"}},
        {"\"*STGC:\"*STGC:1", {"1"}},
        {"\"*STGC:1", {"\"*STGC:1"}},
        {"*STGC1*stgc:2", {"*STGC1*stgc:2"}},
    };
    for (const auto &[text, expected] : rows) {
        const GuardedRecord<AtParasList> list;
        ATCodec_PreProc_Res_Icera_ParaList(list, GuardedText(text));
        EXPECT_EQ(difference(expected, *list.get()), "") << text;
    }
}

} // namespace

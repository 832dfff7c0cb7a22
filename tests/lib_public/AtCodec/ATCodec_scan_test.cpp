// An operator scan, cut into its lines.

#include <gtest/gtest.h>

#include <mainControl/codec.h>

#include "tests/support/guarded_text.h"
#include "tests/support/list_image.h"
#include "tests/support/sample_text.h"

namespace {

const std::string kBreak = "\r\n";

std::string closed(const std::string &line)
{
    return line + kBreak;
}

std::string afterScan(const std::string &text, const ListImage &expected, int32_t presetCount = 0)
{
    const GuardedText guarded(text);
    const GuardedRecord<AtParasList> list;
    list->nCount = presetCount;
    ATCodec_PreProc_Res_COPS5_ParaList(list, guarded);
    return difference(expected, *list.get()) + (guarded.str() == text ? "" : ", and the text has changed");
}

// As a line that is written with its terminator.
std::string ended(const std::string &text)
{
    return text + '\0';
}

struct ScanRow {
    const char *name;
    const char *text;
    ListImage expected;
};

const ScanRow kScans[] = {
    {"one line", "\r\n+COPS: 1\r\n\r\nOK\r\n", {"+COPS: 1", "OK"}},
    {"not closed", "\r\n1\r\n2", {"1", "2"}},
    {"no break", "1;2,3", {"1;2,3"}},
    {"only breaks", "\r\n\r\n\r\n", {}},
    {"no break in front", "1\r\n2\r\n", {"1", "2"}},
    {"quoted break", "\"a\r\nb\"\r\nc\r\n", {"\"a\r\nb\"", "c"}},
    {"quote never closed", "a\r\n\"b\r\nc\r\n", {"a", "\"b\r\nc\r\n"}},
    {"single CR and LF", "a\rb\nc\n\rd\r\n", {"a\rb\nc\n\rd"}},
    {"second CR", "a\r\r\nb\r\n\r\r\n", {"a\r", "b", "\r"}},
    {"blank line", " \r\n1\r\n", {" ", "1"}},
};

TEST(Scan, MakesEachLineAnEntry)
{
    for (const ScanRow &row : kScans)
        EXPECT_EQ(afterScan(row.text, row.expected), "") << row.name;
}

TEST(Scan, TakesAHundredLines)
{
    for (const int lines : {99, 100, 101, 150}) {
        ListImage expected;
        for (int i = 0; i < std::min(lines, 100); ++i)
            expected.add("7");
        EXPECT_EQ(afterScan(repeated("\r\n7\r\n", lines), expected), "") << lines;
        EXPECT_EQ(afterScan(repeated("\r\n7\r\n", lines - 1) + "7", expected), "") << lines;
    }
}

TEST(Scan, AddsToWhatTheListHolds)
{
    EXPECT_EQ(afterScan("1\r\n2", ListImage().count(5).add("1").add("2"), 5), "");
    EXPECT_EQ(afterScan("1\r\n2", ListImage().count(99).add("1"), 99), "");
    for (const int32_t full : {100, 101, INT32_MAX, -1, INT32_MIN})
        EXPECT_EQ(afterScan("1\r\n2", ListImage().count(full), full), "") << full;
}

TEST(Scan, RunsOnFromALongLine)
{
    for (const size_t length : {1023U, 1024U, 1025U, 2047U, 2048U, 3000U, 102398U})
        EXPECT_EQ(afterScan(closed(filled(length)), {filled(length)}), "") << length;
    EXPECT_EQ(afterScan(closed("1") + closed(filled(3000)), {"1", filled(3000)}), "");
}

TEST(Scan, OverwritesWhatRanOn)
{
    // Each line and its terminator, and no byte behind it.
    EXPECT_EQ(afterScan(closed(filled(1024)) + closed("2"), {filled(1024), ended("2")}), "");
    EXPECT_EQ(afterScan(closed(filled(3000)) + closed("22"), {filled(3000), ended("22")}), "");
    EXPECT_EQ(afterScan(closed(filled(3000)) + closed("22") + closed("3"), {filled(3000), ended("22"), ended("3")}),
              "");
    EXPECT_EQ(afterScan(closed(filled(5000)) + closed(filled(1500)) + closed("3"),
                        {filled(5000), ended(filled(1500)), ended("3")}),
              "");
    EXPECT_EQ(afterScan(closed(filled(90000)) + closed("2"), {filled(90000), ended("2")}), "");
    EXPECT_EQ(afterScan(closed(filled(3000)) + closed(filled(1023)), {filled(3000), ended(filled(1023))}), "");
    EXPECT_EQ(afterScan(closed(filled(3000)) + closed(filled(1024)), {filled(3000), ended(filled(1024))}), "");
}

TEST(Scan, EndsALastTextThatStandsWhereALineRanOn)
{
    const GuardedRecord<AtParasList> list;
    ATCodec_PreProc_Res_COPS5_ParaList(list, GuardedText(closed(filled(3000)) + "last"));
    EXPECT_EQ(list->nCount, 2);
    EXPECT_EQ(difference(filled(1024), std::string_view(list->strParasLine[0], 1024)), "");
    EXPECT_STREQ(list->strParasLine[1], "last");
    EXPECT_EQ(difference(ended(filled(3000).substr(2048)), std::string_view(list->strParasLine[2], 953)), "");
}

TEST(Scan, RunsOnNotPastTheList)
{
    struct {
        int32_t entry;
        size_t length;
        size_t kept;
    } const rows[] = {
        {99, 1022, 1022},   {99, 1023, 1023},   {99, 1024, 1023}, {99, 1025, 1023},    {99, 3000, 1023},
        {99, 102398, 1023}, {98, 1024, 1024},   {98, 2046, 2046}, {98, 2047, 2047},    {98, 2048, 2047},
        {98, 3000, 2047},   {98, 102398, 2047}, {97, 3000, 3000}, {1, 102398, 101375}, {0, 102398, 102398},
    };
    for (const auto &row : rows) {
        const ListImage expected = ListImage().count(row.entry).add(filled(row.length).substr(0, row.kept));
        EXPECT_EQ(afterScan(closed(filled(row.length)), expected, row.entry), "") << row.length << " in " << row.entry;
    }
    EXPECT_EQ(
        afterScan(closed(filled(3000)) + closed("1"), ListImage().count(98).add(filled(2047)).add(ended("1")), 98), "");
    EXPECT_EQ(afterScan(closed(filled(3000)) + closed("1"), ListImage().count(99).add(filled(1023)), 99), "");
}

TEST(Scan, Keeps1024CharactersOfALastText)
{
    for (const size_t length : {1023U, 1024U, 1025U, 102390U}) {
        EXPECT_EQ(afterScan("1\r\n" + filled(length), {"1", filled(length).substr(0, 1024)}), "") << length;
        EXPECT_EQ(afterScan(filled(length), ListImage().count(99).add(filled(length).substr(0, 1023)), 99), "")
            << length;
    }
    EXPECT_EQ(afterScan(filled(102399), {filled(1024)}), "");
}

TEST(Scan, TakesTextsOfUpTo102400Characters)
{
    EXPECT_EQ(afterScan("1\r\n" + filled(102396), {"1", filled(1024)}), "");
    EXPECT_EQ(afterScan("1\r\n" + filled(102397), {"1", filled(1024)}), "");
    EXPECT_EQ(afterScan(closed(filled(102397)), {filled(102397)}), "");
    EXPECT_EQ(afterScan(closed(filled(102398)), {filled(102398)}), "");
}

TEST(Scan, ClearsTheListForAnyOtherText)
{
    const std::string tooLong = "1\r\n" + filled(102398);
    for (const char *const text : {static_cast<const char *>(nullptr), "", tooLong.c_str()}) {
        const GuardedRecord<AtParasList> list(0x5A);
        ATCodec_PreProc_Res_COPS5_ParaList(list, text);
        EXPECT_EQ(difference(ListImage(), *list.get()), "");
    }
    const GuardedRecord<AtParasList> list(0x5A);
    ATCodec_PreProc_Res_COPS5_ParaList(list, GuardedText(closed(filled(102399))));
    EXPECT_EQ(difference(ListImage(), *list.get()), "");
}

TEST(Scan, DoesNothingWithoutAList)
{
    const GuardedText text("1\r\n");
    ATCodec_PreProc_Res_COPS5_ParaList(nullptr, text);
    ATCodec_PreProc_Res_COPS5_ParaList(nullptr, nullptr);
    EXPECT_EQ(text.str(), "1\r\n");
}

} // namespace

#include <set>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <mainControl/parser.h>

#include "host/at/reports.h"

using namespace host::at;

namespace {

constexpr std::string_view kBreak = "\r\n";

/** What stands behind the line break of a row that begins a report. */
std::string_view textOf(const AtEndFlagRow &row)
{
    return std::string_view(row.flag).substr(kBreak.size());
}

bool endsIn(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

TEST(Reports, AreAllThatTheLibraryReads)
{
    std::set<std::string_view> read;
    for (const AtEndFlagRow &row : KoraWcdma_AtEndFlgTable) {
        if (row.result != AT_RES_RESULT_REPORT) continue;
        const std::string_view text = textOf(row);
        const std::string_view name = text.substr(0, text.find_first_of(":\r"));
        read.insert(name);
        if (endsIn(text, kBreak)) {
            EXPECT_TRUE(isReportWord(name)) << name;
            continue;
        }
        const Report *const report = reportNamed(name);
        ASSERT_NE(report, nullptr) << name;
        EXPECT_TRUE(report->isReadByLibrary) << name;
        EXPECT_EQ(report->hasBareColon, endsIn(text, ":")) << name;
    }
    EXPECT_EQ(read.size(), 44U);
    for (const Report &report : allReports())
        EXPECT_EQ(report.isReadByLibrary, read.contains(report.name)) << report.name;
}

TEST(Reports, StandThereOnce)
{
    std::set<std::string_view> names;
    for (const Report &report : allReports())
        EXPECT_TRUE(names.insert(report.name).second) << report.name;
}

TEST(Reports, AreNamesOrWords)
{
    EXPECT_EQ(reportNamed("+CEREG")->kind, ReportKind::Registration);
    EXPECT_EQ(reportNamed("+CMT")->kind, ReportKind::TextLine);
    EXPECT_EQ(reportNamed("+CUSD")->kind, ReportKind::Text);
    for (const char *none : {"+CSQ", "+cereg", "RING", "+RING", "+ZEND", ""})
        EXPECT_EQ(reportNamed(none), nullptr) << none;
    for (const char *word : {"RING", "NO CARRIER", "+ZEND"})
        EXPECT_TRUE(isReportWord(word)) << word;
    for (const char *other : {"ring", "OK", "+CEREG", "+CEREG: 1", ""})
        EXPECT_FALSE(isReportWord(other)) << other;
}

} // namespace

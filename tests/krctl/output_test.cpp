#include <gtest/gtest.h>

#include "krctl/output/chart.h"
#include "krctl/output/failure.h"
#include "krctl/output/progress.h"
#include "krctl/output/render.h"

namespace {

using namespace krctl;

Report sample()
{
    Report report;
    Section &modem = report.addSection("Modem", "modem");
    modem.add(textField("Name", "name", "Example")).add(textField("Firmware", "firmware", ""));
    modem.addCode("Radio", "radio_state", 1, "full on");
    modem.add(flagField("Roaming", "is_roaming", false));
    Field level = numberField("Level", "level_dbm", -70, "dBm");
    level.quality = Quality{"level_quality", "very weak", Tone::Bad, 0.5};
    report.addSection("", "").add(level);
    Section &list = report.addSection("", "rows");
    list.kind = Section::Kind::Table;
    list.rows = {{textField("Who", "who", "one"), numberField("How many", "count", 7)},
                 {textField("Who", "who", "another"), numberField("How many", "count", 12)}};
    return report;
}

Terminal plainTerminal(int columns)
{
    Terminal terminal;
    terminal.columns = columns;
    return terminal;
}

class Output : public testing::Test {
  protected:
    static void SetUpTestSuite() { takeLocale(); }
};

TEST_F(Output, TableAlignsAndGroups)
{
    EXPECT_EQ(asTable(sample(), plainTerminal(50)), "Modem\n"
                                                    "  Name      Example\n"
                                                    "  Firmware  -\n"
                                                    "  Radio     full on\n"
                                                    "  Roaming   no\n"
                                                    "\n"
                                                    "Level     -70 dBm  ##########----------  very weak\n"
                                                    "\n"
                                                    "Who      How many\n"
                                                    "one             7\n"
                                                    "another        12\n");
}

TEST_F(Output, AListIsOneOfTexts)
{
    Report report;
    report.addSection("", "").add(listField("Numbers", "numbers", {"one", "t\nwo"})).add(listField("None", "none", {}));
    EXPECT_EQ(asTable(report, plainTerminal(40)), "Numbers  one, t?wo\nNone     -\n");
    EXPECT_EQ(asKeyValue(report), "numbers.0=one\nnumbers.1=t\\nwo\n");
    EXPECT_NE(asJson(report, "x", true).find(R"("numbers":["one","t\nwo"],"none":[])"), std::string::npos);
}

TEST_F(Output, NoLineIsWiderThanItsTerminal)
{
    Report report = sample();
    report.sentence = "A sentence that is rather long and has to be broken somewhere between its words.";
    report.notes.emplace_back("A note that is just as long, and that has to be broken between its words as well.");
    report.sections.back().rows[0][0].value = "a name of an operator that no table has room for, however wide it is";
    for (const int columns : {36, 40, 80, 200}) {
        const std::string text = asTable(report, plainTerminal(columns));
        for (size_t start = 0; start < text.size();) {
            const size_t end = text.find('\n', start);
            EXPECT_LE(displayWidth(text.substr(start, end - start)), columns) << text.substr(start, end - start);
            start = end + 1;
        }
    }
}

TEST_F(Output, ColoursOnlyWhereTheyAreWanted)
{
    Terminal terminal = plainTerminal(60);
    EXPECT_EQ(asTable(sample(), terminal).find('\033'), std::string::npos);
    terminal.hasColour = true;
    EXPECT_NE(asTable(sample(), terminal).find("\033[1mModem\033[0m"), std::string::npos);
    EXPECT_NE(asTable(sample(), terminal).find("\033[31mvery weak\033[0m"), std::string::npos);
}

TEST_F(Output, BarsAreBlocksWhereTheTerminalHasThem)
{
    Terminal terminal;
    EXPECT_EQ(bar(0.5, 4, terminal), "##--");
    EXPECT_EQ(bar(-1, 3, terminal), "---");
    EXPECT_EQ(bar(7, 3, terminal), "###");
    terminal.hasBlocks = true;
    EXPECT_EQ(bar(0.5, 4, terminal), "██░░");
}

TEST_F(Output, KeyValueHasOneLineAValue)
{
    Report report = sample();
    report.sections[0].fields[0].value = "two\nlines\\";
    EXPECT_EQ(asKeyValue(report), "modem.name=two\\nlines\\\\\n"
                                  "modem.firmware=\n"
                                  "modem.radio_state=full_on\n"
                                  "modem.radio_state_code=1\n"
                                  "modem.is_roaming=false\n"
                                  "level_dbm=-70\n"
                                  "level_quality=very_weak\n"
                                  "rows.0.who=one\n"
                                  "rows.0.count=7\n"
                                  "rows.1.who=another\n"
                                  "rows.1.count=12\n");
}

TEST_F(Output, JsonIsTyped)
{
    EXPECT_EQ(asJson(sample(), "a command", true),
              R"({"schema":"krctl/1","command":"a command","data":{"modem":{"name":"Example","firmware":null,)"
              R"("radio_state":"full_on","radio_state_code":1,"is_roaming":false},"level_dbm":-70,)"
              R"("level_quality":"very_weak","rows":[{"who":"one","count":7},{"who":"another","count":12}]}})"
              "\n");
}

TEST_F(Output, ACodeHasAWordAndItsNumber)
{
    Report report;
    Section &section = report.addSection("", "");
    section.addCode("Known", "known", 2, "two words");
    section.addCode("Without a word", "wordless", 77, "");
    section.addCode("Not told", "untold", std::nullopt, "");
    EXPECT_EQ(asTable(report, plainTerminal(60)), "Known           two words\n"
                                                  "Without a word  code 77\n"
                                                  "Not told        -\n");
    EXPECT_EQ(asJson(report, "c", true),
              R"({"schema":"krctl/1","command":"c","data":{"known":"two_words","known_code":2,"wordless":null,)"
              R"("wordless_code":77,"untold":null,"untold_code":null}})"
              "\n");
}

TEST_F(Output, JsonTakesAnyBytes)
{
    Report report;
    report.addSection("", "").add(textField("Name", "name", "a\xFF\"\x01z"));
    EXPECT_EQ(asJson(report, "c", true),
              "{\"schema\":\"krctl/1\",\"command\":\"c\",\"data\":{\"name\":\"a\xEF\xBF\xBD\\\"\\u0001z\"}}\n");
}

TEST_F(Output, FailuresAreJsonAndKeyValueToo)
{
    const Failure failure{kLocked, "pin_required", "What.", "Where", "Next.", {}};
    EXPECT_EQ(asJson(failure, "c", true), R"({"schema":"krctl/1","command":"c","error":{"code":"pin_required",)"
                                          R"("what":"What.","where":"Where","next":"Next.","exit":3}})"
                                          "\n");
    EXPECT_EQ(asKeyValue(failure), "error.code=pin_required\nerror.exit=3\nerror.what=What.\nerror.where=Where\n"
                                   "error.next=Next.\n");
}

TEST_F(Output, MembersOfAJsonObject)
{
    EXPECT_EQ(jsonText(R"({"family":"mtk","n":1})", "family"), "mtk");
    EXPECT_EQ(jsonText(R"({"family":"mtk","n":1})", "n"), std::nullopt);
    EXPECT_EQ(jsonText("no JSON", "family"), std::nullopt);
}

TEST_F(Output, WhatCouldSteerATerminalIsNotShown)
{
    EXPECT_EQ(printable("a\033[2Jb\r\n\xFFz"), "a?[2Jb???z");
    EXPECT_EQ(printable("Zürich 中国"), "Zürich 中国");
}

TEST_F(Output, WidthsAreColumnsNotBytes)
{
    EXPECT_EQ(displayWidth("Zürich"), 6);
    EXPECT_EQ(displayWidth("中国"), 4);
    EXPECT_EQ(padded("ü", 3), "ü  ");
    EXPECT_EQ(paddedLeft("中", 3), " 中");
    EXPECT_EQ(shortened("中国移动通信", 7), "中国...");
    EXPECT_EQ(shortened("short", 5), "short");
    EXPECT_EQ(wrapped("one two three", 7), (std::vector<std::string>{"one two", "three"}));
}

TEST_F(Output, IdentifiersAreWordsWithoutBlanks)
{
    EXPECT_EQ(identifier("ready, PIN lock off"), "ready_pin_lock_off");
    EXPECT_EQ(identifier("LTE"), "lte");
}

TEST_F(Output, ChartMovesTheNewestToTheRight)
{
    Chart chart(-100, -60, "dBm");
    for (const double value : {-100.0, -90.0, -80.0, -60.0})
        chart.add(value);
    chart.add(std::nullopt);
    Terminal terminal = plainTerminal(20);
    EXPECT_EQ(chart.drawn(4, terminal), (std::vector<std::string>{" -60 dBm |       # ", "         |       # ",
                                                                  "         |      ## ", "-100 dBm |     ### "}));
    terminal.hasBlocks = true;
    const auto lines = chart.drawn(2, terminal);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], " -60 dBm │       █ ");
    EXPECT_EQ(lines[1], "-100 dBm │    ▁▄██ ");
}

TEST_F(Output, ProgressSaysHowLongAtMost)
{
    using std::chrono::seconds;
    EXPECT_EQ(progressLine("Scanning", seconds(45), seconds(180), plainTerminal(60)),
              "Scanning  #######-------------------  45 s of at most 180 s");
    EXPECT_LE(displayWidth(progressLine("Scanning", seconds(45), seconds(180), plainTerminal(20))), 19);
}

} // namespace

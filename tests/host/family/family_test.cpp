#include <set>
#include <string>

#include <gtest/gtest.h>

#include "host/family/family.h"

using namespace host::family;

namespace {

TEST(Families, AreNamedOnce)
{
    std::set<std::string_view> words;
    std::set<Family> families;
    for (const Row &row : kRows) {
        EXPECT_TRUE(words.insert(row.word).second) << row.word;
        EXPECT_TRUE(families.insert(row.family).second) << row.word;
        EXPECT_EQ(familyNamed(row.word), row.family);
        EXPECT_EQ(nameOf(row.family), row.word);
    }
    for (const char *none : {"auto", "", "Qualcomm"})
        EXPECT_EQ(familyNamed(none), std::nullopt) << none;
}

TEST(Families, HaveTheNumbersOfTheLibrary)
{
    EXPECT_EQ(rowOfPlatform(PF_QC_LTE).word, "qualcomm");
    EXPECT_EQ(rowOfPlatform(PF_MTK).word, "mtk");
    EXPECT_EQ(rowOfPlatform(PF_TSP).word, "tsp");
    EXPECT_EQ(rowOfPlatform(PF_SPEADTRUM).word, "spreadtrum");
    for (const int32_t none : {0, 2, -1, 4711})
        EXPECT_EQ(rowOfPlatform(none).word, "default") << none;
}

TEST(Families, AreKnownByTheirManufacturer)
{
    const struct {
        const char *reply;
        Family family;
    } rows[] = {
        {"\r\nQUALCOMM INCORPORATED\r\n\r\nOK\r\n", Family::Qualcomm},
        {"MediaTek Inc.", Family::Mtk},
        {"mtk", Family::Mtk},
        {"Spreadtrum", Family::Spreadtrum},
        {"\r\nUNISOC\r\n\r\nOK\r\n", Family::Spreadtrum},
        {"TSP", Family::Tsp},
        {"Spreadtrum TSP-1", Family::Spreadtrum},
        {"\r\nERROR\r\n", Family::Default},
        {"", Family::Default},
    };
    for (const auto &row : rows)
        EXPECT_EQ(familyOfManufacturer(row.reply), row.family) << row.reply;
    for (const Row &row : kRows)
        EXPECT_EQ(familyOfManufacturer(row.manufacturer), row.family) << "as the simulator answers";
}

TEST(Families, AreOfferedWithTheDefaultLast)
{
    EXPECT_EQ(kChoices.back().family, Family::Default);
    std::string words;
    for (size_t i = 0; i + 1 < kChoices.size(); ++i)
        words.append(i == 0 ? "" : ", ").append(kChoices[i].word);
    EXPECT_EQ(choicesText("one of ", " or ", "!").data(), "one of " + words + " or default!");
}

} // namespace

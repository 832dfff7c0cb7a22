#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "host/at/text.h"

using namespace host::at;

namespace {

using Views = std::vector<std::string_view>;

TEST(NamedLines, BeginWithASignANameAndAColon)
{
    const struct {
        const char *line;
        const char *name; ///< nullptr: none
        const char *parameters = "";
    } rows[] = {
        {"+CREG: 2,1", "+CREG", "2,1"},
        {"^MODE:5,4", "^MODE", "5,4"},
        {"#X:  y ", "#X", "y "},
        {"$ARME:", "$ARME", ""},
        {"+CON_STATUS:1", "+CON_STATUS", "1"},
        {"", nullptr},
        {"+: 1", nullptr},
        {"CREG: 1", nullptr},
        {"+CME ERROR: 10", nullptr},
        {"+CREG", nullptr},
        {"&X: 1", nullptr},
    };
    for (const auto &row : rows) {
        const auto named = namedLine(row.line);
        ASSERT_EQ(named.has_value(), row.name != nullptr) << row.line;
        if (!named) continue;
        EXPECT_EQ(named->name, row.name);
        EXPECT_EQ(named->parameters, row.parameters);
    }
}

TEST(Fields, StandBetweenCommasOutsideQuotes)
{
    EXPECT_EQ(fields(""), Views{""});
    EXPECT_EQ(fields("1"), Views{"1"});
    EXPECT_EQ(fields(" 1 ,, \"a, b\" ,"), (Views{"1", "", "\"a, b\"", ""}));
    EXPECT_EQ(fields("\"open,1"), Views{"\"open,1"});
}

TEST(Names, AgreeInAllButCaseAndSign)
{
    EXPECT_TRUE(isSameName("+HVER", "^hver"));
    EXPECT_TRUE(isSameName("HVER", "#HVER"));
    EXPECT_FALSE(isSameName("+HVER", "+HVERX"));
    EXPECT_FALSE(isSameName("", "+X"));
}

} // namespace

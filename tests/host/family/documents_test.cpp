// What cannot read the table of families is held to it: manual pages, schema, scripts and documents.
#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "host/family/family.h"

using namespace host::family;

namespace {

std::string contentsOf(const std::string &file)
{
    std::ifstream stream(SOURCE_DIR "/" + file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/** What stands between two texts; empty if they are not there. */
std::string between(const std::string &text, const std::string &begin, const std::string &end)
{
    const size_t found = text.find(begin);
    if (found == std::string::npos) return {};
    const size_t from = found + begin.size();
    const size_t to = text.find(end, from);
    return to == std::string::npos ? "" : text.substr(from, to - from);
}

/** The words of families in a text, in its order. */
std::vector<std::string> wordsIn(const std::string &text)
{
    static const std::regex word("[A-Za-z]+");
    std::vector<std::string> words;
    for (std::sregex_iterator found(text.begin(), text.end(), word), end; found != end; ++found)
        if (familyNamed(found->str())) words.push_back(found->str());
    return words;
}

std::vector<std::string> allWords()
{
    std::vector<std::string> words;
    words.reserve(kChoices.size());
    for (const Row &row : kChoices)
        words.emplace_back(row.word);
    return words;
}

TEST(Documents, OfferEachFamilyOnce)
{
    const struct {
        const char *file;
        const char *begin;
        const char *end;
    } rows[] = {
        {"host/at_server/kr-at-server.8", "The family of the modem:\n", "It decides"},
        {"krctl/krctl.schema.json", "\"family\": {\"enum\": [", "]"},
    };
    for (const auto &row : rows) {
        const std::vector<std::string> words = wordsIn(between(contentsOf(row.file), row.begin, row.end));
        EXPECT_EQ(words, allWords()) << row.file << " behind " << row.begin;
    }
}

TEST(Documents, TheReadMeNamesTheMakers)
{
    const std::string makers = between(contentsOf("README.md"), "by chipset platform (", ")");
    for (const Row &row : kRows)
        EXPECT_NE(makers.find(row.family == Family::Default ? row.word : row.manufacturer), std::string::npos)
            << row.word;
}

TEST(Documents, TheSimulatorsTableSaysWhatTheRowsSay)
{
    const auto refusal = [](Refusal how) {
        switch (how) {
        case Refusal::Error:
            return "ERROR";
        case Refusal::CmeError:
            return "+CME ERROR: operation not supported";
        case Refusal::NotSupport:
            return "not support";
        }
        return "";
    };
    std::string table;
    for (const Row &row : kChoices)
        table.append("| `")
            .append(row.word)
            .append("` | ")
            .append(row.manufacturer)
            .append(" | ")
            .append(std::string(refusal(row.refusal)) + " |\n");
    EXPECT_NE(contentsOf("docs/simulator.md").find("\n|---|---|---|\n" + table + '\n'), std::string::npos) << table;
}

} // namespace

// The parser, the codec and the search of many characters at a time against plain ones.

#include <algorithm>
#include <iterator>

#include <gtest/gtest.h>

#include "fuzz/fuzz.h"
#include "tests/support/choices.h"
#include "tests/support/codec_comparison.h"
#include "tests/support/parser_comparison.h"
#include "tests/support/saved_tables.h"

namespace {

Reached reached;

void parse(const std::string &text, Choices &choices)
{
    compareParses(text, choices.oneIn(8) ? 0xA5 : 0, reached);
}

/** A host may put anything into the table, a few rows at a time. */
void parseWithOtherTable(const std::string &text, Choices &choices)
{
    static constexpr int32_t kResults[] = {1, 2, 12, 0, 257, -1};
    static constexpr int32_t kIdentifiers[] = {89, 1, 71, 12304, 65536 + 89, -1, 0};
    static constexpr int32_t kSizes[] = {50, 50, 50, 0, 1, 6, 49, 51, INT32_MIN, INT32_MAX};
    const SavedTables saved;
    for (size_t rows = 1 + choices.below(4); rows > 0; --rows) {
        AtEndFlagRow &row = KoraWcdma_AtEndFlgTable[choices.below(50)];
        if (!choices.oneIn(4)) setField(row.flag, choices.text());
        row.result = kResults[choices.below(std::size(kResults))];
        row.identifier = kIdentifiers[choices.below(std::size(kIdentifiers))];
        row.hasParas = static_cast<int32_t>(choices.below(3));
    }
    KoraWcdma_AtEndFlgTableSize = kSizes[choices.below(std::size(kSizes))];
    parse(text, choices);
}

void parseScan(const std::string &text, Choices & /*choices*/)
{
    compareOperatorScan(text, reached);
}

void search(const std::string &text, Choices &choices)
{
    compareSearch(text, choices.text());
}

void countFields(const std::string &text, Choices &choices)
{
    compareFieldCount(text, choices.text());
}

void takeField(const std::string &text, Choices &choices)
{
    const auto index = static_cast<int32_t>(choices.below(256)) - 2;
    const std::string token = choices.text();
    compareField(text, index, token.empty() ? "," : token);
}

void countCommas(const std::string &text, Choices & /*choices*/)
{
    compareCommaCount(text);
}

template <Split split>
void splitUp(const std::string &text, Choices &choices)
{
    static constexpr int32_t kPresets[] = {0, 0, 0, 0, 1, 5, 42, 97, 98, 99, 100, 101, -1};
    compareSplit(split, text, kPresets[choices.below(std::size(kPresets))]);
}

template <Rewrite rewrite>
void rewriteIt(const std::string &text, Choices & /*choices*/)
{
    compareRewrite(rewrite, text);
}

void searchCharacter(const std::string &text, Choices &choices)
{
    compareSearch(text, std::string(1, static_cast<char>(1 + choices.below(255))));
}

using Comparison = void (*)(const std::string &, Choices &);
constexpr Comparison kComparisons[] = {parse,
                                       parse,
                                       parseWithOtherTable,
                                       parseScan,
                                       search,
                                       countFields,
                                       takeField,
                                       countCommas,
                                       splitUp<Split::AtSemicolons>,
                                       splitUp<Split::AtCommas>,
                                       splitUp<Split::AtScanMarkers>,
                                       splitUp<Split::AtLines>,
                                       rewriteIt<Rewrite::Line>,
                                       rewriteIt<Rewrite::Groups>,
                                       rewriteIt<Rewrite::Restore>,
                                       searchCharacter};

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    testing::GTEST_FLAG(break_on_failure) = true;
    Choices choices({data, size});
    const Comparison comparison = kComparisons[choices.below(std::size(kComparisons))];
    const std::string text = choices.text();
    comparison(text, choices);
    return 0;
}

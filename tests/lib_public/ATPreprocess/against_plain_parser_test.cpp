// Generated replies, parsed by the library and by the plain parser.

#include <random>

#include <gtest/gtest.h>

#include "tests/support/parser_comparison.h"
#include "tests/support/rounds.h"
#include "tests/support/saved_tables.h"

namespace {

const std::vector<std::string> kFragments = {
    "\r\n",
    "\r\n",
    "\r\n",
    "\r\n",
    "\r\n\r\n",
    "\r\nOK\r\n",
    "\r\n\r\nOK\r\n",
    "\r\nERROR\r\n",
    "\"",
    "\"",
    ": ",
    ":",
    " ",
    ",",
    ";",
    "+CREG: ",
    "OK",
    "CMT:",
    "CDS:",
    "CBM:",
    "ZCLAS:",
    "\r\n+CLIP: ",
    "+CEREG: ",
    "AT+CSQ\r",
    "junk",
    "1",
    "23",
    "x",
    "\r",
    "\n",
    "\r\n> ",
    "+A: 1\r\n",
    "+AB: 2",
    "+A: ",
    "\"a, b\"",
    "\r\nok\r\n",
    "\r\nOK\r",
    "\r\n+CEREG:",
    "+ZEND\r\n",
    "\r\n+ZMCON",
    "\r\nnot ",
    "support",
    "\xC3\xA9",
    "\x01",
    "129",
    "\r\n+CME ERROR:",
    "\r\n\r\n",
    "\r\n\"\r\n",
};

/** Replies and tables from one seed. */
class Generator {
  public:
    explicit Generator(unsigned seed) : random_(seed) {}

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }
    bool oneIn(int n) { return below(n) == 0; }
    template <typename Choices>
    auto pick(const Choices &choices)
    {
        return *(std::begin(choices) + below(static_cast<int>(std::size(choices))));
    }

    std::string fragment()
    {
        if (oneIn(60)) return std::string(static_cast<size_t>(1020 + below(10)), pick(std::string("ab")));
        if (oneIn(60)) return std::string(static_cast<size_t>(27 + below(5)), pick(std::string("ab")));
        if (!oneIn(5)) return pick(kFragments);
        const AtEndFlagRow &row = pick(KoraWcdma_AtEndFlgTable);
        return {row.flag, strnlen(row.flag, sizeof row.flag)};
    }

    std::string junk(int most)
    {
        std::string text;
        for (int i = below(most + 1); i > 0; --i)
            text += fragment();
        return text;
    }

    /** A reply in standard framing, so that long bodies are common too. */
    std::string framed()
    {
        const std::string name = oneIn(8) ? std::string(static_cast<size_t>(27 + below(5)), 'N') : "+A";
        std::string text = oneIn(2) ? "AT+A?\r" : "";
        for (int i = below(6); i > 0; --i) {
            text += "\r\n";
            text += oneIn(4) ? junk(2) : oneIn(6) ? name + "B: 1" : name + ": " + junk(2);
            if (!oneIn(8)) text += "\r\n";
        }
        return text + (oneIn(6) ? fragment() : "\r\n\r\nOK\r\n") + (oneIn(4) ? junk(3) : "");
    }

    std::string reply() { return oneIn(2) ? framed() : junk(14); }

    void changeTable()
    {
        for (int i = 1 + below(6); i > 0; --i) {
            const std::string flag = oneIn(3) ? "\r\n+CLIP: " : oneIn(6) ? "\"" + pick(kFragments) : junk(2);
            KoraWcdma_AtEndFlgTable[oneIn(3) ? below(50) : below(6)] =
                endFlag(flag.size() > 32 ? flag.substr(flag.size() - 32) : flag, pick(kResults), pick(kIdentifiers),
                        pick(kColumns));
        }
        KoraWcdma_AtEndFlgTableSize = oneIn(4) ? pick(kSizes) : 50;
    }

    /** Changes as little as a row can be changed. */
    void nudgeTable()
    {
        AtEndFlagRow &row = KoraWcdma_AtEndFlgTable[oneIn(2) ? below(6) : below(50)];
        switch (below(5)) {
        case 0:
            row.flag[below(sizeof row.flag)] = pick(std::string("\r\nO+: \"") + '\0');
            break;
        case 1:
            row.result = pick(kResults);
            break;
        case 2:
            row.identifier = pick(kIdentifiers);
            break;
        case 3:
            row.hasParas = pick(kColumns);
            break;
        default:
            KoraWcdma_AtEndFlgTableSize = pick(kSizes);
        }
    }

  private:
    static constexpr int32_t kResults[] = {1, 1, 1, 2, 12, 0, 257, -1};
    static constexpr int32_t kIdentifiers[] = {89, 89, 1, 71, 12304, 65536 + 89, -1, 0};
    static constexpr int32_t kColumns[] = {0, 0, 0, 1, 1, 1, 2, -1};
    static constexpr int32_t kSizes[] = {0, 1, 6, 26, 49, 51, 5000, -1, -2147483647 - 1, 2147483647};

    std::mt19937 random_;
};

TEST(AgainstPlainParser, RepliesWithTheTableAtLoad)
{
    Generator generator(1);
    Reached reached;
    const int replies = rounds(9000);
    for (int i = 0; i < replies && !HasFatalFailure(); ++i)
        compareParses(generator.reply(), generator.oneIn(50) ? 0xA5 : 0, reached);
    EXPECT_GT(reached.codes[0], replies / 3);
    EXPECT_GT(reached.codes[19], replies / 3);
    if (replies >= 9000) {
        EXPECT_EQ(reached.identifiers.size(), 49U) << "two of the fifty rows share an identifier";
    }
    EXPECT_GT(reached.bodies, replies / 18);
    EXPECT_GT(reached.editedFurther, replies / 9);
}

TEST(AgainstPlainParser, RepliesWithChangedTables)
{
    const SavedTables saved;
    Generator generator(2);
    Reached reached;
    const int tables = rounds(1000);
    for (int i = 0; i < tables && !HasFatalFailure(); ++i) {
        const SavedTables atLoad;
        generator.changeTable();
        for (int k = 0; k < 8 && !HasFatalFailure(); ++k) {
            compareParses(generator.reply(), generator.oneIn(50) ? 0xA5 : 0, reached);
            if (generator.oneIn(3)) generator.nudgeTable();
        }
    }
    EXPECT_GT(reached.codes[0], tables * 3);
    EXPECT_GT(reached.codes[19], tables);
    EXPECT_GT(reached.bodies, tables / 4);
    if (tables >= 1000) {
        EXPECT_GT(reached.callerLines, 5);
    }
}

TEST(AgainstPlainParser, OperatorScans)
{
    Generator generator(3);
    Reached reached;
    const int scans = rounds(3000);
    for (int i = 0; i < scans && !HasFatalFailure(); ++i) {
        compareOperatorScan(generator.reply(), reached);
    }
    EXPECT_GT(reached.codes[0], scans / 6);
    EXPECT_LT(reached.codes[0], scans - scans / 6);
}

} // namespace

// Rows of modem replies through the whole road: a test a row, which fails with what krctl makes of it instead.
//
//     road_replies_test [GTEST OPTIONS] FILE.json...
//
// Debatable rows that come out otherwise are skipped tests. At the end stands how many rows of each class are right.

#include <cstdio>
#include <exception>
#include <map>
#include <memory>
#include <set>

#include <gtest/gtest.h>

#include "tests/road/replies/road.h"

namespace {

using replies::Road;
using replies::Row;

struct Count {
    int tried = 0;
    int right = 0;
};

struct Counts {
    Count certain;
    Count debatable;
};

std::map<std::string, Counts> &countsByClass()
{
    static std::map<std::string, Counts> counts;
    return counts;
}

/** One for each family, since rows only change what its modem answers. */
std::map<std::string, std::unique_ptr<Road>> &roads()
{
    static std::map<std::string, std::unique_ptr<Road>> all;
    return all;
}

std::vector<std::string> differencesOn(const std::string &family, const Row &row)
{
    if (row.isPluggedIn) return differences(row, Road(family, row).travel(row));
    std::unique_ptr<Road> &road = roads()[family];
    if (!road) road = std::make_unique<Road>(family, row);
    return differences(row, road->travel(row));
}

class RowTest : public testing::Test {
  public:
    explicit RowTest(const Row &row) : row_(row) {}

    void TestBody() override
    {
        std::map<std::string, std::string> familiesByDifference;
        for (const std::string &family : row_.families)
            for (const std::string &difference : differencesOn(family, row_))
                familiesByDifference[difference] += ' ' + family;
        std::string all;
        for (const auto &[difference, families] : familiesByDifference)
            all += "\n  " + difference + "  (" + families.substr(1) + ')';

        Counts &counts = countsByClass()[row_.className()];
        Count &count = row_.isDebatable ? counts.debatable : counts.certain;
        ++count.tried;
        if (all.empty()) ++count.right;
        if (row_.isDebatable && !all.empty()) GTEST_SKIP() << "debatable " << row_.id << all;
        EXPECT_TRUE(all.empty()) << row_.id << all;
    }

  private:
    const Row &row_;
};

void printCounts()
{
    Counts sum;
    const auto print = [](const std::string &name, const Counts &counts) {
        std::printf("%-20s %3d of %3d right", name.c_str(), counts.certain.right, counts.certain.tried);
        if (counts.debatable.tried > 0)
            std::printf(", debatable %d of %d", counts.debatable.right, counts.debatable.tried);
        std::printf("\n");
    };
    for (const auto &[name, counts] : countsByClass()) {
        print(name, counts);
        sum.certain.tried += counts.certain.tried;
        sum.certain.right += counts.certain.right;
        sum.debatable.tried += counts.debatable.tried;
        sum.debatable.right += counts.debatable.right;
    }
    print("all", sum);
}

void addTests(const std::vector<Row> &rows)
{
    std::set<std::string> ids;
    for (const Row &row : rows) {
        if (!ids.insert(row.id).second) throw std::runtime_error("used twice: " + row.id);
        testing::RegisterTest(row.className().c_str(), row.name().c_str(), nullptr, nullptr, __FILE__, __LINE__,
                              [&row]() -> testing::Test * { return new RowTest(row); });
    }
}

} // namespace

int main(int argc, char **argv)
{
    constexpr int kUsageError = 2;
    testing::InitGoogleTest(&argc, argv);
    std::vector<Row> rows;
    try {
        for (int i = 1; i < argc; ++i)
            for (Row &row : replies::readRows(argv[i]))
                rows.push_back(std::move(row));
        addTests(rows);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "road_replies_test: %s\n", error.what());
        return kUsageError;
    }
    if (rows.empty()) {
        std::fprintf(stderr, "usage: road_replies_test [GTEST OPTIONS] FILE.json...\n");
        return kUsageError;
    }
    const int status = RUN_ALL_TESTS();
    roads().clear();
    printCounts();
    return status;
}

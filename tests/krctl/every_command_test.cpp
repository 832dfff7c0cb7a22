// Every command on every family, in its three forms; and every function of the API, as the library's own log says.
#include <fstream>
#include <set>
#include <sstream>

#include <unistd.h>

#include <gtest/gtest.h>

#include "host/at/rights.h"
#include "tests/krctl/bench.h"
#include "tests/krctl/json_check.h"

namespace {

struct Row {
    std::string words;
    std::string input{};                 ///< on standard input
    std::set<std::string> refusedBy{};   ///< families whose modems do not know it: exit status 1
    std::set<std::string> notOnFamily{}; ///< families that have no such thing: exit status 6
};

const std::vector<Row> kRows{
    {"status"},
    {"device info"},
    {"device serial", "", {}, {"tsp"}},
    {"sim status"},
    {"sim lock --pin-stdin", "1234\n"},
    {"sim change-pin --pin-stdin", "1234\n1234\n"},
    {"sim unlock-pin --pin-stdin", "1234\n"},
    {"sim unlock --pin-stdin", "1234\n"},
    {"sim unblock --pin-stdin", "12345678\n1234\n"},
    {"net status"},
    {"net status --by-selection"},
    {"net home"},
    {"net scan"},
    {"net scan --vendor"},
    {"net select 46001 --act lte"},
    {"net auto"},
    {"net prefer"},
    {"net prefer wcdma-first"},
    {"net prefer lte", "", {}, {"mtk"}},
    {"net prefer auto --reset-bands"},
    {"net register-mode manual 46000"},
    {"net register-mode deregister 46000"},
    {"net register-mode auto"},
    {"net auto"},
    {"signal"},
    {"signal --watch --count 2 --interval 50"},
    {"cell"},
    {"lock status"},
    {"facility query SC"},
    {"facility set AO on --pin-stdin", "0000\n"},
    {"facility set AO off --pin-stdin", "0000\n"},
    {"data profile set internet --type ipv4v6 --cid 2"},
    {"data profile show"},
    {"data detach"},
    {"data attach"},
    {"power off"},
    {"power status"},
    {"power on"},
    {"settings echo off"},
    {"settings errors text"},
    {"settings reports calls place"},
    {"settings reports packet place"},
    {"settings reports lte place"},
    {"settings auto-attach on"},
    {"settings operation-mode"},
    {"settings operation-mode 1"},
    {"settings sysconfig", "", {"qualcomm", "mtk", "default"}},
    {"settings sysconfig 2 0 1 3", "", {"qualcomm", "mtk", "default"}},
    {"settings lte-preference 1"},
    {"settings named STANDBY 1"},
    {"settings fota 1"},
    {"settings ramdump-host 192.168.1.1", "", {"qualcomm", "mtk", "tsp", "spreadtrum"}},
    {"settings static-address 192.168.1.2", "", {"qualcomm", "mtk", "tsp", "spreadtrum"}},
    {"at AT+CGMI"},
};

std::vector<std::string> wordsOf(const std::string &text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

std::vector<std::string> with(std::vector<std::string> words, const char *option)
{
    words.emplace_back(option);
    return words;
}

std::set<std::string> keysOf(const std::string &keyValue)
{
    std::set<std::string> keys;
    std::istringstream lines(keyValue);
    for (std::string line; std::getline(lines, line);)
        if (!line.empty()) keys.insert(line.substr(0, line.find('=')));
    return keys;
}

class EveryCommand : public testing::TestWithParam<const char *> {
  protected:
    int expectedStatus(const Row &row) const
    {
        if (row.notOnFamily.contains(GetParam())) return 6;
        return row.refusedBy.contains(GetParam()) ? 1 : 0;
    }
};

constexpr const char *kScenario = R"({"facilities": {"AO": {"code": "0000"}}})";

TEST_P(EveryCommand, InThreeForms)
{
    const Bench bench(GetParam(), kScenario);
    for (const Row &row : kRows) {
        SCOPED_TRACE(row.words);
        const int expected = expectedStatus(row);
        const std::vector<std::string> words = wordsOf(row.words);
        const bool isStream = row.words.find("--watch") != std::string::npos;

        const Result json = bench.krctl(with(words, "--json"), row.input);
        EXPECT_EQ(json.status, expected) << json.errors;
        const std::string &object = expected == 0 ? json.output : json.errors;
        EXPECT_EQ(isStream ? violationOfLines(object) : violationOf(object), "");

        const Result forPeople = bench.krctl(words, row.input);
        EXPECT_EQ(forPeople.status, expected) << forPeople.errors;
        EXPECT_EQ(forPeople.output.empty(), expected != 0);
        EXPECT_EQ(forPeople.output.find('\033'), std::string::npos) << "no terminal, no escape";
        EXPECT_EQ(forPeople.errors.empty(), expected == 0) << forPeople.errors;

        const Result keyValue = bench.krctl(with(words, "--key-value"), row.input);
        EXPECT_EQ(keyValue.status, expected) << keyValue.errors;
        if (expected == 0 && !isStream) {
            EXPECT_EQ(keysOf(keyValue.output), flatKeysOf(json.output));
        }
        if (expected != 0) {
            EXPECT_EQ(valueAt(json.errors, "/error/exit"), std::to_string(expected));
            EXPECT_NE(forPeople.errors.find("\n  next"), std::string::npos) << forPeople.errors;
            EXPECT_NE(keyValue.errors.find("error.exit=" + std::to_string(expected) + '\n'), std::string::npos);
        }
    }
    const std::set<std::string> sent = bench.sent();
    EXPECT_GT(sent.size(), kRows.size() / 2);
    for (const std::string &command : sent)
        EXPECT_FALSE(host::at::rightsFor(command).has(host::at::Right::Raw)) << command;
}

/** What takes more than the rights of the group. */
const std::set<std::string> kNotForTheGroup{"settings fota 1", "settings ramdump-host 192.168.1.1"};

TEST_P(EveryCommand, ForMembersOfTheGroup)
{
    if (geteuid() != 0) GTEST_SKIP() << "only root can become others";
    const Bench bench(GetParam(), kScenario, "0", {"--group", processes::kOneGroup});
    std::set<std::string> refused;
    for (const Row &row : kRows) {
        const Result result = bench.krctlAsMember(with(wordsOf(row.words), "-J"), row.input);
        const bool isRefused = valueAt(result.errors, "/error/code") == "not_allowed";
        if (isRefused) refused.insert(row.words);
        EXPECT_EQ(result.status, isRefused ? 1 : expectedStatus(row)) << row.words << result.errors;
    }
    EXPECT_EQ(refused, kNotForTheGroup);
}

/** "KR_getPower-in", "KR_Sendusb0IPtoMarvell OK !" */
std::set<std::string> functionsIn(const std::string &log)
{
    std::set<std::string> functions;
    for (size_t at = log.find("KR_"); at != std::string::npos; at = log.find("KR_", at + 1)) {
        const size_t end = log.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_", at);
        functions.insert(log.substr(at, end - at));
    }
    // The one that logs nothing itself is known by its wrapper.
    if (log.find("at+cops=5 in") != std::string::npos) functions.insert("KR_getPlmnInfo");
    return functions;
}

TEST(EveryFunction, IsReallyCalled)
{
    const Bench bench("default", R"({"facilities": {"AO": {"code": "0000"}}, "network_lock": {"active": true},
                                     "sim": {"pin_enabled": true, "pin_tries": 0}})");
    const auto done = [&](const std::string &words, const std::string &input) {
        const Result result = bench.krctl(wordsOf(words), input);
        EXPECT_EQ(result.status, 0) << words << ": " << result.errors;
    };
    done("sim unblock --pin-stdin", "12345678\n1234\n");
    done("power off", "");
    bench.happen("unplug 1"); // after which the SIM asks for its PIN
    ASSERT_TRUE(processes::eventually([&] {
        return bench.krctl({"sim", "status"}).output.find("PIN required") != std::string::npos;
    }));
    done("sim unlock --pin-stdin", "1234\n");
    done("lock unlock --pin-stdin", "12345678\n");
    done("sim unlock-pin --pin-stdin", "1234\n");
    for (const Row &row : kRows)
        (void)bench.krctl(wordsOf(row.words), row.input);
    processes::Child watch({KRCTL, "watch"}, bench.environment());
    EXPECT_TRUE(watch.waitForOutput("LTE")) << watch.errors();
    watch.signal(SIGINT);
    EXPECT_EQ(watch.wait(), 130);

    const std::set<std::string> called = functionsIn(bench.libraryLog());
    std::ifstream exports(SOURCE_DIR "/mainControl/exports.txt");
    for (std::string name; std::getline(exports, name);)
        EXPECT_TRUE(!name.starts_with("KR_") || called.count(name) == 1) << name;
}

INSTANTIATE_TEST_SUITE_P(Families, EveryCommand, testing::ValuesIn(kFamilies),
                         [](const auto &family) { return std::string(family.param); });

} // namespace

// Preference modes to the values of each command, and back. The tables are not inverses of each other.

#include <map>

#include <gtest/gtest.h>

#include "tests/support/guarded_text.h"
#include "tests/support/log_lines.h"

namespace {

using scripted::Failure;
using scripted::framed;
using scripted::Host;
using scripted::kFailures;
using scripted::kPlatforms;
using scripted::Log;
using scripted::OnPlatform;

constexpr int32_t kUntouched = 77;

struct ForwardRow {
    int32_t mode;
    int32_t zsnt[3];
    int32_t sysconfig[2];
    int32_t erat[2];
};

const ForwardRow kForward[] = {
    {0, {0, 0, 0}, {2, 0}, {2, 0}},         {1, {0, 0, 1}, {2, 1}, {2, 2}},   {2, {0, 0, 2}, {2, 2}, {2, 2}},
    {3, {1, 0, 0}, {13, 0}, {0, 0}},        {4, {2, 0, 0}, {14, 0}, {1, 0}},  {5, {0, 1, 2}, {2, 0}, {2, 2}},
    {6, {0, 0, 2}, {2, 0}, {2, 2}},         {7, {0, 0, 2}, {2, 0}, {2, 2}},   {8, {0, 0, 2}, {2, 0}, {2, 2}},
    {9, {6, 0, 0}, {17, 0}, {2, 2}},        {10, {0, 0, 2}, {2, 0}, {2, 2}},  {11, {7, 0, 0}, {20, 0}, {2, 2}},
    {12, {0, 0, 3}, {2, 0}, {2, 2}},        {13, {0, 0, 2}, {15, 0}, {2, 2}}, {14, {0, 0, 2}, {18, 1}, {2, 2}},
    {15, {0, 0, 2}, {18, 2}, {2, 2}},       {16, {0, 0, 2}, {19, 4}, {2, 2}}, {17, {0, 0, 2}, {19, 7}, {2, 2}},
    {18, {0, 0, 2}, {20, 5}, {2, 2}},       {19, {0, 0, 2}, {20, 6}, {2, 2}}, {20, {0, 0, 2}, {18, 0}, {2, 2}},
    {21, {0, 0, 2}, {2, 6}, {2, 2}},        {22, {0, 0, 2}, {2, 2}, {2, 2}},  {23, {0, 0, 2}, {2, 0}, {2, 2}},
    {24, {0, 0, 2}, {2, 0}, {2, 2}},        {99, {0, 0, 2}, {2, 0}, {2, 2}},  {256, {0, 0, 2}, {2, 0}, {2, 2}},
    {-1, {0, 0, 2}, {2, 0}, {2, 2}},        {-22, {0, 0, 2}, {2, 0}, {2, 2}}, {INT32_MAX, {0, 0, 2}, {2, 0}, {2, 2}},
    {INT32_MIN, {0, 0, 2}, {2, 0}, {2, 2}},
};

TEST(Forward, GivesTheValuesOfEachCommandOnEveryPlatform)
{
    for (const int32_t platform : kPlatforms) {
        for (const ForwardRow &row : kForward) {
            SCOPED_TRACE(row.mode);
            const OnPlatform on(platform);
            Host host;
            const GuardedRecord<int32_t> p1(0x5A), p2(0x5A), p3(0x5A), rat(0x5A), pref(0x5A);
            EXPECT_EQ(translatePrefmodeToZsnt(row.mode, p1.get(), p2.get(), p3.get()), UNI_ERROR_SUCCESS);
            EXPECT_EQ(*p1.get(), row.zsnt[0]);
            EXPECT_EQ(*p2.get(), row.zsnt[1]);
            EXPECT_EQ(*p3.get(), row.zsnt[2]);
            const GuardedRecord<SysconfigPara> values(0x5A);
            EXPECT_EQ(translatePrefmodeToSysconfig(row.mode, values.get()), UNI_ERROR_SUCCESS);
            EXPECT_EQ(values.get()->nMode, row.sysconfig[0]);
            EXPECT_EQ(values.get()->nAcqorder, row.sysconfig[1]);
            EXPECT_EQ(values.get()->nRoam, 1);
            EXPECT_EQ(values.get()->nSrvdomain, 3);
            EXPECT_EQ(translatePrefmodeToErat(row.mode, rat.get(), pref.get()), UNI_ERROR_SUCCESS);
            EXPECT_EQ(*rat.get(), row.erat[0]);
            EXPECT_EQ(*pref.get(), row.erat[1]);
            EXPECT_EQ(Log::of(host), Log());
        }
    }
}

struct ZsntRow {
    int32_t p1, p2, p3, flag;
    uint32_t code;
    int32_t mode;
};

const ZsntRow kZsnt[] = {
    {0, 0, 1, 0, 0, 1},
    {0, 0, 2, 0, 0, 2},
    {0, 0, 3, 0, 0, 12},
    {0, 0, 0, 0, 0, 0},
    {0, 0, 4, 0, 0, 0},
    {0, 0, -1, 0, 0, 0},
    {0, 0, INT32_MAX, 0, 0, 0},
    {1, 0, 0, 0, 0, 3},
    {1, 0, 3, 0, 0, 3},
    {2, 0, 0, 0, 0, 4},
    {2, 0, 2, 0, 0, 4},
    {3, 0, 0, 0, 1, kUntouched},
    {4, 0, 0, 0, 1, kUntouched},
    {5, 0, 1, 0, 1, kUntouched},
    {6, 0, 0, 0, 0, 9},
    {6, 2, 1, 0, 0, 9},
    {7, 0, 0, 0, 0, 11},
    {7, 0, 3, 0, 0, 11},
    {8, 0, 0, 0, 1, kUntouched},
    {9, 0, 2, 0, 1, kUntouched},
    {256, 0, 2, 0, 1, kUntouched},
    {-1, 0, 2, 0, 1, kUntouched},
    {INT32_MAX, 0, 2, 0, 1, kUntouched},
    {INT32_MIN, 0, 2, 0, 1, kUntouched},
    // Manual selection comes first, but only with the flag.
    {0, 1, 2, 1, 0, 5},
    {8, 1, 0, 1, 0, 5},
    {3, 1, 0, 1, 0, 5},
    {-1, 1, 0, 1, 0, 5},
    {0, 1, 2, 0, 0, 2},
    {8, 1, 0, 0, 1, kUntouched},
    {0, 1, 2, 2, 0, 2},
    {0, 1, 2, -1, 0, 2},
    {0, 0, 2, 1, 0, 2},
    {0, 2, 2, 1, 0, 2},
    {4, 0, 2, 1, 1, kUntouched},
};

TEST(Backward, Zsnt)
{
    for (const ZsntRow &row : kZsnt) {
        Host host;
        const GuardedRecord<int32_t> mode;
        *mode.get() = kUntouched;
        EXPECT_EQ(translateZsntToPrefmode(mode.get(), row.p1, row.p2, row.p3, row.flag), row.code) << row.p1;
        EXPECT_EQ(*mode.get(), row.mode) << row.p1 << "," << row.p2 << "," << row.p3 << " flag " << row.flag;
        EXPECT_EQ(Log::of(host), Log());
    }
}

TEST(Backward, SysconfigKnowsItsModesAndLeavesTheRest)
{
    const std::map<int32_t, std::map<int32_t, int32_t>> table = {
        {2, {{0, 0}, {6, 21}, {2, 22}}},
        {13, {{0, 3}}},
        {14, {{0, 4}}},
        {15, {{0, 13}}},
        {17, {{0, 9}}},
        {18, {{1, 14}, {2, 15}, {0, 20}}},
        {19, {{4, 16}, {7, 17}}},
        {20, {{5, 18}, {6, 19}, {0, 11}}},
    };
    std::vector<int32_t> modes = {INT32_MIN, INT32_MAX, 258, 99};
    for (int32_t mode = -2; mode < 24; ++mode)
        modes.push_back(mode);
    std::vector<int32_t> orders = {INT32_MIN, INT32_MAX, 256};
    for (int32_t order = -2; order < 11; ++order)
        orders.push_back(order);
    for (const int32_t mode : modes) {
        for (const int32_t order : orders) {
            Host host;
            const GuardedRecord<int32_t> result;
            *result.get() = kUntouched;
            const auto row = table.find(mode);
            const uint32_t code = row != table.end() ? UNI_ERROR_SUCCESS : UNI_ERROR_FALSE;
            int32_t value = kUntouched;
            if (row != table.end() && row->second.count(order) == 1) value = row->second.at(order);
            EXPECT_EQ(translateSysconfigToPrefmode(result.get(), mode, order), code) << mode << "," << order;
            EXPECT_EQ(*result.get(), value) << mode << "," << order;
            EXPECT_EQ(Log::of(host), Log());
        }
    }
}

struct EratRow {
    int32_t rat, pref;
    uint32_t code;
    int32_t mode;
};

const EratRow kErat[] = {
    {0, 0, 0, 3},
    {0, 2, 0, 3},
    {1, 0, 0, 4},
    {1, 2, 0, 4},
    {2, 2, 0, 2},
    {2, 0, 0, 0},
    {2, 1, 0, 0},
    {2, -1, 0, 0},
    {2, 3, 0, 0},
    {3, 0, 1, kUntouched},
    {3, 2, 1, kUntouched},
    {-1, 2, 1, kUntouched},
    {256, 2, 1, kUntouched},
    {INT32_MIN, 0, 1, kUntouched},
    {INT32_MAX, 0, 1, kUntouched},
};

void expectErat(const EratRow &row, int32_t flag, int32_t expectedMode, uint32_t expectedCode, const Log &log,
                Host &host)
{
    const GuardedRecord<int32_t> mode;
    *mode.get() = kUntouched;
    EXPECT_EQ(translateEratToPrefmode(mode.get(), row.rat, row.pref, flag), expectedCode);
    EXPECT_EQ(*mode.get(), expectedMode);
    EXPECT_EQ(Log::of(host), log);
}

TEST(Backward, EratAsksForTheSelectionOnlyWithTheFlag)
{
    struct Selection {
        const char *line;
        bool isManual;
    };
    const Selection selections[] = {{"1,2,\"46001\",7", true},
                                    {"1", true},
                                    {"0,2,\"46001\",7", false},
                                    {"4,2", false},
                                    {"-1", false},
                                    {"x", false}};
    for (const EratRow &row : kErat) {
        SCOPED_TRACE(std::to_string(row.rat) + "," + std::to_string(row.pref));
        {
            Host host;
            expectErat(row, 0, row.mode, row.code, Log(), host);
        }
        for (const Selection &selection : selections) {
            for (const int32_t flag : {1, 2, -1, INT32_MIN}) {
                const std::string reply = framed({(std::string("+COPS: ") + selection.line).c_str()});
                Host host;
                host.expect("AT+COPS?", 5000, reply);
                expectErat(row, flag, selection.isManual ? 5 : row.mode, selection.isManual ? 0 : row.code,
                           Log().parsed(reply, selection.line), host);
            }
        }
        for (const Failure &failure : kFailures) {
            Host host;
            play(host, {{"AT+COPS?", 5000, failure.reply}});
            expectErat(row, 1, row.mode, row.code, Log().failed(failure), host);
        }
        Host host;
        host.expect("AT+COPS?", 5000, "\r\nOK\r\n");
        expectErat(row, 1, row.mode, row.code, Log().ok(), host);
    }
}

} // namespace

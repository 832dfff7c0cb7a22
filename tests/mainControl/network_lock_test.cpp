// The lock of the modem: its state, its code, and the attempts left.

#include <gtest/gtest.h>

#include "tests/mainControl/api_dialogue.h"

namespace {

using namespace dialogue;
using scripted::framed;
using Values = std::vector<int32_t>;

constexpr Module api{scripted::kApiFileModule};
constexpr int32_t kMost = 2147483647;
constexpr int32_t kLeast = -2147483647 - 1;
const Values kPlainPlatforms = {0, PF_QC_LTE, 2, PF_TSP, 7};

const Reader kLockStatus = {
    "KR_getLockStatus",
    [](int32_t *const *out) { return KR_getLockStatus(out[0], out[1]); },
    2,
    {api("KR_getLockStatus-in")},
    "AT+ZSEC?",
    5000,
    [](const std::string &, const Values &values) -> Events {
        return {api("KR_getLockStatus-out-*pstatus:%d", values[0]), api("KR_getLockStatus-out-*pitems:%d", values[1]),
                api("KR_getLockStatus-return UNI_ERROR_SUCCESS")};
    },
    [](Failure) -> Events { return {api("KR_getLockStatus-return UNI_ERROR_FALSE")}; },
};

const Reader kHardLockStatus = {
    "KR_getHardLockStatus",
    [](int32_t *const *out) { return KR_getHardLockStatus(out[0], out[1]); },
    2,
    {api("KR_getHardLockStatus-in")},
    "AT+ZLOCK?",
    5000,
    [](const std::string &, const Values &values) -> Events {
        return {api("KR_getHardLockStatus-out-*pHardAuth:%d", values[0]),
                api("KR_getHardLockStatus-out-*pImsiAuth:%d", values[1]),
                api("KR_getHardLockStatus-return UNI_ERROR_SUCCESS")};
    },
    [](Failure) -> Events { return {api("KR_getHardLockStatus-return UNI_ERROR_FALSE")}; },
};

/** The attempts left, asked for with a command behind the line that names the platform, if there is one. */
Reader lefttimes(const char *command, const Events &platformLine, Values platforms)
{
    return {
        "KR_getLockLefttimes",
        [](int32_t *const *out) { return KR_getLockLefttimes(out[0]); },
        1,
        Events{api("KR_getLockLefttimes-in")} + platformLine,
        command,
        5000,
        [](const std::string &, const Values &values) -> Events {
            return {api("KR_getLockLefttimes-out-pLefttimes:%d", values[0]),
                    api("KR_getLockLefttimes-return UNI_ERROR_SUCCESS")};
        },
        [](Failure) -> Events { return {api("KR_getLockLefttimes-return UNI_ERROR_FALSE")}; },
        std::move(platforms),
    };
}

const Reader kLefttimesOnMtk =
    lefttimes("AT+ESMLCK?", {api("KR_getLockLefttimes-in-g_currentPlatform == PF_MTK")}, {PF_MTK});
const Reader kLefttimesOnSpreadtrum =
    lefttimes("AT+SPSIMLOCKINFO", {api("KR_getLockLefttimes-in-g_currentPlatform == PF_SPEADTRUM")}, {PF_SPEADTRUM});
const Reader kLefttimesOnOthers = lefttimes("AT+ZNCK?", {}, kPlainPlatforms);

Reading reading(const std::string &name, const std::string &paras, Values values)
{
    return {framed({(name + paras).c_str()}), paras, std::move(values)};
}

std::vector<Reading> pairsBehind(const std::string &name)
{
    return {
        reading(name, "2,1", {2, 1}),
        reading("", "2,1", {2, 1}),
        reading(name, "-1, \"7\",9", {-1, 7}),
        reading(name, "2147483647,-2147483648", {kMost, kLeast}),
        reading(name, "2", {2, kKept}),
        reading(name, "2,", {2, kKept}),
        reading(name, ",1", {1, kKept}), // a leading empty parameter leaves no trace
        reading(name, "none", {kKept, kKept}),
        {"\r\nOK\r\n", "", {kKept, kKept}},
        reading(name, "2,1," + filled(1019), {2, 1}),
        reading(name, "2,1," + filled(1020), {2, kKept}), // too long to be rewritten
    };
}

TEST(LockStatus, IsReadAsAPair)
{
    expectReadings(kLockStatus, pairsBehind("+ZSEC: "));
    expectReadings(kHardLockStatus, pairsBehind("+ZLOCK: "));
}

TEST(LockLefttimes, AreTheFirstNumber)
{
    expectReadings(kLefttimesOnOthers, {
                                           reading("+ZNCK: ", "5", {5}),
                                           reading("+ZNCK: ", "5,10", {5}),
                                           reading("+ZNCK: ", "5, 10", {5}),
                                           reading("", "0", {0}),
                                           reading("+ZNCK: ", "-5", {-5}),
                                           reading("+ZNCK: ", "\"5\"", {kKept}),
                                           reading("+ZNCK: ", ",5", {kKept}),
                                           {"\r\nOK\r\n", "", {kKept}},
                                       });
}

TEST(LockLefttimes, AreTheThirdNumberOfTheFirstGroupOnMediaTek)
{
    expectReadings(kLefttimesOnMtk, {
                                        reading("+ESMLCK: ", "(0,2,5,10),(1,1,4,9)", {5}),
                                        reading("+ESMLCK: ", "0,2,5,10", {5}),
                                        reading("+ESMLCK: ", "(0,2,5)", {5}),
                                        reading("+ESMLCK: ", "(0,2),(1,1,4,9)", {kKept}),
                                        reading("+ESMLCK: ", "none", {kKept}),
                                        {"\r\nOK\r\n", "", {kKept}},
                                        {framed({"+ESMLCK: 0,2,5,10", "+ESMLCK: 1,1,4,9"}), "0,2,5,10;1,1,4,9", {5}},
                                    });
}

TEST(LockLefttimes, AreTheCallersOnSpreadtrum)
{
    expectReadings(kLefttimesOnSpreadtrum, {
                                               {"\r\nOK\r\n", "", {kKept}},
                                               reading("+SPSIMLOCKINFO: ", "1,2,3,4", {kKept}),
                                           });
}

TEST(LockFailures, LeaveTheOutputs)
{
    for (const Reader *reader :
         {&kLockStatus, &kHardLockStatus, &kLefttimesOnMtk, &kLefttimesOnSpreadtrum, &kLefttimesOnOthers})
        expectFailures(*reader);
}

/** The lines of KR_setLockCode() around what it sends. */
Events lockCodeEntry(const std::string &code)
{
    return {api("KR_setLockCode-in"), api("KR_setLockCode-in-strcode%s", code)};
}
Event lockCodeExit(bool success)
{
    return api(success ? "KR_setLockCode-return UNI_ERROR_SUCCESS"
                       : "KR_setLockCode-return UNI_ERROR_FALSE-znckSet failed");
}

const char *const kCodes[] = {"12345678", "", "12\"34", "1,2", " ", "%d%s"};

TEST(LockCode, IsSentAsItIs)
{
    for (const int32_t platform : kPlatforms) {
        for (const char *code : kCodes) {
            SCOPED_TRACE(code);
            const std::string command = "AT+ZNCK=\"" + std::string(code) + "\"";
            const auto call = [&] { return KR_setLockCode(code); };
            EXPECT_EQ(play(platform, lockCodeEntry(code) + Events{ok(command, 10000), lockCodeExit(true)}, call),
                      UNI_ERROR_SUCCESS);
            for (const Failure failure : kFailures) {
                SCOPED_TRACE(nameOf(failure));
                const Events events =
                    lockCodeEntry(code) + Events{failing(failure, command, 10000), lockCodeExit(false)};
                EXPECT_EQ(play(platform, events, call), UNI_ERROR_FALSE);
            }
        }
    }
}

TEST(LockCode, OfAnyLengthIsSentThatACommandHolds)
{
    for (const size_t length : {19U, 20U, 39U, 40U, 90U, 91U, 99U, 100U, 254U, 255U, 512U, 1013U}) {
        const GuardedText code(filled(length));
        const Events events =
            lockCodeEntry(code.str()) + Events{ok("AT+ZNCK=\"" + code.str() + "\"", 10000), lockCodeExit(true)};
        EXPECT_EQ(play(PF_QC_LTE, events, [&] { return KR_setLockCode(code); }), UNI_ERROR_SUCCESS) << length;
    }
    ASSERT_EQ(argumentFor("AT+ZNCK=\"\"", kLongestCommand).size(), 1013U);
    for (const size_t length : {1014U, 2000U}) {
        const GuardedText code(filled(length));
        const Events events = lockCodeEntry(code.str()) + Events{lockCodeExit(false)};
        EXPECT_EQ(play(PF_QC_LTE, events, [&] { return KR_setLockCode(code); }), UNI_ERROR_FALSE) << length;
    }
}

struct ModeRow {
    int32_t status, items, mode;
};

const ModeRow kModes[] = {
    {2, 1, 2},     {2, 0, 1},      {2, 2, 3}, {2, 3, 4},   {2, 4, 0},   {2, -1, 0}, {2, kMost, 0},
    {0, 0, 5},     {0, 1, 0},      {0, 2, 0}, {0, 3, 0},   {0, -1, 0},  {1, 0, 0},  {1, 1, 0},
    {1, 2, 0},     {1, 3, 0},      {3, 0, 1}, {3, 1, 1},   {3, 2, 1},   {3, 3, 1},  {3, -1, 1},
    {3, kMost, 1}, {3, kLeast, 1}, {4, 0, 0}, {4, 1, 0},   {-1, 0, 0},  {-1, 1, 0}, {-2, 1, 0},
    {kMost, 1, 0}, {kLeast, 0, 0}, {5, 5, 0}, {256, 0, 0}, {258, 1, 0},
};

TEST(LockMode, IsThatOfStatusAndItems)
{
    for (const ModeRow &row : kModes) {
        scripted::Host host;
        EXPECT_EQ(translateLockStatusToMode(row.status, row.items), row.mode) << row.status << ',' << row.items;
        EXPECT_TRUE(host.log().empty());
    }
}

TEST(LockMode, IsThatOfWhatTheModemTells)
{
    for (const int32_t platform : kPlatforms) {
        for (const ModeRow &row : kModes) {
            const std::string paras = std::to_string(row.status) + "," + std::to_string(row.items);
            SCOPED_TRACE(paras);
            const GuardedRecord<int32_t> mode(kFill);
            const Events events = kLockStatus.entry + Events{ok("AT+ZSEC?", 5000, "+ZSEC: " + paras, paras)} +
                                  kLockStatus.success(paras, {row.status, row.items});
            EXPECT_EQ(play(platform, events, [&] { return getNetLockMode_Qualcomm(mode); }), UNI_ERROR_SUCCESS);
            EXPECT_EQ(*mode.get(), row.mode);
        }
    }
}

/** What the reply lacks counts as 0. */
TEST(LockMode, IsThatOfZerosWhereTheModemTellsLess)
{
    const struct {
        const char *paras;
        ModeRow row;
    } rows[] = {{"", {0, 0, 5}}, {"2", {2, 0, 1}}, {"3", {3, 0, 1}}, {"1", {1, 0, 0}}, {"x", {0, 0, 5}}};
    for (const auto &[paras, row] : rows) {
        SCOPED_TRACE(paras);
        const GuardedRecord<int32_t> mode(kFill);
        const Event exchange =
            *paras == '\0' ? ok("AT+ZSEC?", 5000) : ok("AT+ZSEC?", 5000, std::string("+ZSEC: ") + paras, paras);
        const Events events =
            kLockStatus.entry + Events{exchange} + kLockStatus.success(paras, {row.status, row.items});
        EXPECT_EQ(play(PF_QC_LTE, events, [&] { return getNetLockMode_Qualcomm(mode); }), UNI_ERROR_SUCCESS);
        EXPECT_EQ(*mode.get(), row.mode);
    }
}

TEST(LockMode, IsUntouchedWhereTheModemDoesNotTell)
{
    for (const int32_t platform : kPlatforms) {
        for (const Failure failure : kFailures) {
            SCOPED_TRACE(nameOf(failure));
            const GuardedRecord<int32_t> mode(kFill);
            const Events events =
                kLockStatus.entry + Events{failing(failure, "AT+ZSEC?", 5000)} + kLockStatus.failure(failure);
            EXPECT_EQ(play(platform, events, [&] { return getNetLockMode_Qualcomm(mode); }), UNI_ERROR_FALSE);
            EXPECT_EQ(*mode.get(), kKept);
        }
    }
}

} // namespace

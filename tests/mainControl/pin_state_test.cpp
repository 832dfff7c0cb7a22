// The translation of the SIM's state, and the card type that a TSP modem is asked for.

#include <gtest/gtest.h>

#include "tests/mainControl/pin_dialogue.h"

namespace {

using namespace dialogue;

const int32_t kCardTypeAtLoad = g_cardType;
const int32_t kCardTypeKnownAtLoad = g_cardTypeKnown;
const std::string kLastPinAtLoad = PinMemory::lastPin();

constexpr int32_t kMost = 2147483647;
constexpr int32_t kLeast = -2147483647 - 1;
constexpr int32_t kAnyLock[] = {0, 1, 2, -1, kMost, kLeast};
constexpr int32_t kAnyState[] = {0, 1, 2, 3, 4, 5, 6, 7, 10, -1, kMost, kLeast};

TEST(SimState, FollowsTheStateOfASimThatAnswers)
{
    for (const int32_t lock : kAnyLock) {
        scripted::Host host;
        EXPECT_EQ(translatePinStateFromSettingToMts(SETTING_PIN_UNREQUIRED, 0, lock),
                  lock == 0 ? KORA_MTS_SIM_PIN_DISABLED : KORA_MTS_SIM_PIN_ENABLED);
        EXPECT_EQ(translatePinStateFromSettingToMts(SETTING_PIN_REQUIRED, 0, lock), KORA_MTS_SIM_PIN_REQUIRED);
        EXPECT_EQ(translatePinStateFromSettingToMts(SETTING_PUK_REQUIRED, 0, lock), KORA_MTS_SIM_PUK_REQUIRED);
        EXPECT_EQ(translatePinStateFromSettingToMts(SETTING_PHNET_PIN_REQUIRED, 0, lock), KORA_MTS_SIM_ICERA_LOCKNET);
        for (const int32_t state : {3, 4, 5, 7, 8, 9, 10, 256, -1, -6, kMost, kLeast})
            EXPECT_EQ(translatePinStateFromSettingToMts(state, 0, lock), KORA_MTS_SIM_UNKNOWN) << state;
        EXPECT_TRUE(host.log().empty());
    }
}

TEST(SimState, FollowsTheReasonOfASimThatDoesNot)
{
    for (const int32_t lock : kAnyLock) {
        for (const int32_t state : kAnyState) {
            EXPECT_EQ(translatePinStateFromSettingToMts(state, 26, lock), KORA_MTS_SIM_FAILURE);
            EXPECT_EQ(translatePinStateFromSettingToMts(state, 27, lock), KORA_MTS_SIM_BUSY);
            EXPECT_EQ(translatePinStateFromSettingToMts(state, 28, lock), KORA_MTS_SIM_NOT_INSERTED);
            for (uint32_t result = 1; result < 64; ++result) {
                if (result >= 26 && result <= 28) continue;
                EXPECT_EQ(translatePinStateFromSettingToMts(state, result, lock), KORA_MTS_SIM_UNKNOWN) << result;
            }
            for (const uint32_t result : {256U, 256U + 26U, 65536U + 27U, 0x7fffffffU, 0x80000000U, 0xffffffffU})
                EXPECT_EQ(translatePinStateFromSettingToMts(state, result, lock), KORA_MTS_SIM_UNKNOWN) << result;
        }
    }
}

const struct {
    const char *paras;
    int32_t type;
} kCardModes[] = {{"1", 2},  {"1, 0", 2}, {"1,0", 2},   {"0", 1}, {"2", 1},
                  {"-1", 1}, {"", 1},     {"\"1\"", 1}, {"x", 1}, {"11", 1}};

/** Asks for the card type; each answer replaces what an earlier one left. */
TEST(CardType, IsAskedForAndKept)
{
    for (const int32_t platform : kPlatforms) {
        for (const int32_t earlier : {1, 2, 77}) {
            for (const auto &row : kCardModes) {
                SCOPED_TRACE(row.paras);
                const PinMemory memory;
                g_cardType = earlier;
                const std::string paras = row.paras;
                const Event mode =
                    paras.empty() ? ok("AT+CARDMODE", 5000) : ok("AT+CARDMODE", 5000, "+CARDMODE: " + paras, paras);
                EXPECT_EQ(play(platform, {mode}, isUSimTsp), row.type);
                EXPECT_EQ(g_cardType, row.type);
                EXPECT_EQ(g_cardTypeKnown, 0);
            }
        }
    }
}

TEST(CardType, IsThatOfASimWhenTheModemDoesNotTell)
{
    for (const int32_t earlier : {1, 2, 77}) {
        for (const Failure failure : kFailures) {
            SCOPED_TRACE(nameOf(failure));
            const PinMemory memory;
            g_cardType = earlier;
            EXPECT_EQ(play(PF_TSP, {failing(failure, "AT+CARDMODE", 5000)}, isUSimTsp), 1);
            EXPECT_EQ(g_cardType, earlier);
            EXPECT_EQ(g_cardTypeKnown, 0);
        }
    }
}

TEST(CardType, IsNotAskedForWhereTheHostKnowsIt)
{
    for (const int32_t known : {1, 2, -1, kMost, kLeast}) {
        for (const int32_t type : {0, 1, 2, 77, -1}) {
            const PinMemory memory;
            g_cardTypeKnown = known;
            g_cardType = type;
            EXPECT_EQ(play(PF_TSP, {}, isUSimTsp), type);
            EXPECT_EQ(g_cardType, type);
            EXPECT_EQ(g_cardTypeKnown, known);
        }
    }
}

TEST(CardType, IsAskedForAgainAsLongAsTheHostDoesNotSay)
{
    const PinMemory memory;
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(play(PF_TSP, {ok("AT+CARDMODE", 5000, "+CARDMODE: 1", "1")}, isUSimTsp), 2);
}

TEST(PinGlobals, AreAsTheyAreAtLoad)
{
    EXPECT_EQ(kCardTypeAtLoad, 1);
    EXPECT_EQ(kCardTypeKnownAtLoad, 0);
    EXPECT_EQ(kLastPinAtLoad, PinMemory::cleared());
}

} // namespace

#include <set>

#include <gtest/gtest.h>

#include <mainControl/api/pin.h>
#include <mainControl/platform.h>

#include "host/family/family.h"
#include "krctl/command_line/help.h"
#include "krctl/commands/service_provider.h"
#include "krctl/values/names.h"
#include "krctl/values/signal_values.h"
#include "krctl/values/sim_states.h"

namespace {

using namespace krctl;

TEST(SignalValues, CsqIsDbmInStepsOfTwo)
{
    EXPECT_EQ(rssiDbm(0), -113);
    EXPECT_EQ(rssiDbm(1), -111);
    EXPECT_EQ(rssiDbm(30), -53);
    EXPECT_EQ(rssiDbm(31), -51);
    for (const int32_t unknown : {-1, 32, 99, INT32_MIN})
        EXPECT_EQ(rssiDbm(unknown), std::nullopt) << unknown;
}

TEST(SignalValues, CesqIsTheLowerEndOfEachRange)
{
    EXPECT_EQ(rsrpDbm(1), -140);
    EXPECT_EQ(rsrpDbm(97), -44);
    EXPECT_EQ(rsrpDbm(98), std::nullopt);
    EXPECT_EQ(rsrpDbm(255), std::nullopt);
    EXPECT_EQ(rsrqDb(1), -19.5);
    EXPECT_EQ(rsrqDb(34), -3.0);
    EXPECT_EQ(rsrqDb(255), std::nullopt);
    EXPECT_EQ(rscpDbm(1), -120);
    EXPECT_EQ(rscpDbm(96), -25);
    EXPECT_EQ(rscpDbm(255), std::nullopt);
    EXPECT_EQ(ecnoDb(1), -24.0);
    EXPECT_EQ(ecnoDb(49), 0.0);
    EXPECT_EQ(ecnoDb(255), std::nullopt);
    EXPECT_EQ(rxlevDbm(1), -110);
    EXPECT_EQ(rxlevDbm(63), -48);
    EXPECT_EQ(rxlevDbm(99), std::nullopt);
}

TEST(SignalValues, WordsFollowTheLimits)
{
    struct Row {
        Measure measure;
        double value;
        const char *word;
    };
    for (const Row &row :
         {Row{Measure::Rssi, -65, "excellent"}, Row{Measure::Rssi, -66, "good"}, Row{Measure::Rssi, -96, "very weak"},
          Row{Measure::Rsrp, -80, "excellent"}, Row{Measure::Rsrp, -100, "fair"}, Row{Measure::Rsrp, -110, "weak"},
          Row{Measure::Rsrq, -11, "good"}, Row{Measure::Rsrq, -18.5, "very weak"}, Row{Measure::Sinr, 2, "weak"},
          Row{Measure::Sinr, 20, "excellent"}})
        EXPECT_EQ(qualityOf(row.measure, row.value).word, row.word) << row.value;
    EXPECT_EQ(qualityOf(Measure::Rsrp, std::nullopt).word, "");
}

TEST(SignalValues, BarsEndWithTheRange)
{
    EXPECT_EQ(qualityOf(Measure::Rssi, -113).fraction, 0);
    EXPECT_EQ(qualityOf(Measure::Rssi, -51).fraction, 1);
    EXPECT_EQ(qualityOf(Measure::Rssi, -82).fraction, 0.5);
    EXPECT_EQ(qualityOf(Measure::Rssi, -200).fraction, 0);
    EXPECT_EQ(qualityOf(Measure::Rssi, 0).fraction, 1);
}

TEST(Names, WordsAndCodesLeadToEachOther)
{
    for (const auto names : {kPlatforms, kRegistrations, kTechnologies, kOperatorStates, kEpsRejects, kRadioPowers,
                             kSelectionModes, kDomains, kRoaming, kKeyStates, kPreferences})
        for (const Name &name : names) {
            EXPECT_EQ(wordOf(names, name.code), name.word);
            EXPECT_EQ(codeOf(names, name.word), name.code);
        }
    EXPECT_EQ(wordOf(kRegistrations, 99), "");
    EXPECT_EQ(codeOf(kPlatforms, "nokia-3310"), std::nullopt);
}

TEST(Names, EveryCodeOfTheStandardHasAWord)
{
    for (int32_t state = 0; state <= 11; ++state)
        EXPECT_NE(wordOf(kRegistrations, state), "") << state;
    for (int32_t technology = 0; technology <= 13; ++technology)
        EXPECT_NE(wordOf(kTechnologies, technology), "") << technology;
}

TEST(SimStates, EveryRowIsOneOfAKind)
{
    std::set<std::string> words;
    std::set<int32_t> errors;
    for (const SimStateRow &row : simStateRows()) {
        EXPECT_TRUE(words.insert(row.word).second) << row.word;
        EXPECT_TRUE(row.error == 0 || errors.insert(row.error).second) << row.error;
        EXPECT_EQ(&rowOf(row.state), &row);
        EXPECT_EQ(std::string(row.next).empty(), row.state == SimState::Ready) << row.word;
    }
}

TEST(SimStates, AReadySimIsToldByItsLock)
{
    EXPECT_EQ(wordOf(SimState::Ready, true), "ready, PIN lock on");
    EXPECT_EQ(wordOf(SimState::Ready, false), "ready, PIN lock off");
    EXPECT_EQ(wordOf(SimState::Ready, std::nullopt), "ready");
    EXPECT_EQ(codeOf(SimState::Ready, true), KORA_MTS_SIM_PIN_ENABLED);
    EXPECT_EQ(codeOf(SimState::Ready, false), KORA_MTS_SIM_PIN_DISABLED);
    EXPECT_EQ(codeOf(SimState::Ready, std::nullopt), std::nullopt);
    EXPECT_EQ(codeOf(SimState::PukRequired, std::nullopt), KORA_MTS_SIM_PUK_REQUIRED);
    EXPECT_EQ(codeOf(SimState::Puk2Required, std::nullopt), std::nullopt) << "the library takes it for the PUK";
}

TEST(Names, AFamilyHasThePreferencesThatItsCommandTellsApart)
{
    EXPECT_TRUE(hasPreference(PF_QC_LTE, 12));
    EXPECT_TRUE(hasPreference(0, 9));
    EXPECT_TRUE(hasPreference(PF_TSP, 9));
    EXPECT_FALSE(hasPreference(PF_SPEADTRUM, 12));
    EXPECT_TRUE(hasPreference(PF_MTK, 4));
    EXPECT_FALSE(hasPreference(PF_MTK, 9));
}

TEST(Names, HelpSaysWhichFamiliesHaveLockCategories)
{
    const std::string help = helpFor("lock status");
    for (const host::family::Row &row : host::family::kRows) {
        const bool isSaid = help.find("(family " + std::string(row.word) + ')') != std::string::npos;
        EXPECT_EQ(isSaid, row.lockStateIsModemsOwnNumber) << row.word;
    }
}

TEST(ServiceProvider, OperatorsStandBehindTwoTags)
{
    EXPECT_EQ(operatorListOf("A305800364F000FFFF"), "64F000");
    EXPECT_EQ(operatorListOf("A308800664F00013F010"), "64F00013F010");
    for (const char *none : {"", "A3", "A305", "A305810364F000", "FFFFFFFF", "A3ZZ"})
        EXPECT_EQ(operatorListOf(none), "") << none;
}

TEST(ServiceProvider, OperatorsHaveTwoOrThreeDigitsOfTheirOwn)
{
    EXPECT_EQ(operatorCodes("460F00310410"), (std::vector<std::string>{"46000", "310104"}));
    EXPECT_EQ(operatorCodes("FFFFFF460F01"), (std::vector<std::string>{"46001"}));
    EXPECT_TRUE(operatorCodes("460F0").empty());
}

} // namespace

// What a modem told is shown, what it did not tell is named, and it is left as it was.
#include <csignal>

#include <gtest/gtest.h>

#include "tests/krctl/bench.h"
#include "tests/krctl/json_check.h"

namespace {

/** Whether one of the notes has this in it. */
bool isNoted(const Result &result, const std::string &text)
{
    return valueAt(result.output, "/data/notes").find(text) != std::string::npos;
}

TEST(Silence, CostsTwoTimeOutsOfAKindAndNothingThatWasRead)
{
    const Bench bench("qualcomm", R"({"faults": [{"command": "AT+CGMM", "lose_final": true},
                                                 {"command": "AT+CGMR", "lose_final": true},
                                                 {"command": "AT+CGSN", "lose_final": true}]})");
    const Result status = bench.krctl({"-J", "status"});
    EXPECT_EQ(status.status, 0) << status.errors;
    EXPECT_EQ(violationOf(status.output), "");
    EXPECT_EQ(valueAt(status.output, "/data/modem/manufacturer"), "Qualcomm");
    EXPECT_EQ(valueAt(status.output, "/data/modem/imei"), "null");
    EXPECT_EQ(valueAt(status.output, "/data/network/operator"), "Kora Mobile") << "another kind is asked";
    EXPECT_TRUE(isNoted(status, "Not answered in time: model, firmware.")) << status.output;
    EXPECT_TRUE(isNoted(status, "Not asked after so much silence: IMEI, state of the radio.")) << status.output;
    EXPECT_EQ(bench.libraryLog().find("KR_getIMEI-in"), std::string::npos);
}

TEST(Gone, WhatWasReadBeforeIsShown)
{
    const Bench bench("mtk", R"({"faults": [{"command": "AT+COPS?", "unplug": {"offset": 0}}]})");
    const Result status = bench.krctl({"-J", "status"});
    EXPECT_EQ(status.status, 5) << status.errors;
    EXPECT_EQ(violationOf(status.output), "");
    EXPECT_EQ(violationOf(status.errors), "");
    EXPECT_EQ(valueAt(status.errors, "/error/code"), "no_port");
    EXPECT_EQ(valueAt(status.output, "/data/modem/manufacturer"), "MediaTek");
    EXPECT_EQ(valueAt(status.output, "/data/sim/state"), "ready_pin_lock_off");
    EXPECT_EQ(valueAt(status.output, "/data/network/operator"), "null");
    EXPECT_TRUE(isNoted(status, "Not asked any more: operator (AT+COPS?)")) << status.output;
}

TEST(Reasons, ASimThatWaitsIsOneOfThem)
{
    const Bench bench("spreadtrum", R"({"sim": {"pin_enabled": true}})");
    const Result sim = bench.krctl({"-J", "sim", "status"});
    EXPECT_EQ(sim.status, 0) << sim.errors;
    EXPECT_EQ(valueAt(sim.output, "/data/state_text"), "SIM PIN");
    EXPECT_EQ(valueAt(sim.output, "/data/own_numbers"), "[]");
    EXPECT_TRUE(isNoted(sim, "Told only once the SIM is unlocked: IMSI, ICCID, own number.")) << sim.output;
    EXPECT_TRUE(isNoted(sim, "Enter the PIN with \\\"krctl sim unlock\\\".")) << sim.output;
    EXPECT_NE(bench.krctl({"sim", "status"}).output.find("PIN lock        -\n"), std::string::npos);
}

class LeftAsItWas : public testing::TestWithParam<const char *> {};

TEST_P(LeftAsItWas, ByReadingTheNetwork)
{
    const Bench bench(GetParam());
    for (const char *mode : {"0", "1", "2"}) {
        const std::string set = std::string("AT+CREG=") + mode;
        EXPECT_EQ(bench.krctl({"at", set}).status, 0);
        const Result status = bench.krctl({"-J", "net", "status"});
        EXPECT_EQ(status.status, 0) << status.errors;
        EXPECT_EQ(violationOf(status.output), "");
        EXPECT_NE(valueAt(status.output, "/data/registration/location_area"), "null") << status.output;
        EXPECT_TRUE(bench.krctl({"at", "AT+CREG?"}).output.starts_with(std::string("+CREG: ") + mode));
    }
    EXPECT_EQ(bench.krctl({"at", "AT+COPS=3,1"}).status, 0);
    EXPECT_EQ(bench.krctl({"net", "status", "--by-selection"}).status, 0);
    EXPECT_TRUE(bench.krctl({"at", "AT+COPS?"}).output.starts_with("+COPS: 0,1,"));
}

TEST_P(LeftAsItWas, ByAWatchThatEnds)
{
    const Bench bench(GetParam());
    EXPECT_EQ(bench.krctl({"at", "AT+CEREG=1"}).status, 0);
    processes::Child watch({KRCTL, "watch", "-J"}, bench.environment());
    ASSERT_TRUE(watch.waitForOutput("\"event\":\"port\"")) << watch.errors(); // it listens
    bench.happen("coverage off");
    EXPECT_TRUE(watch.waitForOutput(R"("domain":"circuit","state":"searching")")) << watch.output();
    bench.happen("coverage on");
    watch.signal(SIGINT);
    EXPECT_EQ(watch.wait(), 130);
    EXPECT_EQ(violationOfLines(watch.output()), "");
    EXPECT_NE(bench.krctl({"at", "AT+CREG?"}).output.find("0,"), std::string::npos);
    for (const auto &[command, mode] :
         {std::pair{"AT+CREG?", "0,"}, std::pair{"AT+CGREG?", "0,"}, std::pair{"AT+CEREG?", "1,"}}) {
        const std::string line = bench.krctl({"at", command}).output;
        const size_t colon = line.find(": ");
        EXPECT_EQ(line.substr(colon == std::string::npos ? 0 : colon + 2, 2), mode) << command << ": " << line;
    }
}

INSTANTIATE_TEST_SUITE_P(Families, LeftAsItWas, testing::ValuesIn(kFamilies),
                         [](const auto &family) { return std::string(family.param); });

TEST(Selection, NamesATechnologyOrNone)
{
    const Bench bench("default");
    const Result both = bench.krctl({"-J", "net", "select", "46000", "--act", "lte", "--no-act"});
    EXPECT_EQ(both.status, 2);
    EXPECT_EQ(valueAt(both.errors, "/error/code"), "usage");
    const Result any = bench.krctl({"-J", "net", "select", "46000", "--no-act"});
    EXPECT_EQ(any.status, 0) << any.errors;
    EXPECT_EQ(violationOf(any.output), "");
    EXPECT_EQ(valueAt(any.output, "/data/technology_code"), "null");
}

} // namespace

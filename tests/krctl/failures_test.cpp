// How commands fail: the exit statuses, and what is said.
#include <csignal>

#include <gtest/gtest.h>

#include "tests/krctl/bench.h"
#include "tests/krctl/json_check.h"

namespace {

/** What happened, where, and what to do next. */
void expectThreeSentences(const Result &result)
{
    EXPECT_TRUE(result.errors.starts_with("krctl: ")) << result.errors;
    EXPECT_NE(result.errors.find("\n  where"), std::string::npos) << result.errors;
    EXPECT_NE(result.errors.find("\n  next"), std::string::npos) << result.errors;
    EXPECT_EQ(result.output, "");
}

TEST(Failures, NoServer)
{
    const Result forPeople = krctlAlone({"status"});
    EXPECT_EQ(forPeople.status, 5);
    expectThreeSentences(forPeople);
    EXPECT_NE(forPeople.errors.find("/nonexistent/at.sock"), std::string::npos);
    const Result json = krctlAlone({"-J", "status"});
    EXPECT_EQ(json.status, 5);
    EXPECT_EQ(violationOf(json.errors), "");
    EXPECT_EQ(valueAt(json.errors, "/error/code"), "no_server");
    EXPECT_EQ(valueAt(json.errors, "/command"), "status");
}

TEST(Failures, UsageNeedsNoServer)
{
    for (const std::vector<std::string> &words :
         {std::vector<std::string>{"-J", "stauts"}, {"-J", "net", "select"}, {"-J", "status", "--platform", "nokia"}}) {
        const Result result = krctlAlone(words);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(violationOf(result.errors), "");
        EXPECT_EQ(valueAt(result.errors, "/error/code"), "usage");
    }
    EXPECT_EQ(krctlAlone({"status"}, {{"KR_PLATFORM", "nokia"}}).status, 2);
    expectThreeSentences(krctlAlone({"stauts"}));
}

TEST(Failures, TextsThatWouldBeASecondCommandAreNotSent)
{
    const Bench bench("default");
    for (const std::vector<std::string> &words : {std::vector<std::string>{"data", "profile", "set", "1\";+CFUN=0"},
                                                  {"data", "profile", "set", "net\\"},
                                                  {"data", "profile", "set", "net", "--address", "1\";+CFUN=0"},
                                                  {"settings", "named", "STANDBY\";+CFUN=0", "1"},
                                                  {"settings", "static-address", "192.168.1.2;+CFUN=0"},
                                                  {"net", "select", "46001\";+CFUN=0"},
                                                  {"net", "register-mode", "manual", "46001\";+CFUN=0"},
                                                  {"net", "register-mode", "auto", "1\";+CFUN=0"},
                                                  {"facility", "query", "S\""}}) {
        const Result result = bench.krctl(words);
        EXPECT_EQ(result.status, 2) << words.back();
        expectThreeSentences(result);
    }
    for (const std::string &command : bench.sent())
        EXPECT_EQ(command.find("+CFUN=0"), std::string::npos) << command;
}

TEST(Failures, UsageIsToldInTheFormThatWasAskedFor)
{
    struct Row {
        std::vector<std::string> words;
        const char *command;
    };
    for (const Row &row : {Row{{"-J", "--bogus"}, ""}, Row{{"status", "--bogus", "--json"}, "status"},
                           Row{{"--platform", "mtk", "-J", "status", "now"}, "status"},
                           Row{{"-J", "status", "--", "x"}, "status"}, Row{{"-J", "signal", "--interval"}, "signal"}}) {
        const Result result = krctlAlone(row.words);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(violationOf(result.errors), "");
        EXPECT_EQ(valueAt(result.errors, "/command"), row.command);
    }
    EXPECT_TRUE(krctlAlone({"status", "--bogus", "-K"}).errors.starts_with("error.code=usage\n"));
    EXPECT_TRUE(krctlAlone({"status", "--", "-J"}).errors.starts_with("krctl: "));
}

TEST(Failures, UnpluggedPort)
{
    Bench bench("qualcomm");
    bench.happen("unplug");
    Result result;
    ASSERT_TRUE(processes::eventually([&] {
        result = bench.krctl({"-J", "status"});
        return result.status != 0;
    }));
    EXPECT_EQ(result.status, 5) << result.errors;
    EXPECT_EQ(violationOf(result.errors), "");
    EXPECT_EQ(valueAt(result.errors, "/error/code"), "no_port");
    bench.happen("plug");
    EXPECT_TRUE(processes::eventually([&] { return bench.krctl({"status"}).status == 0; }));
}

TEST(Failures, NoAnswerInTime)
{
    const Bench bench("mtk", R"({"faults": [{"command": "AT+CGMI", "lose_final": true}]})");
    const Result result = bench.krctl({"-J", "at", "AT+CGMI", "--timeout", "1"});
    EXPECT_EQ(result.status, 4) << result.errors;
    EXPECT_EQ(violationOf(result.errors), "");
    EXPECT_EQ(valueAt(result.errors, "/error/code"), "timed_out");
}

TEST(Failures, TheModemRefuses)
{
    const Bench bench("default");
    const Result raw = bench.krctl({"at", "AT+NONSENSE"});
    EXPECT_EQ(raw.status, 1);
    EXPECT_EQ(raw.output, "ERROR\n") << "the reply is data all the same";
    EXPECT_NE(raw.errors.find("The modem refused to carry the command out (ERROR)."), std::string::npos) << raw.errors;
    const Result profile = bench.krctl({"at", "AT+CGDCONT=99,\"IP\",\"x\"", "-J"});
    EXPECT_EQ(profile.status, 1);
    EXPECT_EQ(violationOf(profile.output), "");
    EXPECT_EQ(violationOf(profile.errors), "");
}

TEST(Failures, RawSecretsAreRefused)
{
    const Bench bench("default");
    const Result refused = bench.krctl({"at", "AT+CPIN=1234"});
    EXPECT_EQ(refused.status, 2);
    expectThreeSentences(refused);
    EXPECT_EQ(bench.krctl({"at", "AT+CLCK=\"AO\",1,\"9999\"", "--force"}).status, 3) << "forced, the modem decides";
    EXPECT_EQ(bench.krctl({"at", "AT+CLCK=\"SC\",2"}).output, "+CLCK: 0\nOK\n");
}

TEST(Failures, NotOnThisPlatform)
{
    const Bench bench("mtk");
    const Result result = bench.krctl({"net", "prefer", "lte"});
    EXPECT_EQ(result.status, 6);
    expectThreeSentences(result);
    EXPECT_EQ(bench.krctl({"--platform", "qualcomm", "device", "serial"}).output, "Serial number  789012\n")
        << "the command line knows better than the server";
}

TEST(Failures, NoSimIsNoReasonToFail)
{
    const Bench bench("qualcomm", R"({"sim": {"present": false}})");
    const Result status = bench.krctl({"-J", "status"});
    EXPECT_EQ(status.status, 0) << status.errors;
    EXPECT_EQ(violationOf(status.output), "");
    EXPECT_EQ(valueAt(status.output, "/data/sim/state"), "no_sim");
    EXPECT_EQ(valueAt(status.output, "/data/sim/pin_tries_left"), "null");
    EXPECT_EQ(bench.krctl({"sim", "unlock", "--pin-stdin"}, "1234\n").status, 1);
}

TEST(Failures, InterruptedScanLeavesTheServerClean)
{
    const Bench bench("qualcomm", "{}", "10"); // a scan of two minutes
    processes::Child scan({KRCTL, "net", "scan"}, bench.environment());
    ASSERT_TRUE(
        processes::eventually([&] { return bench.libraryLog().find("KR_scanNetwork-in") != std::string::npos; }));
    scan.signal(SIGINT);
    EXPECT_EQ(scan.wait(), 130);
    EXPECT_EQ(scan.errors(), "krctl:   Interrupted.\n");
    EXPECT_EQ(scan.output(), "");
    const Result next = bench.krctl({"power", "status"});
    EXPECT_EQ(next.status, 0) << next.errors;
    EXPECT_EQ(next.output, "Radio  on\n");
}

TEST(Failures, OutputThatCannotBeWrittenIsNoSuccess)
{
    const Bench bench("qualcomm");
    processes::Child full({"sh", "-c", "exec " KRCTL " power status >/dev/full"}, bench.environment());
    EXPECT_EQ(full.wait(), 1);
    EXPECT_NE(full.errors().find("standard output"), std::string::npos);
}

TEST(Watch, ShowsReportsAsTheyCome)
{
    const Bench bench("spreadtrum");
    processes::Child watch({KRCTL, "watch", "-J"}, bench.environment());
    ASSERT_TRUE(watch.waitForOutput("\"event\":\"port\"")) << watch.errors(); // it listens
    bench.happen("coverage off");
    EXPECT_TRUE(watch.waitForOutput("\"state\":\"searching\"")) << watch.output();
    bench.happen("coverage on");
    EXPECT_TRUE(watch.waitForOutput("\"area\":\"43B0\"")) << watch.output();
    watch.signal(SIGINT);
    EXPECT_EQ(watch.wait(), 130);
    EXPECT_EQ(violationOfLines(watch.output()), "");
    EXPECT_EQ(valueAt(watch.output().substr(0, watch.output().find('\n')), "/data/event"), "registration");
}

} // namespace

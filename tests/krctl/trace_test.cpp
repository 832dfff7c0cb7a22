// Recording a modem, and playing it back without it.
#include <sstream>

#include <gtest/gtest.h>

#include "tests/krctl/bench.h"
#include "tests/krctl/json_check.h"

namespace {

TEST(Trace, WhatWasRecordedAnswersAgain)
{
    std::string device;
    const processes::ScratchDirectory directory;
    const std::string file = directory / "modem.jsonl";
    {
        const Bench bench("spreadtrum", R"({"signal": {"walk": 0}, "identity": {"model": "ONE OF ITS KIND"}})");
        const Result recorded = bench.krctl({"trace", "record", file, "--", "-J", "device", "info"});
        EXPECT_EQ(recorded.status, 0) << recorded.errors;
        EXPECT_EQ(violationOf(recorded.output), "");
        device = recorded.output;
        EXPECT_EQ(bench.krctl({"trace", "record", bench.path("failed"), "--", "at", "AT+NONSENSE"}).status, 1)
            << "the exit status is that of the command";
        EXPECT_EQ(bench.krctl({"trace", "record", "/nonexistent/file", "--", "status"}).status, 2);
    }
    const std::string transcript = processes::contents(file);
    EXPECT_NE(transcript.find("AT+CGMM"), std::string::npos) << transcript;
    EXPECT_EQ(transcript.find("861234567890123"), std::string::npos) << "identities are masked";

    const processes::Child::Environment programs{{"KR_AT_SERVER_PROGRAM", KR_AT_SERVER_PROGRAM},
                                                 {"KR_MODEM_SIM_PROGRAM", KR_MODEM_SIM_PROGRAM},
                                                 {"TMPDIR", directory.path().string()}};
    const Result replayed =
        krctlAlone({"trace", "replay", file, "--platform", "spreadtrum", "--", "-J", "device", "info"}, programs);
    EXPECT_EQ(replayed.status, 0) << replayed.errors;
    EXPECT_EQ(violationOf(replayed.output), "");
    EXPECT_EQ(valueAt(replayed.output, "/data/model"), "ONE OF ITS KIND");
    EXPECT_EQ(valueAt(replayed.output, "/data/firmware"), valueAt(device, "/data/firmware"));
    EXPECT_EQ(valueAt(replayed.output, "/data/imei"), "***************");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory.path()), {}), 1) << "nothing is left behind";
}

TEST(Trace, AShellHasTheReplay)
{
    const processes::ScratchDirectory directory;
    const std::string file = directory / "modem.jsonl";
    {
        const Bench bench("mtk");
        EXPECT_EQ(bench.krctl({"trace", "record", file, "--", "at", "AT+CGMM"}).status, 0);
    }
    const processes::Child::Environment programs{{"KR_AT_SERVER_PROGRAM", KR_AT_SERVER_PROGRAM},
                                                 {"KR_MODEM_SIM_PROGRAM", KR_MODEM_SIM_PROGRAM},
                                                 {"SHELL", "/bin/sh"},
                                                 {"KR_PLATFORM", "mtk"}};
    processes::Child shell({KRCTL, "trace", "replay", file}, programs);
    shell.write(KRCTL " at AT+CGMM\nexit 7\n");
    EXPECT_EQ(shell.wait(), 7) << shell.errors();
    EXPECT_NE(shell.output().find("KRS-MTK\nOK\n"), std::string::npos) << shell.output();
}

TEST(Trace, MissingFilesAndProgramsAreTold)
{
    EXPECT_EQ(krctlAlone({"trace", "replay", "/nonexistent/file"}).status, 2);
    const processes::ScratchDirectory directory;
    const Result result = krctlAlone({"trace", "replay", "/dev/null"}, {{"KR_MODEM_SIM_PROGRAM", "/nonexistent/sim"}});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("Cannot start /nonexistent/sim"), std::string::npos) << result.errors;
}

} // namespace

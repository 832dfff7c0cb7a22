// The PIN, from the first wrong try to the PUK and back, and what is never done unasked.
#include <fcntl.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/krctl/bench.h"
#include "tests/krctl/json_check.h"

namespace {

class Pin : public testing::TestWithParam<const char *> {
  protected:
    static std::string state(const Bench &bench)
    {
        return valueAt(bench.krctl({"-J", "sim", "status"}).output, "/data/state");
    }
};

TEST_P(Pin, WrongUntilThePukAndBack)
{
    const Bench bench(GetParam(), R"({"sim": {"pin_enabled": true}})");
    EXPECT_EQ(state(bench), "pin_required");

    Result result = bench.krctl({"-J", "sim", "unlock", "--pin-stdin"}, "9999\n");
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(violationOf(result.output), "");
    EXPECT_EQ(violationOf(result.errors), "");
    EXPECT_EQ(valueAt(result.output, "/data/pin_tries_left_before"), "3");
    EXPECT_EQ(valueAt(result.output, "/data/pin_tries_left"), "2");
    EXPECT_EQ(valueAt(result.errors, "/error/code"), "wrong_code");

    result = bench.krctl({"sim", "unlock", "--pin-stdin"}, "9999\n");
    EXPECT_EQ(result.status, 3);
    EXPECT_NE(result.errors.find("The PIN is wrong. Tries left: 1."), std::string::npos) << result.errors;

    result = bench.krctl({"sim", "unlock", "--pin-stdin"}, "1234\n");
    EXPECT_EQ(result.status, 3) << "the last try is not spent unasked, be the PIN right";
    EXPECT_NE(result.errors.find("Only one try is left for the PIN."), std::string::npos) << result.errors;
    EXPECT_EQ(state(bench), "pin_required");

    result = bench.krctl({"-J", "sim", "unlock", "--pin-stdin", "--force"}, "9999\n");
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(valueAt(result.errors, "/error/code"), "puk_required");
    EXPECT_EQ(state(bench), "puk_required");

    result = bench.krctl({"-J", "sim", "unlock", "--pin-stdin"}, "1234\n");
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(valueAt(result.errors, "/error/next"), "Enter the PUK and a new PIN with \"krctl sim unblock\".");

    result = bench.krctl({"-J", "sim", "unblock", "--pin-stdin"}, "87654321\n4321\n");
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(valueAt(result.output, "/data/puk_tries_left"), "9");

    result = bench.krctl({"-J", "sim", "unblock", "--pin-stdin"}, "12345678\n4321\n");
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(valueAt(result.output, "/data/pin_tries_left"), "3");
    EXPECT_EQ(state(bench), "ready_pin_lock_on");

    EXPECT_EQ(bench.krctl({"sim", "change-pin", "--pin-stdin"}, "4321\n1111\n").status, 0);
    EXPECT_EQ(bench.krctl({"sim", "unlock-pin", "--pin-stdin"}, "4321\n").status, 3);
    EXPECT_EQ(bench.krctl({"sim", "unlock-pin", "--pin-stdin"}, "1111\n").status, 0);
    EXPECT_EQ(state(bench), "ready_pin_lock_off");
    const std::string log = bench.libraryLog();
    for (const char *secret : {"9999", "12345678", "87654321", "4321", "1111"})
        EXPECT_EQ(log.find(std::string("+CPIN=") + secret), std::string::npos) << secret;
}

TEST_P(Pin, InTheWayOfOtherCommands)
{
    const Bench bench(GetParam(), R"({"sim": {"pin_enabled": true}})");
    const Result scan = bench.krctl({"-J", "net", "scan"});
    EXPECT_EQ(scan.status, 3) << scan.errors;
    EXPECT_EQ(valueAt(scan.errors, "/error/next"), "Enter the PIN with \"krctl sim unlock\".");
    const Result status = bench.krctl({"-J", "status"});
    EXPECT_EQ(status.status, 0) << "the rest can be shown all the same: " << status.errors;
    EXPECT_EQ(valueAt(status.output, "/data/sim/state"), "pin_required");
    EXPECT_EQ(violationOf(status.output), "");
    EXPECT_EQ(bench.krctl({"sim", "change-pin", "--pin-stdin"}, "1234\n4321\n").status, 3);
}

INSTANTIATE_TEST_SUITE_P(Families, Pin, testing::ValuesIn(kFamilies),
                         [](const auto &family) { return std::string(family.param); });

TEST(SecretInput, OnlyDigitsReachTheModem)
{
    const Bench bench("qualcomm", R"({"sim": {"pin_enabled": true}})");
    for (const char *noPin : {"12\n", "123456789\n", "12a4\n", "\n", "1234\",\"1\n"}) {
        const Result result = bench.krctl({"-J", "sim", "unlock", "--pin-stdin"}, noPin);
        EXPECT_EQ(result.status, 2) << noPin;
        EXPECT_EQ(valueAt(result.errors, "/error/next"), "Nothing was sent to the modem; no try is lost.");
    }
    const Result closed = bench.krctl({"sim", "unlock", "--pin-fd", "77"});
    EXPECT_EQ(closed.status, 2);
    EXPECT_NE(closed.errors.find("Cannot read a secret"), std::string::npos) << closed.errors;
    EXPECT_EQ(valueAt(bench.krctl({"-J", "sim", "status"}).output, "/data/pin_tries_left"), "3");
}

TEST(SecretInput, FromAFileDescriptor)
{
    const Bench bench("mtk", R"({"sim": {"pin_enabled": true}})");
    std::FILE *file = std::fopen(bench.path("pin").c_str(), "w");
    ASSERT_NE(file, nullptr);
    std::fputs("1234\n", file);
    std::fclose(file);
    processes::Child shell({"sh", "-c", "exec " KRCTL " sim unlock --pin-fd 9 9<'" + bench.path("pin") + "'"},
                           bench.environment());
    EXPECT_EQ(shell.wait(), 0) << shell.errors();
    EXPECT_NE(shell.output().find("The PIN is right"), std::string::npos) << shell.output();
}

TEST(NetworkLock, IsOpenedWithItsCode)
{
    const Bench bench("qualcomm", R"({"network_lock": {"active": true}})");
    EXPECT_EQ(valueAt(bench.krctl({"-J", "lock", "status"}).output, "/data/state"), "locked");
    const Result wrong = bench.krctl({"-J", "lock", "unlock", "--pin-stdin"}, "11111111\n");
    EXPECT_EQ(wrong.status, 3);
    EXPECT_EQ(violationOf(wrong.output), "");
    EXPECT_EQ(valueAt(wrong.output, "/data/tries_left_before"), "5");
    EXPECT_EQ(valueAt(wrong.output, "/data/tries_left"), "4");
    const Result right = bench.krctl({"-J", "lock", "unlock", "--pin-stdin"}, "12345678\n");
    EXPECT_EQ(right.status, 0) << right.errors;
    EXPECT_EQ(violationOf(right.output), "");
    EXPECT_EQ(valueAt(right.output, "/data/state"), "not_locked");
}

} // namespace

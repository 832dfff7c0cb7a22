// The command line and the settings file, and which of the two decides.
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/at_server/options.h"
#include "tests/processes/child_process.h"

using host::at::Right;
using host::at::Rights;
using host::at_server::LogLevel;
using host::at_server::Options;
using host::at_server::readOptions;
using namespace std::chrono_literals;

namespace {

class Settings : public testing::Test {
  protected:
    std::optional<Options> read(const std::string &file, std::vector<std::string> arguments = {})
    {
        std::ofstream(path) << file;
        arguments.insert(arguments.begin(), {"kr-at-server", "--config", path});
        std::vector<char *> words;
        words.reserve(arguments.size());
        for (std::string &argument : arguments)
            words.push_back(argument.data());
        testing::internal::CaptureStderr();
        auto options = readOptions(static_cast<int>(words.size()), words.data(), exitStatus);
        errors = testing::internal::GetCapturedStderr();
        return options;
    }

    const processes::ScratchDirectory directory;
    const std::string path = directory / "settings.conf";
    std::string errors;
    int exitStatus = 0;
};

TEST_F(Settings, AreOptionsOneALine)
{
    const auto options = read("# The modem of the roof.\n"
                              "device = /dev/ttyUSB2\n"
                              "\n"
                              "  # and who may use it\n"
                              "allow = modem=read, network\n"
                              "quiet-ms=50\r\n"
                              "socket = \"/run/a b.sock\"\n"
                              "allow=ops=all\n"
                              "log-level = notice\n"
                              "record-secrets\n");
    ASSERT_TRUE(options) << errors;
    EXPECT_EQ(options->device, "/dev/ttyUSB2");
    EXPECT_EQ(options->quiet, 50ms);
    EXPECT_EQ(options->socket, "/run/a b.sock");
    EXPECT_EQ(options->logLevel, LogLevel::Notice);
    EXPECT_TRUE(options->record.withSecrets);
    ASSERT_EQ(options->allowances.size(), 2U);
    EXPECT_EQ(options->allowances[0].group, "modem");
    EXPECT_EQ(options->allowances[0].rights, Right::Read | Right::Network);
    EXPECT_EQ(options->allowances[1].group, "ops");
    EXPECT_EQ(options->allowances[1].rights, Rights::all());
}

TEST_F(Settings, GiveWayToTheCommandLine)
{
    const auto options =
        read("device=/dev/one\nallow=modem=read\nquiet-ms=50\nanswer-ms=700\n",
             {"--device", "/dev/two", "--allow", "ops=raw", "--allow", "ops2=sim", "--quiet-ms", "60"});
    ASSERT_TRUE(options) << errors;
    EXPECT_EQ(options->device, "/dev/two");
    EXPECT_EQ(options->quiet, 60ms);
    EXPECT_EQ(options->answer, 700ms);
    ASSERT_EQ(options->allowances.size(), 2U);
    EXPECT_EQ(options->allowances[0].group, "ops");
    EXPECT_EQ(options->allowances[1].group, "ops2");
}

TEST_F(Settings, ThatCannotBeUsedSayWhatIsWrong)
{
    const struct {
        const char *file;
        const char *errors;
    } rows[] = {
        {"device=/dev/one\n\nquiet=50\n", "line 3 of the settings: there is no setting quiet\n"},
        {"device=/dev/one\nx", "line 2 of the settings: there is no setting x\n"},
        {"[modem]\ndevice=/dev/one\n", "line 1 of the settings: there is no setting [modem]\n"},
        {"config=/dev/null\n", "line 1 of the settings: there is no setting config\n"},
        {"=1\n", "line 1 of the settings: there is no setting \n"},
        {"quiet-ms=50\n", "--device is required\n"},
        {"device=/dev/one\nquiet-ms=1\n", "--quiet-ms: Value 1 not in range 5 to 10000\n"},
        {"device=/dev/one\ndevice=/dev/two\n", "--device: At Most 1 required but received 2\n"},
        {"device=/dev/one\nallow=modem\n", "--allow: modem is not a group, =, and its rights\n"},
        {"device=/dev/one\nrecord-secrets=perhaps\n", "Could not convert: --record-secrets = perhaps\n"},
    };
    for (const auto &row : rows) {
        EXPECT_FALSE(read(row.file)) << row.file;
        EXPECT_EQ(errors, row.errors + std::string("Run with --help for more information.\n"));
        EXPECT_EQ(exitStatus, 2) << row.file;
    }
    std::vector<std::string> words{"kr-at-server", "--config", "/nonexistent/file"};
    std::vector<char *> arguments{words[0].data(), words[1].data(), words[2].data()};
    testing::internal::CaptureStderr();
    EXPECT_FALSE(readOptions(3, arguments.data(), exitStatus));
    EXPECT_TRUE(testing::internal::GetCapturedStderr().starts_with("/nonexistent/file was not readable"));
}

} // namespace

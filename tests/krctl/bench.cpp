#include "tests/krctl/bench.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using processes::Child;

namespace {

Result run(const std::vector<std::string> &command, const std::string &input, const Child::Environment &environment)
{
    Child krctl(command, environment);
    if (!input.empty()) krctl.write(input);
    Result result;
    result.status = krctl.wait();
    result.output = krctl.output();
    result.errors = krctl.errors();
    return result;
}

Result runKrctl(std::vector<std::string> arguments, const std::string &input, const Child::Environment &environment)
{
    arguments.insert(arguments.begin(), KRCTL);
    return run(arguments, input, environment);
}

} // namespace

Bench::Bench(const std::string &family, const std::string &scenario, const std::string &timeScale,
             const std::vector<std::string> &serverOptions)
{
    std::ofstream(path("scenario.json")) << scenario;
    modem_ = std::make_unique<Child>(std::vector<std::string>{KR_MODEM_SIM_PROGRAM, "--family", family, "--scenario",
                                                              path("scenario.json"), "--time-scale", timeScale,
                                                              "--link", path("port"), "--control", path("happen")});
    EXPECT_TRUE(modem_->waitForOutput("\n")) << modem_->errors();
    std::vector<std::string> server{
        KR_AT_SERVER_PROGRAM, "--device", path("port"), "--socket",     path("at.sock"),   "--family", family,
        "--quiet-ms",         "10",       "--record",   path("record"), "--record-secrets"};
    server.insert(server.end(), serverOptions.begin(), serverOptions.end());
    server_ = std::make_unique<Child>(server);
    EXPECT_TRUE(server_->waitForErrors("is open")) << server_->errors();
    const auto isReady = [this] { return krctl({"at", "AT"}).status == 0; };
    EXPECT_TRUE(processes::eventually(isReady)) << server_->errors();
}

Child::Environment Bench::environment() const
{
    return {{"KR_AT_SERVER", path("at.sock")},
            {"KR_LOG_DIR", path("log")},
            {"KR_PLATFORM", ""},
            {"LC_ALL", "C.UTF-8"},
            {"NO_COLOR", ""},
            {"TERM", "xterm"},
            {"KR_AT_SERVER_PROGRAM", KR_AT_SERVER_PROGRAM},
            {"KR_MODEM_SIM_PROGRAM", KR_MODEM_SIM_PROGRAM}};
}

Result Bench::krctl(std::vector<std::string> arguments, const std::string &input) const
{
    return runKrctl(std::move(arguments), input, environment());
}

Result Bench::krctlAsMember(std::vector<std::string> arguments, const std::string &input) const
{
    processes::openToAll(directory_);
    std::vector<std::string> command = processes::commandAs(processes::kNobody, processes::kOneGroup);
    command.emplace_back(KRCTL);
    command.insert(command.end(), arguments.begin(), arguments.end());
    return run(command, input, environment());
}

void Bench::happen(const std::string &line) const
{
    std::ofstream(path("happen")) << line << std::endl;
}

std::string Bench::libraryLog() const
{
    std::string text;
    for (const auto &file : std::filesystem::directory_iterator(path("log")))
        text += processes::contents(file.path().string());
    return text;
}

std::set<std::string> Bench::sent() const
{
    std::set<std::string> commands;
    std::ifstream record(path("record"));
    for (std::string line; std::getline(record, line);) {
        const auto entry = nlohmann::json::parse(line);
        if (entry.value("dir", "") != "tx" || !entry.contains("client")) continue;
        const std::string text = entry.at("text");
        commands.insert(text.substr(0, text.find('\r')));
    }
    return commands;
}

Result krctlAlone(std::vector<std::string> arguments, const Child::Environment &environment)
{
    Child::Environment all{
        {"KR_AT_SERVER", "/nonexistent/at.sock"}, {"KR_PLATFORM", ""}, {"LC_ALL", "C.UTF-8"}, {"NO_COLOR", ""}};
    for (const auto &[name, value] : environment)
        all[name] = value;
    return runKrctl(std::move(arguments), "", all);
}

#include "tests/host/at_server/server_under_test.h"

#include <utility>

#include <gtest/gtest.h>

ScriptedModem::Answer answering(ScriptedModem::Answer answer)
{
    return [answer = std::move(answer)](const std::string &command) -> std::string {
        if (command == "AT" || command == "ATE1") return "\r\nOK\r\n";
        if (command == "AT+CGMI") return "\r\nQUALCOMM INCORPORATED\r\n\r\nOK\r\n";
        return answer(command);
    };
}

ScriptedModem::Answer knowingSignal()
{
    return answering([](const std::string &command) {
        return command == "AT+CSQ" ? std::string(kSignalReply) : std::string("\r\nERROR\r\n");
    });
}

ScriptedModem::Answer slow()
{
    return answering([](const std::string &command) {
        if (command.compare(0, 7, "AT+SLOW") == 0 || command == "AT+COPS=?") return std::string();
        return std::string(command == "AT+CSQ" ? kSignalReply : "\r\nOK\r\n");
    });
}

ServerUnderTest::ServerUnderTest(ScriptedModem::Answer answer, Arguments arguments, Environment environment)
    : modem(directory_ / "modem", std::move(answer)), arguments_(std::move(arguments)),
      environment_(std::move(environment))
{
    start();
}

void ServerUnderTest::start()
{
    std::vector<std::string> command{KR_AT_SERVER_PROGRAM, "--device", directory_ / "modem", "--socket", socket(),
                                     "--quiet-ms",         "25",       "--answer-ms",        "250"};
    command.insert(command.end(), arguments_.begin(), arguments_.end());
    server_ = std::make_unique<processes::Child>(command, environment_);
    EXPECT_TRUE(server_->waitForErrors("ready on ")) << server_->errors();
}

// What the server's memory holds, and who may look into it.
#include <algorithm>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/host/at_server/server_under_test.h"
#include "tests/processes/other_user.h"

using processes::AtSocket;
using processes::Child;

namespace {

constexpr std::string_view kPin = "48151623";

/** Whether another process of the same user can look into one. */
bool canBeLookedInto(pid_t process)
{
    return std::ifstream("/proc/" + std::to_string(process) + "/environ").is_open();
}

/** @return of the server and of any other process whether they can be looked into, as bits */
int lookAround()
{
    ServerUnderTest test(knowingSignal());
    Child other({"cat"});
    other.write("begun");
    EXPECT_TRUE(other.waitForOutput("begun"));
    return (canBeLookedInto(test.server().pid()) ? 2 : 0) + (canBeLookedInto(other.pid()) ? 1 : 0);
}

TEST(Memory, IsNobodyElsesBusiness)
{
    constexpr int kOnlyTheOther = 1;
    constexpr uid_t kUser = 60001;
    if (geteuid() != 0) {
        EXPECT_EQ(lookAround(), kOnlyTheOther);
        return;
    }
    const auto canRun = [] { return access(KR_AT_SERVER_PROGRAM, X_OK) == 0 ? 1 : 0; };
    if (processes::asUser(kUser, kUser, canRun) == 0) GTEST_SKIP() << "other users do not get at the program";
    EXPECT_EQ(processes::asUser(kUser, kUser, lookAround), kOnlyTheOther); // since root may always
}

/** All places of a text in the memory that a process can write to. */
std::string placesOf(std::string_view text, pid_t process)
{
    const std::string directory = "/proc/" + std::to_string(process);
    std::ifstream maps(directory + "/maps");
    std::ifstream memory(directory + "/mem", std::ios::binary);
    std::string places;
    for (std::string line; std::getline(maps, line);) {
        uintptr_t from = 0;
        uintptr_t to = 0;
        char dash = 0;
        std::string rights;
        std::istringstream(line) >> std::hex >> from >> dash >> to >> rights;
        if (rights.rfind("rw", 0) != 0) continue;
        std::string bytes(to - from, '\0');
        memory.clear();
        memory.seekg(static_cast<std::streamoff>(from));
        memory.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        EXPECT_TRUE(memory) << line;
        for (size_t at = 0; (at = bytes.find(text, at)) != std::string::npos; ++at)
            places +=
                line + " at " + std::to_string(at) + ": " + bytes.substr(at - std::min<size_t>(at, 24), 48) + "\n";
    }
    return places;
}

TEST(Memory, KeepsNoPinBeyondTheNextLongerCommand)
{
    const std::string longer = "AT+N=" + std::string(60, 'x');
    const processes::ScratchDirectory directory;
    ServerUnderTest test(answering([](const std::string &command) { return command + "\r\r\nOK\r\n"; }),
                         {"--record", directory / "record", "--log-level", "debug"});
    if (!std::ifstream("/proc/" + std::to_string(test.server().pid()) + "/mem").is_open())
        GTEST_SKIP() << "only root gets at the memory of the server";
    AtSocket client(test.socket());
    client.subscribe(host::protocol::kHearTrace);
    for (const char *command :
         {"AT+CPIN=\"48151623\"", "AT+CLCK=\"SC\",1,\"48151623\"", "AT+CPWD=\"P2\",\"48151623\",\"1234\""}) {
        client.run(command);
        client.status(); // by now the server has done with it
        EXPECT_FALSE(contains(placesOf(kPin, test.server().pid()), "[stack]")) << command;
        client.run(longer);
        client.status();
        EXPECT_NE(placesOf(longer, test.server().pid()), "");
        EXPECT_EQ(placesOf(kPin, test.server().pid()), "") << command;
    }
}

} // namespace

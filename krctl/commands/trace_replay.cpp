#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include <unistd.h>

#include "host/at_client/at_client.h"
#include "host/protocol/at_protocol.h"
#include "krctl/commands/child_program.h"
#include "krctl/commands/trace.h"
#include "krctl/output/output.h"
#include "krctl/session/interruption.h"
#include "krctl/session/session.h"

namespace krctl {
namespace {

using Words = std::vector<std::string>;

/** A directory for the port and the socket of a replay, removed at the end. */
class PrivateDirectory {
  public:
    PrivateDirectory()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "krctl-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            throw usageFailure(std::string("No room for a socket: ") + std::strerror(errno) + '.', pattern,
                               "Set TMPDIR to a directory that can be written.");
        path_ = pattern;
    }
    ~PrivateDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    PrivateDirectory(const PrivateDirectory &) = delete;
    PrivateDirectory &operator=(const PrivateDirectory &) = delete;

    std::string operator/(const char *name) const { return (path_ / name).string(); }

  private:
    std::filesystem::path path_;
};

/** Until something is there, for as long as the program that is to make it lives, and 20 s at most. */
template <typename Condition>
void waitUntil(Condition holds, ChildProgram &maker, const std::string &what)
{
    constexpr std::chrono::milliseconds kLook{20};
    constexpr int kLooks = 1000;
    for (int i = 0; i < kLooks; ++i) {
        if (holds()) return;
        if (maker.ended()) break;
        pauseFor(kLook);
        Session::throwIfInterrupted();
    }
    throw Failure{kNoServer, "no_server", what + " does not start.", "krctl trace replay",
                  "Run it by itself to see what it says."};
}

bool isServerReady()
{
    std::array<char, host::protocol::kMaxText + 1> status{};
    if (ClientStatus(status.data(), status.size()) != CLIENT_OK) return false;
    return std::strstr(status.data(), "\"port\":\"open\"") != nullptr;
}

std::string shell()
{
    const char *chosen = std::getenv("SHELL");
    return chosen != nullptr && *chosen != '\0' ? chosen : "/bin/sh";
}

} // namespace

Report replayTrace(Context &context)
{
    using Role = ChildProgram::Role;
    const std::string path = context.arguments.text(kTranscript.name);
    if (access(path.c_str(), R_OK) != 0)
        throw usageFailure("Cannot read " + path + ": " + std::strerror(errno) + '.', "krctl trace replay",
                           "Name a transcript, as \"krctl trace record\" makes them.");
    const PrivateDirectory directory;
    const std::string port = directory / "port";
    const std::string socket = directory / "at.sock";
    const std::string family = context.session.chosenPlatform();

    ChildProgram modem({programPath("KR_MODEM_SIM_PROGRAM", "kr-modem-sim"), "--replay", path, "--link", port},
                       Role::Helper);
    waitUntil([&] { return access(port.c_str(), F_OK) == 0; }, modem, "kr-modem-sim");
    ChildProgram server({programPath("KR_AT_SERVER_PROGRAM", "kr-at-server"), "--device", port, "--socket", socket,
                         "--family", family.empty() ? "default" : family},
                        Role::Helper);
    setenv(host::protocol::kSocketVariable, socket.c_str(), 1);
    if (!family.empty()) setenv(kPlatformVariable, family.c_str(), 1);
    waitUntil(isServerReady, server, "kr-at-server");
    ClientClose();

    const Words &rest = context.arguments.rest;
    if (rest.empty()) context.output.remark("A shell on the replay of " + path + "; \"exit\" ends it.");
    ChildProgram program(rest.empty() ? Words{shell()} : nestedCommand(rest), Role::Foreground);
    Report report;
    report.exitStatus = program.wait();
    return report;
}

} // namespace krctl

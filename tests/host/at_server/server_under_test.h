/** kr-at-server as a process between a scripted modem and clients. */
#ifndef TESTS_HOST_AT_SERVER_SERVER_UNDER_TEST_H
#define TESTS_HOST_AT_SERVER_SERVER_UNDER_TEST_H

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/host/at_server/scripted_modem.h"
#include "tests/processes/at_socket.h"
#include "tests/processes/child_process.h"
#include "tests/processes/other_user.h"

/** "OK" to a bare "AT" and to AT+CGMI, and what a test says to all else. */
ScriptedModem::Answer answering(ScriptedModem::Answer answer);

constexpr std::string_view kSignalReply = "\r\n+CSQ: 20,99\r\n\r\nOK\r\n";

constexpr uint32_t kMinuteMs = 60000;

/** A modem that knows AT+CSQ and nothing else. */
ScriptedModem::Answer knowingSignal();
/** One that says OK to everything else, but never answers a scan nor what begins with AT+SLOW. */
ScriptedModem::Answer slow();

inline bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

class ServerUnderTest {
  public:
    using Arguments = std::vector<std::string>;
    using Environment = processes::Child::Environment;

    explicit ServerUnderTest(ScriptedModem::Answer answer, Arguments arguments = {}, Environment environment = {});

    /** Starts the server, or starts it again. */
    void start();
    processes::Child &server() { return *server_; }
    std::string socket() const { return directory_ / "at.sock"; }
    std::string file(std::string_view name) const { return directory_ / name; }
    /** Lets everybody come to the socket, whom its own file lets. */
    void openToAll() const { processes::openToAll(directory_); }

  private:
    processes::ScratchDirectory directory_;

  public:
    ScriptedModem modem;

  private:
    const Arguments arguments_;
    const Environment environment_;
    std::unique_ptr<processes::Child> server_;
};

#endif

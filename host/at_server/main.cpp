#include <csignal>

#include <sys/prctl.h>

#include "host/at_server/options.h"
#include "host/at_server/server.h"
#include "host/at_server/server_log.h"
#include "host/event_loop/event_loop.h"

int main(int argc, char **argv)
{
    using namespace host::at_server;
    prctl(PR_SET_DUMPABLE, 0); // commands have PINs in them
    int exitStatus = 0;
    const auto options = readOptions(argc, argv, exitStatus);
    if (!options) return exitStatus;
    setLogLevel(options->logLevel);
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN); // a record that may grow no more costs lines

    host::EventLoop loop;
    Server server(loop, *options);
    const std::string failure = server.start();
    if (!failure.empty()) {
        log(LogLevel::Error, {failure});
        return 1;
    }
    loop.run();
    return 0;
}

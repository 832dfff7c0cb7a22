#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include <sys/prctl.h>

#include "krctl/command_line/invocation.h"
#include "krctl/output/failure.h"
#include "krctl/output/output.h"
#include "krctl/session/interruption.h"
#include "krctl/session/session.h"

namespace krctl {
namespace {

int run(const Invocation &invocation, Output &output)
{
    heedInterruptions();
    Session session(invocation.session);
    session.happenings.waiting = [&](uint32_t atMostMs, std::string_view why) {
        const std::string time = "for at most " + std::to_string((atMostMs + 999) / 1000) + " s";
        if (why.empty())
            output.remark("Commands of other clients come first, " + time + '.');
        else
            output.remark("Waiting " + time + ": " + std::string(why) + '.');
    };
    if (invocation.command->needsServer) session.open();
    Context context{session, invocation.arguments, output};
    const Report report = invocation.command->run(context);
    output.show(report);
    return report.exitStatus;
}

/** Data that could not be written is not reported as done. */
int finished(int exitStatus)
{
    const bool isWritten = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    if (isWritten || exitStatus != kDone) return exitStatus;
    std::perror("krctl: standard output");
    return kRefused;
}

int failed(const Failure &failure, const Output &output)
{
    output.show(failure);
    return failure.exitStatus;
}

int krctl(const std::vector<std::string> &words)
{
    const bool hasBlocks = takeLocale();
    const Invocation invocation = invocationOf(words);
    Output output(invocation.form, invocation.wantsColour, hasBlocks);
    output.setCommand(invocation.path);
    if (invocation.failure) return failed(*invocation.failure, output);
    try {
        if (invocation.command != nullptr) return finished(run(invocation, output));
        (void)std::fputs(invocation.text.c_str(), stdout);
        return finished(kDone);
    } catch (const Failure &failure) {
        return failed(failure, output);
    }
}

} // namespace
} // namespace krctl

int main(int argc, char **argv)
{
    prctl(PR_SET_DUMPABLE, 0); // a core would have the PIN in it that was typed
    try {
        return krctl::krctl({argv + 1, argv + argc});
    } catch (const std::exception &exception) {
        (void)std::fprintf(stderr, "krctl: %s\n", exception.what());
        return krctl::kRefused;
    }
}

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include <mainControl/api/frame.h>

#include "host/at_client/at_client.h"
#include "host/protocol/at_protocol.h"
#include "krctl/commands/child_program.h"
#include "krctl/commands/trace.h"
#include "krctl/output/output.h"
#include "krctl/session/call_failure.h"
#include "krctl/session/interruption.h"
#include "krctl/session/session.h"

namespace krctl {
namespace {

class TranscriptFile {
  public:
    explicit TranscriptFile(const std::string &path) : path_(path), file_(std::fopen(path.c_str(), "we"))
    {
        if (file_ == nullptr) throw failure();
    }
    ~TranscriptFile()
    {
        if (file_ != nullptr) (void)std::fclose(file_);
    }
    TranscriptFile(const TranscriptFile &) = delete;
    TranscriptFile &operator=(const TranscriptFile &) = delete;

    void add(std::string_view event)
    {
        (void)std::fwrite(event.data(), 1, event.size(), file_);
        if (!event.ends_with('\n')) (void)std::fputc('\n', file_);
        ++events_;
    }

    void close()
    {
        const bool isWritten = std::ferror(file_) == 0;
        const bool isClosed = std::fclose(std::exchange(file_, nullptr)) == 0;
        if (!isWritten || !isClosed) throw failure();
    }

    int64_t events() const { return events_; }

  private:
    Failure failure() const
    {
        return usageFailure("Cannot write " + path_ + ": " + std::strerror(errno) + '.', "krctl trace record",
                            "Name a file that can be written.");
    }

    std::string path_;
    std::FILE *file_;
    int64_t events_ = 0;
};

/** Hears events until the other program has ended, or for ever. Ctrl-C is for that program as well, and waited for. */
int hearUntilEnd(ChildProgram *program)
{
    constexpr int32_t kLookMs = 100; // how soon the program's end is noticed
    while (true) {
        (void)ClientDispatch(kLookMs);
        if (program == nullptr) {
            if (pendingInterruption() != 0) return kInterrupted;
        } else if (const std::optional<int> status = program->ended()) {
            return *status;
        }
    }
}

/** The server answers in order: behind the answer to this question nothing of the past is missing. */
void hearTheRest()
{
    std::array<char, host::protocol::kMaxText + 1> status{};
    (void)ClientStatus(status.data(), status.size());
    while (ClientDispatch(0) > 0) {
    }
}

} // namespace

Report recordTrace(Context &context)
{
    Session &session = context.session;
    const std::string path = context.arguments.text(kTranscript.name);
    if (ClientTrace(1) != CLIENT_OK) // before an old transcript is given up
        throw connectionFailure(ClientLastResult(), "hear what goes over the port",
                                session.where("krctl trace record"));
    TranscriptFile file(path);
    int64_t lost = 0;
    session.happenings.trace = [&](std::string_view event) { file.add(event); };
    session.happenings.lost = [&](uint32_t count) { lost += count; };
    // A server asks this of each port that it opens, so that a replay has to answer it.
    session.require(KR_startAT(), "KR_startAT", "answer");

    std::unique_ptr<ChildProgram> program;
    if (context.arguments.rest.empty()) {
        context.output.remark("Recording to " + path + "; Ctrl-C ends.");
    } else {
        setenv(host::protocol::kSocketVariable, session.socket().c_str(), 1);
        setenv(kPlatformVariable, session.platformName().c_str(), 1);
        program = std::make_unique<ChildProgram>(nestedCommand(context.arguments.rest), ChildProgram::Role::Foreground);
    }
    const int status = hearUntilEnd(program.get());
    hearTheRest();
    file.close();
    context.output.remark(std::to_string(file.events()) + " events are in " + path + '.');
    Report report;
    report.exitStatus = status;
    if (lost > 0) report.notes.push_back(std::to_string(lost) + " events came too fast and are missing.");
    return report;
}

} // namespace krctl

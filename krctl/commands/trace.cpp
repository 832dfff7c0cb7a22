#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <utility>

#include <unistd.h>

#include <mainControl/api/frame.h>

#include "host/at_client/at_client.h"
#include "host/protocol/at_protocol.h"
#include "krctl/commands/child_program.h"
#include "krctl/commands/commands.h"
#include "krctl/output/output.h"
#include "krctl/session/call_failure.h"
#include "krctl/session/interruption.h"
#include "krctl/session/session.h"

namespace krctl {
namespace {

using Words = std::vector<std::string>;

constexpr Parameter kFile{.name = "FILE", .help = "the transcript, one JSON object a line"};

/** This program with other arguments; a leading "krctl" among them is taken for granted. */
Words nestedCommand(const Words &rest)
{
    Words command{ownPath()};
    command.insert(command.end(), rest.begin() + (rest.front() == "krctl" ? 1 : 0), rest.end());
    return command;
}

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

Report record(Context &context)
{
    Session &session = context.session;
    const std::string path = context.arguments.text(kFile.name);
    TranscriptFile file(path);
    int64_t lost = 0;
    session.happenings.trace = [&](std::string_view event) { file.add(event); };
    session.happenings.lost = [&](uint32_t count) { lost += count; };
    if (ClientTrace(1) != CLIENT_OK)
        throw connectionFailure(ClientLastResult(), "hear what goes over the port",
                                session.where("krctl trace record"));

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

Report replay(Context &context)
{
    using Role = ChildProgram::Role;
    const std::string path = context.arguments.text(kFile.name);
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

constexpr std::array kParameters{kFile};

constexpr std::array kCommands{
    Command{.path = "trace record",
            .help = "write what goes over the port to a file",
            .examples = "krctl trace record modem.jsonl -- status\nkrctl trace record modem.jsonl",
            .parameters = kParameters,
            .run = record,
            .takesRest = true},
    Command{.path = "trace replay",
            .help = "run a krctl command, or a shell, against a recorded modem",
            .examples = "krctl trace replay modem.jsonl -- status\nkrctl trace replay modem.jsonl",
            .parameters = kParameters,
            .run = replay,
            .takesRest = true,
            .needsServer = false},
};

} // namespace

std::span<const Command> traceCommands()
{
    return kCommands;
}

} // namespace krctl

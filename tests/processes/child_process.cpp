#include "tests/processes/child_process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace processes {
namespace {

using Clock = std::chrono::steady_clock;

struct PipeEnds {
    int read = -1;
    int write = -1;
};

PipeEnds makePipe()
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) ADD_FAILURE() << "no pipe";
    return {ends[0], ends[1]};
}

std::vector<char *> pointersTo(std::vector<std::string> &texts)
{
    std::vector<char *> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> environmentWith(const Child::Environment &added)
{
    std::vector<std::string> all;
    for (char **entry = environ; *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        if (!added.contains(std::string(text.substr(0, text.find('='))))) all.emplace_back(text);
    }
    for (const auto &[name, value] : added)
        all.push_back(name + '=' + value);
    return all;
}

int statusOf(int waited)
{
    return WIFEXITED(waited) ? WEXITSTATUS(waited) : 128 + WTERMSIG(waited);
}

} // namespace

Child::Child(const std::vector<std::string> &command, const Environment &environment)
{
    std::signal(SIGPIPE, SIG_IGN);
    const PipeEnds in = makePipe();
    const PipeEnds out = makePipe();
    const PipeEnds err = makePipe();

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in.read, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out.write, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err.write, STDERR_FILENO);
    // The test's own handling of signals is not the program's.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);

    std::vector<std::string> arguments = command;
    std::vector<std::string> variables = environmentWith(environment);
    const int failure = posix_spawnp(&pid_, command.at(0).c_str(), &actions, &attributes, pointersTo(arguments).data(),
                                     pointersTo(variables).data());
    if (failure != 0) {
        ADD_FAILURE() << "cannot start " << command.at(0);
        pid_ = -1;
    }
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);

    for (const int end : {in.read, out.write, err.write})
        close(end);
    input_ = in.write;
    output_.fd = out.read;
    errors_.fd = err.read;
}

Child::~Child()
{
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    for (const int fd : {input_, output_.fd, errors_.fd})
        if (fd >= 0) close(fd);
}

void Child::write(std::string_view text) const
{
    while (!text.empty()) {
        const ssize_t written = ::write(input_, text.data(), text.size());
        if (written < 0 && errno == EPIPE) return; // it has ended before it read, and its exit status says why
        if (written <= 0) {
            ADD_FAILURE() << "the program does not take its input";
            return;
        }
        text.remove_prefix(static_cast<size_t>(written));
    }
}

void Child::closeInput()
{
    if (input_ >= 0) close(input_);
    input_ = -1;
}

bool Child::readMore(Clock::time_point until)
{
    std::array<pollfd, 2> polled{{{output_.fd, POLLIN, 0}, {errors_.fd, POLLIN, 0}}};
    if (output_.fd < 0 && errors_.fd < 0) return false;
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(until - Clock::now()).count();
    if (left <= 0 || poll(polled.data(), polled.size(), static_cast<int>(left)) <= 0) return false;

    std::array<char, 4096> bytes{};
    for (Pipe *pipe : {&output_, &errors_}) {
        const short ready = pipe == &output_ ? polled[0].revents : polled[1].revents;
        if (pipe->fd < 0 || ready == 0) continue;
        const ssize_t count = read(pipe->fd, bytes.data(), bytes.size());
        if (count > 0) {
            pipe->text.append(bytes.data(), static_cast<size_t>(count));
        } else {
            close(pipe->fd);
            pipe->fd = -1;
        }
    }
    return true;
}

bool Child::waitFor(const Pipe &pipe, std::string_view text)
{
    const auto until = Clock::now() + kPatience;
    while (pipe.text.find(text) == std::string::npos)
        if (!readMore(until)) return false;
    return true;
}

bool Child::waitForOutput(std::string_view text)
{
    return waitFor(output_, text);
}

bool Child::waitForErrors(std::string_view text)
{
    return waitFor(errors_, text);
}

void Child::readFor(std::chrono::milliseconds time)
{
    const auto until = Clock::now() + time;
    while (readMore(until)) {
    }
}

void Child::signal(int number) const
{
    if (pid_ > 0) kill(pid_, number);
}

int Child::wait()
{
    closeInput();
    const auto until = Clock::now() + kPatience;
    while (readMore(until)) {
    }
    const bool ended = eventually([this] {
        if (pid_ <= 0) return true;
        int waited = 0;
        if (waitpid(pid_, &waited, WNOHANG) != pid_) return false;
        status_ = statusOf(waited);
        pid_ = -1;
        return true;
    });
    return ended ? status_ : -1;
}

ScratchDirectory::ScratchDirectory()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "mainControl-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) ADD_FAILURE() << "no directory " << pattern;
    path_ = pattern;
}

ScratchDirectory::~ScratchDirectory()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string contents(const std::string &file)
{
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

void pauseBriefly()
{
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

} // namespace processes

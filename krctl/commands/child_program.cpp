#include "krctl/commands/child_program.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "krctl/output/failure.h"

namespace krctl {
namespace {

namespace fs = std::filesystem;

std::vector<char *> pointersTo(std::vector<std::string> &words)
{
    std::vector<char *> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string &word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return pointers;
}

int spawn(pid_t &pid, std::vector<std::string> words, ChildProgram::Role role)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    if (role == ChildProgram::Role::Helper) {
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    }
    const int error =
        posix_spawnp(&pid, words.front().c_str(), &actions, &attributes, pointersTo(words).data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return error;
}

/** Path of this program. */
std::string ownPath()
{
    std::error_code error;
    const fs::path path = fs::read_symlink("/proc/self/exe", error);
    return error ? "krctl" : path.string();
}

} // namespace

std::vector<std::string> nestedCommand(const std::vector<std::string> &arguments)
{
    std::vector<std::string> command{ownPath()};
    command.insert(command.end(), arguments.begin() + (arguments.front() == "krctl" ? 1 : 0), arguments.end());
    return command;
}

std::string programPath(const char *variable, const std::string &name)
{
    if (const char *path = std::getenv(variable); path != nullptr && *path != '\0') return path;
    const fs::path beside = fs::path(ownPath()).replace_filename(name);
    std::error_code error;
    return fs::exists(beside, error) ? beside.string() : name;
}

ChildProgram::ChildProgram(const std::vector<std::string> &command, Role role)
{
    if (const int error = spawn(pid_, command, role); error != 0)
        throw Failure{kRefused, "cannot_start", "Cannot start " + command.front() + ": " + std::strerror(error) + '.',
                      "krctl trace", "Check that it is installed beside krctl, or on the PATH."};
}

ChildProgram::~ChildProgram()
{
    if (pid_ <= 0) return;
    kill(pid_, SIGTERM);
    (void)wait();
}

int ChildProgram::statusOf(int waited)
{
    pid_ = -1;
    status_ = WIFEXITED(waited) ? WEXITSTATUS(waited) : 128 + WTERMSIG(waited);
    return status_;
}

std::optional<int> ChildProgram::ended()
{
    int waited = 0;
    if (pid_ > 0 && waitpid(pid_, &waited, WNOHANG) != pid_) return std::nullopt;
    return pid_ > 0 ? statusOf(waited) : status_;
}

int ChildProgram::wait()
{
    int waited = 0;
    while (pid_ > 0) {
        if (waitpid(pid_, &waited, 0) == pid_) return statusOf(waited);
        if (errno != EINTR) pid_ = -1;
    }
    return status_;
}

} // namespace krctl

#include "tests/krctl/terminal_child.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

TerminalChild::TerminalChild(const std::vector<std::string> &command, const processes::Child::Environment &environment,
                             int columns)
{
    winsize size{};
    size.ws_col = static_cast<unsigned short>(columns);
    size.ws_row = 24;
    std::vector<char *> words;
    words.reserve(command.size() + 1);
    for (const std::string &word : command)
        words.push_back(const_cast<char *>(word.c_str()));
    words.push_back(nullptr);
    pid_ = forkpty(&fd_, nullptr, nullptr, &size);
    if (pid_ == 0) {
        for (const auto &[name, value] : environment)
            setenv(name.c_str(), value.c_str(), 1);
        execv(words.front(), words.data());
        _exit(127);
    }
    EXPECT_GT(pid_, 0);
}

TerminalChild::~TerminalChild()
{
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    close(fd_);
}

void TerminalChild::type(std::string_view text) const
{
    EXPECT_EQ(write(fd_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
}

bool TerminalChild::readMore()
{
    pollfd polled{.fd = fd_, .events = POLLIN, .revents = 0};
    constexpr int kPatienceMs = 60000;
    if (poll(&polled, 1, kPatienceMs) <= 0) return false;
    std::array<char, 4096> bytes{};
    const ssize_t count = read(fd_, bytes.data(), bytes.size());
    if (count <= 0) return false; // EIO: the program has ended
    screen_.append(bytes.data(), static_cast<size_t>(count));
    return true;
}

bool TerminalChild::shows(std::string_view text)
{
    while (screen_.find(text) == std::string::npos)
        if (!readMore()) return false;
    return true;
}

bool TerminalChild::hasEcho() const
{
    termios settings{};
    EXPECT_EQ(tcgetattr(fd_, &settings), 0);
    return (settings.c_lflag & ECHO) != 0;
}

int TerminalChild::wait()
{
    while (readMore()) {
    }
    int waited = 0;
    if (waitpid(pid_, &waited, 0) != pid_) return -1;
    pid_ = -1;
    return WIFEXITED(waited) ? WEXITSTATUS(waited) : 128 + WTERMSIG(waited);
}

std::vector<std::string> TerminalChild::lines() const
{
    std::vector<std::string> lines(1);
    for (size_t i = 0; i < screen_.size(); ++i) {
        if (screen_[i] == '\033') {
            while (i + 1 < screen_.size() && std::isalpha(static_cast<unsigned char>(screen_[i])) == 0)
                ++i;
        } else if (screen_[i] == '\n') {
            lines.emplace_back();
        } else if (screen_[i] != '\r') {
            lines.back() += screen_[i];
        }
    }
    return lines;
}

#include "tests/processes/pseudo_terminal.h"

#include <array>
#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/processes/child_process.h"

namespace processes {
namespace {

bool isReady(int fd, short what, std::chrono::milliseconds within)
{
    pollfd polled{fd, what, 0};
    return poll(&polled, 1, static_cast<int>(within.count())) > 0;
}

} // namespace

PseudoTerminal::PseudoTerminal() : fd_(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
{
    std::array<char, 64> name{};
    const bool isMade =
        fd_ >= 0 && grantpt(fd_) == 0 && unlockpt(fd_) == 0 && ptsname_r(fd_, name.data(), name.size()) == 0;
    EXPECT_TRUE(isMade) << "no pseudo-terminal";
    path_ = name.data();
    termios settings{};
    EXPECT_EQ(tcgetattr(fd_, &settings), 0);
    cfmakeraw(&settings);
    EXPECT_EQ(tcsetattr(fd_, TCSANOW, &settings), 0);
}

PseudoTerminal::~PseudoTerminal()
{
    if (fd_ >= 0) close(fd_);
}

void PseudoTerminal::write(std::string_view bytes) const
{
    const auto until = std::chrono::steady_clock::now() + kPatience;
    while (!bytes.empty() && std::chrono::steady_clock::now() < until) {
        const ssize_t count = ::write(fd_, bytes.data(), bytes.size());
        if (count > 0)
            bytes.remove_prefix(static_cast<size_t>(count));
        else if (errno == EAGAIN)
            isReady(fd_, POLLOUT, std::chrono::milliseconds(100));
        else
            break;
    }
    EXPECT_TRUE(bytes.empty()) << "the pseudo-terminal takes nothing";
}

std::string PseudoTerminal::read(std::chrono::milliseconds within) const
{
    std::array<char, 4096> bytes{};
    if (!isReady(fd_, POLLIN, within)) return {};
    const ssize_t count = ::read(fd_, bytes.data(), bytes.size());
    if (count > 0) return {bytes.data(), static_cast<size_t>(count)};
    pauseBriefly(); // nobody has the other side open, which polls as ready
    return {};
}

} // namespace processes

#include "simulator/pty.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace simulator {
namespace {

void closeFile(int &fd)
{
    if (fd >= 0) ::close(fd);
    fd = -1;
}

bool makeRaw(int fd)
{
    termios settings{};
    if (tcgetattr(fd, &settings) != 0) return false;
    cfmakeraw(&settings);
    return tcsetattr(fd, TCSANOW, &settings) == 0;
}

std::string pathOf(int master)
{
    std::array<char, 64> name{};
    return ptsname_r(master, name.data(), name.size()) == 0 ? name.data() : "";
}

} // namespace

Pty::Pty(host::EventLoop &loop, std::string link, Events events)
    : loop_(loop), link_(std::move(link)), events_(std::move(events))
{
}

Pty::~Pty()
{
    close();
}

bool Pty::open()
{
    if (openEnds() && makeLink()) return true;
    const int cause = errno;
    close();
    errno = cause;
    return false;
}

bool Pty::openEnds()
{
    master_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) return false;
    path_ = pathOf(master_);
    slave_ = ::open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (slave_ < 0 || !makeRaw(slave_)) return false;
    openings_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (openings_ < 0 || inotify_add_watch(openings_, path_.c_str(), IN_OPEN | IN_CLOSE) < 0) return false;
    input_ = host::ReadWatch(loop_, master_, [this] { read(); });
    openingsWatch_ = host::ReadWatch(loop_, openings_, [this] { noteOpenings(); });
    return true;
}

/** In one step, so that the link never leads nowhere while it is replaced. */
bool Pty::makeLink() const
{
    if (link_.empty()) return true;
    const std::string fresh = link_ + ".new";
    ::unlink(fresh.c_str());
    return ::symlink(path_.c_str(), fresh.c_str()) == 0 && ::rename(fresh.c_str(), link_.c_str()) == 0;
}

/** Only a link that is still ours. */
void Pty::removeLink() const
{
    std::array<char, 64> target{};
    if (link_.empty() || path_.empty()) return;
    const ssize_t length = ::readlink(link_.c_str(), target.data(), target.size() - 1);
    if (length > 0 && path_ == target.data()) ::unlink(link_.c_str());
}

void Pty::close()
{
    removeLink();
    input_.reset();
    room_.reset();
    openingsWatch_.reset();
    closeFile(openings_);
    closeFile(slave_);
    closeFile(master_);
    unread_.clear();
    users_ = 0;
}

void Pty::read()
{
    noteOpenings(); // whoever writes has opened before
    readWaiting();
}

bool Pty::readWaiting()
{
    std::array<char, 4096> bytes; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by read()
    const ssize_t length = master_ < 0 ? 0 : ::read(master_, bytes.data(), bytes.size());
    if (length <= 0) return false;
    events_.received({bytes.data(), static_cast<size_t>(length)});
    return true;
}

/** Keeps count of the port's users. */
void Pty::noteOpenings()
{
    alignas(inotify_event) std::array<char, 4096> room; // NOLINT(cppcoreguidelines-pro-type-member-init): as above
    bool hasClosed = false;
    ssize_t length = 0;
    while ((length = ::read(openings_, room.data(), room.size())) > 0) {
        const auto size = static_cast<size_t>(length);
        for (size_t at = 0; at < size;) {
            inotify_event event{};
            std::memcpy(&event, room.data() + at, sizeof event);
            at += sizeof event + event.len;
            users_ += (event.mask & IN_OPEN) != 0 ? 1 : -1;
            hasClosed = hasClosed || users_ == 0;
        }
    }
    if (hasClosed) hangUp();
}

/** A serial port that nobody holds is free for the next, as it was made, and empty. */
void Pty::hangUp()
{
    unread_.clear();
    room_.reset();
    ioctl(slave_, TIOCNXCL);
    if (users_ == 0) {
        makeRaw(slave_);
        tcflush(slave_, TCIFLUSH);
        while (readWaiting()) { // the last words of the one that has left
        }
    }
    events_.hungUp();
}

void Pty::write(std::string_view bytes)
{
    if (master_ < 0) return;
    noteOpenings();
    if (users_ == 0 || unread_.size() + bytes.size() > kMaxUnread) return;
    unread_ += bytes;
    flush();
}

void Pty::flush()
{
    while (!unread_.empty()) {
        const ssize_t length = ::write(master_, unread_.data(), unread_.size());
        if (length <= 0) break;
        unread_.erase(0, static_cast<size_t>(length));
    }
    if (unread_.empty())
        room_.reset();
    else if (!room_)
        room_ = host::WriteWatch(loop_, master_, [this] { flush(); });
}

} // namespace simulator

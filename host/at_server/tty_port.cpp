#include "host/at_server/tty_port.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>
#include <unistd.h>

#include "host/at_server/wiped_memory.h"

using namespace std::chrono_literals;

namespace host::at_server {
namespace {

constexpr auto kFirstDelay = 50ms;
constexpr auto kLongestDelay = 2000ms;
constexpr int kReadsInARow = 16; // so that a modem that never stops does not keep clients waiting

struct Rate {
    unsigned baud;
    speed_t speed;
};

constexpr std::array kRates{
    Rate{1200, B1200},       Rate{2400, B2400},       Rate{4800, B4800},       Rate{9600, B9600},
    Rate{19200, B19200},     Rate{38400, B38400},     Rate{57600, B57600},     Rate{115200, B115200},
    Rate{230400, B230400},   Rate{460800, B460800},   Rate{500000, B500000},   Rate{576000, B576000},
    Rate{921600, B921600},   Rate{1000000, B1000000}, Rate{1152000, B1152000}, Rate{1500000, B1500000},
    Rate{2000000, B2000000}, Rate{2500000, B2500000}, Rate{3000000, B3000000}, Rate{3500000, B3500000},
    Rate{4000000, B4000000},
};

const Rate *rateOf(unsigned baud)
{
    const auto *const rate = std::find_if(kRates.begin(), kRates.end(), [&](const Rate &r) { return r.baud == baud; });
    return rate == kRates.end() ? nullptr : rate;
}

/** Slaves of pseudo-terminals keep the mark of exclusive use beyond their last close, and nobody could open them again
 *  after a crash; a lock is enough for them. */
bool isPseudoTerminal(int fd)
{
    constexpr unsigned kFirstMajor = 136;
    constexpr unsigned kLastMajor = 143;
    struct stat status {};
    if (fstat(fd, &status) != 0) return false;
    return major(status.st_rdev) >= kFirstMajor && major(status.st_rdev) <= kLastMajor;
}

std::string lastError(std::string_view what)
{
    return std::string(what).append(": ").append(std::strerror(errno));
}

/** @return what failed; empty if nothing did */
std::string takeAlone(int fd)
{
    if (flock(fd, LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK ? "is used by another program" : lastError("cannot be locked");
    if (!isPseudoTerminal(fd) && ioctl(fd, TIOCEXCL) != 0) return lastError("cannot be taken alone");
    return {};
}

std::string makeRaw(int fd, unsigned baud)
{
    termios settings{};
    if (tcgetattr(fd, &settings) != 0) return lastError("is not a terminal");
    cfmakeraw(&settings);
    settings.c_cflag &= ~static_cast<tcflag_t>(CSTOPB | CRTSCTS | HUPCL);
    settings.c_cflag |= CLOCAL | CREAD;
    settings.c_cc[VMIN] = 1;
    settings.c_cc[VTIME] = 0;
    const Rate *const rate = rateOf(baud);
    if (rate == nullptr || cfsetspeed(&settings, rate->speed) != 0) return "does not have this speed";
    if (tcsetattr(fd, TCSANOW, &settings) != 0) return lastError("cannot be set up");
    return {};
}

} // namespace

bool isBaudRate(unsigned baud)
{
    return rateOf(baud) != nullptr;
}

TtyPort::TtyPort(EventLoop &loop, std::string device, unsigned baud, Calls calls)
    : loop_(loop), device_(std::move(device)), baud_(baud), calls_(std::move(calls)), delay_(kFirstDelay),
      retry_(loop, [this] { open(); })
{
}

TtyPort::~TtyPort()
{
    if (fd_ >= 0) ::close(fd_);
}

void TtyPort::start()
{
    open();
}

void TtyPort::open()
{
    const int fd = ::open(device_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        tryLater(lastError(device_));
        return;
    }
    std::string failure = takeAlone(fd);
    if (failure.empty()) failure = makeRaw(fd, baud_);
    if (!failure.empty()) {
        ::close(fd);
        tryLater(device_ + " " + failure);
        return;
    }
    fd_ = fd;
    why_ = device_ + " is open";
    readWatch_ = ReadWatch(loop_, fd_, [this] { read(); });
    calls_.opened();
}

void TtyPort::tryLater(std::string why)
{
    retry_.start(delay_);
    delay_ = std::min<std::chrono::milliseconds>(delay_ * 2, kLongestDelay);
    if (why == why_) return;
    why_ = std::move(why);
    calls_.closed();
}

void TtyPort::close(const std::string &why)
{
    readWatch_.reset();
    writeWatch_.reset();
    wipe(unwritten_);
    ::close(fd_);
    fd_ = -1;
    tryLater(device_ + " went away: " + why);
}

void TtyPort::receive()
{
    WipedBuffer<4096> bytes;
    for (int i = 0; i < kReadsInARow && isOpen(); ++i) {
        const ssize_t count = ::read(fd_, bytes.data(), bytes.size());
        if (count > 0) {
            delay_ = kFirstDelay;
            calls_.received({bytes.data(), static_cast<size_t>(count)});
        } else if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
            break;
        } else {
            close(count == 0 ? "hang-up" : std::strerror(errno));
            break;
        }
    }
}

void TtyPort::read()
{
    const WipedStack wiped;
    receive();
    if (isOpen()) calls_.allReceived();
}

void TtyPort::write(std::string_view bytes)
{
    if (!isOpen()) return;
    unwritten_ += bytes;
    writeMore();
}

void TtyPort::setTerminalReady(bool isReady) const
{
    const int line = TIOCM_DTR;
    if (isOpen()) (void)ioctl(fd_, isReady ? TIOCMBIS : TIOCMBIC, &line);
}

void TtyPort::writeMore()
{
    const ssize_t count = ::write(fd_, unwritten_.data(), unwritten_.size());
    if (count < 0 && errno != EAGAIN && errno != EINTR) {
        // Told by the watch, since a write happens in the middle of other things; until then nothing more is written.
        wipe(unwritten_);
        writeWatch_.reset();
        return;
    }
    if (count > 0) unwritten_.erase(0, static_cast<size_t>(count));
    if (unwritten_.empty()) {
        wipe(unwritten_);
        writeWatch_.reset();
    } else if (!writeWatch_) {
        writeWatch_ = WriteWatch(loop_, fd_, [this] { writeMore(); });
    }
}

} // namespace host::at_server

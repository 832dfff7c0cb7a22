#include "host/at_server/service_manager.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "host/at_server/server_log.h"

using namespace std::chrono_literals;

namespace host::at_server {
namespace {

constexpr auto kPause = 100ms; // until a manager that does not read is told again

std::string_view variable(const char *name)
{
    const char *const value = std::getenv(name);
    return value != nullptr ? value : "";
}

/** @return how often the watchdog is fed, twice as often as it asks for; 0: there is none for this process */
std::chrono::milliseconds feedingInterval()
{
    const std::string_view pid = variable("WATCHDOG_PID");
    if (!pid.empty() && pid != std::to_string(getpid())) return 0ms;
    const std::chrono::microseconds limit(std::strtoll(std::string(variable("WATCHDOG_USEC")).c_str(), nullptr, 10));
    return limit > 0us ? std::max(1ms, std::chrono::duration_cast<std::chrono::milliseconds>(limit / 2)) : 0ms;
}

} // namespace

ServiceManager::ServiceManager(EventLoop &loop)
    : again_(loop, [this] { tell(); }), watchdog_(loop, [this] { feedWatchdog(); })
{
    const std::string_view path = variable("NOTIFY_SOCKET");
    if (path.empty()) return;
    const std::string failure = connectTo(path);
    if (failure.empty())
        feedEvery_ = feedingInterval();
    else
        log(LogLevel::Warning, {"the service manager hears nothing: ", failure});
}

ServiceManager::~ServiceManager()
{
    if (fd_ >= 0) close(fd_);
}

/** @param path  of a file, or behind "@" a name without one
 *  @return what is wrong; empty on success */
std::string ServiceManager::connectTo(std::string_view path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const bool isAbstract = path.front() == '@';
    if (!isAbstract && path.front() != '/') return "NOTIFY_SOCKET is neither a path nor a name";
    if (path.size() >= sizeof address.sun_path) return "NOTIFY_SOCKET is too long";
    std::copy(path.begin(), path.end(), std::begin(address.sun_path));
    if (isAbstract) address.sun_path[0] = '\0';
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + path.size() + (isAbstract ? 0 : 1));

    fd_ = socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (fd_ >= 0 && connect(fd_, reinterpret_cast<const sockaddr *>(&address), size) == 0) return {};
    std::string failure = std::strerror(errno);
    if (fd_ >= 0) close(fd_);
    fd_ = -1;
    return failure;
}

/** @return false if it does not take them now */
bool ServiceManager::send(std::string_view lines) const
{
    return ::send(fd_, lines.data(), lines.size(), MSG_NOSIGNAL) >= 0;
}

void ServiceManager::ready()
{
    state_ = "READY=1\n";
    tell();
    if (feedEvery_ > 0ms) feedWatchdog();
}

void ServiceManager::setStatus(std::string_view status)
{
    status_ = status;
    std::replace(status_.begin(), status_.end(), '\n', ' ');
    tell();
}

void ServiceManager::stopping()
{
    state_ = "STOPPING=1\n";
    tell();
}

/** All that holds, whatever of it has been told before. */
void ServiceManager::tell()
{
    if (fd_ < 0 || state_.empty()) return;
    if (!send(std::string(state_) + "STATUS=" + status_)) again_.start(kPause);
}

void ServiceManager::feedWatchdog()
{
    watchdog_.start(send("WATCHDOG=1") ? feedEvery_ : std::min<std::chrono::milliseconds>(feedEvery_, kPause));
}

} // namespace host::at_server

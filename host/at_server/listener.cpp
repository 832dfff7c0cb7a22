#include "host/at_server/listener.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "host/at_server/server_log.h"

using namespace std::chrono_literals;

namespace host::at_server {
namespace {

constexpr int kBacklog = 32;
constexpr mode_t kForAll = 0111;       // leaves 0666
constexpr mode_t kNotForOthers = 0117; // leaves 0660
constexpr mode_t kOwnersOnly = 0600;

std::string failure(const std::string &path, std::string_view what)
{
    return std::string(what).append(" ").append(path).append(": ").append(std::strerror(errno));
}

int newSocket()
{
    return socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
}

const sockaddr *plain(const sockaddr_un &address)
{
    return reinterpret_cast<const sockaddr *>(&address);
}

/** Removes a socket that nobody listens on.
 *  @return what stands in the way */
std::string makeRoom(const std::string &path, const sockaddr_un &address)
{
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) return errno == ENOENT ? std::string() : failure(path, "cannot look at");
    if (!S_ISSOCK(status.st_mode)) return path + " is there already and is not a socket";
    const int probe = newSocket();
    const bool isStale = connect(probe, plain(address), sizeof address) != 0 && errno == ECONNREFUSED;
    close(probe);
    if (!isStale) return "another server listens on " + path;
    if (unlink(path.c_str()) != 0) return failure(path, "cannot remove the old");
    return {};
}

/** Besides the effective one. */
std::vector<gid_t> groupsOf(int fd)
{
    std::vector<gid_t> groups(64);
    auto size = static_cast<socklen_t>(groups.size() * sizeof(gid_t));
    int result = getsockopt(fd, SOL_SOCKET, SO_PEERGROUPS, groups.data(), &size);
    if (result != 0 && errno == ERANGE) { // size is now what it takes
        groups.resize(size / sizeof(gid_t));
        result = getsockopt(fd, SOL_SOCKET, SO_PEERGROUPS, groups.data(), &size);
    }
    groups.resize(result == 0 ? size / sizeof(gid_t) : 0);
    return groups;
}

/** Somebody who is nobody where the kernel does not tell. */
Peer peerOf(int fd)
{
    ucred credentials{};
    socklen_t size = sizeof credentials;
    if (getsockopt(fd, SOL_SOCKET, SO_PEERCRED, &credentials, &size) != 0) return {};
    Peer peer{credentials.pid, credentials.uid, groupsOf(fd)};
    peer.groups.push_back(credentials.gid);
    return peer;
}

} // namespace

Listener::~Listener()
{
    if (fd_ >= 0) {
        struct stat status {};
        const bool isOurs = lstat(path_.c_str(), &status) == 0 && status.st_dev == device_ && status.st_ino == inode_;
        if (isOurs) unlink(path_.c_str());
        close(fd_);
    }
    if (lock_ >= 0) close(lock_);
}

/** Between the look at an old socket and its removal another server could put its own there, but for the lock. */
std::string Listener::lock(const std::string &path)
{
    const std::string file = path + ".lock";
    lock_ = open(file.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kOwnersOnly);
    if (lock_ < 0) return failure(file, "cannot make the lock");
    if (flock(lock_, LOCK_EX | LOCK_NB) == 0) return {};
    return errno == EWOULDBLOCK ? "another server listens on " + path : failure(file, "cannot lock");
}

std::string Listener::listen(const std::string &path, const Door &door)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof address.sun_path) return "the socket's path is empty or too long";
    std::copy(path.begin(), path.end(), std::begin(address.sun_path));

    std::string obstacle = lock(path);
    if (obstacle.empty()) obstacle = makeRoom(path, address);
    if (!obstacle.empty()) return obstacle;

    const int fd = newSocket();
    const mode_t mask = umask(door.isOpenToAll ? kForAll : kNotForOthers);
    const bool isBound = fd >= 0 && bind(fd, plain(address), sizeof address) == 0;
    umask(mask);
    struct stat status {};
    if (!isBound || lstat(path.c_str(), &status) != 0) {
        obstacle = failure(path, "cannot make the socket");
        if (fd >= 0) close(fd);
        return obstacle;
    }
    path_ = path;
    device_ = status.st_dev;
    inode_ = status.st_ino;
    fd_ = fd;
    if (door.group && chown(path.c_str(), static_cast<uid_t>(-1), *door.group) != 0)
        return failure(path, "cannot give the group");
    if (::listen(fd_, kBacklog) != 0) return failure(path, "cannot listen on");
    pause_ = Timer(loop_, [this] { watch_ = ReadWatch(loop_, fd_, [this] { accept(); }); });
    watch_ = ReadWatch(loop_, fd_, [this] { accept(); });
    return {};
}

void Listener::accept()
{
    const int fd = accept4(fd_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
    if (fd >= 0) {
        accepted_(fd, peerOf(fd));
        return;
    }
    if (errno == EAGAIN || errno == EINTR || errno == ECONNABORTED) return;
    log(LogLevel::Warning, {"cannot take a client: ", std::strerror(errno)});
    watch_.reset(); // what waits would otherwise call again at once
    pause_.start(1s);
}

} // namespace host::at_server

/** The socket that clients connect to, and who they are. */
#ifndef HOST_AT_SERVER_LISTENER_H
#define HOST_AT_SERVER_LISTENER_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

#include "host/event_loop/event_loop.h"

namespace host::at_server {

struct Peer {
    pid_t pid{};
    uid_t uid = static_cast<uid_t>(-1); ///< nobody's
    std::vector<gid_t> groups;          ///< all that the process is a member of
};

/** Whom the file of the socket lets come. */
struct Door {
    std::optional<gid_t> group; ///< besides its owner
    bool isOpenToAll = false;   ///< who may stay is decided inside
};

class Listener {
  public:
    /** @param accepted  takes the descriptor over */
    using Accepted = std::function<void(int fd, const Peer &peer)>;

    Listener(EventLoop &loop, Accepted accepted) : loop_(loop), accepted_(std::move(accepted)) {}
    /** Removes the socket's file, if it is still its own. */
    ~Listener();
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;

    /** Replaces the file of a server that is gone. A lock on a file beside it, PATH.lock, which stays, tells that it is.
     *  @return what is wrong; empty on success */
    std::string listen(const std::string &path, const Door &door);

  private:
    std::string lock(const std::string &path);
    void accept();

    EventLoop &loop_;
    Accepted accepted_;
    std::string path_;
    dev_t device_{};
    ino_t inode_{};
    int lock_ = -1;
    int fd_ = -1;
    ReadWatch watch_;
    Timer pause_;
};

} // namespace host::at_server

#endif

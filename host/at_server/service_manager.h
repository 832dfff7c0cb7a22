/** The service manager that has started the server, as far as it wants to hear of it: lines in a datagram to the socket
 *  that NOTIFY_SOCKET names, as systemd and others take them. Without that variable nothing is told. */
#ifndef HOST_AT_SERVER_SERVICE_MANAGER_H
#define HOST_AT_SERVER_SERVICE_MANAGER_H

#include <chrono>
#include <string>
#include <string_view>

#include "host/event_loop/event_loop.h"

namespace host::at_server {

class ServiceManager {
  public:
    explicit ServiceManager(EventLoop &loop);
    ~ServiceManager();
    ServiceManager(const ServiceManager &) = delete;
    ServiceManager &operator=(const ServiceManager &) = delete;

    /** Clients can connect from now on; a watchdog is fed as long as the event loop goes round. */
    void ready();
    /** In words, for people. */
    void setStatus(std::string_view status);
    void stopping();

  private:
    std::string connectTo(std::string_view path);
    void tell();
    void feedWatchdog();
    bool send(std::string_view lines) const;

    int fd_ = -1;
    std::string_view state_; ///< empty before it is ready
    std::string status_;
    Timer again_; ///< tells what could not be told
    std::chrono::milliseconds feedEvery_{};
    Timer watchdog_;
};

} // namespace host::at_server

#endif

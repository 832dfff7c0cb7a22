/** The modem's port: a raw tty, 8N1, taken for this process alone, and opened again whenever it went away. */
#ifndef HOST_AT_SERVER_TTY_PORT_H
#define HOST_AT_SERVER_TTY_PORT_H

#include <functional>
#include <string>
#include <string_view>

#include "host/event_loop/event_loop.h"

namespace host::at_server {

/** @return whether ttys have this speed, in bit/s */
bool isBaudRate(unsigned baud);

class TtyPort {
  public:
    struct Calls {
        std::function<void()> opened;
        std::function<void()> closed; ///< also when it cannot be opened, for a reason that differs from the last one
        std::function<void(std::string_view bytes)> received;
        std::function<void()> allReceived; ///< nothing more can be read at present
    };

    TtyPort(EventLoop &loop, std::string device, unsigned baud, Calls calls);
    ~TtyPort();
    TtyPort(const TtyPort &) = delete;
    TtyPort &operator=(const TtyPort &) = delete;

    /** Opens the device now, and else tries again, at growing intervals of up to two seconds. */
    void start();

    bool isOpen() const { return fd_ >= 0; }
    /** Why it is not open, or what has been opened. */
    const std::string &why() const { return why_; }

    /** Hands on what can be read now, without telling that all has been received. */
    void receive();

    /** Writes what the port does not take at once as soon as it does. */
    void write(std::string_view bytes);
    /** Whether something is still to be written. */
    bool isWriting() const { return !unwritten_.empty(); }
    /** Sets DTR, by which a modem hangs up when it goes, where the port has such a line. */
    void setTerminalReady(bool isReady) const;

  private:
    void open();
    void read();
    void writeMore();
    void close(const std::string &why);
    void tryLater(std::string why);

    EventLoop &loop_;
    const std::string device_;
    const unsigned baud_;
    const Calls calls_;
    int fd_ = -1;
    std::string why_;
    std::string unwritten_;
    std::chrono::milliseconds delay_;
    ReadWatch readWatch_;
    WriteWatch writeWatch_;
    Timer retry_;
};

} // namespace host::at_server

#endif

/** A pseudo-terminal, raw, whose path behaves like a modem's serial port. */
#ifndef SIMULATOR_PTY_H
#define SIMULATOR_PTY_H

#include <functional>
#include <string>
#include <string_view>

#include "host/event_loop/event_loop.h"

namespace simulator {

class Pty {
  public:
    struct Events {
        std::function<void(std::string_view bytes)> received;
        std::function<void()> hungUp; ///< the last program that had the port open has closed it
    };

    /** @param link  a symbolic link to keep on the port's path; empty: none */
    Pty(host::EventLoop &loop, std::string link, Events events);
    ~Pty();
    Pty(const Pty &) = delete;
    Pty &operator=(const Pty &) = delete;

    /** @return whether there is a port now; errno says why not */
    bool open();
    /** As if unplugged: whoever has it open reads the end of it. */
    void close();

    const std::string &path() const { return path_; }
    /** To a port that nobody has open nothing is written. */
    void write(std::string_view bytes);

  private:
    static constexpr size_t kMaxUnread = 1 << 20;

    bool openEnds();
    bool makeLink() const;
    void removeLink() const;
    void read();
    bool readWaiting();
    void noteOpenings();
    void hangUp();
    void flush();

    host::EventLoop &loop_;
    const std::string link_;
    const Events events_;
    std::string path_;
    int master_ = -1;
    int slave_ = -1;    ///< held open, so that the settings of the line outlast its users
    int openings_ = -1; ///< tells of other programs that open and close the port
    int users_ = 0;
    std::string unread_;
    host::ReadWatch input_;
    host::WriteWatch room_;
    host::ReadWatch openingsWatch_;
};

} // namespace simulator

#endif

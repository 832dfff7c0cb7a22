/** One thread that waits for files, timers and signals, on libevent: readiness is all that a tty and a packet socket
 *  need, and it costs a router little. Watches and timers end with their objects, also from within their own call. */
#ifndef HOST_EVENT_LOOP_EVENT_LOOP_H
#define HOST_EVENT_LOOP_EVENT_LOOP_H

#include <chrono>
#include <functional>
#include <memory>

struct event;
struct event_base;

namespace host {

class EventLoop {
  public:
    EventLoop();
    ~EventLoop();
    EventLoop(const EventLoop &) = delete;
    EventLoop &operator=(const EventLoop &) = delete;

    /** Returns after stop(), or when nothing is left to wait for. */
    void run();
    void stop();

    event_base *base() const { return base_; }

  private:
    event_base *base_;
};

/** What a watch, a timer and a signal have in common: an event and what it calls. */
class Watch {
  public:
    using Call = std::function<void()>;

    Watch() = default;
    Watch(Watch &&) noexcept = default;
    Watch &operator=(Watch &&) noexcept = default;

    explicit operator bool() const { return state_ != nullptr; }
    /** Ends the watch. */
    void reset() { state_.reset(); }

  protected:
    Watch(EventLoop &loop, int fdOrSignal, short what, Call call);
    /** Waits for the file or the signal, if need be as soon as the kernel has room for it. */
    void await();
    event *raw() const;

  private:
    struct State;
    struct End {
        void operator()(State *) const;
    };
    static void fired(int, short, void *state);

    std::unique_ptr<State, End> state_;
};

/** Calls as often as the file can be read. */
struct ReadWatch : Watch {
    ReadWatch() = default;
    ReadWatch(EventLoop &loop, int fd, Call call);
};

/** Calls as often as the file can be written. */
struct WriteWatch : Watch {
    WriteWatch() = default;
    WriteWatch(EventLoop &loop, int fd, Call call);
};

struct SignalWatch : Watch {
    SignalWatch() = default;
    SignalWatch(EventLoop &loop, int signal, Call call);
};

/** Calls once, when its time has come. */
class Timer : public Watch {
  public:
    Timer() = default;
    Timer(EventLoop &loop, Call call);

    /** Anew, if it runs already. */
    void start(std::chrono::milliseconds delay);
    void cancel();
};

} // namespace host

#endif

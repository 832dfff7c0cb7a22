/** Time for parts that wait and do no I/O: that of an event loop, or of a test that decides what happens when. */
#ifndef HOST_EVENT_LOOP_TIME_H
#define HOST_EVENT_LOOP_TIME_H

#include <chrono>
#include <functional>
#include <memory>

#include "host/event_loop/event_loop.h"

namespace host {

/** Calls once, when its time has come. */
class Alarm {
  public:
    Alarm() = default;
    Alarm(const Alarm &) = delete;
    Alarm &operator=(const Alarm &) = delete;
    virtual ~Alarm() = default;

    /** Anew, if it runs already. */
    virtual void start(std::chrono::milliseconds delay) = 0;
    virtual void cancel() = 0;
};

class Time {
  public:
    using Point = std::chrono::steady_clock::time_point;

    Time() = default;
    Time(const Time &) = delete;
    Time &operator=(const Time &) = delete;
    virtual ~Time() = default;

    virtual Point now() const = 0;
    virtual std::unique_ptr<Alarm> alarm(std::function<void()> call) = 0;
};

/** The time that passes. */
class LoopTime : public Time {
  public:
    explicit LoopTime(EventLoop &loop) : loop_(loop) {}

    Point now() const override { return std::chrono::steady_clock::now(); }
    std::unique_ptr<Alarm> alarm(std::function<void()> call) override;

  private:
    EventLoop &loop_;
};

} // namespace host

#endif

#include "host/event_loop/event_loop.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include <event2/event.h>

namespace host {
namespace {

/** libevent fails only where memory or file descriptors have run out at start. */
template <typename T>
T *orEnd(T *made)
{
    if (made != nullptr) return made;
    std::fputs("event loop: out of memory or file descriptors\n", stderr);
    std::abort();
}

} // namespace

EventLoop::EventLoop() : base_(orEnd(event_base_new())) {}

EventLoop::~EventLoop()
{
    event_base_free(base_);
}

void EventLoop::run()
{
    event_base_dispatch(base_);
}

void EventLoop::stop()
{
    event_base_loopbreak(base_);
}

void Watch::Free::operator()(event *made) const
{
    event_free(made);
}

Watch::Watch(EventLoop &loop, int fdOrSignal, short what, Call call)
    : call_(std::make_unique<Call>(std::move(call))),
      event_(orEnd(event_new(loop.base(), fdOrSignal, what, &Watch::fired, call_.get())))
{
}

void Watch::reset()
{
    event_.reset();
    call_.reset();
}

void Watch::fired(int /*fdOrSignal*/, short /*what*/, void *call)
{
    const Call kept = *static_cast<Call *>(call); // which may end its own watch
    kept();
}

ReadWatch::ReadWatch(EventLoop &loop, int fd, Call call) : Watch(loop, fd, EV_READ | EV_PERSIST, std::move(call))
{
    event_add(raw(), nullptr);
}

WriteWatch::WriteWatch(EventLoop &loop, int fd, Call call) : Watch(loop, fd, EV_WRITE | EV_PERSIST, std::move(call))
{
    event_add(raw(), nullptr);
}

SignalWatch::SignalWatch(EventLoop &loop, int signal, Call call)
    : Watch(loop, signal, EV_SIGNAL | EV_PERSIST, std::move(call))
{
    event_add(raw(), nullptr);
}

Timer::Timer(EventLoop &loop, Call call) : Watch(loop, -1, 0, std::move(call)) {}

void Timer::start(std::chrono::milliseconds delay)
{
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(delay);
    const std::chrono::microseconds rest = delay - seconds;
    const timeval time{static_cast<time_t>(seconds.count()), static_cast<suseconds_t>(rest.count())};
    event_add(raw(), &time);
}

void Timer::cancel()
{
    event_del(raw());
}

} // namespace host

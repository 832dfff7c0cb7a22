#include "host/event_loop/event_loop.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include <event2/event.h>

namespace host {
namespace {

constexpr timeval kPause{0, 100000};

struct FreeEvent {
    void operator()(event *made) const { event_free(made); }
};

/** libevent fails only where memory or file descriptors have run out at start. */
template <typename T>
T *orEnd(T *made)
{
    if (made != nullptr) return made;
    std::fputs("event loop: out of memory or file descriptors\n", stderr);
    std::exit(1); // NOLINT(concurrency-mt-unsafe): there is one thread
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

/** What the event holds the address of, which does not move with the watch. */
struct Watch::State {
    using Event = std::unique_ptr<event, FreeEvent>;

    State(EventLoop &loop, int fdOrSignal, short what, Call calls)
        : call(std::move(calls)), made(orEnd(event_new(loop.base(), fdOrSignal, what, &Watch::fired, this)))
    {
    }
    void await();

    Call call;
    Event made;
    Event again; ///< a timer, as long as the kernel has no room for what is waited for
};

void Watch::State::await()
{
    if (event_add(made.get(), nullptr) == 0) return;
    const auto tryAgain = [](int, short, void *state) { static_cast<State *>(state)->await(); };
    if (!again) again.reset(orEnd(event_new(event_get_base(made.get()), -1, 0, tryAgain, this)));
    event_add(again.get(), &kPause);
}

void Watch::End::operator()(State *state) const
{
    delete state;
}

Watch::Watch(EventLoop &loop, int fdOrSignal, short what, Call call)
    : state_(new State(loop, fdOrSignal, what, std::move(call)))
{
}

void Watch::await()
{
    state_->await();
}

event *Watch::raw() const
{
    return state_->made.get();
}

void Watch::fired(int /*fdOrSignal*/, short /*what*/, void *state)
{
    const Call kept = static_cast<State *>(state)->call; // which may end its own watch
    kept();
}

ReadWatch::ReadWatch(EventLoop &loop, int fd, Call call) : Watch(loop, fd, EV_READ | EV_PERSIST, std::move(call))
{
    await();
}

WriteWatch::WriteWatch(EventLoop &loop, int fd, Call call) : Watch(loop, fd, EV_WRITE | EV_PERSIST, std::move(call))
{
    await();
}

SignalWatch::SignalWatch(EventLoop &loop, int signal, Call call)
    : Watch(loop, signal, EV_SIGNAL | EV_PERSIST, std::move(call))
{
    await();
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

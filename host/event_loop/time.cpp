#include "host/event_loop/time.h"

#include <utility>

namespace host {
namespace {

class LoopAlarm : public Alarm {
  public:
    LoopAlarm(EventLoop &loop, std::function<void()> call) : timer_(loop, std::move(call)) {}

    void start(std::chrono::milliseconds delay) override { timer_.start(delay); }
    void cancel() override { timer_.cancel(); }

  private:
    Timer timer_;
};

} // namespace

std::unique_ptr<Alarm> LoopTime::alarm(std::function<void()> call)
{
    return std::make_unique<LoopAlarm>(loop_, std::move(call));
}

} // namespace host

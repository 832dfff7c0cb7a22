#include "tests/host/at_server/exploration/virtual_time.h"

#include <utility>

namespace exploration {

class VirtualTime::Handle : public host::Alarm {
  public:
    Handle(VirtualTime &time, size_t number) : time_(time), number_(number) {}

    void start(std::chrono::milliseconds delay) override
    {
        Entry &entry = time_.alarms_[number_];
        entry.at = time_.now_ + delay;
        entry.isSet = true;
    }
    void cancel() override { time_.alarms_[number_].isSet = false; }

  private:
    VirtualTime &time_;
    const size_t number_;
};

std::unique_ptr<host::Alarm> VirtualTime::alarm(std::function<void()> call)
{
    alarms_.push_back({std::move(call)});
    return std::make_unique<Handle>(*this, alarms_.size() - 1);
}

size_t VirtualTime::next() const
{
    size_t next = alarms_.size();
    for (size_t i = 0; i < alarms_.size(); ++i)
        if (alarms_[i].isSet && (next == alarms_.size() || alarms_[i].at < alarms_[next].at)) next = i;
    return next;
}

void VirtualTime::moveOn()
{
    Entry &entry = alarms_[next()];
    now_ = entry.at;
    entry.isSet = false;
    entry.call();
}

} // namespace exploration

/** Time that stands still until it is moved on, alarm by alarm. */
#ifndef TESTS_HOST_AT_SERVER_EXPLORATION_VIRTUAL_TIME_H
#define TESTS_HOST_AT_SERVER_EXPLORATION_VIRTUAL_TIME_H

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "host/event_loop/time.h"

namespace exploration {

class VirtualTime : public host::Time {
  public:
    Point now() const override { return now_; }
    std::unique_ptr<host::Alarm> alarm(std::function<void()> call) override;

    bool isAnythingSet() const { return next() < alarms_.size(); }
    /** Goes on to the next alarm, and lets it ring. */
    void moveOn();

    /** When each alarm rings, from now on; -1 for those that are not set. */
    template <typename Visit>
    void state(Visit &&visit) const
    {
        for (const Entry &entry : alarms_)
            visit(entry.isSet ? (entry.at - now_).count() : -1);
    }

  private:
    struct Entry {
        std::function<void()> call;
        Point at{};
        bool isSet = false;
    };
    class Handle;

    size_t next() const;

    Point now_{};
    std::vector<Entry> alarms_;
};

} // namespace exploration

#endif

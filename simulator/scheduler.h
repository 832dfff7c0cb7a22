/** Modem time, and what is to happen in it. It moves only when it is told to. */
#ifndef SIMULATOR_SCHEDULER_H
#define SIMULATOR_SCHEDULER_H

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace simulator {

class Scheduler {
  public:
    using Call = std::function<void()>;
    /** Time and, among equal times, the order of asking. */
    using Task = std::pair<int64_t, uint64_t>;

    int64_t nowMs() const { return nowMs_; }

    Task after(int64_t delayMs, Call call);
    /** Without effect on a task that has run. */
    void cancel(const Task &task);
    /** Runs what is due up to a time, each task at its own time, and those that they ask for. */
    void advanceTo(int64_t timeMs);
    /** When the next task is due. */
    std::optional<int64_t> nextMs() const;

  private:
    std::map<Task, Call> tasks_;
    int64_t nowMs_ = 0;
    uint64_t asked_ = 0;
};

} // namespace simulator

#endif

#include "simulator/scheduler.h"

#include <algorithm>

namespace simulator {

Scheduler::Task Scheduler::after(int64_t delayMs, Call call)
{
    const Task task{nowMs_ + std::max<int64_t>(delayMs, 0), asked_++};
    tasks_.emplace(task, std::move(call));
    return task;
}

void Scheduler::cancel(const Task &task)
{
    tasks_.erase(task);
}

void Scheduler::advanceTo(int64_t timeMs)
{
    while (!tasks_.empty() && tasks_.begin()->first.first <= timeMs) {
        auto next = tasks_.extract(tasks_.begin());
        nowMs_ = std::max(nowMs_, next.key().first);
        next.mapped()();
    }
    nowMs_ = std::max(nowMs_, timeMs);
}

std::optional<int64_t> Scheduler::nextMs() const
{
    if (tasks_.empty()) return std::nullopt;
    return tasks_.begin()->first.first;
}

} // namespace simulator

#include "krctl/output/progress.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "krctl/output/render.h"

namespace krctl {
namespace {

constexpr std::chrono::milliseconds kRedraw{200};
constexpr int kGaps = 4;
constexpr int kWidestBar = 40;
constexpr const char *kToLineStart = "\r\033[K";

} // namespace

std::string progressLine(const std::string &what, std::chrono::seconds elapsed, std::chrono::seconds atMost,
                         const Terminal &terminal)
{
    const std::string time = std::to_string(elapsed.count()) + " s of at most " + std::to_string(atMost.count()) + " s";
    const int room = terminal.columns - 1 - displayWidth(what) - displayWidth(time) - kGaps;
    const double fraction =
        static_cast<double>(elapsed.count()) / static_cast<double>(std::max<long>(atMost.count(), 1));
    if (room < 1) return shortened(what + "  " + time, terminal.columns - 1);
    return what + "  " + bar(fraction, std::min(room, kWidestBar), terminal) + "  " + time;
}

Progress::Progress(const Terminal &terminal, std::string what, std::chrono::seconds atMost)
    : terminal_(terminal), what_(std::move(what)), atMost_(atMost)
{
    if (terminal_.isTerminal) drawing_ = std::thread([this] { draw(); });
}

Progress::~Progress()
{
    if (!drawing_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        isEnded_ = true;
    }
    ended_.notify_one();
    drawing_.join();
    (void)std::fputs(kToLineStart, stderr);
}

void Progress::draw()
{
    const auto start = std::chrono::steady_clock::now();
    std::unique_lock lock(mutex_);
    do {
        const auto elapsed = std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - start);
        (void)std::fprintf(stderr, "%s%s", kToLineStart, progressLine(what_, elapsed, atMost_, terminal_).c_str());
    } while (!ended_.wait_for(lock, kRedraw, [this] { return isEnded_; }));
}

} // namespace krctl

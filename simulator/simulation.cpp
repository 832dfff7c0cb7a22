#include "simulator/simulation.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "simulator/control.h"
#include "simulator/text.h"

namespace simulator {

Simulation::Simulation(host::EventLoop &loop, const Settings &settings, const Scenario &scenario, Replay *replay)
    : loop_(loop), settings_(settings), pty_(loop, settings.link,
                                             {[this](std::string_view bytes) {
                                                  catchUp();
                                                  modem_.receive(bytes);
                                                  scheduleNext();
                                              },
                                              [this] { modem_.hangUp(); }}),
      modem_(settings.family, scenario, settings.seed,
             {[this](std::string_view bytes) { pty_.write(bytes); }, [this](bool plugged) { plug(plugged); }}, replay),
      timer_(loop, [this] { scheduleNext(); })
{
}

Simulation::~Simulation()
{
    if (controlFile_ < 0) return;
    ::close(controlFile_);
    ::unlink(settings_.control.c_str());
}

std::string Simulation::start()
{
    // The port comes last: who reads its path finds everything else in its place.
    if (!settings_.control.empty() && !openControl())
        return concat("cannot make ", settings_.control, ": ", std::strerror(errno));
    if (!openPort()) return concat("cannot open a pseudo-terminal: ", std::strerror(errno));
    scheduleNext();
    return {};
}

bool Simulation::openPort()
{
    if (!pty_.open()) return false;
    std::puts(pty_.path().c_str());
    std::fflush(stdout);
    return true;
}

bool Simulation::openControl()
{
    const char *const path = settings_.control.c_str();
    ::unlink(path);
    if (::mkfifo(path, S_IRUSR | S_IWUSR) != 0) return false;
    controlFile_ = ::open(path, O_RDWR | O_NONBLOCK | O_CLOEXEC); // for writing too: it never ends
    if (controlFile_ < 0) return false;
    controlWatch_ = host::ReadWatch(loop_, controlFile_, [this] { readControl(); });
    return true;
}

void Simulation::readControl()
{
    std::array<char, 1024> bytes; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by read()
    const ssize_t length = ::read(controlFile_, bytes.data(), bytes.size());
    if (length > 0) controlText_.append(bytes.data(), static_cast<size_t>(length));
    catchUp();
    for (size_t end = controlText_.find('\n'); end != std::string::npos; end = controlText_.find('\n')) {
        const std::string wrong = control(modem_, std::string_view(controlText_).substr(0, end));
        if (!wrong.empty()) std::fprintf(stderr, "kr-modem-sim: %s\n", wrong.c_str());
        controlText_.erase(0, end + 1);
    }
    scheduleNext();
}

/** Without a scale modem time jumps to whatever is due. */
int64_t Simulation::modemMs() const
{
    if (settings_.timeScale == 0) return modem_.nowMs();
    const std::chrono::duration<double, std::milli> passed = std::chrono::steady_clock::now() - started_;
    return static_cast<int64_t>(passed.count() / settings_.timeScale);
}

void Simulation::catchUp()
{
    modem_.advanceTo(modemMs());
}

void Simulation::scheduleNext()
{
    catchUp();
    while (settings_.timeScale == 0 && modem_.nextMs())
        modem_.advanceTo(*modem_.nextMs());
    timer_.cancel();
    const std::optional<int64_t> next = modem_.nextMs();
    if (!next) return;
    const double waitMs = std::ceil(static_cast<double>(*next - modemMs()) * settings_.timeScale);
    timer_.start(std::chrono::milliseconds(std::max<int64_t>(1, static_cast<int64_t>(waitMs))));
}

void Simulation::plug(bool plugged)
{
    if (!plugged)
        pty_.close();
    else if (!openPort())
        std::fprintf(stderr, "kr-modem-sim: cannot open a pseudo-terminal: %s\n", std::strerror(errno));
}

} // namespace simulator

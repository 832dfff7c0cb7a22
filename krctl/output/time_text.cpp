#include "krctl/output/time_text.h"

#include <array>
#include <cstdio>
#include <ctime>

namespace krctl {

std::string timeText()
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    std::tm parts{};
    gmtime_r(&now.tv_sec, &parts);
    std::array<char, 32> seconds{};
    std::strftime(seconds.data(), seconds.size(), "%Y-%m-%dT%H:%M:%S", &parts);
    std::array<char, 48> text{};
    (void)std::snprintf(text.data(), text.size(), "%s.%03ldZ", seconds.data(), now.tv_nsec / 1000000);
    return text.data();
}

std::string clockText()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    localtime_r(&now, &parts);
    std::array<char, 16> text{};
    std::strftime(text.data(), text.size(), "%H:%M:%S", &parts);
    return text.data();
}

} // namespace krctl

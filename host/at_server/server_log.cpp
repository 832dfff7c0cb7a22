#include "host/at_server/server_log.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace host::at_server {
namespace {

constexpr size_t kMaxQuoted = 200;

LogLevel &leastLevel()
{
    static LogLevel level = LogLevel::Info;
    return level;
}

/** The journal takes a line's priority from its start. */
std::string_view priority(LogLevel level)
{
    static const bool hasJournal = std::getenv("JOURNAL_STREAM") != nullptr;
    if (!hasJournal) return "";
    switch (level) {
    case LogLevel::Error:
        return "<3>";
    case LogLevel::Warning:
        return "<4>";
    case LogLevel::Notice:
        return "<5>";
    case LogLevel::Info:
        return "<6>";
    case LogLevel::Debug:
        break;
    }
    return "<7>";
}

/** A way to the standard error on which a write does not wait. The flag belongs to the file that is open, and other
 *  programs may have that of a terminal: it is opened once more. */
int openLog()
{
    const int own =
        isatty(STDERR_FILENO) != 0 ? open("/proc/self/fd/2", O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC) : -1;
    return own >= 0 ? own : STDERR_FILENO;
}

/** Writes what fits: a pipe or socket that can be written takes so many bytes at once. */
bool writeAtOnce(std::string_view line)
{
    static const int fd = openLog();
    pollfd ready{fd, POLLOUT, 0};
    if (poll(&ready, 1, 0) != 1 || (ready.revents & POLLOUT) == 0) return false;
    return write(fd, line.data(), std::min<size_t>(line.size(), PIPE_BUF)) > 0;
}

std::string lineOf(LogLevel level, std::initializer_list<std::string_view> parts)
{
    std::string line(priority(level));
    line += "kr-at-server: ";
    for (const std::string_view part : parts)
        line += part;
    return line += '\n';
}

} // namespace

void setLogLevel(LogLevel level)
{
    leastLevel() = level;
}

void log(LogLevel level, std::initializer_list<std::string_view> parts)
{
    static uint64_t lost = 0;
    if (level > leastLevel()) return;
    const std::string count = std::to_string(lost);
    if (lost > 0 && writeAtOnce(lineOf(LogLevel::Warning, {"lost ", count, " lines of this log"}))) lost = 0;
    if (lost > 0 || !writeAtOnce(lineOf(level, parts))) ++lost;
}

std::string quoted(std::string_view text)
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string shown = "\"";
    for (const char c : text.substr(0, kMaxQuoted)) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= ' ' && byte < 0x7F)
            shown += c;
        else
            shown.append("\\x").append({kDigits[byte >> 4U], kDigits[byte & 15U]});
    }
    return shown.append(text.size() > kMaxQuoted ? "...\"" : "\"");
}

} // namespace host::at_server

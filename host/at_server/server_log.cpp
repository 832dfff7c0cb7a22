#include "server_log.h"

#include <cstdio>
#include <cstdlib>

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
    case LogLevel::Info:
        return "<6>";
    case LogLevel::Debug:
        break;
    }
    return "<7>";
}

} // namespace

void setLogLevel(LogLevel level)
{
    leastLevel() = level;
}

void log(LogLevel level, std::initializer_list<std::string_view> parts)
{
    if (level > leastLevel()) return;
    std::string line(priority(level));
    line += "kr-at-server: ";
    for (const std::string_view part : parts)
        line += part;
    line += '\n';
    // A log that cannot be written is no reason to stop serving.
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
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

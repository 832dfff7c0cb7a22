// kora_log_append() of mainControl/host.h.

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

#include <mainControl/host.h>

#include "host/log/log_file.h"
#include "host/masking/masking.h"

namespace {

using host::Hide;
using host::log::LogFile;
using host::log::Rotation;

constexpr size_t kLongestText = size_t{128} * 1024; // the library's longest is 100 KiB
constexpr size_t kLongestLine = size_t{16} * 1024;
constexpr size_t kMostFiles = 8; // of different names
constexpr const char *kFallbackName = "kora.log";

const char *variable(const char *name)
{
    const char *const value = std::getenv(name);
    return value != nullptr ? value : "";
}

size_t numberFrom(const char *name, size_t least, size_t most, size_t otherwise)
{
    char *end = nullptr;
    const char *const text = variable(name);
    const unsigned long long number = std::strtoull(text, &end, 10);
    const bool isNumber = end != text && *end == '\0';
    return isNumber && number >= least && number <= most ? static_cast<size_t>(number) : otherwise;
}

/** What a log file is called: the last part of a path. */
std::string_view baseName(const char *path)
{
    const std::string_view whole = path != nullptr ? path : "";
    const std::string_view name = whole.substr(whole.rfind('/') + 1); // of npos that is 0
    return name.empty() || name == "." || name == ".." ? kFallbackName : name;
}

[[gnu::format(printf, 1, 0)]] std::string formatted(const char *format, va_list values)
{
    va_list again;
    va_copy(again, values);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    std::string text(length > 0 ? std::min(static_cast<size_t>(length), kLongestText) : 0, '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, values);
    return text;
}

/** Appends a text so that it stays one line, whatever it holds. */
void appendEscaped(std::string &line, std::string_view text)
{
    constexpr char kHex[] = "0123456789ABCDEF";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (line.size() >= kLongestLine) {
            line += "...";
            return;
        }
        if (c == '\\')
            line += "\\\\";
        else if (c == '\r')
            line += "\\r";
        else if (c == '\n')
            line += "\\n";
        else if (c == '\t')
            line += "\\t";
        else if (byte < 0x20 || byte == 0x7F)
            line += {'\\', 'x', kHex[byte >> 4U], kHex[byte & 0xFU]};
        else
            line += c;
    }
}

/** All log files of the process. What the environment says is read with the first line. */
class Log {
  public:
    bool isOn() const { return !directory_.empty(); }
    Hide hide() const { return hide_; }

    void append(std::string_view name, std::string_view line)
    {
        const std::lock_guard lock(mutex_);
        auto file = files_.find(name);
        if (file == files_.end()) {
            if (files_.size() >= kMostFiles) name = kFallbackName;
            file = files_.try_emplace(std::string(name), directory_ + '/' + std::string(name), rotation_).first;
        }
        file->second.append(line);
    }

  private:
    const std::string directory_ = variable("KR_LOG_DIR");
    const Rotation rotation_{numberFrom("KR_LOG_SIZE", 4096, 1U << 30U, 1U << 20U),
                             numberFrom("KR_LOG_FILES", 1, 100, 3)};
    const Hide hide_ =
        std::string_view(variable("KR_LOG_IDENTITIES")) == "1" ? Hide::Secrets : Hide::SecretsAndIdentities;
    std::mutex mutex_;
    std::map<std::string, LogFile, std::less<>> files_;
};

/** Lives as long as the process, since a thread may still log while it ends. */
Log &theLog()
{
    static auto *const only = new Log;
    return *only;
}

[[gnu::format(printf, 4, 0)]] void append(const char *sourceModule, int32_t line, const char *logFile,
                                          const char *format, va_list values)
{
    Log &log = theLog();
    if (!log.isOn()) return;
    const std::string text = host::maskedLogLine(formatted(format, values), log.hide());
    std::string whole;
    appendEscaped(whole, sourceModule != nullptr ? sourceModule : "");
    whole += ':' + std::to_string(line) + ' ';
    appendEscaped(whole, text);
    log.append(baseName(logFile), whole);
}

} // namespace

void kora_log_append(const char *sourceModule, int32_t line, const char *logFile, const char *format, ...)
{
    const int error = errno;
    va_list values;
    va_start(values, format);
    try {
        append(sourceModule, line, logFile, format, values);
    } catch (...) { // NOLINT(bugprone-empty-catch): a log that fails, for want of memory, is no reason to fail a call
    }
    va_end(values);
    errno = error;
}

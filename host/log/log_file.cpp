#include "host/log/log_file.h"

#include <cstdio>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <spdlog/sinks/rotating_file_sink.h>

namespace host::log {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kPause = std::chrono::seconds(5); // between tries, each of which may take a while itself
constexpr mode_t kMode = 0640;

void prepare(std::FILE *file)
{
    fcntl(fileno(file), F_SETFD, FD_CLOEXEC);
    fchmod(fileno(file), kMode);
}

} // namespace

struct LogFile::Sink {
    Sink(const std::string &path, Rotation rotation) : file(path, rotation.bytes, rotation.files - 1, false, handlers())
    {
        file.set_pattern("%Y-%m-%d %H:%M:%S.%e [%P] %v");
    }
    static spdlog::file_event_handlers handlers()
    {
        spdlog::file_event_handlers handlers;
        handlers.after_open = [](const spdlog::filename_t &, std::FILE *opened) { prepare(opened); };
        return handlers;
    }
    spdlog::sinks::rotating_file_sink_st file;
};

LogFile::LogFile(std::string path, Rotation rotation) : path_(std::move(path)), rotation_(rotation) {}
LogFile::LogFile(LogFile &&) noexcept = default;
LogFile::~LogFile() = default;

/** Opens the file if it is not. */
bool LogFile::isOpen()
{
    if (sink_ != nullptr && access(path_.c_str(), F_OK) != 0) sink_.reset();
    if (sink_ != nullptr) return true;
    if (Clock::now() < nextTry_) return false;
    nextTry_ = Clock::now() + kPause;
    sink_ = std::make_unique<Sink>(path_, rotation_);
    nextTry_ = {};
    return true;
}

void LogFile::append(std::string_view line) noexcept
{
    try {
        if (!isOpen()) return;
        sink_->file.log({"", spdlog::level::info, {line.data(), line.size()}});
        sink_->file.flush();
    } catch (...) {
        sink_.reset();
        nextTry_ = Clock::now() + kPause;
    }
}

} // namespace host::log

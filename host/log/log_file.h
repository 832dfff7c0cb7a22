/** A file of lines that rotates by size. Nothing that goes wrong with it reaches its caller. */
#ifndef HOST_LOG_LOG_FILE_H
#define HOST_LOG_LOG_FILE_H

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace host::log {

/** When files rotate, and how many there are in all, the current one among them. */
struct Rotation {
    size_t bytes;
    size_t files;
};

class LogFile {
  public:
    /** Opens nothing yet. */
    LogFile(std::string path, Rotation rotation);
    ~LogFile();
    LogFile(LogFile &&) noexcept;
    LogFile &operator=(LogFile &&) = delete;
    LogFile(const LogFile &) = delete;
    LogFile &operator=(const LogFile &) = delete;

    /** Writes the line with the time and the process id in front. A file that cannot be opened or written is tried again
     *  after a while, one that was removed is made anew; lines in between are lost. */
    void append(std::string_view line) noexcept;

  private:
    struct Sink;
    bool isOpen();

    std::string path_;
    Rotation rotation_;
    std::unique_ptr<Sink> sink_;
    std::chrono::steady_clock::time_point nextTry_{};
};

} // namespace host::log

#endif

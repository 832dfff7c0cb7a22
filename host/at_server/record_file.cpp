#include "host/at_server/record_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host::at_server {
namespace {

constexpr mode_t kOwnersOnly = 0600;
constexpr std::string_view kLineStart = R"({"time":)"; // of each line of a record

std::string lastError()
{
    return std::strerror(errno);
}

bool isRegular(const struct stat &status)
{
    return S_ISREG(status.st_mode);
}

/** @return the end of the last line break before an offset; 0 without one, -1 if that cannot be read */
off_t endOfWholeLines(int fd, off_t size)
{
    std::array<char, 4096> block{};
    while (size > 0) {
        const auto length = static_cast<size_t>(std::min<off_t>(size, block.size()));
        const off_t start = size - static_cast<off_t>(length);
        if (pread(fd, block.data(), length, start) != static_cast<ssize_t>(length)) return -1;
        const size_t lineBreak = std::string_view(block.data(), length).rfind('\n');
        if (lineBreak != std::string_view::npos) return start + static_cast<off_t>(lineBreak) + 1;
        size = start;
    }
    return 0;
}

/** @return -1 if it cannot be told */
off_t sizeOf(int fd)
{
    struct stat status {};
    return fstat(fd, &status) == 0 ? status.st_size : -1;
}

bool beginsAsALine(int fd, off_t at)
{
    std::array<char, kLineStart.size()> start{};
    const ssize_t length = pread(fd, start.data(), start.size(), at);
    return length >= 0 && kLineStart.substr(0, static_cast<size_t>(length)) ==
                              std::string_view(start.data(), static_cast<size_t>(length));
}

/** Cuts off the beginning of a line, as a crash or a full disk leaves it. Nothing else is, should the file be no record.
 *  @return what is wrong; empty on success */
std::string withoutTornLine(int fd, off_t size)
{
    const off_t end = endOfWholeLines(fd, size);
    if (end == size) return {};
    if (end < 0) return lastError();
    if (!beginsAsALine(fd, end)) return "it does not end as a record does";
    return ftruncate(fd, end) == 0 ? std::string() : lastError();
}

/** @return what is wrong with it as the file of a record; empty if nothing is */
std::string takeFile(int fd)
{
    struct stat status {};
    if (fstat(fd, &status) != 0) return lastError();
    if (!isRegular(status)) return "it is not a regular file";
    if ((status.st_mode & 07777U) != kOwnersOnly && fchmod(fd, kOwnersOnly) != 0) return lastError();
    return withoutTornLine(fd, status.st_size);
}

/** What is no regular file is not even opened, which does things to some of them.
 *  @return -1 with what is wrong */
int openRecord(const std::string &path, std::string &wrong)
{
    struct stat status {};
    if (lstat(path.c_str(), &status) == 0 && !isRegular(status)) {
        wrong = "it is not a regular file";
        return -1;
    }
    constexpr int kFlags = O_RDWR | O_CREAT | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const int fd = ::open(path.c_str(), kFlags, kOwnersOnly);
    wrong = fd < 0 ? lastError() : takeFile(fd);
    if (wrong.empty() || fd < 0) return fd;
    ::close(fd);
    return -1;
}

/** @return how much of a text was written; errno says why not all of it */
size_t writeAll(int fd, std::string_view text)
{
    size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = ::write(fd, text.data() + written, text.size() - written);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        written += static_cast<size_t>(count);
    }
    return written;
}

} // namespace

RecordFile::~RecordFile()
{
    close();
}

void RecordFile::close()
{
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
    tornAt_.reset();
}

std::string RecordFile::open(const std::string &path, size_t mostBytes)
{
    const std::string wrong = openAt(path);
    if (!wrong.empty()) return "cannot write the record " + path + ": " + wrong;
    mostBytes_ = mostBytes;
    return {};
}

std::string RecordFile::reopen()
{
    return open(std::string(path_), mostBytes_);
}

std::string RecordFile::openAt(const std::string &path)
{
    std::string wrong;
    const int fd = openRecord(path, wrong);
    if (fd < 0) return wrong;
    close();
    fd_ = fd;
    if (path_ != path) path_ = path;
    return {};
}

std::string RecordFile::append(std::string_view line)
{
    const std::string failure = write(line);
    if (!failure.empty()) return lost_++ == 0 ? "the record cannot be written: " + failure : std::string();
    const uint64_t lost = std::exchange(lost_, 0);
    if (lost == 0) return {};
    return "the record is written again; " + std::to_string(lost) + (lost == 1 ? " line was lost" : " lines were lost");
}

/** @return what is wrong; empty on success */
std::string RecordFile::write(std::string_view line)
{
    if (fd_ >= 0 && !cutOff()) return lastError();
    if (fd_ >= 0 && isFullWith(line.size()) && !makeRoom()) return lastError();
    if (fd_ < 0) {
        std::string wrong = openAt(path_);
        if (!wrong.empty()) return wrong;
    }
    const off_t end = sizeOf(fd_);
    const size_t written = end < 0 ? 0 : writeAll(fd_, line);
    if (written == line.size()) return {};
    std::string wrong = lastError();
    if (written > 0) tornAt_ = end;
    (void)cutOff(); // or else before the next line
    return wrong;
}

/** @return whether the file ends with a whole line now */
bool RecordFile::cutOff()
{
    if (tornAt_ && sizeOf(fd_) > *tornAt_ && ftruncate(fd_, *tornAt_) != 0) return false;
    tornAt_.reset();
    return true;
}

bool RecordFile::isFullWith(size_t more) const
{
    const off_t size = sizeOf(fd_);
    return size > 0 && static_cast<size_t>(size) + more > mostBytes_;
}

/** @return whether the path is free for the next file */
bool RecordFile::makeRoom()
{
    if (rename(path_.c_str(), (path_ + ".1").c_str()) != 0) return false;
    close();
    return true;
}

} // namespace host::at_server

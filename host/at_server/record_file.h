/** The file of a record: whole lines, for its owner alone, of bounded size. What goes wrong with the disk costs lines and
 *  nothing else: a line that could not be written whole is cut off again, at the latest before the next one. */
#ifndef HOST_AT_SERVER_RECORD_FILE_H
#define HOST_AT_SERVER_RECORD_FILE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <sys/types.h>

namespace host::at_server {

class RecordFile {
  public:
    RecordFile() = default;
    ~RecordFile();
    RecordFile(const RecordFile &) = delete;
    RecordFile &operator=(const RecordFile &) = delete;

    /** Goes on at the end of what is there, less a line that is torn. The next file is begun when one more line would make
     *  this one larger than stated; the one before it is kept as PATH.1.
     *  @return what is wrong, and then all stays as it was; empty on success */
    std::string open(const std::string &path, size_t mostBytes);
    /** Opens the same path anew. */
    std::string reopen();

    bool isOpen() const { return !path_.empty(); }

    /** Writes a line, its line break included, or nothing of it.
     *  @return what is to be told: that lines are being lost, or that they are not any more; empty if that is known */
    std::string append(std::string_view line);
    /** Whether the last line was lost. */
    bool isFailing() const { return lost_ > 0; }

  private:
    std::string openAt(const std::string &path);
    std::string write(std::string_view line);
    bool isFullWith(size_t more) const;
    bool makeRoom();
    bool cutOff();
    void close();

    std::string path_;
    size_t mostBytes_ = 0;
    int fd_ = -1;                 ///< -1 as well when the next file could not be opened
    std::optional<off_t> tornAt_; ///< the end of the last whole line, behind which there is part of one
    uint64_t lost_ = 0;
};

} // namespace host::at_server

#endif

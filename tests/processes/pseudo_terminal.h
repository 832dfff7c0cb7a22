/** A pseudo-terminal with the test as the modem on its master side; the program under test opens its path. */
#ifndef TESTS_PROCESSES_PSEUDO_TERMINAL_H
#define TESTS_PROCESSES_PSEUDO_TERMINAL_H

#include <chrono>
#include <string>
#include <string_view>

namespace processes {

class PseudoTerminal {
  public:
    /** Raw in both directions from the start. */
    PseudoTerminal();
    /** Hangs up. */
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    const std::string &path() const { return path_; }
    /** The master side, which does not block. */
    int fd() const { return fd_; }

    /** Writes all, however slowly it is read. */
    void write(std::string_view bytes) const;
    /** What can be read within a time; empty if nothing can. */
    std::string read(std::chrono::milliseconds within) const;

  private:
    int fd_ = -1;
    std::string path_;
};

} // namespace processes

#endif

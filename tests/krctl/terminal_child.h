/** A program on a terminal of its own: what a person sees, and what a person types. */
#ifndef TESTS_KRCTL_TERMINAL_CHILD_H
#define TESTS_KRCTL_TERMINAL_CHILD_H

#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>
#include <termios.h>

#include "tests/processes/child_process.h"

class TerminalChild {
  public:
    TerminalChild(const std::vector<std::string> &command, const processes::Child::Environment &environment,
                  int columns);
    /** Kills what still runs. */
    ~TerminalChild();
    TerminalChild(const TerminalChild &) = delete;
    TerminalChild &operator=(const TerminalChild &) = delete;

    void type(std::string_view text) const;
    /** Reads until this has been shown, or the program has ended. */
    bool shows(std::string_view text);
    bool hasEcho() const;
    /** Reads until the program ends; its exit status as Child::wait() gives it. */
    int wait();

    /** All that was written, escape sequences included. */
    const std::string &screen() const { return screen_; }
    /** The same as lines, without escape sequences and carriage returns. */
    std::vector<std::string> lines() const;

  private:
    bool readMore();

    pid_t pid_ = -1;
    int fd_ = -1;
    std::string screen_;
};

#endif

/** Other programs that krctl runs: itself, a shell, the server and the simulator of a replay. */
#ifndef KRCTL_COMMANDS_CHILD_PROGRAM_H
#define KRCTL_COMMANDS_CHILD_PROGRAM_H

#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace krctl {

/** This program with other arguments; a leading "krctl" among them is taken for granted.
 *  @param arguments  one at least */
std::vector<std::string> nestedCommand(const std::vector<std::string> &arguments);

/** Where a program of this project is: where an environment variable says, beside this one, or on the PATH. */
std::string programPath(const char *variable, const std::string &name);

class ChildProgram {
  public:
    enum class Role {
        Foreground, ///< has the terminal: Ctrl-C reaches it as well
        Helper,     ///< runs apart, its output is dropped; ended with this object
    };

    /** Throws a Failure if it cannot be started. */
    ChildProgram(const std::vector<std::string> &command, Role role);
    /** Ends what still runs. */
    ~ChildProgram();
    ChildProgram(const ChildProgram &) = delete;
    ChildProgram &operator=(const ChildProgram &) = delete;

    /** Its exit status, once it has ended; 128 and the signal's number if a signal ended it. Does not wait. */
    std::optional<int> ended();
    /** Waits for its end. */
    int wait();

  private:
    int statusOf(int waited);

    pid_t pid_ = -1;
    int status_ = 0;
};

} // namespace krctl

#endif

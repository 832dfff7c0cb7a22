/** Programs under test as processes of their own: started, spoken to, killed, and waited for with a limit. */
#ifndef TESTS_PROCESSES_CHILD_PROCESS_H
#define TESTS_PROCESSES_CHILD_PROCESS_H

#include <chrono>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace processes {

/** How long anything may take before a test says that it hangs: long, since nothing is measured by it. */
constexpr std::chrono::seconds kPatience{60};

class Child {
  public:
    using Environment = std::map<std::string, std::string>;

    /** @param environment  added to the test's own */
    explicit Child(const std::vector<std::string> &command, const Environment &environment = {});
    /** Kills what still runs. */
    ~Child();
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    pid_t pid() const { return pid_; }

    void write(std::string_view text) const;
    void closeInput();

    /** Reads until the program has written a text to its standard output (or error), or has ended.
     *  @return whether the text came */
    bool waitForOutput(std::string_view text);
    bool waitForErrors(std::string_view text);
    /** Reads what the program writes for a time. */
    void readFor(std::chrono::milliseconds time);

    void signal(int number) const;
    /** Reads all output until the program ends, within kPatience.
     *  @return its exit status; 128 and the signal's number if a signal ended it; -1 if it did not end */
    int wait();

    /** What has been read so far. */
    const std::string &output() const { return output_.text; }
    const std::string &errors() const { return errors_.text; }

  private:
    struct Pipe {
        int fd = -1;
        std::string text;
    };
    bool waitFor(const Pipe &pipe, std::string_view text);
    bool readMore(std::chrono::steady_clock::time_point until);

    pid_t pid_ = -1;
    int status_ = -1;
    int input_ = -1;
    Pipe output_;
    Pipe errors_;
};

/** A directory of its own for a test, removed at the end. */
class ScratchDirectory {
  public:
    ScratchDirectory();
    ~ScratchDirectory();
    ScratchDirectory(const ScratchDirectory &) = delete;
    ScratchDirectory &operator=(const ScratchDirectory &) = delete;

    std::string operator/(std::string_view name) const { return (path_ / name).string(); }
    const std::filesystem::path &path() const { return path_; }

  private:
    std::filesystem::path path_;
};

std::string contents(const std::string &file);

/** Asks again and again, with a pause, until something holds: for what other processes do in their own time.
 *  @return whether it came to hold within kPatience */
template <typename Condition>
bool eventually(Condition holds);

void pauseBriefly();

template <typename Condition>
bool eventually(Condition holds)
{
    const auto until = std::chrono::steady_clock::now() + kPatience;
    while (!holds()) {
        if (std::chrono::steady_clock::now() > until) return false;
        pauseBriefly();
    }
    return true;
}

} // namespace processes

#endif

/** A simulated modem, a server for it, and krctl. */
#ifndef TESTS_KRCTL_BENCH_H
#define TESTS_KRCTL_BENCH_H

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "host/family/family.h"
#include "tests/processes/child_process.h"
#include "tests/processes/other_user.h"

/** The words of all families. */
inline const auto kFamilies = [] {
    std::vector<const char *> words;
    words.reserve(host::family::kChoices.size());
    for (const host::family::Row &row : host::family::kChoices)
        words.push_back(row.word.data());
    return words;
}();

struct Result {
    int status = -1;
    std::string output;
    std::string errors;
};

class Bench {
  public:
    /** @param scenario  a JSON object for the simulator
     *  @param timeScale  of the simulator: 0 is as fast as it can */
    explicit Bench(const std::string &family, const std::string &scenario = "{}", const std::string &timeScale = "0",
                   const std::vector<std::string> &serverOptions = {"--code-wait-ms", "1"});
    Bench(const Bench &) = delete;
    Bench &operator=(const Bench &) = delete;

    Result krctl(std::vector<std::string> arguments, const std::string &input = "") const;

    /** As a user who is a member of processes::kOneGroup and no more. */
    Result krctlAsMember(std::vector<std::string> arguments, const std::string &input = "") const;

    /** What a krctl of one's own needs to find the server. */
    processes::Child::Environment environment() const;
    std::string path(const char *name) const { return directory_ / name; }

    /** Tells the modem what happens to it: "unplug", "report +CREG: 0". */
    void happen(const std::string &line) const;
    processes::Child &server() { return *server_; }
    /** Each command that clients have sent to the modem. */
    std::set<std::string> sent() const;
    /** All that the library has logged. */
    std::string libraryLog() const;

  private:
    processes::ScratchDirectory directory_;
    std::unique_ptr<processes::Child> modem_;
    std::unique_ptr<processes::Child> server_;
};

/** krctl without any server; its socket does not exist. */
Result krctlAlone(std::vector<std::string> arguments, const processes::Child::Environment &environment = {});

#endif

#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include <mainControl/mainControl.h>

/// A host that plays a script: it defines the six functions that the library calls, checks every command against the
/// next expected one, and records the log.
namespace scripted {

/// A reply in standard framing: each line closed, an empty line before the final result.
std::string framed(std::initializer_list<const char *> lines, const char *finalResult = "OK");

/// One log line as the library handed it over.
struct LogLine {
    std::string module;
    std::string file;
    std::string format;
    std::string text; ///< rendered
    std::int32_t line;
};

/// The host of one test. There is one at a time; what happens without one fails the test.
///
/// Steps are strict: an unexpected command, another time-out, a raw record that is not zeroed whole, and a step that is
/// left over when the host goes fail the test.
class Host {
  public:
    Host();
    ~Host();
    Host(const Host &) = delete;
    Host &operator=(const Host &) = delete;

    /// Expects a command and answers with a reply.
    Host &expect(std::string command, std::int32_t timeoutMs, std::string reply);
    /// Expects a command and fails to send it. The raw record is filled all the same, with something that parses.
    Host &expectFailing(std::string command, std::int32_t timeoutMs, int result = -1);

    /// Everything that was logged so far.
    [[nodiscard]] const std::vector<LogLine> &log() const { return log_; }
    /// The rendered texts of a module's lines, in order. An empty module stands for all of them.
    [[nodiscard]] std::vector<std::string> texts(const std::string &module = "") const;
    /// The formats of a module's lines, in order.
    [[nodiscard]] std::vector<std::string> formats(const std::string &module = "") const;
    void forgetLog() { log_.clear(); }

    /// Whether every expected command has come.
    [[nodiscard]] bool isDone() const { return next_ == steps_.size(); }

    /// Called by the six functions.
    int send(const char *command, AtClientRes *response, std::int32_t timeoutMs);
    void append(LogLine line) { log_.push_back(std::move(line)); }
    static Host &current();

  private:
    struct Step {
        std::string command;
        std::int32_t timeoutMs;
        std::string reply;
        int result;
    };
    std::vector<Step> steps_;
    std::size_t next_ = 0;
    std::vector<LogLine> log_;
};

constexpr const char *kParserModule = "../lib_public/ATPreprocess/ATPreprocess";
constexpr const char *kSetModule = "../lib_public/AtCodec/Set_AtWrapper";
constexpr const char *kNetworkModule = "../lib_public/AtCodec/Network_AtWrapper";
constexpr const char *kApiModule = "lib_mainControl";

} // namespace scripted

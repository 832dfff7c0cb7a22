#ifndef TESTS_SUPPORT_SCRIPTED_HOST_H
#define TESTS_SUPPORT_SCRIPTED_HOST_H

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include <mainControl/mainControl.h>

/** A host that plays a script: it defines the six functions that the library calls, checks every command against the
 *  next expected one, and records the log. */
namespace scripted {

/** A reply in standard framing: each line closed, an empty line before the final result. */
std::string framed(std::initializer_list<const char *> lines, const char *finalResult = "OK");

/** One log line as the library handed it over. */
struct LogLine {
    std::string module;
    std::string file;
    std::string format;
    std::string text; ///< rendered
    int32_t line;
};

/** The host of one test. There is one at a time; what happens without one fails the test.
 *
 *  Steps are strict: an unexpected command, another time-out, a raw record that is not zeroed whole, and a step that is
 *  left over when the host goes fail the test. */
class Host {
  public:
    Host();
    ~Host();
    Host(const Host &) = delete;
    Host &operator=(const Host &) = delete;

    /** Expects a command and answers with a reply. */
    Host &expect(std::string command, int32_t timeoutMs, std::string reply);
    /** Expects a command and fails to send it. The raw record is filled all the same, with something that parses. */
    Host &expectFailing(std::string command, int32_t timeoutMs, int result = -1);

    /** Expects ClientInit() with the queue of the AT server, and answers it. */
    Host &expectClientInit(int result = 0);
    /** Expects SetClientProcRecvCallback(), and answers it. */
    Host &expectCallbackInstall(int result = 0);
    /** What was installed last. */
    using Receiver = uint32_t (*)(AtClientRes *report);
    [[nodiscard]] static Receiver receiver();

    /** Expects CODE_Usc2orGsm7ToAscDecode() with a source and 0, and answers with a text and a result. */
    Host &expectDecode(std::string source, std::string destination, int result);
    /** Expects CODE_InvertNumbers() with a source and its length, and answers with a text and a result. */
    Host &expectInvert(std::string source, std::string destination, int result);

    /** Everything that was logged so far. */
    [[nodiscard]] const std::vector<LogLine> &log() const { return log_; }
    /** The rendered texts of a module's lines, in order. An empty module stands for all of them. */
    [[nodiscard]] std::vector<std::string> texts(const std::string &module = "") const;
    /** The formats of a module's lines, in order. */
    [[nodiscard]] std::vector<std::string> formats(const std::string &module = "") const;
    void forgetLog() { log_.clear(); }

    /** Whether every expected command has come. */
    [[nodiscard]] bool isDone() const { return next_ == steps_.size(); }

    /** Called by the six functions. */
    int clientInit(const char *queueName);
    int installCallback(Receiver callback);
    int decode(const char *source, char *destination, int32_t zero);
    int invert(const char *source, char *destination, int32_t sourceLength);
    int send(const char *command, AtClientRes *response, int32_t timeoutMs);
    void append(LogLine line) { log_.push_back(std::move(line)); }
    static Host &current();

  private:
    enum class Call { Send, ClientInit, CallbackInstall, Decode, Invert };
    struct Step {
        Call call;
        std::string argument;
        int32_t number; ///< of a command its time-out
        std::string answer;
        int result;
    };
    /** The next step, if it is such a call with these arguments. */
    const Step *take(Call call, const char *argument, int32_t number);
    static int answerText(const Step *step, char *destination, int unexpected);

    std::vector<Step> steps_;
    size_t next_ = 0;
    std::vector<LogLine> log_;
};

constexpr const char *kParserModule = "../lib_public/ATPreprocess/ATPreprocess";
constexpr const char *kSetModule = "../lib_public/AtCodec/Set_AtWrapper";
constexpr const char *kNetworkModule = "../lib_public/AtCodec/Network_AtWrapper";
constexpr const char *kApiModule = "lib_mainControl";
constexpr const char *kApiFileModule = "lib_mainControl.c"; ///< PIN, network lock and device settings

} // namespace scripted

#endif

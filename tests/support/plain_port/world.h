#ifndef TESTS_SUPPORT_PLAIN_PORT_WORLD_H
#define TESTS_SUPPORT_PLAIN_PORT_WORLD_H

#include <cstdarg>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <mainControl/records.h>

/** The wrappers and the API once more, as literal as it gets: records of their own, commands from sprintf(), values
 *  through the sscanf() of libc. Tests hold the library against it. */
namespace plain {

/** What the library keeps between two calls. */
struct Globals {
    int32_t platform = 0;
    int32_t procDataLen = 0;
    int32_t waitingRes = 1;
    int32_t singleReport = 0;
    int32_t cardType = 1;
    int32_t cardTypeKnown = 0;
    std::string lastPin = std::string(40, '\0'); ///< all 40 bytes
    RegistrationCallback creg = nullptr;
    RegistrationCallback cereg = nullptr;
    RegistrationCallback cgreg = nullptr;
    bool isClientInitialised = false;
    bool isCallbackInstalled = false;

    /** Empty if both are the same, else the name of the first that differs. The two flags are not looked at. */
    [[nodiscard]] std::string difference(const Globals &other) const;
};

/** What the host answers to one call of it. */
struct Answer {
    int result = 0;
    std::string text;
};

constexpr const char *kParser = "../lib_public/ATPreprocess/ATPreprocess";
constexpr const char *kSet = "../lib_public/AtCodec/Set_AtWrapper";
constexpr const char *kNetwork = "../lib_public/AtCodec/Network_AtWrapper";
constexpr const char *kApi = "lib_mainControl";
constexpr const char *kApiFile = "lib_mainControl.c";

/** The address of something that no caller can see, in a log line; it stands for any number. */
constexpr const char *kHiddenAddress = "\x01";

std::string format(const char *pattern, ...) __attribute__((format(printf, 1, 2)));

/** The host of one run, of the library or of the port: it answers from a script and writes down what it hears. */
class World {
  public:
    /** Answers the call with this number, counted from 0. */
    using Script = std::function<Answer(size_t number, const std::string &call)>;
    World(Globals start, Script script) : globals(std::move(start)), script_(std::move(script)) {}

    int send(const std::string &command, AtClientRes *response, int32_t timeoutMs);
    int clientInit(const std::string &queueName);
    int installCallback();
    int decode(const std::string &source, char *destination, int32_t zero);
    int invert(const std::string &source, char *destination, int32_t sourceLength);
    void log(const char *module, const char *pattern, ...) __attribute__((format(printf, 3, 4)));
    void logList(const char *module, const char *pattern, std::va_list arguments) __attribute__((format(printf, 3, 0)));
    void append(std::string event) { events.push_back(std::move(event)); }

    /** Bytes of a record that may hold anything after the call. */
    void leaveOpen(const void *begin, size_t size);
    [[nodiscard]] bool isOpen(const void *byte) const;

    /** The world in which a host function or a callback is called. */
    static World *current;

    Globals globals;
    std::vector<std::string> events; ///< commands, log lines and whatever else reaches the host, in order

  private:
    Answer answer(const std::string &event);
    int answerText(const std::string &event, char *destination);

    Script script_;
    size_t calls_ = 0;
    std::vector<std::pair<const char *, size_t>> open_;
};

/** Whether two runs were the same to the host; where they were not, what each of them did there. */
std::string differenceOfEvents(const std::vector<std::string> &library, const std::vector<std::string> &port);

} // namespace plain

#endif

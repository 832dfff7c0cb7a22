/** A modem of a few lines behind a link to a pseudo-terminal: a thread that answers each command as a test says. */
#ifndef TESTS_HOST_AT_SERVER_SCRIPTED_MODEM_H
#define TESTS_HOST_AT_SERVER_SCRIPTED_MODEM_H

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/processes/pseudo_terminal.h"

class ScriptedModem {
  public:
    /** From a command, without its carriage return, to all that the modem writes; runs on the modem's thread. An escape
     *  character is a command of its own. */
    using Answer = std::function<std::string(const std::string &command)>;

    /** @param link  path that leads to the pseudo-terminal */
    ScriptedModem(std::string link, Answer answer);
    ~ScriptedModem();
    ScriptedModem(const ScriptedModem &) = delete;
    ScriptedModem &operator=(const ScriptedModem &) = delete;

    void answerWith(Answer answer);
    /** Writes by itself, as a report does. */
    void write(std::string_view bytes);

    /** The device goes away, and its path with it. */
    void unplug();
    void plug();

    /** All commands so far, the server's own among them. */
    std::vector<std::string> heard() const;
    size_t count(std::string_view command) const;

  private:
    void run();
    void takeBytes(const std::string &bytes);
    void takeCommand(const std::string &command);

    const std::string link_;
    mutable std::mutex mutex_;
    Answer answer_;
    std::shared_ptr<processes::PseudoTerminal> terminal_;
    std::string line_;
    std::vector<std::string> heard_;
    std::atomic<bool> isEnding_ = false;
    std::thread thread_;
};

#endif

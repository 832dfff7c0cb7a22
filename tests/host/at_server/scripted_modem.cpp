#include "tests/host/at_server/scripted_modem.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "tests/processes/child_process.h"

using namespace std::chrono_literals;

ScriptedModem::ScriptedModem(std::string link, Answer answer) : link_(std::move(link)), answer_(std::move(answer))
{
    plug();
    thread_ = std::thread([this] { run(); });
}

ScriptedModem::~ScriptedModem()
{
    isEnding_ = true;
    thread_.join();
}

void ScriptedModem::answerWith(Answer answer)
{
    const std::lock_guard lock(mutex_);
    answer_ = std::move(answer);
}

void ScriptedModem::plug()
{
    auto terminal = std::make_shared<processes::PseudoTerminal>();
    const std::lock_guard lock(mutex_);
    line_.clear();
    terminal_ = std::move(terminal);
    std::filesystem::create_symlink(terminal_->path(), link_);
}

void ScriptedModem::unplug()
{
    const std::lock_guard lock(mutex_);
    std::filesystem::remove(link_);
    terminal_.reset();
}

void ScriptedModem::write(std::string_view bytes)
{
    const std::lock_guard lock(mutex_);
    terminal_->write(bytes);
}

std::vector<std::string> ScriptedModem::heard() const
{
    const std::lock_guard lock(mutex_);
    return heard_;
}

size_t ScriptedModem::count(std::string_view command) const
{
    const auto commands = heard();
    return static_cast<size_t>(std::count(commands.begin(), commands.end(), command));
}

void ScriptedModem::run()
{
    while (!isEnding_) {
        std::shared_ptr<processes::PseudoTerminal> terminal;
        {
            const std::lock_guard lock(mutex_);
            terminal = terminal_;
        }
        if (terminal)
            takeBytes(terminal->read(5ms));
        else
            processes::pauseBriefly();
    }
}

void ScriptedModem::takeBytes(const std::string &bytes)
{
    for (const char byte : bytes) {
        if (byte == '\x1B') line_.clear();
        if (byte != '\r') line_ += byte;
        if (byte == '\r' || byte == '\x1B') takeCommand(std::exchange(line_, {}));
    }
}

void ScriptedModem::takeCommand(const std::string &command)
{
    Answer answer;
    {
        const std::lock_guard lock(mutex_);
        heard_.push_back(command);
        answer = answer_;
    }
    const std::string text = answer(command);
    const std::lock_guard lock(mutex_);
    if (terminal_ && !text.empty()) terminal_->write(text);
}

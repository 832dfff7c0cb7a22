#include "tests/support/scripted_host.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include <gtest/gtest.h>

#include "tests/support/filled.h"

namespace scripted {
namespace {

Host *theHost = nullptr;
Host::Receiver theReceiver = nullptr;

__attribute__((format(printf, 1, 0))) std::string render(const char *format, std::va_list arguments)
{
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    std::string text(static_cast<size_t>(length) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, arguments);
    text.pop_back();
    return text;
}

} // namespace

std::string framed(std::initializer_list<const char *> lines, const char *finalResult)
{
    std::string reply;
    for (const char *line : lines)
        reply += std::string("\r\n") + line + "\r\n";
    return reply + "\r\n" + finalResult + "\r\n";
}

Host::Host()
{
    EXPECT_EQ(theHost, nullptr) << "there is already a host";
    theHost = this;
}

Host::~Host()
{
    theHost = nullptr;
    for (size_t i = next_; i < steps_.size(); ++i)
        ADD_FAILURE() << "never came: " << steps_[i].argument;
}

Host &Host::expect(std::string command, int32_t timeoutMs, std::string reply)
{
    steps_.push_back({Call::Send, std::move(command), timeoutMs, std::move(reply), 0});
    return *this;
}

Host &Host::expectFailing(std::string command, int32_t timeoutMs, int result)
{
    steps_.push_back({Call::Send, std::move(command), timeoutMs, "\r\nOK\r\n", result});
    return *this;
}

Host &Host::expectClientInit(int result)
{
    steps_.push_back({Call::ClientInit, "/tmp/AT_SERVER_MSG_ID_MC", 0, "", result});
    return *this;
}

Host &Host::expectCallbackInstall(int result)
{
    steps_.push_back({Call::CallbackInstall, "a receive callback", 0, "", result});
    return *this;
}

Host &Host::expectDecode(std::string source, std::string destination, int result)
{
    steps_.push_back({Call::Decode, std::move(source), 0, std::move(destination), result});
    return *this;
}

Host &Host::expectInvert(std::string source, std::string destination, int result)
{
    const auto length = static_cast<int32_t>(source.size());
    steps_.push_back({Call::Invert, std::move(source), length, std::move(destination), result});
    return *this;
}

std::vector<std::string> Host::texts(const std::string &module) const
{
    std::vector<std::string> found;
    for (const LogLine &line : log_) {
        if (module.empty() || line.module == module) found.push_back(line.text);
    }
    return found;
}

std::vector<std::string> Host::formats(const std::string &module) const
{
    std::vector<std::string> found;
    for (const LogLine &line : log_) {
        if (module.empty() || line.module == module) found.push_back(line.format);
    }
    return found;
}

const Host::Step *Host::take(Call call, const char *argument, int32_t number)
{
    if (isDone()) {
        ADD_FAILURE() << "unexpected: " << argument;
        return nullptr;
    }
    const Step &step = steps_[next_++];
    EXPECT_EQ(static_cast<int>(step.call), static_cast<int>(call)) << argument;
    EXPECT_EQ(step.argument, argument);
    EXPECT_EQ(step.number, number) << argument;
    return step.call == call ? &step : nullptr;
}

int Host::send(const char *command, AtClientRes *response, int32_t timeoutMs)
{
    const Step *const step = take(Call::Send, command, timeoutMs);
    EXPECT_TRUE(isFilledWith(0, response, sizeof *response)) << command;
    if (step == nullptr) return -1;
    // A reply that fills the buffer leaves no room for a terminator.
    std::memcpy(response->aucDataBuf, step->answer.data(), std::min(step->answer.size(), sizeof response->aucDataBuf));
    return step->result;
}

int Host::clientInit(const char *queueName)
{
    const Step *const step = take(Call::ClientInit, queueName, 0);
    return step != nullptr ? step->result : -1;
}

int Host::installCallback(Receiver callback)
{
    const Step *const step = take(Call::CallbackInstall, "a receive callback", 0);
    theReceiver = callback;
    return step != nullptr ? step->result : -1;
}

Host::Receiver Host::receiver()
{
    return theReceiver;
}

int Host::answerText(const Step *step, char *destination, int unexpected)
{
    if (step == nullptr) return unexpected;
    std::memcpy(destination, step->answer.c_str(), step->answer.size() + 1);
    return step->result;
}

int Host::decode(const char *source, char *destination, int32_t zero)
{
    return answerText(take(Call::Decode, source, zero), destination, 0);
}

int Host::invert(const char *source, char *destination, int32_t sourceLength)
{
    return answerText(take(Call::Invert, source, sourceLength), destination, -1);
}

Host &Host::current()
{
    if (theHost == nullptr) {
        static Host nobody;
        ADD_FAILURE() << "the library called a host where there is none";
        return nobody;
    }
    return *theHost;
}

} // namespace scripted

int ClientSendCmd(const char *command, AtClientRes *response, int32_t timeoutMs)
{
    return scripted::Host::current().send(command, response, timeoutMs);
}

int ClientInit(const char *queueName)
{
    return scripted::Host::current().clientInit(queueName);
}

int SetClientProcRecvCallback(uint32_t (*callback)(AtClientRes *))
{
    return scripted::Host::current().installCallback(callback);
}

int CODE_Usc2orGsm7ToAscDecode(const char *sourceHex, char *destination, int32_t zero)
{
    return scripted::Host::current().decode(sourceHex, destination, zero);
}

int CODE_InvertNumbers(const char *source, char *destination, int32_t sourceLength)
{
    return scripted::Host::current().invert(source, destination, sourceLength);
}

void kora_log_append(const char *sourceModule, int32_t line, const char *logFile, const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    std::string text = scripted::render(format, arguments);
    va_end(arguments);
    scripted::Host::current().append({sourceModule, logFile, format, std::move(text), line});
}

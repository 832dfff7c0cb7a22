#include "scripted_host.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include <gtest/gtest.h>

namespace scripted {
namespace {

Host *theHost = nullptr;

bool isZero(const AtClientRes &record)
{
    const auto *const bytes = reinterpret_cast<const unsigned char *>(&record);
    return std::all_of(bytes, bytes + sizeof record, [](unsigned char byte) { return byte == 0; });
}

__attribute__((format(printf, 1, 0))) std::string render(const char *format, std::va_list arguments)
{
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
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
    for (std::size_t i = next_; i < steps_.size(); ++i)
        ADD_FAILURE() << "never sent: " << steps_[i].command;
}

Host &Host::expect(std::string command, std::int32_t timeoutMs, std::string reply)
{
    steps_.push_back({std::move(command), timeoutMs, std::move(reply), 0});
    return *this;
}

Host &Host::expectFailing(std::string command, std::int32_t timeoutMs, int result)
{
    steps_.push_back({std::move(command), timeoutMs, "\r\nOK\r\n", result});
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

int Host::send(const char *command, AtClientRes *response, std::int32_t timeoutMs)
{
    if (isDone()) {
        ADD_FAILURE() << "unexpected command: " << command;
        return -1;
    }
    const Step &step = steps_[next_++];
    EXPECT_EQ(step.command, command);
    EXPECT_EQ(step.timeoutMs, timeoutMs) << command;
    EXPECT_TRUE(isZero(*response)) << command;
    // A reply that fills the buffer leaves no room for a terminator.
    std::memcpy(response->aucDataBuf, step.reply.data(), std::min(step.reply.size(), sizeof response->aucDataBuf));
    return step.result;
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

int ClientInit(const char *)
{
    ADD_FAILURE() << "unexpected ClientInit";
    return -1;
}

int SetClientProcRecvCallback(uint32_t (*)(AtClientRes *))
{
    ADD_FAILURE() << "unexpected SetClientProcRecvCallback";
    return -1;
}

int CODE_Usc2orGsm7ToAscDecode(const char *, char *, int32_t)
{
    ADD_FAILURE() << "unexpected CODE_Usc2orGsm7ToAscDecode";
    return 0;
}

int CODE_InvertNumbers(const char *, char *, int32_t)
{
    ADD_FAILURE() << "unexpected CODE_InvertNumbers";
    return -1;
}

void kora_log_append(const char *sourceModule, int32_t line, const char *logFile, const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    std::string text = scripted::render(format, arguments);
    va_end(arguments);
    scripted::Host::current().append({sourceModule, logFile, format, std::move(text), line});
}

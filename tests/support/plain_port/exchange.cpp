#include "exchange.h"

#include <cstdarg>
#include <cstdio>

#include "plain_codec.h"
#include "plain_parser.h"

namespace plain {

bool Exchange::send(const std::string &command, std::int32_t timeoutMs)
{
    if (command.size() > 1023) return false;
    return world.send(command, &raw, timeoutMs) == 0;
}

bool Exchange::parse()
{
    Parser parser(raw.aucDataBuf, record);
    parser.procDataLen = world.globals.procDataLen;
    const bool done = parser.parse() == 0;
    for (const std::string &line : parser.log)
        world.log(kParser, "%s", line.c_str());
    world.globals.procDataLen = parser.procDataLen;
    if (done) world.globals.waitingRes = 1;
    std::memcpy(raw.aucDataBuf, parser.buffer.data(), parser.buffer.size());
    record = parser.record;
    return done;
}

bool Exchange::parseOperatorScan()
{
    Parser parser(raw.aucDataBuf, record);
    const bool done = parser.parseOperatorScan() == 0;
    record = parser.record;
    return done;
}

bool Exchange::succeeds(const std::string &command, std::int32_t timeoutMs)
{
    return send(command, timeoutMs) && parse() && isOk();
}

std::string Exchange::rewritten() const
{
    return plain::rewritten(paras());
}

bool Exchange::mentions(const char *errorText) const
{
    return find(paras(), errorText) != kNone;
}

std::string ended(const std::string &text)
{
    return text.substr(0, text.find('\0'));
}

std::string rewritten(const std::string &line)
{
    return ended(rewriteLine(line));
}

int scan(const std::string &text, const char *pattern, ...)
{
    std::va_list arguments;
    va_start(arguments, pattern);
    const int count = std::vsscanf(text.c_str(), pattern, arguments);
    va_end(arguments);
    return count;
}

void restoreIn(char *text)
{
    const std::string restored = restore(text);
    std::memcpy(text, restored.c_str(), restored.size() + 1);
}

std::int32_t address(const void *pointer)
{
    return static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(pointer));
}

} // namespace plain

#include "tests/support/plain_port/exchange.h"

#include <array>
#include <cstdarg>
#include <cstdio>

#include "tests/support/plain_codec.h"
#include "tests/support/plain_parser.h"

namespace plain {

bool Exchange::send(const std::string &command, int32_t timeoutMs)
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

bool Exchange::succeeds(const std::string &command, int32_t timeoutMs)
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

namespace {

constexpr size_t kMostTargets = 7;

/** A pattern and its targets with a number of 64 bits for each of 32. */
struct WideScan {
    std::string pattern;
    std::array<void *, kMostTargets> targets{};
    std::array<int32_t *, kMostTargets> narrow{}; ///< where a target is a number
    std::array<long long, kMostTargets> wide{};

    WideScan(const char *narrowPattern, std::va_list arguments)
    {
        size_t next = 0;
        for (const char *at = narrowPattern; *at != '\0'; ++at) {
            pattern += *at;
            if (*at != '%') continue;
            const bool isDropped = at[1] == '*';
            while (at[1] == '*' || (at[1] >= '0' && at[1] <= '9'))
                pattern += *++at;
            if (at[1] == 'd') pattern += "ll";
            if (isDropped) continue;
            targets.at(next) = va_arg(arguments, void *);
            if (at[1] == 'd') targets.at(next) = widened(next);
            ++next;
        }
    }

    int read(const char *text)
    {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral" // made from one that the compiler has checked
        const int count = std::sscanf(text, pattern.c_str(), targets[0], targets[1], targets[2], targets[3], targets[4],
                                      targets[5], targets[6]);
#pragma GCC diagnostic pop
        for (int i = 0; i < count; ++i) {
            const auto target = static_cast<size_t>(i);
            if (narrow.at(target) != nullptr) *narrow.at(target) = static_cast<int32_t>(wide.at(target));
        }
        return count;
    }

  private:
    void *widened(size_t target)
    {
        narrow.at(target) = static_cast<int32_t *>(targets.at(target));
        return &wide.at(target);
    }
};

} // namespace

int scan(const std::string &text, const char *pattern, ...)
{
    std::va_list arguments;
    va_start(arguments, pattern);
    WideScan scan(pattern, arguments);
    va_end(arguments);
    return scan.read(text.c_str());
}

void restoreIn(char *text)
{
    const std::string restored = restore(text);
    std::memcpy(text, restored.c_str(), restored.size() + 1);
}

int32_t address(const void *pointer)
{
    return static_cast<int32_t>(reinterpret_cast<uintptr_t>(pointer));
}

} // namespace plain

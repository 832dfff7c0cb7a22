#include "tests/support/plain_port/world.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "tests/support/filled.h"

namespace plain {
namespace {

__attribute__((format(printf, 1, 0))) std::string render(const char *pattern, std::va_list arguments)
{
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, pattern, again);
    va_end(again);
    std::string text(static_cast<size_t>(length) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), pattern, arguments);
    text.pop_back();
    return text;
}

bool isInteger(const std::string &text)
{
    const size_t sign = text.compare(0, 1, "-") == 0 ? 1 : 0;
    return text.size() > sign && text.find_first_not_of("0123456789", sign) == std::string::npos;
}

bool isSame(const std::string &library, const std::string &port)
{
    const size_t address = port.size() - 1;
    if (library == port) return true; // a reply may hold the mark of an address, too
    if (port.empty() || port.back() != *kHiddenAddress) return false;
    return library.compare(0, address, port, 0, address) == 0 && isInteger(library.substr(address));
}

} // namespace

World *World::current = nullptr;

std::string Globals::difference(const Globals &other) const
{
    if (platform != other.platform) return "g_currentPlatform";
    if (procDataLen != other.procDataLen) return "g_iProcDataLen";
    if (waitingRes != other.waitingRes) return "g_bWaitingRes";
    if (singleReport != other.singleReport) return "g_SingleReport";
    if (cardType != other.cardType) return "g_cardType";
    if (cardTypeKnown != other.cardTypeKnown) return "g_cardTypeKnown";
    if (lastPin != other.lastPin) return "g_lastPin";
    if (creg != other.creg) return "g_pFnCregNotifyCallBack";
    if (cereg != other.cereg) return "g_pFnCeregNotifyCallBack";
    if (cgreg != other.cgreg) return "g_pFnCgregNotifyCallBack";
    return "";
}

std::string format(const char *pattern, ...)
{
    std::va_list arguments;
    va_start(arguments, pattern);
    std::string text = render(pattern, arguments);
    va_end(arguments);
    return text;
}

Answer World::answer(const std::string &event)
{
    append(event);
    return script_(calls_++, event);
}

int World::send(const std::string &command, AtClientRes *response, int32_t timeoutMs)
{
    if (!isFilledWith(0, response, sizeof *response)) append("the raw record is not zeroed");
    append("time-out " + std::to_string(timeoutMs));
    const Answer given = answer(command);
    const size_t length = std::min(given.text.size(), sizeof response->aucDataBuf - 1);
    std::memcpy(response->aucDataBuf, given.text.data(), length);
    return given.result;
}

int World::clientInit(const std::string &queueName)
{
    return answer("ClientInit " + queueName).result;
}

int World::installCallback()
{
    return answer("SetClientProcRecvCallback").result;
}

int World::answerText(const std::string &event, char *destination)
{
    const Answer given = answer(event);
    std::memcpy(destination, given.text.c_str(), given.text.size() + 1);
    return given.result;
}

int World::decode(const std::string &source, char *destination, int32_t zero)
{
    return answerText("decode " + std::to_string(zero) + " " + source, destination);
}

int World::invert(const std::string &source, char *destination, int32_t sourceLength)
{
    return answerText("invert " + std::to_string(sourceLength) + " " + source, destination);
}

void World::log(const char *module, const char *pattern, ...)
{
    std::va_list arguments;
    va_start(arguments, pattern);
    logList(module, pattern, arguments);
    va_end(arguments);
}

void World::logList(const char *module, const char *pattern, std::va_list arguments)
{
    append(std::string(module) + "|" + render(pattern, arguments));
}

void World::leaveOpen(const void *begin, size_t size)
{
    open_.emplace_back(static_cast<const char *>(begin), size);
}

bool World::isOpen(const void *byte) const
{
    const auto *const at = static_cast<const char *>(byte);
    return std::any_of(open_.begin(), open_.end(),
                       [at](const auto &range) { return at >= range.first && at < range.first + range.second; });
}

std::string differenceOfEvents(const std::vector<std::string> &library, const std::vector<std::string> &port)
{
    for (size_t i = 0; i < std::max(library.size(), port.size()); ++i) {
        const std::string got = i < library.size() ? library[i] : "(nothing)";
        const std::string expected = i < port.size() ? port[i] : "(nothing)";
        if (!isSame(got, expected)) return format("library: %s\n  plain:   %s", got.c_str(), expected.c_str());
    }
    return "";
}

} // namespace plain

#include "tests/support/plain_port/round.h"

#include <cstdarg>
#include <cstring>
#include <memory>

#include <mainControl/mainControl.h>

#include "tests/support/guarded_text.h"

namespace plain {
namespace {

constexpr size_t kSlotSize = size_t{112} * 1024;
constexpr size_t kSlots = 16;

/** Slots that all rounds share. */
char *slotEnd(size_t number)
{
    static std::vector<std::unique_ptr<GuardedMemory>> slots;
    while (slots.size() <= number)
        slots.push_back(std::make_unique<GuardedMemory>(kSlotSize));
    return slots[number]->data() + kSlotSize;
}

void noteCall(const char *which, int32_t status, const char *areaCode, const char *cellId)
{
    World::current->append(format("%s callback %d [%s] [%s]", which, status, areaCode, cellId));
}

void hearCreg(int32_t status, char *areaCode, char *cellId)
{
    noteCall("+CREG", status, areaCode, cellId);
}

void hearCereg(int32_t status, char *areaCode, char *cellId)
{
    noteCall("+CEREG", status, areaCode, cellId);
}

void hearCgreg(int32_t status, char *areaCode, char *cellId)
{
    noteCall("+CGREG", status, areaCode, cellId);
}

Globals anyGlobals(Dice &dice)
{
    static constexpr int32_t kPlatforms[] = {0, 1, 1, 2, 3, 3, 4, 4, 5, 5, 7};
    Globals globals;
    globals.platform = dice.pick(kPlatforms);
    globals.procDataLen = dice.integer();
    globals.waitingRes = dice.oneIn(3) ? 0 : 1;
    globals.singleReport = dice.integer();
    globals.cardType = 1 + static_cast<int32_t>(dice.below(3));
    globals.cardTypeKnown = dice.oneIn(5) ? 1 : 0;
    globals.lastPin = dice.of("0123456789", 40);
    globals.creg = dice.oneIn(4) ? nullptr : hearCreg;
    globals.cereg = dice.oneIn(4) ? nullptr : hearCereg;
    globals.cgreg = dice.oneIn(4) ? nullptr : hearCgreg;
    return globals;
}

void putIntoLibrary(const Globals &globals)
{
    g_currentPlatform = globals.platform;
    g_iProcDataLen = globals.procDataLen;
    g_bWaitingRes = globals.waitingRes;
    g_SingleReport = globals.singleReport;
    g_cardType = globals.cardType;
    g_cardTypeKnown = globals.cardTypeKnown;
    std::memcpy(g_lastPin, globals.lastPin.data(), sizeof g_lastPin);
    g_pFnCregNotifyCallBack = globals.creg;
    g_pFnCeregNotifyCallBack = globals.cereg;
    g_pFnCgregNotifyCallBack = globals.cgreg;
}

Globals takeFromLibrary()
{
    Globals globals;
    globals.platform = g_currentPlatform;
    globals.procDataLen = g_iProcDataLen;
    globals.waitingRes = g_bWaitingRes;
    globals.singleReport = g_SingleReport;
    globals.cardType = g_cardType;
    globals.cardTypeKnown = g_cardTypeKnown;
    globals.lastPin.assign(g_lastPin, sizeof g_lastPin);
    globals.creg = g_pFnCregNotifyCallBack;
    globals.cereg = g_pFnCeregNotifyCallBack;
    globals.cgreg = g_pFnCgregNotifyCallBack;
    return globals;
}

/** What the library knows of its connection lasts as long as the process, so what the port knows does. */
Globals &connection()
{
    static Globals lasting;
    return lasting;
}

} // namespace

Round::Round(uint32_t seed) : dice(seed), replies(Dice(seed + 1)), start(anyGlobals(dice)), answers_(Dice(seed + 2)) {}

Round::Round(Choices &made) : dice(made), replies(Dice(made)), start(anyGlobals(dice)), answers_(Dice(made)) {}

char *Round::memory(size_t size)
{
    if (areas_.size() == kSlots) std::abort();
    char *const data = slotEnd(areas_.size()) - size;
    // A text that begins anywhere ends within eight bytes, and at the end.
    static constexpr std::string_view kFillings[] = {std::string_view("\0\0\0\0\0\0\0\0", 8),
                                                     std::string_view("ABCDEFG\0", 8),
                                                     std::string_view("\xFD\0\xFEx\xFC\xFD\0\0", 8)};
    const std::string_view filling = dice.pick(kFillings);
    std::string before(size, '\0');
    for (size_t i = 0; i + 1 < size; ++i)
        before[i] = filling[i % 8];
    std::memcpy(data, before.data(), size);
    areas_.push_back({data, size, before, ""});
    return data;
}

char *Round::memory(const std::string &content)
{
    char *const data = memory(content.size());
    areas_.back().before = content;
    content.copy(data, content.size());
    return data;
}

Answer Round::answer(size_t number, const std::string &call)
{
    while (script_.size() <= number)
        script_.emplace_back(call, answers_.answer(call));
    return script_[number].second;
}

void Round::compare(const std::function<int64_t()> &library, const std::function<int64_t(World &)> &port)
{
    const auto script = [this](size_t number, const std::string &call) { return answer(number, call); };
    World real(start, script);
    World plainOne(start, script);
    plainOne.globals.isClientInitialised = connection().isClientInitialised;
    plainOne.globals.isCallbackInstalled = connection().isCallbackInstalled;

    World::current = &real;
    putIntoLibrary(start);
    const int64_t got = library();
    real.globals = takeFromLibrary();
    for (Area &area : areas_) {
        area.afterLibrary.assign(area.data, area.size);
        std::memcpy(area.data, area.before.data(), area.size);
    }
    World::current = &plainOne;
    const int64_t expected = port(plainOne);
    World::current = nullptr;
    connection() = plainOne.globals;

    difference = differenceOfEvents(real.events, plainOne.events);
    if (difference.empty() && got != expected)
        difference = "library returns " + std::to_string(got) + ", plain " + std::to_string(expected);
    if (difference.empty()) difference = real.globals.difference(plainOne.globals);
    if (difference.empty()) compareAreas(plainOne);
}

void Round::compareAreas(const World &world)
{
    for (size_t number = 0; number < areas_.size(); ++number) {
        const Area &area = areas_[number];
        if (std::memcmp(area.data, area.afterLibrary.data(), area.size) == 0) continue;
        for (size_t i = 0; i < area.size; ++i) {
            if (area.data[i] == area.afterLibrary[i] || world.isOpen(area.data + i)) continue;
            const size_t from = i < 20 ? 0 : i - 20;
            difference = "output " + std::to_string(number) + " of " + std::to_string(area.size) +
                         " bytes differs at byte " + std::to_string(i) +
                         "\n  library: " + area.afterLibrary.substr(from, 60) +
                         "\n  plain:   " + std::string(area.data, area.size).substr(from, 60);
            return;
        }
    }
}

std::string Round::script() const
{
    std::string lines = "platform " + std::to_string(start.platform);
    for (const auto &[call, given] : script_)
        lines += "\n  " + call + " -> " + std::to_string(given.result) + " " + given.text;
    for (const Area &area : areas_)
        lines += "\n  memory of " + std::to_string(area.size) + ": " + area.before.substr(0, 100);
    return lines;
}

std::string escaped(const std::string &text)
{
    std::string readable;
    for (const char c : text) {
        if (c == '\r')
            readable += "\\r";
        else if (c == '\n')
            readable += "\\n";
        else if (static_cast<unsigned char>(c) < ' ' || static_cast<unsigned char>(c) >= 127)
            readable += format("\\x%02X", static_cast<unsigned char>(c));
        else
            readable += c;
    }
    return readable;
}

} // namespace plain

int ClientSendCmd(const char *command, AtClientRes *response, int32_t timeoutMs)
{
    return plain::World::current->send(command, response, timeoutMs);
}

int ClientInit(const char *queueName)
{
    return plain::World::current->clientInit(queueName);
}

int SetClientProcRecvCallback(uint32_t (*callback)(AtClientRes *))
{
    if (callback != ProcessMainControlAtCallback) plain::World::current->append("another receive callback");
    return plain::World::current->installCallback();
}

int CODE_Usc2orGsm7ToAscDecode(const char *sourceHex, char *destination, int32_t zero)
{
    return plain::World::current->decode(sourceHex, destination, zero);
}

int CODE_InvertNumbers(const char *source, char *destination, int32_t sourceLength)
{
    return plain::World::current->invert(source, destination, sourceLength);
}

void kora_log_append(const char *sourceModule, int32_t /*line*/, const char *logFile, const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    if (std::strcmp(logFile, "kora_t9lb.log") != 0) plain::World::current->append("another log file");
    plain::World::current->logList(sourceModule, format, arguments);
    va_end(arguments);
}

#include "host/at_server/transcript.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <utility>

#include "host/at_server/server_log.h"
#include "host/masking/masking.h"

namespace host::at_server {
namespace {

std::string timeNow()
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    tm parts{};
    gmtime_r(&now.tv_sec, &parts);
    std::array<char, 32> date{};
    strftime(date.data(), date.size(), "%Y-%m-%dT%H:%M:%S", &parts);
    std::array<char, 48> all{};
    const int length = std::snprintf(all.data(), all.size(), "%s.%03ldZ", date.data(), now.tv_nsec / 1000000);
    return {all.data(), static_cast<size_t>(length)};
}

std::string_view nameOf(LineIs what)
{
    switch (what) {
    case LineIs::Echo:
        return "echo";
    case LineIs::Reply:
        return "reply";
    case LineIs::Report:
        return "report";
    case LineIs::Discarded:
        break;
    }
    return "discarded";
}

/** A command, with its carriage return as it was. */
std::string maskedSending(std::string_view bytes)
{
    const size_t end = std::min(bytes.find('\r'), bytes.size());
    return maskedCommand(bytes.substr(0, end), Hide::SecretsAndIdentities).append(bytes.substr(end));
}

} // namespace

std::string Transcript::open(const RecordSettings &settings)
{
    withSecrets_ = settings.withSecrets;
    return file_.open(settings.file, settings.mostBytes);
}

void Transcript::reopen()
{
    if (!file_.isOpen()) return;
    const std::string failure = file_.reopen();
    if (failure.empty())
        log(LogLevel::Info, {"the record is opened anew"});
    else
        log(LogLevel::Error, {failure});
}

void Transcript::sent(std::string_view bytes, uint32_t client)
{
    Event event;
    event.direction = "tx";
    event.text = bytes;
    event.client = client;
    if (isHeard()) write(event, maskedSending(bytes));
}

void Transcript::received(std::string_view raw, LineIs what, std::string_view command)
{
    Event event;
    event.direction = "rx";
    event.text = raw;
    event.as = nameOf(what);
    if (!isHeard()) return;
    const auto masked = what == LineIs::Report ? maskedReport : maskedReply;
    write(event, masked(command, raw, Hide::SecretsAndIdentities));
}

void Transcript::failed(std::string_view command, std::string_view why)
{
    Event event;
    event.event = "failed";
    event.text = command;
    event.why = why;
    if (isHeard()) write(event, maskedSending(command));
}

void Transcript::opened(std::string_view why)
{
    Event event;
    event.event = "opened";
    event.why = why;
    if (isHeard()) write(event, {});
}

void Transcript::closed(std::string_view why)
{
    Event event;
    event.event = "closed";
    event.why = why;
    if (isHeard()) write(event, {});
}

/** @param masked  what is read in the place of the event's text */
void Transcript::write(Event event, std::string_view masked)
{
    const std::string time = timeNow();
    const std::string_view bare = std::exchange(event.text, masked);
    event.time = time;
    const std::string json = jsonOf(event);
    if (isTraced_) trace_(json);
    if (!file_.isOpen()) return;
    event.text = bare;
    const std::string told = file_.append((withSecrets_ ? jsonOf(event) : json) + '\n');
    if (!told.empty()) log(file_.isFailing() ? LogLevel::Error : LogLevel::Info, {told});
}

} // namespace host::at_server

#include "host/at_server/code_gate.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

using namespace std::chrono_literals;

namespace host::at_server {
namespace {

using std::chrono::milliseconds;

constexpr std::string_view kWhyBehind = "another command of this user tries a code";
constexpr std::string_view kWhyWait = "a code of this user was refused, after which the next one waits";

uint32_t countOf(milliseconds time)
{
    constexpr auto kMost = static_cast<int64_t>(std::numeric_limits<uint32_t>::max());
    return static_cast<uint32_t>(std::clamp<int64_t>(time.count(), 0, kMost));
}

} // namespace

CodeGate::Entries::iterator CodeGate::find(Ticket ticket)
{
    return std::find_if(entries_.begin(), entries_.end(), [&](const Entry &entry) { return entry.ticket == ticket; });
}

Ticket CodeGate::submit(uid_t user, Command command, CodeTry code, TellHeld tellHeld)
{
    const Ticket ticket = ++last_;
    const milliseconds timeout(command.timeoutMs);
    entries_.push_back({ticket, user, std::move(command), std::move(code), std::move(tellHeld), timeout});
    goOn();
    tellUser(user);
    return ticket;
}

bool CodeGate::withdraw(Ticket ticket)
{
    if (ticket < kFirst) return false;
    const auto place = find(ticket);
    if (place == entries_.end()) return true;
    Entries ended;
    ended.splice(ended.end(), entries_, place);
    const Entry &entry = ended.front();
    if (entry.isOut) calls_.withdraw(entry.outside);
    if (entry.isOut) count(entry, CodeIs::Wrong); // it may have been tried, and nobody heard the answer
    calls_.wakeIn(0ms);
    return true;
}

void CodeGate::failAll(protocol::Cause cause, const std::string &why)
{
    Entries failed;
    for (auto entry = entries_.begin(); entry != entries_.end();) {
        const auto next = std::next(entry);
        if (!entry->isOut) failed.splice(failed.end(), entries_, entry);
        entry = next;
    }
    for (const Entry &entry : failed)
        entry.command.done({cause, why});
}

size_t CodeGate::waiting() const
{
    return static_cast<size_t>(
        std::count_if(entries_.begin(), entries_.end(), [](const Entry &entry) { return !entry.isOut; }));
}

// A user's codes, one after the other

bool CodeGate::isFirstOfUser(Entries::const_iterator entry) const
{
    return std::none_of(entries_.begin(), entry, [&](const Entry &other) { return other.user == entry->user; });
}

CodeGate::Entries::iterator CodeGate::nextToGo(Clock::time_point now)
{
    auto entry = entries_.begin();
    while (entry != entries_.end() && (entry->isOut || tries_.waitOf(entry->user, now) > 0ms || !isFirstOfUser(entry)))
        ++entry;
    return entry;
}

void CodeGate::goOn()
{
    const auto now = calls_.now();
    for (auto next = nextToGo(now); next != entries_.end(); next = nextToGo(now))
        start(next);
    milliseconds soonest = milliseconds::max();
    for (const Entry &entry : entries_)
        if (!entry.isOut && tries_.waitOf(entry.user, now) > 0ms)
            soonest = std::min(soonest, tries_.waitOf(entry.user, now));
    if (soonest != milliseconds::max()) calls_.wakeIn(soonest);
}

void CodeGate::start(Entries::iterator entry)
{
    const Ticket ticket = entry->ticket;
    entry->isOut = true;
    entry->until = calls_.now() + entry->timeout;
    Command command = std::move(entry->command);
    entry->command.done = std::move(command.done);
    entry->command.waits = std::move(command.waits);
    command.done = [this, ticket](const Outcome &outcome) { ended(ticket, outcome); };
    command.waits = [this, ticket](uint32_t atMostMs) { hasToWait(ticket, atMostMs); };
    const Ticket outside = calls_.submit(std::move(command));
    if (const auto place = find(ticket); place != entries_.end()) place->outside = outside;
}

void CodeGate::hasToWait(Ticket ticket, uint32_t atMostMs)
{
    const auto place = find(ticket);
    if (place == entries_.end()) return;
    place->until = calls_.now() + milliseconds(atMostMs) + place->timeout;
    const uid_t user = place->user;
    if (place->command.waits) place->command.waits(atMostMs);
    tellUser(user);
}

/** What comes behind it begins from the loop, not within this call of the dialogue. */
void CodeGate::ended(Ticket ticket, const Outcome &outcome)
{
    const auto place = find(ticket);
    if (place == entries_.end()) return;
    Entries ended;
    ended.splice(ended.end(), entries_, place);
    const Entry &entry = ended.front();
    count(entry, judged(entry.code, outcome));
    entry.command.done(outcome);
    calls_.wakeIn(0ms);
}

void CodeGate::count(const Entry &entry, CodeIs verdict)
{
    const auto now = calls_.now();
    tries_.add(entry.user, entry.code.what, verdict, now);
    if (verdict != CodeIs::Wrong) return;
    calls_.refused(entry.user, tries_.waitOf(entry.user, now));
    tellUser(entry.user);
}

/** All that this user waits for, each behind those before it. */
void CodeGate::tellUser(uid_t user)
{
    const auto now = calls_.now();
    milliseconds ahead = tries_.waitOf(user, now);
    std::string_view why = kWhyWait;
    for (const Entry &entry : entries_) {
        if (entry.user != user) continue;
        if (!entry.isOut) entry.tellHeld(countOf(ahead), why);
        ahead = entry.isOut ? std::chrono::ceil<milliseconds>(entry.until - now) : ahead + entry.timeout;
        why = kWhyBehind;
    }
}

} // namespace host::at_server

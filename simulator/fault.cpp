#include "simulator/fault.h"

#include <algorithm>
#include <set>
#include <utility>

#include "simulator/text.h"

namespace simulator {
namespace {

constexpr std::string_view kBreak = "\r\n";

void replaceAll(std::string &text, std::string_view what, std::string_view with)
{
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
}

/** Where the line break in front of the final result begins: the end of the body, or 0. */
size_t startOfFinal(std::string_view reply)
{
    if (reply.size() < 2 * kBreak.size()) return 0;
    const size_t lastLine = reply.rfind(kBreak, reply.size() - kBreak.size() - 1);
    return lastLine == std::string_view::npos ? 0 : lastLine;
}

void makeSloppy(std::string &reply, Sloppiness how)
{
    const size_t final = startOfFinal(reply);
    switch (how) {
    case Sloppiness::BareLineFeeds:
        replaceAll(reply, kBreak, "\n");
        return;
    case Sloppiness::DoubledReturns:
        replaceAll(reply, kBreak, "\r\r\n");
        return;
    case Sloppiness::NoEmptyLineBeforeEnd:
        if (final != 0) reply.erase(final, kBreak.size());
        return;
    case Sloppiness::EmptyLinesBetween: {
        std::string body = reply.substr(0, final);
        if (body.size() > 2 * kBreak.size()) {
            std::string inner = body.substr(kBreak.size(), body.size() - 2 * kBreak.size());
            replaceAll(inner, kBreak, "\r\n\r\n");
            reply = concat(kBreak, inner, kBreak, reply.substr(final));
        }
        return;
    }
    case Sloppiness::NoBlankBehindColon:
        replaceAll(reply, ": ", ":");
        return;
    case Sloppiness::TextBehindFinalResult:
        reply += "0000\r\n";
        return;
    }
}

} // namespace

FaultPlan::FaultPlan(std::vector<Fault> faults, uint64_t seed) : random_(seed)
{
    for (Fault &fault : faults) {
        fault.command = upperCase(fault.command);
        faults_.push_back({std::move(fault), 0});
    }
}

bool FaultPlan::strikes(Counted &counted, std::string_view line) const
{
    if (upperCase(line.substr(0, counted.fault.command.size())) != counted.fault.command) return false;
    ++counted.times;
    return counted.fault.nth == 0 || counted.fault.nth == counted.times;
}

size_t FaultPlan::resolve(const Offset &offset, size_t size)
{
    return offset ? std::min(*offset, size) : static_cast<size_t>(random_() % (size + 1));
}

void FaultPlan::insert(std::string &reply, const Offset &offset, const std::string &text)
{
    reply.insert(resolve(offset, reply.size()), text);
}

std::string FaultPlan::spoil(const Fault &fault, std::string_view line, std::string reply)
{
    if (fault.losesFinal) reply.erase(startOfFinal(reply));
    if (fault.overlongLine != 0)
        reply.insert(startOfFinal(reply), concat(kBreak, std::string(fault.overlongLine, 'x'), kBreak));
    for (const Sloppiness how : fault.framing)
        makeSloppy(reply, how);
    if (fault.report) insert(reply, fault.report->offset, concat(kBreak, fault.report->text, kBreak));
    if (fault.garbageBytes != 0) {
        std::string garbage;
        while (garbage.size() < fault.garbageBytes)
            garbage += static_cast<char>(0x80 | (random_() & 0x7F));
        insert(reply, fault.garbageOffset, garbage);
    }
    return fault.echoes ? concat(line, '\r', reply) : reply;
}

std::vector<Piece> FaultPlan::apply(std::string_view line, std::string reply)
{
    int delayMs = 0;
    int gapMs = 0;
    std::set<size_t> cuts;
    const Fault *unplugging = nullptr;
    for (Counted &counted : faults_) {
        if (!strikes(counted, line)) continue;
        const Fault &fault = counted.fault;
        reply = spoil(fault, line, std::move(reply));
        delayMs += fault.delayMs;
        gapMs = std::max(gapMs, fault.split.empty() ? 0 : fault.gapMs);
        cuts.insert(fault.split.begin(), fault.split.end());
        if (fault.unplugs) unplugging = &fault;
    }
    if (unplugging != nullptr) reply.resize(resolve(unplugging->unplugOffset, reply.size()));

    std::vector<Piece> pieces = {{delayMs, "", false, -1}};
    size_t start = 0;
    for (const size_t cut : cuts) {
        if (cut == 0 || cut >= reply.size()) continue;
        pieces.back().bytes = reply.substr(start, cut - start);
        pieces.push_back({gapMs, "", false, -1});
        start = cut;
    }
    pieces.back().bytes = reply.substr(start);
    if (unplugging != nullptr) {
        pieces.back().unplugs = true;
        pieces.back().unplugMs = unplugging->unplugMs;
    }
    return pieces;
}

} // namespace simulator

#include "simulator/replay.h"

#include <algorithm>
#include <utility>

namespace simulator {
namespace {

/** Secrets are recorded as asterisks, one for each character. */
bool matches(std::string_view recorded, std::string_view line)
{
    return recorded.size() == line.size() &&
           std::equal(recorded.begin(), recorded.end(), line.begin(),
                      [](char mask, char character) { return mask == '*' || mask == character; });
}

/** Whether a piece of output closes a reply. */
bool endsReply(std::string_view bytes)
{
    constexpr std::string_view kFinals[] = {
        "OK\r",    "ERROR\r", "+CME ERROR:", "+CMS ERROR:", "not support\r", "OK\n",
        "ERROR\n", "> ",      "NO CARRIER",  "BUSY\r",      "CONNECT",       "NO ANSWER"};
    for (const std::string_view final : kFinals) {
        for (size_t at = bytes.find(final); at != std::string_view::npos; at = bytes.find(final, at + 1)) {
            if (at == 0 || bytes[at - 1] == '\n' || bytes[at - 1] == '\r') return true;
        }
    }
    return false;
}

} // namespace

Replay::Answer Replay::answer(std::string_view line)
{
    for (size_t tried = 0; tried < exchanges_.size(); ++tried) {
        const Exchange &candidate = exchanges_[(next_ + tried) % exchanges_.size()];
        if (!matches(candidate.command, line)) continue;
        next_ = (next_ + tried + 1) % exchanges_.size();
        return candidate.answer;
    }
    return {{{0, "\r\nERROR\r\n"}}, {}};
}

void Replay::addCommand(std::string command)
{
    exchanges_.push_back({std::move(command), {}});
    hasFinal_ = false;
}

void Replay::addOutput(int64_t atMs, std::string bytes)
{
    if (exchanges_.empty()) {
        opening_.push_back({atMs, std::move(bytes)});
        return;
    }
    const bool ends = endsReply(bytes);
    Answer &answer = exchanges_.back().answer;
    (hasFinal_ ? answer.later : answer.reply).push_back({atMs, std::move(bytes)});
    hasFinal_ = hasFinal_ || ends;
}

} // namespace simulator

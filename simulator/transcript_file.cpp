#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>

#include <nlohmann/json.hpp>

#include "simulator/scenario_file.h"
#include "simulator/text.h"

namespace simulator {
namespace {

using nlohmann::json;

std::string textOf(const json &event, const char *name)
{
    const auto found = event.find(name);
    return found != event.end() && found->is_string() ? found->get<std::string>() : std::string();
}

/** Transcripts write a byte as the character of its number. */
std::string bytesOf(const std::string &utf8)
{
    std::string bytes;
    for (size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        const bool isPair = (byte == 0xC2 || byte == 0xC3) && i + 1 < utf8.size();
        bytes +=
            isPair ? static_cast<char>((byte & 3U) << 6U | (static_cast<unsigned char>(utf8[++i]) & 0x3FU)) : utf8[i];
    }
    return bytes;
}

/** Of an ISO 8601 time its clock: only differences matter. */
std::optional<int64_t> millisecondsOf(const std::string &time)
{
    constexpr double kMs = 1000;
    const size_t clock = time.find('T');
    int hours = 0;
    int minutes = 0;
    double seconds = 0;
    if (clock == std::string::npos) return std::nullopt;
    if (std::sscanf(time.c_str() + clock, "T%d:%d:%lf", &hours, &minutes, &seconds) != 3) // NOLINT(cert-err34-c)
        return std::nullopt;
    return std::llround((hours * 3600 + minutes * 60 + seconds) * kMs);
}

std::string withoutReturn(std::string command)
{
    while (!command.empty() && (command.back() == '\r' || command.back() == '\n'))
        command.pop_back();
    return command;
}

class Reader {
  public:
    explicit Reader(Replay &replay) : replay_(replay) {}

    void take(const json &event)
    {
        const std::string direction = textOf(event, "dir");
        const std::string bytes = bytesOf(textOf(event, "text"));
        const int64_t atMs = millisecondsOf(textOf(event, "time")).value_or(startMs_);
        if (!hasStarted_) startMs_ = atMs;
        hasStarted_ = true;
        if (direction == "tx") {
            replay_.addCommand(withoutReturn(bytes));
            startMs_ = atMs;
        } else if (direction == "rx") {
            replay_.addOutput(std::max<int64_t>(0, atMs - startMs_), bytes);
        } // what else happened to the port is not the modem's doing
    }

  private:
    Replay &replay_;
    int64_t startMs_ = 0; ///< of the last command, or of the first event
    bool hasStarted_ = false;
};

} // namespace

std::string readTranscript(std::string_view lines, Replay &replay, std::string &remark)
{
    Reader reader(replay);
    size_t number = 0;
    while (!lines.empty()) {
        ++number;
        const size_t end = std::min(lines.find('\n'), lines.size());
        const bool isWhole = end < lines.size();
        const std::string_view line = lines.substr(0, end);
        lines.remove_prefix(std::min(end + 1, lines.size()));
        if (line.find_first_not_of(" \r") == std::string_view::npos) continue;
        const json event = json::parse(line, nullptr, false);
        if (event.is_discarded() && !isWhole) {
            remark = concat("line ", number, ": passed over, since its end is missing");
            break;
        }
        if (!event.is_object()) return concat("line ", number, ": not a JSON object");
        reader.take(event);
    }
    if (!replay.hasCommands()) return "there is no command in it";
    return {};
}

} // namespace simulator

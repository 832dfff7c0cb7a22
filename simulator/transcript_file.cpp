#include "scenario_file.h"
#include "text.h"

#include <cmath>
#include <optional>

#include <nlohmann/json.hpp>

namespace simulator {
namespace {

using nlohmann::json;

/** Of two spellings of a key the one that is there. */
const json *member(const json &event, const char *name, const char *otherName)
{
    for (const char *key : {name, otherName}) {
        const auto found = event.find(key);
        if (found != event.end()) return &*found;
    }
    return nullptr;
}

std::string textOf(const json *value)
{
    return value != nullptr && value->is_string() ? value->get<std::string>() : std::string();
}

/** Seconds, or the clock of an ISO time: only differences matter. */
std::optional<int64_t> millisecondsOf(const json *value)
{
    constexpr double kMs = 1000;
    if (value == nullptr) return std::nullopt;
    if (value->is_number()) return std::llround(value->get<double>() * kMs);
    const std::string text = textOf(value);
    const size_t clock = text.find('T');
    int hours = 0;
    int minutes = 0;
    double seconds = 0;
    if (clock == std::string::npos) return std::nullopt;
    if (std::sscanf(text.c_str() + clock, "T%d:%d:%lf", &hours, &minutes, &seconds) != 3) // NOLINT(cert-err34-c)
        return std::nullopt;
    return std::llround((hours * 3600 + minutes * 60 + seconds) * kMs);
}

/** A recorded line without its line breaks gets them back. */
std::string framed(const std::string &text)
{
    const bool isRaw = text.find('\n') != std::string::npos || text.find('\r') != std::string::npos;
    return isRaw ? text : concat("\r\n", text, "\r\n");
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
        const std::string direction = textOf(member(event, "dir", "direction"));
        const std::string text = textOf(member(event, "text", "data"));
        const int64_t atMs = millisecondsOf(member(event, "t", "time")).value_or(startMs_);
        if (!hasStarted_) startMs_ = atMs;
        hasStarted_ = true;
        if (direction == "tx") {
            replay_.addCommand(withoutReturn(text));
            startMs_ = atMs;
        } else if (direction == "rx") {
            replay_.addOutput(std::max<int64_t>(0, atMs - startMs_), framed(text));
        } // what else happened to the port is the recorder's affair
    }

  private:
    Replay &replay_;
    int64_t startMs_ = 0; ///< of the last command, or of the first event
    bool hasStarted_ = false;
};

} // namespace

std::string readTranscript(std::string_view lines, Replay &replay)
{
    Reader reader(replay);
    size_t number = 0;
    while (!lines.empty()) {
        ++number;
        const size_t end = std::min(lines.find('\n'), lines.size());
        const std::string_view line = lines.substr(0, end);
        lines.remove_prefix(std::min(end + 1, lines.size()));
        if (line.find_first_not_of(" \r") == std::string_view::npos) continue;
        const json event = json::parse(line, nullptr, false);
        if (!event.is_object()) return concat("line ", number, ": not a JSON object");
        reader.take(event);
    }
    return {};
}

} // namespace simulator

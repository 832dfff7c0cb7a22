#include "simulator/control.h"

#include <charconv>
#include <optional>

#include "simulator/text.h"

namespace simulator {
namespace {

std::optional<int> numberOf(std::string_view text)
{
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

bool unplug(Modem &modem, std::string_view rest)
{
    const std::optional<int> ms = rest.empty() ? -1 : numberOf(rest);
    if (ms) modem.unplug(*ms);
    return ms.has_value();
}

bool plug(Modem &modem, std::string_view rest)
{
    modem.plug();
    return rest.empty();
}

bool report(Modem &modem, std::string_view rest)
{
    modem.report(std::string(rest));
    return !rest.empty();
}

bool setSignal(Modem &modem, std::string_view rest)
{
    const std::optional<int> dbm = numberOf(rest);
    if (dbm) modem.device().signal.setRssi(*dbm);
    return dbm.has_value();
}

bool setSim(Modem &modem, std::string_view rest)
{
    if (rest != "in" && rest != "out") return false;
    modem.device().sim.setPresent(rest == "in");
    if (modem.isPlugged()) modem.device().reconsider();
    return true;
}

bool setCoverage(Modem &modem, std::string_view rest)
{
    if (rest != "on" && rest != "off") return false;
    modem.device().network.setCoverage(rest == "on");
    if (modem.isPlugged()) modem.device().reconsider();
    return true;
}

struct Row {
    std::string_view name;
    bool (*run)(Modem &, std::string_view rest);
    std::string_view usage;
};

constexpr Row kRows[] = {
    {"unplug", unplug, "unplug [MS]"},   {"plug", plug, "plug"},        {"report", report, "report TEXT"},
    {"signal", setSignal, "signal DBM"}, {"sim", setSim, "sim in|out"}, {"coverage", setCoverage, "coverage on|off"},
};

} // namespace

std::string control(Modem &modem, std::string_view line)
{
    const size_t blank = line.find(' ');
    const std::string_view name = line.substr(0, blank);
    const std::string_view rest = blank == std::string_view::npos ? std::string_view() : line.substr(blank + 1);
    for (const Row &row : kRows) {
        if (row.name == name) return row.run(modem, rest) ? "" : concat("usage: ", row.usage);
    }
    return concat("unknown command: ", name);
}

} // namespace simulator

#include "krctl/session/item.h"

#include <array>

#include "krctl/output/report.h"

namespace krctl {
namespace {

struct Reason {
    Ending ending;
    const char *start;
};

constexpr std::array kReasons{
    Reason{Ending::Refused, "Refused by this modem"},
    Reason{Ending::Done, "Left out in its answers"},
    Reason{Ending::Unreadable, "Answered in a form that cannot be read"},
    Reason{Ending::WaitsForSim, "Told only once the SIM is unlocked"},
    Reason{Ending::Silent, "Not answered in time"},
    Reason{Ending::NotAsked, "Not asked after so much silence"},
    Reason{Ending::Gone, "Not asked any more"},
};

} // namespace

std::vector<std::string> Missing::sentences() const
{
    std::vector<std::string> sentences;
    for (const Reason &reason : kReasons) {
        std::vector<std::string> names;
        for (const auto &[item, ending] : items_)
            if (ending == reason.ending) names.push_back(item);
        if (!names.empty()) sentences.push_back(reason.start + (": " + listed(names)) + '.');
    }
    return sentences;
}

} // namespace krctl

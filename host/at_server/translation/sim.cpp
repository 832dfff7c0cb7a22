#include "host/at_server/translation/sim.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "host/at/text.h"
#include "host/at_server/translation/fields.h"

namespace host::at_server {
namespace {

constexpr std::array<std::string_view, 16> kStates{
    "READY",     "SIM PIN",   "SIM PUK",     "PH-SIM PIN",  "PH-FSIM PIN",   "PH-FSIM PUK",
    "SIM PIN2",  "SIM PUK2",  "PH-NET PIN",  "PH-NET PUK",  "PH-NETSUB PIN", "PH-NETSUB PUK",
    "PH-SP PIN", "PH-SP PUK", "PH-CORP PIN", "PH-CORP PUK",
};

struct Word {
    std::string_view word;
    std::string_view error;
};

constexpr std::array kWordsOfErrors{
    Word{"NOT READY", "+CME ERROR: SIM busy"},
    Word{"SIM NOT READY", "+CME ERROR: SIM busy"},
    Word{"BUSY", "+CME ERROR: SIM busy"},
    Word{"SIM BUSY", "+CME ERROR: SIM busy"},
    Word{"NOT INSERTED", "+CME ERROR: SIM not inserted"},
    Word{"SIM NOT INSERTED", "+CME ERROR: SIM not inserted"},
    Word{"NO SIM", "+CME ERROR: SIM not inserted"},
    Word{"ABSENT", "+CME ERROR: SIM not inserted"},
    Word{"REMOVED", "+CME ERROR: SIM not inserted"},
    Word{"SIM REMOVED", "+CME ERROR: SIM not inserted"},
    Word{"SIM ABSENT", "+CME ERROR: SIM not inserted"},
    Word{"BLOCKED", "+CME ERROR: SIM failure"},
    Word{"SIM BLOCKED", "+CME ERROR: SIM failure"},
    Word{"SIM FAILURE", "+CME ERROR: SIM failure"},
    Word{"FAILURE", "+CME ERROR: SIM failure"},
    Word{"SIM WRONG", "+CME ERROR: SIM wrong"},
};

/** Words in capitals with a blank between them. */
std::string normalized(std::string_view words)
{
    std::string text;
    for (const char character : inCapitals(unquoted(words))) {
        const bool isBlank = character == ' ' || character == '_' || character == '\t';
        if (!isBlank)
            text += character;
        else if (!text.empty() && text.back() != ' ')
            text += ' ';
    }
    return text;
}

bool isState(const std::string &text)
{
    return std::find(kStates.begin(), kStates.end(), text) != kStates.end();
}

/** A number, in quotes or not, as it is; anything else stays. */
std::string plainNumber(std::string_view field)
{
    return isDigits(unquoted(field)) ? std::string(unquoted(field)) : std::string(field);
}

/** Of a lock: the facility's name may stand in front, and its state is a number. */
struct LockLine {
    std::vector<std::string> fields; ///< from the state on
    bool isOn() const { return fields.front() != "0"; }
};

std::optional<LockLine> lockIn(std::string_view parameters)
{
    auto fields = at::fields(parameters);
    if (fields.size() >= 2 && !numberIn(fields[0])) fields.erase(fields.begin());
    const auto state = numberIn(fields[0]);
    if (!state) return std::nullopt;
    LockLine lock{{std::to_string(*state)}};
    for (size_t i = 1; i < fields.size(); ++i)
        lock.fields.push_back(plainNumber(fields[i]));
    return lock;
}

} // namespace

void simState(Reply &reply, const at::Command &command)
{
    if (reply.result != "OK") return;
    for (std::string &line : reply.lines) {
        const auto parameters = parametersOf(line, command);
        if (!parameters) continue;
        const auto fields = at::fields(*parameters);
        const std::string state = normalized(fields[0]);
        const auto *const word = std::find_if(kWordsOfErrors.begin(), kWordsOfErrors.end(),
                                              [&](const Word &one) { return one.word == state; });
        if (word != kWordsOfErrors.end()) {
            reply.result = word->error;
            reply.lines.clear();
            return;
        }
        const bool isNamed = at::namedLine(line).has_value();
        if (!isState(state) && !isNamed) continue;
        std::vector<std::string> written{isState(state) ? state : std::string(unquoted(fields[0]))};
        written.insert(written.end(), fields.begin() + 1, fields.end());
        line = command.name + ": " + joined(written);
    }
}

void triesACodeALine(Reply &reply, const at::Command &command)
{
    std::vector<std::string> shaped;
    for (const std::string &line : reply.lines) {
        const auto fields = at::fields(parametersOf(line, command).value_or(""));
        const std::string code = normalized(fields[0]);
        if (!isState(code) || fields.size() < 2) {
            shaped.push_back(line);
            continue;
        }
        for (const std::string_view field : fields) {
            const std::string name = normalized(field);
            if (isState(name))
                shaped.push_back(command.name + ": " + name);
            else
                shaped.back().append(",").append(plainNumber(field));
        }
    }
    reply.lines = std::move(shaped);
}

void facilityState(Reply &reply, const at::Command &command)
{
    std::vector<LockLine> locks;
    for (const std::string &line : reply.lines) {
        const auto lock = lockIn(parametersOf(line, command).value_or(""));
        if (!lock) return; // then nothing is known of the others either
        locks.push_back(*lock);
    }
    std::stable_partition(locks.begin(), locks.end(), [](const LockLine &lock) { return lock.isOn(); });
    std::transform(locks.begin(), locks.end(), reply.lines.begin(),
                   [&](const LockLine &lock) { return command.name + ": " + joined(lock.fields); });
}

} // namespace host::at_server

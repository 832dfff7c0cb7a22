#include "krctl/commands/command.h"

#include <array>
#include <utility>

#include "krctl/commands/commands.h"

namespace krctl {
namespace {

constexpr std::array kNouns{
    Noun{"status", "the modem at a glance"},
    Noun{"device", "maker, model, revisions, serial numbers"},
    Noun{"sim", "the SIM: its state, its PIN and PUK"},
    Noun{"net", "the network: registration, operators, preferences"},
    Noun{"signal", "how well the modem receives"},
    Noun{"cell", "the serving cell and the transmit power"},
    Noun{"lock", "the network lock of the modem"},
    Noun{"facility", "facility locks, such as barring of calls"},
    Noun{"data", "the packet domain and its profiles"},
    Noun{"power", "the radio"},
    Noun{"settings", "everything else that can be set"},
    Noun{"watch", "registration reports as they come"},
    Noun{"at", "one raw AT command"},
    Noun{"trace", "record what goes over the modem's port, and play it back"},
};

} // namespace

void Arguments::set(const std::string &name, std::string text, int32_t number)
{
    values_[name] = {std::move(text), number};
}

std::string Arguments::text(const char *name, const std::string &fallback) const
{
    const auto found = values_.find(name);
    return found == values_.end() ? fallback : found->second.text;
}

int32_t Arguments::number(const char *name, int32_t fallback) const
{
    const auto found = values_.find(name);
    return found == values_.end() ? fallback : found->second.number;
}

std::span<const Noun> nouns()
{
    return kNouns;
}

const std::vector<Command> &commands()
{
    static const std::vector<Command> all = [] {
        std::vector<Command> joined;
        for (const auto topic : {statusCommands, deviceCommands, simCommands, netStatusCommands, netSelectionCommands,
                                 signalCommands, cellCommands, lockCommands, facilityCommands, dataCommands,
                                 powerCommands, settingsCommands, watchCommands, atCommands, traceCommands}) {
            const std::span<const Command> rows = topic();
            joined.insert(joined.end(), rows.begin(), rows.end());
        }
        return joined;
    }();
    return all;
}

} // namespace krctl

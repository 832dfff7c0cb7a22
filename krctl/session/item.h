/** What a command asks the modem for, and why a value of it is missing. */
#ifndef KRCTL_SESSION_ITEM_H
#define KRCTL_SESSION_ITEM_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "krctl/readings/reply.h"

namespace krctl {

/** Items of one kind are silent for the same reason: the rest of them is not asked any more. */
enum class ItemKind : uint8_t { Device, Sim, Network, Signal, Lock };
constexpr size_t kItemKinds = 5;

/** How a call for an item ended. */
enum class Ending : uint8_t {
    Done,
    Unreadable, ///< with OK, and the library could not read it
    Refused,
    WaitsForSim, ///< the SIM tells it only once its lock is open; it was not asked
    Silent,
    NotAsked, ///< after others of its kind were silent
    Gone,     ///< the server, the port or the user's patience went away, before or while it was asked
};

struct Answer {
    Ending ending = Ending::NotAsked;
    Replies replies{};

    bool isDone() const { return ending == Ending::Done; }
    /** Whether the modem answered, be it with an error. */
    bool isHeard() const { return ending <= Ending::Refused; }
};

/** Items that are missing, and why. */
class Missing {
  public:
    void add(std::string item, Ending ending) { items_.emplace_back(std::move(item), ending); }
    void clear() { items_.clear(); }

    /** A sentence for each reason, with the items it holds for. */
    std::vector<std::string> sentences() const;

  private:
    std::vector<std::pair<std::string, Ending>> items_;
};

} // namespace krctl

#endif

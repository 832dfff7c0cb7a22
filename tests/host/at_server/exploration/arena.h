/** Memory that can be put back: all that is allocated while the arena is open lives in it, and a copy of its bytes is a
 *  copy of everything that was built there, with all its pointers. */
#ifndef TESTS_HOST_AT_SERVER_EXPLORATION_ARENA_H
#define TESTS_HOST_AT_SERVER_EXPLORATION_ARENA_H

#include <cstddef>
#include <vector>

namespace exploration {

using Snapshot = std::vector<char>;

/** While one of these lives, operator new takes from the arena. */
class InArena {
  public:
    InArena();
    ~InArena();
    InArena(const InArena &) = delete;
    InArena &operator=(const InArena &) = delete;

  private:
    const bool wasOpen_;
};

void save(Snapshot &snapshot);
void putBack(const Snapshot &snapshot);

} // namespace exploration

#endif

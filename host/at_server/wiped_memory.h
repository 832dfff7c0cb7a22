/** Memory that had a command in it, and with that perhaps a PIN, is overwritten when it is given back: what is on the heap by
 *  the operators of wiped_memory.cpp, what is on the stack or stays by these. */
#ifndef HOST_AT_SERVER_WIPED_MEMORY_H
#define HOST_AT_SERVER_WIPED_MEMORY_H

#include <cstddef>
#include <string>

#include "host/wiped/wiped_buffer.h"

namespace host::at_server {

/** Overwrites in the end what the calls of its function have left on the stack, where short texts live. */
class WipedStack {
  public:
    WipedStack() = default;
    ~WipedStack() { wipe(); }
    WipedStack(const WipedStack &) = delete;
    WipedStack &operator=(const WipedStack &) = delete;

  private:
    [[gnu::noinline]] static void wipe() { [[maybe_unused]] WipedBuffer<size_t{64} * 1024> room; }
};

/** Empties a text that stays, with all that it has had in it. */
inline void wipe(std::string &text)
{
    text.resize(text.capacity());
    explicit_bzero(text.data(), text.size());
    text.clear();
}

} // namespace host::at_server

#endif

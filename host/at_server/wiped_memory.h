/** Memory that had a command in it, and with that perhaps a PIN, is overwritten when it is given back: what is on the heap by
 *  the operators of wiped_memory.cpp, what is not by these. */
#ifndef HOST_AT_SERVER_WIPED_MEMORY_H
#define HOST_AT_SERVER_WIPED_MEMORY_H

#include <array>
#include <cstddef>
#include <string>

#include <string.h> // NOLINT(modernize-deprecated-headers): for explicit_bzero

namespace host::at_server {

/** A buffer to be read into. */
template <size_t Size>
class WipedBuffer {
  public:
    WipedBuffer() = default;
    ~WipedBuffer() { explicit_bzero(bytes_.data(), bytes_.size()); }
    WipedBuffer(const WipedBuffer &) = delete;
    WipedBuffer &operator=(const WipedBuffer &) = delete;

    char *data() { return bytes_.data(); }
    static constexpr size_t size() { return Size; }

  private:
    std::array<char, Size> bytes_; // NOLINT(cppcoreguidelines-pro-type-member-init): to be read into
};

/** Overwrites in the end what the calls of its function have left on the stack, where short texts live. */
class WipedStack {
  public:
    WipedStack() = default;
    ~WipedStack() { wipe(); }
    WipedStack(const WipedStack &) = delete;
    WipedStack &operator=(const WipedStack &) = delete;

  private:
    [[gnu::noinline]] static void wipe()
    {
        std::array<char, size_t{64} * 1024> room; // NOLINT(cppcoreguidelines-pro-type-member-init): to be overwritten
        explicit_bzero(room.data(), room.size());
    }
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
